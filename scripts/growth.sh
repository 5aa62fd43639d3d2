#!/bin/sh
# Measures that no call costs more than linear time: counts the instructions of each family of
# input in bench/growth at some size and at twice that size, and prints a table. Fails when twice
# the input (or output, where that is what grows) costs more than 2.2 times.
#
#   scripts/growth.sh [DIVISOR [PATTERN]]
#
# DIVISOR makes all sizes smaller: 1 takes an hour, the default, 16, some minutes. PATTERN selects
# families, as a regular expression. The families are shared out over the processors.
set -eu
cd "$(dirname "$0")/.."
growth=build/dev/bench/growth/growth

# Prints the instructions of a family at a size, and the bytes that they should follow.
measure() {
    log=$(mktemp)
    bytes=$(valgrind --tool=callgrind --toggle-collect=measured --callgrind-out-file=/dev/null \
        "$growth" "$1" "$2" 2>"$log") || { cat "$log" >&2; exit 1; }
    sed -n "s/.*Collected : \([0-9]*\).*/\1 $bytes/p" "$log"
    rm -f "$log"
}

# compare FAMILY SIZE: prints the row of a family
compare() {
    once=$(measure "$1" "$2")
    twice=$(measure "$1" $((2 * $2)))
    echo "$1 $2 $once $twice" | awk '{
        ratio = $5 / $3 / ($6 / $4) * 2
        verdict = ratio <= 2.2 ? "" : "  more than linear"
        printf "%-36s %10d %14d %14d %12.1f %6.2f%s\n", $1, $2, $3, $5, $5 / $6, ratio, verdict
        exit ratio > 2.2
    }'
}

if [ "${1-}" = --family ]; then
    compare "$2" "$3"
    exit
fi

divisor=${1:-16}
pattern=${2:-.}
cmake --preset dev >/dev/null
cmake --build --preset dev --target growth >/dev/null
families=$("$growth" | grep -E "$pattern") || { echo "no family matches $pattern" >&2; exit 2; }
printf '%-36s %10s %14s %14s %12s %6s\n' family size instructions 'twice' per-byte ratio
echo "$families" | awk -v divisor="$divisor" '{ print $1, int($2 / divisor) }' |
    xargs -L 1 -P "$(nproc)" scripts/growth.sh --family
