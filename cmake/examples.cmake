# The example programs: one in C, as a user of the library would write it.

file(GLOB minimizer_sources CONFIGURE_DEPENDS examples/minimizer/*.c)
if(minimizer_sources AND TARGET optxv_command)  # which makes the struct of its options
  add_executable(minimizer ${minimizer_sources})
  target_link_libraries(minimizer PRIVATE optxv m)
  # A sanitizer in the library asks for the C++ runtime at the link, which a C compiler does not bring.
  set_target_properties(minimizer PROPERTIES LINKER_LANGUAGE CXX)
  optxv_warnings(minimizer)
  optxv_generate(minimizer ${PROJECT_SOURCE_DIR}/examples/minimizer/minimizer.def LANG c)
endif()

# A solver whose options have moved in, in C++ as `solver` and in C as `solver_c`; docs/embedding.md runs both.
add_executable(solver examples/embedding/solver.cpp)
add_executable(solver_c examples/embedding/solver.c)
set_target_properties(solver PROPERTIES CXX_STANDARD 17)
set_target_properties(solver_c PROPERTIES C_STANDARD 99 LINKER_LANGUAGE CXX)
foreach(program solver solver_c)
  target_link_libraries(${program} PRIVATE optxv)
  optxv_warnings(${program})
endforeach()

# The small ones in C++, each a file that uses one group of classes, next to the text that it prints. They
# include the headers as an installed copy has them.
file(GLOB unit_examples CONFIGURE_DEPENDS examples/units/*.cpp)
foreach(source ${unit_examples})
  get_filename_component(name ${source} NAME_WE)
  add_executable(example_${name} ${source})
  target_link_libraries(example_${name} PRIVATE optxv)
  optxv_warnings(example_${name})
  if(build_tests)
    add_test(NAME example_${name}
             COMMAND sh -c "'$<TARGET_FILE:example_${name}>' | diff - '${PROJECT_SOURCE_DIR}/examples/units/${name}.txt'")
    set_tests_properties(example_${name} PROPERTIES LABELS unit TIMEOUT 120)
  endif()
endforeach()
