# One libFuzzer executable for each fuzz/<name>_fuzz.cpp. settings.cmake has instrumented everything; the targets of the
# command take those of its floors that need no library of others.

file(GLOB fuzz_command_sources CONFIGURE_DEPENDS
     command/text/*.cpp command/analysis/*.cpp command/layout/*.cpp)
add_library(optxv_fuzz_command STATIC EXCLUDE_FROM_ALL ${fuzz_command_sources})
target_include_directories(optxv_fuzz_command PUBLIC command src include)
optxv_test_warnings(optxv_fuzz_command)

file(GLOB fuzz_sources CONFIGURE_DEPENDS fuzz/*_fuzz.cpp)
foreach(source ${fuzz_sources})
  get_filename_component(name ${source} NAME_WE)
  add_executable(${name} ${source})
  target_link_libraries(${name} PRIVATE optxv_objects)
  if(name MATCHES "^(format|fix)_fuzz$")
    target_link_libraries(${name} PRIVATE optxv_fuzz_command)
  endif()
  target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  optxv_test_warnings(${name})
endforeach()
