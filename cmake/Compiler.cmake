# One set of compiler rules for every room.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
# Programs are compiled as libraries are, so that both share the compiled headers.
set(CMAKE_CXX_COMPILE_OPTIONS_PIE ${CMAKE_CXX_COMPILE_OPTIONS_PIC})

find_program(QVND_CCACHE ccache)
if(QVND_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${QVND_CCACHE})
endif()

add_library(qvnd_compiler INTERFACE)
target_include_directories(qvnd_compiler INTERFACE ${PROJECT_SOURCE_DIR}/src)
if(MSVC)
  target_compile_options(qvnd_compiler INTERFACE /W4 /utf-8 $<$<BOOL:${QVND_WERROR}>:/WX>)
else()
  target_compile_options(
    qvnd_compiler INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
                            -Woverloaded-virtual $<$<BOOL:${QVND_WERROR}>:-Werror>)
  if(QVND_SANITIZE)
    # The sources of the tests are more than half of all, and UBSan makes them take twice as long to
    # compile: it watches what they test.
    target_compile_options(
      qvnd_compiler INTERFACE -fsanitize=address -fno-sanitize-recover=all -fno-omit-frame-pointer
                              $<$<NOT:$<BOOL:$<TARGET_PROPERTY:QVND_IS_TEST>>>:-fsanitize=undefined>)
    target_link_options(qvnd_compiler INTERFACE -fsanitize=address,undefined)
  endif()
  if(QVND_FUZZ)
    target_compile_options(qvnd_compiler INTERFACE -fsanitize=fuzzer-no-link)
    target_link_options(qvnd_compiler INTERFACE -fsanitize=fuzzer-no-link)
  endif()
endif()
