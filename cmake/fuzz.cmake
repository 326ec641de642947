# One libFuzzer executable for each fuzz/<name>_fuzz.cpp. settings.cmake has instrumented the library.

file(GLOB fuzz_sources CONFIGURE_DEPENDS fuzz/*_fuzz.cpp)
foreach(source ${fuzz_sources})
  get_filename_component(name ${source} NAME_WE)
  add_executable(${name} ${source})
  target_link_libraries(${name} PRIVATE optxv_objects)
  target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  optxv_test_warnings(${name})
endforeach()
