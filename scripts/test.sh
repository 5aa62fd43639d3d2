#!/bin/sh
# Installs what is missing, builds everything with warnings as errors, and runs every test.
set -eu
cd "$(dirname "$0")/.."

scripts/install-deps.sh
cmake --preset dev
cmake --build --preset dev --parallel "$(nproc)"
ctest --preset dev
