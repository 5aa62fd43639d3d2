#!/bin/sh
# Makes the site in build/site: the documents, the API, the manual, and the page to try KDX on.
# Stops at a warning of doxygen, and at a link that leads nowhere.
set -eu
cd "$(dirname "$0")/.."

scripts/install-deps.sh site
cmake --preset release
cmake --build --preset release --target kdx --parallel "$(nproc)"

site=build/site
pages=build/site-pages
rm -rf "$site" "$pages"
mkdir -p "$site" "$pages"
python3 site/pages.py "$pages" build/release/cli/kdx

KDX_SITE=$site KDX_PAGES=$pages KDX_AWESOME=/usr/share/doxygen-awesome-css \
    KDX_VERSION=$(build/release/cli/kdx --version | cut -d' ' -f2) doxygen site/Doxyfile
python3 site/check_links.py "$site"
