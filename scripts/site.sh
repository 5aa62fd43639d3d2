#!/bin/sh
# Makes the site in build/site: the documents, the API, the manual, and the page to try KDX on, which
# a browser tests. Stops at a warning of doxygen, and at a link that leads nowhere.
#
#   scripts/site.sh [PRESET]    of the build of kdx; release where none is named
set -eu
cd "$(dirname "$0")/.."

preset=${1:-release}
scripts/install-deps.sh site
scripts/wasm.sh
cmake --preset "$preset"
cmake --build --preset "$preset" --target kdx --parallel "$(nproc)"

kdx=build/$preset/cli/kdx
site=build/site
pages=build/site-pages
rm -rf "$site" "$pages"
mkdir -p "$site" "$pages"
python3 site/pages.py "$pages" "$kdx"

KDX_SITE=$site KDX_PAGES=$pages KDX_AWESOME=/usr/share/doxygen-awesome-css \
    KDX_VERSION=$("$kdx" --version | cut -d' ' -f2) doxygen site/Doxyfile
mkdir -p "$site/try/kdx" "$site/try/examples"
cp site/try/*.* "$site/try"
cp build/wasm/kdx-wasm/kdx.js build/wasm/kdx-wasm/kdx.wasm build/wasm/kdx-wasm/functions.js "$site/try/kdx"
cp examples/*.kdx site/try/examples/*.kdx "$site/try/examples"
python3 site/check_links.py "$site"
tests/site/run "$site"
