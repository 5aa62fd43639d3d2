#!/bin/sh
# Makes a source archive of the Python module and a wheel of it, installs the wheel in a virtual
# environment that has nothing else, and runs the module's tests against it. `scripts/test.sh` comes
# first: the tests ask the tool, too.
set -eu
cd "$(dirname "$0")/.."

scripts/install-deps.sh python
python=/usr/bin/python3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

PYTHONPATH=python $python -B -c "import kdx_build; kdx_build.build_sdist('$work')"
$python -m pip --quiet wheel --no-index --no-build-isolation --no-deps -w "$work" "$work"/kdx-*.tar.gz
$python -m venv "$work/venv"
"$work/venv/bin/pip" --quiet install --no-index "$work"/kdx-*.whl
cd "$work"
venv/bin/python -c 'import kdx; print(kdx.__file__)'
KDX_TOOL="$OLDPWD/build/dev/cli/kdx" PYTHONPATH=/usr/lib/python3/dist-packages \
    venv/bin/python -B -m pytest -q -p no:cacheprovider "$OLDPWD/python/tests"
