# The command. It is a caller like any other: the shared library through the public header.

file(GLOB tool_sources CONFIGURE_DEPENDS tools/*.cpp)
if(tool_sources)
  find_package(CLI11 REQUIRED)
  find_package(nlohmann_json REQUIRED)
  add_executable(optxv_command ${tool_sources})
  set_target_properties(optxv_command PROPERTIES OUTPUT_NAME optxv)
  target_include_directories(optxv_command PRIVATE tools)
  target_link_libraries(optxv_command PRIVATE optxv CLI11::CLI11 nlohmann_json::nlohmann_json)
  optxv_warnings(optxv_command)
  optxv_tidy(optxv_command)
endif()
