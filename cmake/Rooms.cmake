# A room is one folder of src/ built as one static library. It may use only the rooms that it
# names; what it does not name is not on its link line. Its windows are built elsewhere.

function(qvnd_room target)
  cmake_parse_arguments(ROOM "" "FOLDER" "USES;EXCEPT" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${ROOM_FOLDER}/*.cpp ${ROOM_FOLDER}/*.h)
  foreach(pattern ${ROOM_EXCEPT} "/windows/")
    list(FILTER sources EXCLUDE REGEX ${pattern})
  endforeach()
  if(NOT sources)
    add_library(${target} INTERFACE)
    target_link_libraries(${target} INTERFACE qvnd_compiler ${ROOM_USES})
    return()
  endif()
  add_library(${target} STATIC ${sources})
  target_link_libraries(${target} PUBLIC qvnd_compiler ${ROOM_USES})
endfunction()

# The tests of one room: every *_test.cpp of a folder of tests/, in one program.
function(qvnd_room_tests name)
  cmake_parse_arguments(ROOM "" "FOLDER" "USES" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${ROOM_FOLDER}/*.cpp ${ROOM_FOLDER}/*.h)
  if(NOT sources)
    return()
  endif()
  add_executable(${name} ${sources})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE ${ROOM_USES} GTest::gmock GTest::gtest GTest::gtest_main)
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 300
                        ENVIRONMENT "QVND_SOURCE_DIR=${PROJECT_SOURCE_DIR};QT_QPA_PLATFORM=offscreen")
endfunction()
