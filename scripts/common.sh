# SPDX-License-Identifier: GPL-2.0-or-later
# shellcheck shell=bash
#
# What ./run and ./test share. Sourced with $root set to the project's folder.

build_packages=(
    g++ cmake ninja-build ccache pkg-config qtbase5-dev libavformat-dev libavcodec-dev libavutil-dev
    libswscale-dev libicu-dev libxml2-dev libseccomp-dev libsqlite3-dev libflatbuffers-dev
    flatbuffers-compiler qttools5-dev-tools libqt5svg5 ffmpeg dvdauthor
)
test_packages=(
    "${build_packages[@]}" libbluray-dev libudfread-dev genisoimage git procps clang clang-format
    clang-tidy libclang-rt-dev llvm qt6-base-dev doxygen python3-jsonschema chromium dpkg-dev
    debootstrap lintian desktop-file-utils appstream xvfb xauth fonts-dejavu-core
)

# What two builds have in common is compiled once.
export CCACHE_BASEDIR=${CCACHE_BASEDIR:-$root} CCACHE_NOHASHDIR=1

# Ctrl-C ends what is run first, and then the script, whatever the former makes of it.
trap 'echo >&2; exit 130' INT

fail() {
    echo "$0: $*" >&2
    exit 1
}

# progress TEXT LOG - reads lines such as "[12/300] …", keeps them and all others in LOG, and shows
# "TEXT [12/300]" on standard error: in place on a terminal, elsewhere every ten seconds.
progress() {
    local text=$1 line state='' said='' next=0
    trap '' INT # it ends with what it reads from
    while IFS= read -r line; do
        printf '%s\n' "$line"
        [[ $line =~ ^\[[0-9]+[/%][0-9]*\] ]] || continue
        state="$text ${BASH_REMATCH[0]}"
        if [ -t 2 ]; then
            printf '\r\033[K%s' "$state" >&2
        elif [ "$SECONDS" -ge "$next" ]; then
            next=$((SECONDS + 10)) said=$state
            echo "$state" >&2
        fi
    done >"$2"
    if [ "$state" != "$said" ]; then
        if [ -t 2 ]; then echo >&2; else echo "$state" >&2; fi
    fi
}

# show_failure LOG - what a tool said before it failed, without the steps that went well.
show_failure() {
    grep -v '^\[[0-9]*[/%]' "$1" | tail -n 60 >&2
}

# missing_packages NAME… - those that are not installed, one a line.
missing_packages() {
    printf '%s\n' "$@" | sort -u | comm -23 - <(
        dpkg-query -W -f '${Package} ${db:Status-Status}\n' "$@" 2>/dev/null \
            | sed -n 's/ installed$//p' | sort -u
    )
}

# install_packages NAME… - installs what is missing, as root or with sudo; else says how.
install_packages() {
    command -v dpkg-query >/dev/null || return 0 # not Debian: CMake says what is missing
    local missing as_root=() log=$root/build/install.log
    mkdir -p "$root/build"
    mapfile -t missing < <(missing_packages "$@")
    [ ${#missing[@]} -eq 0 ] && return 0
    if [ "$(id -u)" -ne 0 ]; then
        as_root=(sudo)
        if ! sudo -n true 2>/dev/null && ! { [ -t 0 ] && command -v sudo >/dev/null; }; then
            fail "packages are missing; this installs them:
sudo apt-get update && sudo apt-get install -y --no-install-recommends ${missing[*]}"
        fi
    fi
    echo "Installing ${missing[*]}" >&2
    # First what an earlier installation may have left half done. apt tells how far it is, in
    # percent, on a descriptor that sudo would close.
    # shellcheck disable=SC2016
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive sh -c '
        { dpkg --configure -a && apt-get update -qq \
            && apt-get install -y -qq --no-install-recommends -o DPkg::Lock::Timeout=120 \
                -o APT::Status-Fd=3 "$@"; } 3>&1 >&2' apt "${missing[@]}" 2>&1 </dev/null \
        | (trap '' INT && sed -u -E 's/^(dl|pm)status:[^:]*:([0-9]+)[.0-9]*:/[\2%] /') \
        | progress Installing "$log" \
        || { show_failure "$log"; fail "cannot install"; }
}

# build PRESET [TARGET…] - configures if need be and builds; says so only if there is work to do.
build() {
    local preset=$1 folder=$root/build/$1 log=$root/build/$1.log targets=()
    shift
    [ $# -gt 0 ] && targets=(--target "$@")
    # The presets' values are taken over when they are configured, not when they are built.
    if [ ! "$folder/build.ninja" -nt "$root/CMakePresets.json" ]; then
        echo "Configuring ($preset)" >&2
        { (cd "$root" && cmake --preset "$preset") >"$log" 2>&1 && touch "$folder/build.ninja"; } \
            || { show_failure "$log"; fail "cannot configure"; }
    fi
    NINJA_STATUS='[%f/%t] ' cmake --build "$folder" "${targets[@]}" 2>&1 \
        | progress "Building ($preset)" "$log" || { show_failure "$log"; fail "cannot build"; }
}
