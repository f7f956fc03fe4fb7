# SPDX-License-Identifier: LGPL-2.1-or-later
#
# Where everything lies, below the prefix and below the build folder alike: programs and libraries
# find each other by the way from one to the other, so that both can be moved.

include(GNUInstallDirs)
foreach(folder BINDIR LIBDIR LIBEXECDIR INCLUDEDIR DATADIR DOCDIR)
    if(IS_ABSOLUTE "${CMAKE_INSTALL_${folder}}")
        message(FATAL_ERROR "CMAKE_INSTALL_${folder} has to be relative to the prefix")
    endif()
endforeach()

set(VSPIMPORT_HEADERS ${CMAKE_INSTALL_INCLUDEDIR}/vspimport)
# With the version in their names, so that two versions of the libraries live beside each other.
set(VSPIMPORT_PLUGINS ${CMAKE_INSTALL_LIBDIR}/vspimport-${PROJECT_VERSION_MAJOR}/plugins)
set(VSPIMPORT_ENGINE ${CMAKE_INSTALL_LIBEXECDIR}/vspimport-${PROJECT_VERSION_MAJOR})
if(CMAKE_INSTALL_LIBDIR MATCHES "/")
    # By architecture: so do the programs that belong to the libraries.
    set(VSPIMPORT_ENGINE ${CMAKE_INSTALL_LIBDIR}/vspimport-${PROJECT_VERSION_MAJOR})
endif()
# What belongs to the programs here and to nobody else.
set(VSPIMPORT_PARTS ${CMAKE_INSTALL_LIBDIR}/vspimport)

file(RELATIVE_PATH bin_to_lib /${CMAKE_INSTALL_BINDIR} /${CMAKE_INSTALL_LIBDIR})
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR})
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_BINDIR})
set(CMAKE_INSTALL_RPATH $ORIGIN/${bin_to_lib})

# vspimport_library(TARGET NAME) - makes TARGET a library for hosts, vspimport::NAME, which exports
# nothing but what its headers declare.
function(vspimport_library target name)
    set(exports ${PROJECT_SOURCE_DIR}/cmake/exports.map)
    add_library(vspimport::${name} ALIAS ${target})
    set_target_properties(${target} PROPERTIES EXPORT_NAME ${name} OUTPUT_NAME ${name}
        VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}
        INSTALL_RPATH $ORIGIN LINK_DEPENDS ${exports})
    target_link_options(${target} PRIVATE -Wl,--version-script=${exports})
    install(TARGETS ${target} EXPORT vspimport-targets
        LIBRARY COMPONENT runtime NAMELINK_COMPONENT development)
endfunction()

# vspimport_part(TARGET) - makes TARGET a library that the programs here load.
function(vspimport_part target)
    set_target_properties(${target} PROPERTIES INSTALL_RPATH $ORIGIN:$ORIGIN/..
        LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/${VSPIMPORT_PARTS})
    install(TARGETS ${target} DESTINATION ${VSPIMPORT_PARTS} COMPONENT program)
endfunction()
