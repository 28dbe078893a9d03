# SPDX-License-Identifier: Apache-2.0
# What `cmake --install` puts in place: the library, its headers, the tool, and what CMake and
# pkg-config need to find them.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/lxpic)
set(pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

install(TARGETS lxpic EXPORT lxpic-targets)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/lxpic TYPE INCLUDE)
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE TYPE DOC)

install(EXPORT lxpic-targets NAMESPACE lxpic:: DESTINATION ${package_dir})
configure_package_config_file(cmake/lxpic-config.cmake.in
  ${PROJECT_BINARY_DIR}/lxpic-config.cmake INSTALL_DESTINATION ${package_dir})
# Before 1.0 a minor version may change the interface, as the library's soname says.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/lxpic-config-version.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/lxpic-config.cmake
  ${PROJECT_BINARY_DIR}/lxpic-config-version.cmake
  DESTINATION ${package_dir})

# The file finds its prefix from where it lies, so that an installed tree can be moved.
cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX
  BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX}/${pkgconfig_dir} OUTPUT_VARIABLE pkgconfig_to_prefix)
configure_file(cmake/lxpic.pc.in ${PROJECT_BINARY_DIR}/lxpic.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/lxpic.pc DESTINATION ${pkgconfig_dir})
