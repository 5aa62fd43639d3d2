#!/bin/sh
# Holds that a program built with an earlier release of the major version runs with this library: of
# what packaging/abi describes, nothing may be gone or changed.
#
#   scripts/check-abi.sh [LIBRARY]     with debugging information of types; built by default
#
# After a release, its own description is added:
#
#   abidw --headers-dir include/kiv --drop-private-types --exported-interfaces-only \
#       --no-comp-dir-path --no-corpus-path --no-show-locs \
#       --out-file packaging/abi/VERSION.abi LIBRARY
set -eu
cd "$(dirname "$0")/.."

# The presets leave types out of the debugging information, and without them every function differs.
build() {
    cmake -S . -B build/abi -G Ninja -DCMAKE_BUILD_TYPE=Debug -DKIV_BUILD_TOOL=OFF >/dev/null
    cmake --build build/abi --target KIVKDXParseUtilities --parallel "$(nproc)" >/dev/null
    echo build/abi/libKIVKDXParseUtilities.so
}

library=${1-$(build)}
for description in packaging/abi/*.abi; do
    echo "compared with $description"
    abidiff --no-added-syms "$description" "$library"
done
