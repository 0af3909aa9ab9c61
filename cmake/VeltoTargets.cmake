# Functions that every folder uses to declare its targets with the same flags.

# Flags of every target: warnings, sanitizers, and floating-point sums that keep their order.
function(velto_flags target)
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -ffp-contract=off)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # A false alarm of this compiler on std::string in C++20.
    target_compile_options(${target} PRIVATE -Wno-restrict)
  endif()
  if(VELTO_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  if(VELTO_SANITIZE)
    target_compile_options(${target} PRIVATE
      -fsanitize=${VELTO_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(${target} PRIVATE -fsanitize=${VELTO_SANITIZE})
  endif()
  if(VELTO_BUILD_FUZZ)
    target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
  endif()
endfunction()

# A library whose headers are included from the project's root: static, unless a further argument names
# another kind.
function(velto_library target)
  set(kind STATIC)
  if(ARGC GREATER 1)
    set(kind ${ARGV1})
  endif()
  add_library(${target} ${kind})
  velto_flags(${target})
  if(VELTO_SANITIZE)
    # Without it the tests of the science take long; all else is built in less time as it is.
    target_compile_options(${target} PRIVATE -O1)
  endif()
  target_include_directories(${target} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/velto>)
endfunction()

# A GoogleTest program x_test.cpp standing beside the file it tests; further arguments are libraries.
function(velto_test source)
  if(NOT VELTO_BUILD_TESTS)
    return()
  endif()
  get_filename_component(name ${source} NAME_WE)
  add_executable(${name} ${source})
  velto_flags(${name})
  # A test runs for a moment and takes longer to compile; what it tests is compiled as ever.
  target_compile_options(${name} PRIVATE -O0)
  target_link_libraries(${name} PRIVATE ${ARGN} GTest::gtest_main)
  add_test(NAME ${name} COMMAND ${name} WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
endfunction()
