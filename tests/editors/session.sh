#!/bin/sh
# Plays a session with a broken text and compares what the editor shows: session.sh KDX SESSION
set -eu
tests=$(cd "$(dirname "$0")" && pwd)
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cp "$tests/broken.kdx" "$folder"
timeout 60 "$tests/$2" "$1" "$folder/broken.kdx" >"$folder/shown" </dev/null || true
diff -u "$tests/expected.txt" "$folder/shown"
