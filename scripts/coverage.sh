#!/bin/sh
# Runs every test with coverage counters, prints what the library's lines and branches were reached,
# and fails below the limits: every line, and 94 % of the branches. What is left of these are the
# compiler's own, for exceptions of substr() and of lists, which no input reaches.
#
# Not counted: assertions, branches that only an exception from below takes (a failed allocation,
# mostly), and those that the compiler makes of what no program can reach.
set -eu
cd "$(dirname "$0")/.."

cmake --preset coverage >/dev/null
cmake --build --preset coverage --parallel "$(nproc)"
find build/coverage -name '*.gcda' -delete
# Not the builds of other projects with the library, which reach nothing more, nor the list of exported
# names, which holds for an optimised build.
ctest --preset coverage --exclude-regex '^(consumer|exports)' --quiet --output-on-failure
gcovr --root . --object-directory build/coverage --filter src/ --filter include/ \
    --exclude-throw-branches --exclude-unreachable-branches \
    --print-summary --fail-under-line 100 --fail-under-branch 94 \
    --txt build/coverage/coverage.txt --html-details build/coverage/coverage.html || status=$?
cat build/coverage/coverage.txt
exit "${status:-0}"
