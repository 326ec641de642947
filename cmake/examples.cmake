# The example program, in C, as a user of the library would write it.

file(GLOB minimizer_sources CONFIGURE_DEPENDS examples/minimizer/*.c)
if(minimizer_sources)
  add_executable(minimizer ${minimizer_sources})
  target_link_libraries(minimizer PRIVATE optxv m)
  optxv_warnings(minimizer)
endif()
