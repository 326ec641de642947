# What the parts of `./dev prove` run: one executable for each prove/<name>_prove.cpp, on every object of the library,
# and one library for each prove/<name>_preload.c, to stand ahead of the C library. Built only where they are asked for.

add_custom_target(optxv_prove)
file(GLOB prove_sources CONFIGURE_DEPENDS prove/*_prove.cpp)
foreach(source ${prove_sources})
  get_filename_component(name ${source} NAME_WE)
  add_executable(${name} EXCLUDE_FROM_ALL ${source})
  target_include_directories(${name} PRIVATE tests)
  target_link_libraries(${name} PRIVATE optxv_objects)
  optxv_warnings(${name})
  add_dependencies(optxv_prove ${name})
endforeach()

file(GLOB preload_sources CONFIGURE_DEPENDS prove/*_preload.c)
foreach(source ${preload_sources})
  get_filename_component(name ${source} NAME_WE)
  add_library(${name} MODULE EXCLUDE_FROM_ALL ${source})
  target_link_libraries(${name} PRIVATE ${CMAKE_DL_LIBS})
  set_target_properties(${name} PROPERTIES PREFIX "")
  optxv_warnings(${name})
  add_dependencies(optxv_prove ${name})
endforeach()
