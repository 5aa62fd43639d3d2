#!/bin/sh
# Runs every fuzz target, one after the other. An input that breaks a law, crashes or hangs ends the
# script, and lies in build/fuzz/findings.
#
#   scripts/fuzz.sh SECONDS [TARGET...]    for each target
#   scripts/fuzz.sh minimise               keeps in fuzz/corpus what reaches something new, and
#                                          found-*, the inputs of faults that were mended
set -eu
cd "$(dirname "$0")/.."
[ $# -gt 0 ] || { echo "usage: $0 SECONDS [TARGET...] | minimise" >&2; exit 2; }
what=$1
shift

cmake --preset fuzz >/dev/null
cmake --build --preset fuzz --parallel "$(nproc)"
mkdir -p build/fuzz/findings
[ $# -gt 0 ] || set -- build check classify document extract format indent path read reader search serve \
    walk write

fuzz() {
    mkdir -p "build/fuzz/grown/$1" "fuzz/corpus/$1"
    "build/fuzz/fuzz/fuzz_$1" -max_total_time="$what" -dict=fuzz/kdx.dict -max_len=1024 -timeout=10 \
        -print_final_stats=1 -verbosity=0 -artifact_prefix="build/fuzz/findings/$1-" \
        "build/fuzz/grown/$1" "fuzz/corpus/$1"
}

minimise() {
    mkdir -p "build/fuzz/least/$1"
    rm -f "build/fuzz/least/$1"/*
    "build/fuzz/fuzz/fuzz_$1" -merge=1 -verbosity=0 -max_len=256 "build/fuzz/least/$1" "fuzz/corpus/$1" \
        "build/fuzz/grown/$1" 2>/dev/null
    find "fuzz/corpus/$1" -type f ! -name 'found-*' -delete
    cp "build/fuzz/least/$1"/* "fuzz/corpus/$1"
}

for target in "$@"; do
    echo "== $target"
    if [ "$what" = minimise ]; then minimise "$target"; else fuzz "$target"; fi
done
