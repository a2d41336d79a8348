# A room is one folder of src/ built as one static library. It may use only the rooms that it
# names; what it does not name is not on its link line. Its windows are built elsewhere.

function(qvnd_room target)
  cmake_parse_arguments(ROOM "" "FOLDER;HEADERS" "USES;EXCEPT" ${ARGN})
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
  if(NOT ROOM_HEADERS)
    set(ROOM_HEADERS qvnd_qt_headers)
  endif()
  target_precompile_headers(${target} REUSE_FROM ${ROOM_HEADERS})
endfunction()

# Writes files that each include four of `sources`, and names them in `result`: test files instantiate
# the same templates, and that is most of their cost. Paths in them are relative, so that a compiler
# cache knows them again in another folder.
function(qvnd_compiled_together name sources result)
  list(FILTER sources INCLUDE REGEX "\\.cpp$")
  list(SORT sources)
  list(LENGTH sources count)
  math(EXPR last "${count} - 1")
  set(together "")
  foreach(first RANGE 0 ${last} 4)
    list(SUBLIST sources ${first} 4 four)
    list(TRANSFORM four REPLACE "^${PROJECT_SOURCE_DIR}/tests/(.*)$" "#include \"\\1\"\n")
    string(CONCAT text ${four})
    set(file ${CMAKE_CURRENT_BINARY_DIR}/${name}/together_${first}.cpp)
    file(CONFIGURE OUTPUT ${file} CONTENT "${text}")
    list(APPEND together ${file})
  endforeach()
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # The one is said of every class in an anonymous namespace outside of the main file, the other
    # of a local name that another of the four files uses.
    set_source_files_properties(${together} PROPERTIES
                                COMPILE_OPTIONS "-Wno-subobject-linkage;-Wno-shadow")
  endif()
  set(${result} ${together} PARENT_SCOPE)
endfunction()

# The tests of one room: every *_test.cpp of a folder of tests/, in one program.
function(qvnd_room_tests name)
  cmake_parse_arguments(ROOM "" "FOLDER;HEADERS" "USES" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${ROOM_FOLDER}/*.cpp ${ROOM_FOLDER}/*.h)
  if(NOT sources)
    return()
  endif()
  if(QVND_TESTS_TOGETHER)
    qvnd_compiled_together(${name} "${sources}" sources)
  endif()
  add_executable(${name} ${sources})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE ${ROOM_USES} GTest::gmock GTest::gtest GTest::gtest_main)
  if(NOT ROOM_HEADERS)
    set(ROOM_HEADERS qvnd_qt_test_headers)
  endif()
  target_precompile_headers(${name} REUSE_FROM ${ROOM_HEADERS})
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 300
                        ENVIRONMENT QVND_SOURCE_DIR=${PROJECT_SOURCE_DIR})
endfunction()
