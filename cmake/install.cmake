# The installed copy can be moved as a whole: the config file, the .pc file and the command's run path
# are all relative to where they are.

include(CMakePackageConfigHelpers)

install(TARGETS optxv optxv_classes EXPORT optxvTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY include/optxv DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h" PATTERN "*.hpp")
install(DIRECTORY ${class_headers_folder}/optxv DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(FILES bindings/fortran/optxv.f90 DESTINATION ${CMAKE_INSTALL_DATADIR}/optxv/fortran)
install(FILES docs/optxv.3 DESTINATION ${CMAKE_INSTALL_MANDIR}/man3)

file(RELATIVE_PATH bin_to_lib ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
if(TARGET optxv_command)
  set_target_properties(optxv_command PROPERTIES INSTALL_RPATH "$ORIGIN/${bin_to_lib}")
  install(TARGETS optxv_command EXPORT optxvTargets RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(FILES editors/optxv.schema.json DESTINATION ${CMAKE_INSTALL_DATADIR}/optxv)
  install(FILES docs/optxv.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  if(command_completions)
    install(FILES ${command_completions}/optxv.bash RENAME optxv
            DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
    install(FILES ${command_completions}/optxv.zsh RENAME _optxv DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
    install(FILES ${command_completions}/optxv.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
  endif()
endif()

# What a C compiler does not link by itself, for programs in C that take a static library.
set(static_runtime)
if(NOT BUILD_SHARED_LIBS)
  set(static_runtime ${CMAKE_CXX_IMPLICIT_LINK_LIBRARIES})
  list(REMOVE_ITEM static_runtime ${CMAKE_C_IMPLICIT_LINK_LIBRARIES})
  list(REMOVE_DUPLICATES static_runtime)
endif()

set(config_folder ${CMAKE_INSTALL_LIBDIR}/cmake/optxv)
configure_package_config_file(cmake/optxvConfig.cmake.in optxvConfig.cmake INSTALL_DESTINATION ${config_folder})
write_basic_package_version_file(optxvConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/optxvConfig.cmake ${PROJECT_BINARY_DIR}/optxvConfigVersion.cmake
              ${PROJECT_SOURCE_DIR}/cmake/optxvgenerate.cmake
        DESTINATION ${config_folder})
install(EXPORT optxvTargets NAMESPACE optxv:: DESTINATION ${config_folder})

file(RELATIVE_PATH pc_to_prefix ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
file(RELATIVE_PATH prefix_to_lib ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_LIBDIR})
file(RELATIVE_PATH prefix_to_include ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_INCLUDEDIR})
set(pc_static_libs)
if(static_runtime)
  list(TRANSFORM static_runtime PREPEND -l OUTPUT_VARIABLE pc_static_libs)
  list(JOIN pc_static_libs " " pc_static_libs)
  string(PREPEND pc_static_libs " -Wl,-u,_Q9_DllInit ")
endif()
configure_file(cmake/optxv.pc.in optxv.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/optxv.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
