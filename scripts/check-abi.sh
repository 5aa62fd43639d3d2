#!/bin/sh
# Holds that a program built with an earlier release of the major version runs with this library: of
# what packaging/abi describes, nothing may be gone or changed.
#
#   scripts/check-abi.sh [LIBRARY]     with debugging information; that of the preset dev by default
#
# After a release, its own description is added:
#
#   abidw --headers-dir include/kiv --drop-private-types --exported-interfaces-only \
#       --no-comp-dir-path --no-corpus-path --no-show-locs \
#       --out-file packaging/abi/VERSION.abi LIBRARY
set -eu
cd "$(dirname "$0")/.."
library=${1-build/dev/libKIVKDXParseUtilities.so}
for description in packaging/abi/*.abi; do
    echo "compared with $description"
    abidiff --no-added-syms "$description" "$library"
done
