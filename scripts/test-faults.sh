#!/bin/sh
# Fails every system call of every command that writes, ends kdx at each one and at any moment: files
# stay whole. Takes some minutes; the tests kdxFault and kdxInPlace do a little of it.
set -eu
cd "$(dirname "$0")/.."

scripts/install-deps.sh check
cmake --preset dev >/dev/null
cmake --build --preset dev --target kdx >/dev/null
export KIV_THOROUGH=1
python3 tests/cli/FaultTest.py build/dev/cli/kdx
python3 tests/cli/InPlaceTest.py build/dev/cli/kdx InPlace.test_ended_at_any_moment
