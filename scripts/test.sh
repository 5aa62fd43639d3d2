#!/bin/sh
# Installs what is missing, builds everything with warnings as errors, and runs every test.
set -eu
cd "$(dirname "$0")/.."

scripts/install-deps.sh
scripts/install-deps.sh python
# Debian's Python has what was installed; another one may come first in the path.
cmake --preset dev -D KIV_BUILD_PYTHON=ON -D Python_EXECUTABLE=/usr/bin/python3
cmake --build --preset dev --parallel "$(nproc)"
ctest --preset dev
