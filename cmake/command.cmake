# The command. It is a caller like any other: the shared library through the public headers. All but its
# main program is an object library, so that tests/command reaches its modules.

file(GLOB command_sources CONFIGURE_DEPENDS command/*/*.cpp)
set(command_main ${PROJECT_SOURCE_DIR}/command/cli/optxv.cpp)
list(REMOVE_ITEM command_sources ${command_main})
set(command_kind OBJECT)
if(OPTXV_SHARED_TESTS)
  set(command_kind SHARED)
endif()
add_library(optxv_command_objects ${command_kind} ${command_sources})
target_include_directories(optxv_command_objects PUBLIC command PRIVATE src)  # src: the classes for C++ programs
target_link_libraries(optxv_command_objects PUBLIC optxv CLI11::CLI11 nlohmann_json::nlohmann_json)
set_source_files_properties(${PROJECT_SOURCE_DIR}/command/cli/selftext.cpp
  ${PROJECT_SOURCE_DIR}/command/output/sarif.cpp PROPERTIES COMPILE_DEFINITIONS
  OPTXV_COMMAND_VERSION="${PROJECT_VERSION}")
optxv_precompile(optxv_command_objects)
add_executable(optxv_command ${command_main})
set_target_properties(optxv_command PROPERTIES OUTPUT_NAME optxv EXPORT_NAME command)
add_executable(optxv::command ALIAS optxv_command)
target_link_libraries(optxv_command PRIVATE optxv_command_objects)
set_target_properties(optxv_command PROPERTIES BUILD_RPATH_USE_ORIGIN ON)  # where it is built is no part of it
if(NOT CMAKE_CROSSCOMPILING)
  set(command_completions ${PROJECT_BINARY_DIR}/completions)
  file(MAKE_DIRECTORY ${command_completions})
  foreach(shell bash zsh fish)
    add_custom_command(TARGET optxv_command POST_BUILD
                       COMMAND optxv_command complete ${shell} > ${command_completions}/optxv.${shell}
                       BYPRODUCTS ${command_completions}/optxv.${shell} VERBATIM)
  endforeach()
endif()
foreach(target optxv_command_objects optxv_command)
  optxv_warnings(${target})
  optxv_tidy(${target})
endforeach()
