# The benchmarks go through the shared library and the public header, as a caller does. The program
# counts heap blocks with a malloc of its own, which the library then uses too.

find_package(benchmark REQUIRED)
if(NOT TARGET optxv_command)
  message(FATAL_ERROR "The benchmarks measure generated code, which the command makes: set OPTXV_TOOLS")
endif()

# The largest table as code.
add_executable(optxv_benchdefinition bench/definition.cpp bench/generator.cpp)
set(bench_code ${PROJECT_BINARY_DIR}/benchcode)
add_custom_command(OUTPUT ${bench_code}/bench_options.hpp
  COMMAND ${CMAKE_COMMAND} -E make_directory ${bench_code}
  COMMAND optxv_benchdefinition 2700 > ${bench_code}/bench.def
  COMMAND optxv_command generate ${bench_code}/bench.def --lang c++ --prefix benchtable -o ${bench_code}/bench_options.hpp
  DEPENDS optxv_benchdefinition optxv_command VERBATIM)

file(GLOB bench_sources CONFIGURE_DEPENDS bench/*.cpp)
list(REMOVE_ITEM bench_sources ${PROJECT_SOURCE_DIR}/bench/definition.cpp)
if(bench_sources)
  add_executable(optxv_bench ${bench_sources} ${bench_code}/bench_options.hpp)
  target_include_directories(optxv_bench PRIVATE ${bench_code})
  target_include_directories(optxv_bench PRIVATE src)  # for the classes that programs in C++ link to
  target_link_libraries(optxv_bench PRIVATE optxv benchmark::benchmark)
  optxv_test_warnings(optxv_bench)
endif()
