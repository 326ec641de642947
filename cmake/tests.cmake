# One executable for each tests/<folder>/<module>_test.cpp, one ctest test of the same name; then the
# checkers of the tree. Labels: `unit` for the executables, `tree` for the checkers, `package`.

find_package(GTest REQUIRED)
find_package(Python3 REQUIRED COMPONENTS Interpreter)

# What a test starts as the command: itself or, for a machine that this one only emulates, a script that starts it.
if(build_command)
  set(command_file $<TARGET_FILE:optxv_command>)
  if(CMAKE_CROSSCOMPILING_EMULATOR)
    list(JOIN CMAKE_CROSSCOMPILING_EMULATOR " " emulator)
    set(command_file ${PROJECT_BINARY_DIR}/emulated/optxv)
    file(GENERATE OUTPUT ${command_file} CONTENT "#!/bin/sh\nexec ${emulator} $<TARGET_FILE:optxv_command> \"$@\"\n"
         FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
  endif()
endif()

# What a test from outside needs: tests/api the library, tests/command and tests/server the command too.
function(optxv_outside_test target folder)
  target_link_libraries(${target} PRIVATE optxv ${CMAKE_DL_LIBS})
  target_compile_definitions(${target} PRIVATE OPTXV_SOURCE_DIR="${PROJECT_SOURCE_DIR}"
                                               OPTXV_LIBRARY_FILE="$<TARGET_FILE:optxv>")
  if(folder MATCHES "^(command|server)$")
    target_link_libraries(${target} PRIVATE optxv_command_objects)
    target_compile_definitions(${target} PRIVATE OPTXV_COMMAND_FILE="${command_file}")
    add_dependencies(${target} optxv_command)
  endif()
endfunction()

# The same objects in an archive, for the tests of the lower floors: a test takes only what its module
# needs, so that it links, and proves it, without the floors above. The others take every object, and
# with them the steps that run when the library is loaded.
set(archive_kind STATIC)
if(OPTXV_SHARED_TESTS)
  set(archive_kind SHARED)
endif()
add_library(optxv_archive ${archive_kind} EXCLUDE_FROM_ALL $<TARGET_OBJECTS:optxv_objects>)
set_target_properties(optxv_archive PROPERTIES LINKER_LANGUAGE CXX)
target_include_directories(optxv_archive PUBLIC src include)
target_link_libraries(optxv_archive PUBLIC ${CMAKE_DL_LIBS})

# What the tests share of headers is read once, by a program without a test.
if(optxv_precompiles)
  file(WRITE ${PROJECT_BINARY_DIR}/notest.cpp "int main() {}\n")
  add_executable(optxv_notest EXCLUDE_FROM_ALL ${PROJECT_BINARY_DIR}/notest.cpp)
  target_link_libraries(optxv_notest PRIVATE GTest::gtest_main GTest::gmock)
  optxv_test_warnings(optxv_notest)
  optxv_compile_fast(optxv_notest)
  optxv_precompile(optxv_notest <filesystem> <fstream> <sstream> <gtest/gtest.h> <gmock/gmock.h>)
endif()


set(patience 120)
if(CMAKE_CROSSCOMPILING_EMULATOR)
  set(patience 1800)
endif()
file(GLOB test_sources CONFIGURE_DEPENDS tests/*/*_test.cpp)
foreach(source ${test_sources})
  get_filename_component(name ${source} NAME_WE)
  cmake_path(GET source PARENT_PATH folder)
  cmake_path(GET folder FILENAME folder)
  if(folder MATCHES "^(command|server)$" AND NOT build_command)
    continue()
  endif()
  add_executable(${name} ${source})
  target_include_directories(${name} PRIVATE tests)
  target_compile_definitions(${name} PRIVATE OPTXV_TESTS="${PROJECT_SOURCE_DIR}/tests")
  if(folder MATCHES "^(api|command|server)$")
    target_include_directories(${name} PRIVATE src)  # only for the table of functions, frame/api.def
    optxv_outside_test(${name} ${folder})
  elseif(OPTXV_SHARED_TESTS OR folder MATCHES "^(foundation|platform|listing|language|stores)$")
    target_link_libraries(${name} PRIVATE optxv_archive)
  else()
    target_link_libraries(${name} PRIVATE optxv_objects)
  endif()
  target_link_libraries(${name} PRIVATE GTest::gtest_main GTest::gmock)
  optxv_test_warnings(${name})
  optxv_compile_fast(${name})
  if(optxv_precompiles)
    target_precompile_headers(${name} REUSE_FROM optxv_notest)
  endif()
  add_test(NAME ${name} COMMAND ${name})
  # A refused allocation is a case of its own: it gives nil under the address sanitizer too.
  set_tests_properties(${name} PROPERTIES LABELS unit TIMEOUT ${patience} ENVIRONMENT
    "ASAN_OPTIONS=allocator_may_return_null=1:detect_stack_use_after_return=1;UBSAN_OPTIONS=print_stacktrace=1")
endforeach()
include(cmake/apitests.cmake)
include(cmake/fortrantests.cmake)
include(cmake/doctests.cmake)
include(cmake/readertests.cmake)
include(cmake/pythontests.cmake)

function(optxv_checker name)
  add_test(NAME ${name} COMMAND Python3::Interpreter -B ${ARGN} WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
  set_tests_properties(${name} PROPERTIES LABELS tree TIMEOUT 120)
endfunction()

optxv_checker(floors checks/check_floors.py)
optxv_checker(tree checks/check_tree.py)
optxv_checker(symbols checks/check_symbols.py src/frame/exports.map packaging/debian/liboptxv2.symbols)
optxv_checker(checkers tests/checks/checkers_test.py)

# A sanitizer's runtime adds symbols of its own, and a program without it cannot load the library.
if(NOT optxv_sanitizers)
  if(exports_map)
    optxv_checker(exports checks/check_exports.py src/frame/exports.map $<TARGET_FILE:optxv>)
  endif()
  function(optxv_package_test name script)
    add_test(NAME ${name} COMMAND ${CMAKE_COMMAND} -DBUILD=${PROJECT_BINARY_DIR} -DTREE=${PROJECT_SOURCE_DIR}
             -DSOURCE=${PROJECT_SOURCE_DIR}/tests/package -DLIBDIR=${CMAKE_INSTALL_LIBDIR} -DGENERATOR=${CMAKE_GENERATOR}
             -DCC=${CMAKE_C_COMPILER} -DCXX=${CMAKE_CXX_COMPILER} -DCCACHE=${CMAKE_CXX_COMPILER_LAUNCHER}
             -DHAS_COMMAND=$<TARGET_EXISTS:optxv_command> -P ${PROJECT_SOURCE_DIR}/tests/package/${script})
    set_tests_properties(${name} PROPERTIES LABELS package TIMEOUT 600)
  endfunction()
  optxv_package_test(package run.cmake)
  optxv_package_test(hosted hosted.cmake)
endif()
