# What holds for every target: language level, visibility, sanitizers; and the warnings for a target of ours.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
if(NOT OPTXV_SHARED_TESTS)  # there a test reaches through a shared library what the library hides
  set(CMAKE_CXX_VISIBILITY_PRESET hidden)
  set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
endif()
if(NOT DEFINED BUILD_SHARED_LIBS)
  set(BUILD_SHARED_LIBS ON)
endif()

# How to build is for the project on top to say.
if(PROJECT_IS_TOP_LEVEL)
  set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
  if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release)
  endif()
  find_program(ccache_program ccache)
  if(ccache_program AND NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_C_COMPILER_LAUNCHER ${ccache_program})
    set(CMAKE_CXX_COMPILER_LAUNCHER ${ccache_program})
  endif()
endif()

# Where these have 32 bits by themselves: a file may be larger, its inode too, and a year later than 2038.
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  add_compile_definitions(_FILE_OFFSET_BITS=64 _TIME_BITS=64)
endif()

set(optxv_sanitizers ${OPTXV_SANITIZE})
if(OPTXV_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES Clang)
    message(FATAL_ERROR "OPTXV_FUZZ needs clang: libFuzzer comes with it")
  endif()
  set(optxv_sanitizers address,undefined)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
if(optxv_sanitizers)
  add_compile_options(-fsanitize=${optxv_sanitizers} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${optxv_sanitizers} $<$<LINK_LANG_AND_ID:C,Clang>:-fsanitize-link-c++-runtime>)
  add_compile_definitions($<$<COMPILE_LANGUAGE:CXX>:_GLIBCXX_ASSERTIONS>)
endif()

# Every target of ours is compiled with these.
function(optxv_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
                                           $<$<BOOL:${OPTXV_WERROR}>:-Werror>)
endfunction()

# Tests get fewer warnings: the macros of the test framework compare integers of mixed signs.
function(optxv_test_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra $<$<BOOL:${OPTXV_WERROR}>:-Werror>)
endfunction()

# The code of a test is not what is measured or shipped: without optimisation it compiles in half the time.
function(optxv_compile_fast target)
  target_compile_options(${target} PRIVATE -O0)
endfunction()

# Where a cache of compilations is at work, that saves more, and does without.
set(optxv_precompiles OFF)
if(OPTXV_PRECOMPILE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(optxv_precompiles ON)
endif()

# optxv_precompile(<target> [<header>...]): the standard headers that most sources have, and those.
function(optxv_precompile target)
  if(optxv_precompiles)
    target_precompile_headers(${target} PRIVATE <algorithm> <array> <charconv> <functional> <limits> <map> <memory>
                              <optional> <span> <string> <string_view> <unordered_map> <vector> ${ARGN})
  endif()
endfunction()

function(optxv_tidy target)
  if(OPTXV_TIDY)
    find_program(clang_tidy_program clang-tidy REQUIRED)
    set_target_properties(${target} PROPERTIES
      CXX_CLANG_TIDY "${clang_tidy_program};--warnings-as-errors=*;--quiet")
  endif()
endfunction()
