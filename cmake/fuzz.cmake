# One libFuzzer executable for each fuzz/<name>_fuzz.cpp. settings.cmake has instrumented everything; the targets of
# the command take its objects from an archive, each as many as it needs, beside the library's own.

add_library(optxv_fuzz_command STATIC EXCLUDE_FROM_ALL $<TARGET_OBJECTS:optxv_command_objects>)
target_include_directories(optxv_fuzz_command PUBLIC command)

file(GLOB fuzz_sources CONFIGURE_DEPENDS fuzz/*_fuzz.cpp)
foreach(source ${fuzz_sources})
  get_filename_component(name ${source} NAME_WE)
  add_executable(${name} ${source})
  target_include_directories(${name} PRIVATE tests)
  if(name MATCHES "^(format|fix|command|server)_fuzz$")
    target_link_libraries(${name} PRIVATE optxv_fuzz_command)
  endif()
  target_link_libraries(${name} PRIVATE optxv_objects)
  target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  optxv_test_warnings(${name})
endforeach()
