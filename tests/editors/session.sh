#!/bin/sh
# Plays a session with a broken text and compares what the editor shows, or its first lines. The
# editor is set up with the block of a language in docs/editors.md.
#
#   session.sh KDX SESSION LANGUAGE [LINES]
set -eu
tests=$(cd "$(dirname "$0")" && pwd)
editors=$(cd "$tests/../../editors" && pwd)
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cp "$tests/broken.kdx" "$folder"
sed -n "/^\`\`\`$3\$/,/^\`\`\`\$/p" "$tests/../../docs/editors.md" |
    sed "/^\`\`\`/d; s|~/kdx/editors|$editors|" >"$folder/configuration"
PATH=$(dirname "$1"):$PATH timeout 60 "$tests/$2" "$folder/configuration" "$folder/broken.kdx" \
    >"$folder/shown" </dev/null || true
head -n "${4-100}" "$tests/expected.txt" | diff -u - "$folder/shown"
