# SPDX-License-Identifier: LGPL-2.1-or-later
# What all targets here are compiled with. All of it ends with this folder: a project that takes this
# one in as a part keeps its own ways.

set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
if(PROJECT_IS_TOP_LEVEL)
    set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
    if(NOT CMAKE_BUILD_TYPE)
        set(CMAKE_BUILD_TYPE Release)
    endif()
    find_program(CCACHE ccache)
    if(CCACHE)
        set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
    endif()
endif()

option(VSPIMPORT_ASSERTIONS "Keep assertions, those of the libraries included" OFF)
set(VSPIMPORT_SANITIZE "" CACHE STRING "Sanitizers, as -fsanitize takes them")
option(VSPIMPORT_FUZZ "Let fuzzers see which code runs; with clang" OFF)

add_compile_options(-Wall -Wextra)
# A symbol that is unique in the process would keep its library from being unloaded.
add_compile_options($<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)
add_link_options(-Wl,--no-undefined)
add_compile_definitions(QT_NO_CAST_FROM_BYTEARRAY QT_NO_URL_CAST_FROM_STRING)
if(VSPIMPORT_ASSERTIONS)
    add_compile_options(-UNDEBUG)
    add_compile_definitions(QT_FORCE_ASSERTS _GLIBCXX_ASSERTIONS)
endif()
if(VSPIMPORT_SANITIZE)
    add_compile_options(-fsanitize=${VSPIMPORT_SANITIZE} -fno-omit-frame-pointer
                        -fno-sanitize-recover=undefined -g1)
    add_link_options(-fsanitize=${VSPIMPORT_SANITIZE})
    add_compile_definitions(VSPIMPORT_SANITIZED)
endif()
if(VSPIMPORT_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()
