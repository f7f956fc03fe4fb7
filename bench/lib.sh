# SPDX-License-Identifier: GPL-2.0-or-later
# shellcheck shell=bash
#
# Timing for the scripts of this folder. Commands that are compared run in turn, A B A B …, so that a
# machine that changes its speed changes it for both; what counts is the median of the ratios.

rounds=${ROUNDS:-7}

seconds() { # COMMAND… - wall time of one run
    local start end
    start=$(date +%s.%N)
    "$@" >/dev/null 2>&1 || true
    end=$(date +%s.%N)
    echo "$start $end" | awk '{ printf "%.4f", $2 - $1 }'
}

median() { sort -n | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }

# compare NAME A B - prints the median times of the functions A and B and of the ratio A/B. A function
# prepare_A or prepare_B, where there is one, runs untimed before each round of its command.
compare() {
    local name=$1 a=$2 b=$3 i as=() bs=() ratios=()
    for ((i = 0; i <= rounds; ++i)); do
        local ta tb
        declare -F "prepare_$a" >/dev/null && "prepare_$a"
        ta=$(seconds "$a")
        declare -F "prepare_$b" >/dev/null && "prepare_$b"
        tb=$(seconds "$b")
        [ "$i" -eq 0 ] && continue # the first round only warms the caches
        as+=("$ta")
        bs+=("$tb")
        ratios+=("$(echo "$ta $tb" | awk '{ printf "%.3f", $1 / $2 }')")
    done
    printf '%-44s %8.3f s %8.3f s   x %.2f\n' "$name" \
        "$(printf '%s\n' "${as[@]}" | median)" "$(printf '%s\n' "${bs[@]}" | median)" \
        "$(printf '%s\n' "${ratios[@]}" | median)"
}
