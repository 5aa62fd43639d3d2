#!/bin/sh
# Builds the library as a 64-bit Windows DLL, kdx and the tests, and runs the tests under Wine.
set -eu
cd "$(dirname "$0")/.."

scripts/install-deps.sh windows
cmake --preset mingw
cmake --build --preset mingw --parallel "$(nproc)"
# At times Wine does not find its own programs while it makes their folder.
scripts/wine-run wineboot --init || scripts/wine-run wineboot --init
ctest --preset mingw
scripts/wine-run build/mingw/bin/kivTests.exe --gtest_brief=1
