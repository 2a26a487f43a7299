# Headers, libraries, the CMake package and the pkg-config file.
include(CMakePackageConfigHelpers)
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/cntr)

install(TARGETS qcfoundation cntr EXPORT cntr_targets)
install(DIRECTORY include/cntr DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
    FILES_MATCHING PATTERN "*.h")
install(DIRECTORY foundation/qc DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
    FILES_MATCHING PATTERN "*.h" PATTERN internal EXCLUDE)

install(EXPORT cntr_targets NAMESPACE cntr:: DESTINATION ${package_dir})
configure_package_config_file(cmake/cntrConfig.cmake.in cntrConfig.cmake
    INSTALL_DESTINATION ${package_dir})
# Before 1.0 a minor version may change the interface.
write_basic_package_version_file(cntrConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/cntrConfig.cmake ${PROJECT_BINARY_DIR}/cntrConfigVersion.cmake
    DESTINATION ${package_dir})

# Relative to the file, so that it holds under every prefix the package is installed to.
file(RELATIVE_PATH pc_prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(cmake/cntr.pc.in cntr.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/cntr.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
