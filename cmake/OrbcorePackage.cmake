# What `cmake --install` puts under a prefix. Nothing installed holds a path: the libraries find each
# other, their components and their messages from their own place, the package files from theirs.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/orbcore)

install(TARGETS kiln orbcore orb EXPORT orbcore
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY core/include/core elm/include/elm kiln/include/kiln
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT orbcore NAMESPACE orbcore:: DESTINATION ${package_dir} FILE orbcoreTargets.cmake)

configure_package_config_file(cmake/orbcoreConfig.cmake.in ${PROJECT_BINARY_DIR}/orbcoreConfig.cmake
  INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/orbcoreConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/orbcoreConfig.cmake
              ${PROJECT_BINARY_DIR}/orbcoreConfigVersion.cmake
  DESTINATION ${package_dir})

configure_file(cmake/orbcore.pc.in ${PROJECT_BINARY_DIR}/orbcore.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/orbcore.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
