# SPDX-License-Identifier: LGPL-2.1-or-later
#
# Packages: cpack -G DEB in the build folder of the preset "package". Each component is one:
#
#   runtime      libvspimport1      libraries, plug-in and the engine's programs: all that hosts need
#   development  libvspimport-dev   what hosts are built with
#   program      vspimport          the command line
#   window       vspimport-window   the desktop window
#
# The engine's programs lie with the libraries, by architecture and version, since both belong to one
# package of which several may be installed.

set(packaging ${PROJECT_SOURCE_DIR}/packaging/debian)
set(runtime_package libvspimport${PROJECT_VERSION_MAJOR})
set(development_package libvspimport-dev)
set(program_package vspimport)
set(window_package vspimport-window)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vspimport)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "The vspimport developers <vspimport@packages.invalid>")
set(CPACK_COMPONENTS_ALL runtime development program window)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})

# debian_package(COMPONENT SECTION DEPENDS DESCRIPTION) - its fields, and the texts that each has.
macro(debian_package component section depends description)
    string(TOUPPER ${component} upper)
    set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${${component}_package})
    set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section})
    set(CPACK_DEBIAN_${upper}_PACKAGE_DEPENDS "${depends}")
    set(CPACK_DEBIAN_${upper}_DESCRIPTION "${description}")
    set(doc ${CMAKE_INSTALL_DATADIR}/doc/${${component}_package})
    install(FILES ${packaging}/copyright ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz
        DESTINATION ${doc} COMPONENT ${component})
endmacro()

set(this_version "${runtime_package} (= ${PROJECT_VERSION})")
set(qt_development_5 "qtbase5-dev (>= 5.15)")
set(qt_development_6 "qt6-base-dev (>= 6.4)")
debian_package(runtime libs ""
"import module of a video converter - libraries and plug-in
Reads what is in media files, DVDs, Blu-ray discs and disc images, with a
picture of every video, chapter and clip, for programs that show it. What
decodes are confined processes.")
debian_package(development libdevel "${this_version}, ${qt_development_${VSPIMPORT_QT}}"
"import module of a video converter - development files
Headers, and what CMake and pkg-config find the module by.")
debian_package(program video "${this_version}"
"list and picture what is in media files and discs
Imports media files, folders, disc images, DVD and Blu-ray folders, lists
what is in them, as text or as JSON, and takes a picture of every video,
chapter and clip.")
debian_package(window video "${this_version}"
"see what is in media files and discs
Imports media files, folders, disc images, DVD and Blu-ray folders that are
dropped on its window, and shows what is in them, with a picture of every
video, chapter and clip.")
set(qt_svg_5 libqt5svg5)
set(qt_svg_6 "qt6-svg-plugins | libqt6svg6")
set(CPACK_DEBIAN_WINDOW_PACKAGE_RECOMMENDS ${qt_svg_${VSPIMPORT_QT}}) # reads its icon
set(qt_translations_5 qttranslations5-l10n)
set(qt_translations_6 qt6-translations-l10n)
set(CPACK_DEBIAN_WINDOW_PACKAGE_SUGGESTS ${qt_translations_${VSPIMPORT_QT}})

configure_file(${packaging}/changelog.in changelog @ONLY)
execute_process(COMMAND gzip -9nc changelog WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}
    OUTPUT_FILE changelog.gz COMMAND_ERROR_IS_FATAL ANY)

install(FILES ${packaging}/libvspimport1.lintian-overrides
    DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME ${runtime_package} COMPONENT runtime)

# Whoever is linked with one of the libraries needs this package, and the linker's cache has them.
set(control ${CMAKE_CURRENT_BINARY_DIR}/control)
set(shlibs "")
foreach(library vspavbased vspbased vspimport vsplugin vsputils)
    string(APPEND shlibs
        "lib${library} ${PROJECT_VERSION_MAJOR} ${runtime_package} (>= ${PROJECT_VERSION})\n")
endforeach()
file(WRITE ${control}/shlibs ${shlibs})
file(WRITE ${control}/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${control}/shlibs ${control}/triggers)

include(CPack)
