#!/bin/sh
# Takes real text through the library: this machine's package database, written as KDX, is checked,
# read into a map, changed, written back and read again. Installs what is missing and builds first.
set -eu
cd "$(dirname "$0")/.."

work=build/demo
log=$work/build.log
mkdir -p "$work"

quietly() {
    "$@" >"$log" 2>&1 && return
    cat "$log" >&2
    exit 1
}

count() {
    grep -cE "$1" "$2" || true
}

# The objects and parameters of a map in JSON.
figures() {
    python3 -c '
import json, sys
objects = json.load(open(sys.argv[1]))
print(len(objects), "objects,", sum(map(len, objects.values())), "parameters")' "$1"
}

setValue() {
    python3 -c '
import json, sys
file, path, name, value = sys.argv[1:]
objects = json.load(open(file))
print(f"{name} of {path}: {objects[path][name]!r} becomes {value!r}")
objects[path][name] = value
json.dump(objects, open(file, "w"))' "$@"
}

scripts/install-deps.sh
echo "1. Build the library and kdx, which may take a minute"
quietly cmake --preset release
quietly cmake --build --preset release --parallel "$(nproc)"
kdx=build/release/cli/kdx

echo "2. Write the package database of this machine as KDX"
scripts/packages-to-kdx >"$work/packages.kdx"
echo "   $(wc -l <"$work/packages.kdx") lines, $(wc -c <"$work/packages.kdx") bytes; it begins"
head -n 3 "$work/packages.kdx" | sed 's/^/     /'

echo "3. kdx check: look for errors"
"$kdx" check "$work/packages.kdx"
echo "   none"

echo "4. kdx map: read it into a map"
"$kdx" map "$work/packages.kdx" >"$work/map.json"
echo "   $(figures "$work/map.json")"

echo "5. Change a parameter in the map"
cp "$work/map.json" "$work/changed.json"
echo "   $(setValue "$work/changed.json" /Package:dpkg Status 'hold ok installed')"

echo "6. kdx write: write the map as KDX"
"$kdx" write "$work/changed.json" >"$work/changed.kdx"
echo "   $(wc -l <"$work/changed.kdx") lines, $(wc -c <"$work/changed.kdx") bytes; of the first map"
"$kdx" write "$work/map.json" | diff - "$work/changed.kdx" | sed -n 's/^[<>]/   &/p'

echo "7. Read it again and compare"
"$kdx" map "$work/changed.kdx" >"$work/again.json"
echo "   $(figures "$work/again.json")"
python3 -c '
import json, sys
written, read = (json.load(open(file)) for file in sys.argv[1:])
sys.exit(0 if written == read else "   The map came back changed.")' \
    "$work/changed.json" "$work/again.json"
echo "   the same map, the change included"
