#!/bin/sh
# Takes real text through the library with kdx: this machine's package database, written as KDX, is
# checked, looked at, read into a map, changed, written back and read again; then the examples are
# formatted, searched, divided and changed. Installs what is missing and builds first.
#
#   scripts/demo.sh [PRESET]    of the build; release where none is named
set -eu
cd "$(dirname "$0")/.."

preset=${1:-release}
work=build/demo
log=$work/build.log
mkdir -p "$work"

quietly() {
    "$@" >"$log" 2>&1 && return
    cat "$log" >&2
    exit 1
}

# Shows a command as it is typed in the folder of the demo, and what it prints. Status 1 says that
# something differs.
show() {
    printf '$ %s\n' "$1"
    (cd "$work" && sh -ec "$1" 2>&1) || [ $? -eq 1 ]
}

# The objects and parameters of a map in JSON.
figures() {
    python3 -c '
import json, sys
objects = json.load(open(sys.argv[1], encoding="utf-8"))
print(len(objects), "objects,", sum(map(len, objects.values())), "parameters")' "$1"
}

# Changes a value in such a map, laid out as kdx map does it.
setValue() {
    python3 -c '
import json, sys
file, path, name, value = sys.argv[1:]
objects = json.load(open(file, encoding="utf-8"))
print(f"{name} of {path}: {objects[path][name]!r} becomes {value!r}")
objects[path][name] = value
with open(file, "w", encoding="utf-8") as changed:
    changed.write(json.dumps(objects, indent=2, ensure_ascii=False) + "\n")' "$@"
}

scripts/install-deps.sh
echo "Building the library and kdx, which may take a minute"
quietly cmake --preset "$preset"
quietly cmake --build --preset "$preset" --target kdx --parallel "$(nproc)"
PATH=$PWD/build/$preset/cli:$PATH

scripts/packages-to-kdx >"$work/packages.kdx"
cp examples/*.kdx "$work"
sed 's/^ *//' examples/deployment.kdx >"$work/flat.kdx"
echo "The package database of this machine as KDX: $(wc -l <"$work/packages.kdx") lines," \
    "$(wc -c <"$work/packages.kdx") bytes"

show 'kdx check packages.kdx && echo no errors'
show 'kdx tree packages.kdx | sed -n "/^Package: dpkg /,/^└/p"'
show 'kdx map packages.kdx >map.json'
figures "$work/map.json"
setValue "$work/map.json" /Package:dpkg Status 'hold ok installed'
show 'kdx write map.json >changed.kdx'
show 'kdx get changed.kdx /Package:dpkg Status'
show 'kdx diff packages.kdx changed.kdx'
show 'kdx map changed.kdx >again.json'
figures "$work/again.json"
cmp "$work/map.json" "$work/again.json"
echo "the same map, the change included"

show 'kdx fmt --check flat.kdx'
show 'kdx fmt --diff flat.kdx | grep Region'
show 'kdx fmt -i flat.kdx && kdx fmt --check flat.kdx && kdx diff deployment.kdx flat.kdx'
show 'kdx find deployment.kdx --type Health'
show 'kdx split --actions night_run.kdx'
show 'kdx strip night_run.kdx | kdx get - /Sample:blank'

show 'kdx set -i night_run.kdx /Method:overnight/Step:measure Average=8'
show 'diff ../../examples/night_run.kdx night_run.kdx'
