# SPDX-License-Identifier: LGPL-2.1-or-later
#
# What is installed beside the programs and libraries: what hosts find them by, and what people read.

include(CMakePackageConfigHelpers)
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/vspimport)
set(vspimport_PLUGIN_DIR ${PROJECT_BINARY_DIR}/${VSPIMPORT_PLUGINS}) # as the installed package says it
configure_package_config_file(cmake/vspimport-config.cmake.in vspimport-config.cmake
    INSTALL_DESTINATION ${package_dir} PATH_VARS VSPIMPORT_PLUGINS)
write_basic_package_version_file(vspimport-config-version.cmake COMPATIBILITY SameMajorVersion)
install(EXPORT vspimport-targets NAMESPACE vspimport::
    DESTINATION ${package_dir} COMPONENT development)
install(FILES
    ${CMAKE_CURRENT_BINARY_DIR}/vspimport-config.cmake
    ${CMAKE_CURRENT_BINARY_DIR}/vspimport-config-version.cmake
    DESTINATION ${package_dir} COMPONENT development)

file(RELATIVE_PATH pkgconfig_to_prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" pkgconfig_to_prefix ${pkgconfig_to_prefix})
configure_file(cmake/vspimport.pc.in vspimport.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/vspimport.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

# Texts: manual pages, completions and generated documentation are added here.
install(FILES README.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT program)
if(VSPIMPORT_DEBIAN)
    include(cmake/debian.cmake)
else()
    install(DIRECTORY LICENSES DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT program)
endif()
