# The benchmarks go through the shared library and the public header, as a caller does. The program
# counts heap blocks with a malloc of its own, which the library then uses too.

find_package(benchmark REQUIRED)
file(GLOB bench_sources CONFIGURE_DEPENDS bench/*.cpp)
if(bench_sources)
  add_executable(optxv_bench ${bench_sources})
  target_include_directories(optxv_bench PRIVATE src)  # for the classes that programs in C++ link to
  target_link_libraries(optxv_bench PRIVATE optxv benchmark::benchmark)
  optxv_test_warnings(optxv_bench)
endif()
