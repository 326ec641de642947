# The installed copy can be moved as a whole: the config file, the .pc file and the command's run path
# are all relative to where they are.

include(CMakePackageConfigHelpers)

install(TARGETS optxv EXPORT optxvTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY include/optxv DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")
install(DIRECTORY ${class_headers_folder}/optxv DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

file(RELATIVE_PATH bin_to_lib ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
if(TARGET optxv_command)
  set_target_properties(optxv_command PROPERTIES INSTALL_RPATH "$ORIGIN/${bin_to_lib}")
  install(TARGETS optxv_command EXPORT optxvTargets RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(FILES docs/optxv.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
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
configure_file(cmake/optxv.pc.in optxv.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/optxv.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
