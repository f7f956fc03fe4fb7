# SPDX-License-Identifier: LGPL-2.1-or-later
#
# The Qt that everything here is built with, and that hosts have to be built with.

set(oldest_qt5 5.15)
set(oldest_qt6 6.4)
if(NOT VSPIMPORT_QT)
    find_package(Qt5 ${oldest_qt5} QUIET COMPONENTS Core Gui)
    set(VSPIMPORT_QT 6)
    if(Qt5_FOUND)
        set(VSPIMPORT_QT 5)
    endif()
endif()
set(VSPIMPORT_QT ${VSPIMPORT_QT} CACHE STRING "Major version of Qt: 5 where it is there, else 6")
set_property(CACHE VSPIMPORT_QT PROPERTY STRINGS 5 6)

if(NOT DEFINED oldest_qt${VSPIMPORT_QT})
    message(FATAL_ERROR "VSPIMPORT_QT is 5 or 6, not ${VSPIMPORT_QT}")
endif()
set(VSPIMPORT_OLDEST_QT ${oldest_qt${VSPIMPORT_QT}})
find_package(Qt${VSPIMPORT_QT} ${VSPIMPORT_OLDEST_QT} REQUIRED COMPONENTS Core Gui)
