# SPDX-License-Identifier: GPL-2.0-or-later
# shellcheck shell=bash
#
# What ./run and ./test share. Sourced with $root set to the project's folder.

build_packages=(
    g++ cmake ninja-build ccache pkg-config qtbase5-dev libavformat-dev libavcodec-dev libavutil-dev
    libswscale-dev libicu-dev libxml2-dev libseccomp-dev libflatbuffers-dev flatbuffers-compiler
    ffmpeg dvdauthor
)
test_packages=(
    "${build_packages[@]}" libbluray-dev libudfread-dev genisoimage git procps clang clang-format
    clang-tidy libclang-rt-dev llvm qt6-base-dev dpkg-dev debootstrap lintian
)

# What two builds have in common is compiled once.
export CCACHE_BASEDIR=${CCACHE_BASEDIR:-$root} CCACHE_NOHASHDIR=1

fail() {
    echo "$0: $*" >&2
    exit 1
}

# install_packages NAME… - installs what is missing, as root or with sudo; else says how.
install_packages() {
    command -v dpkg-query >/dev/null || return 0 # not Debian: CMake says what is missing
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' \
            || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        as_root=(sudo)
        if ! sudo -n true 2>/dev/null && ! { [ -t 0 ] && command -v sudo >/dev/null; }; then
            fail "packages are missing; as root, run: apt-get install -y ${missing[*]}"
        fi
    fi
    echo "Installing ${missing[*]}" >&2
    local log=$root/build/install.log
    mkdir -p "$root/build"
    "${as_root[@]}" apt-get update -qq >"$log" 2>&1 \
        && "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get install -y -qq --no-install-recommends "${missing[@]}" >>"$log" 2>&1 \
        || { cat "$log" >&2; fail "cannot install"; }
}

# build PRESET [TARGET…] - configures if need be and builds, quietly unless something fails.
build() {
    local preset=$1 folder=$root/build/$1 log=$root/build/$1.log
    shift
    mkdir -p "$root/build"
    if [ ! -e "$folder/build.ninja" ]; then
        echo "Configuring ($preset)" >&2
        (cd "$root" && cmake --preset "$preset") >"$log" 2>&1 || { cat "$log" >&2; fail "cannot configure"; }
        echo "Building ($preset)" >&2
    fi
    local targets=()
    [ $# -gt 0 ] && targets=(--target "$@")
    cmake --build "$folder" "${targets[@]}" >"$log" 2>&1 || { cat "$log" >&2; fail "cannot build"; }
}
