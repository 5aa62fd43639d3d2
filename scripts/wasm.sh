#!/bin/sh
# Builds kdx as WebAssembly, packs it for npm as build/wasm/kdx-wasm-VERSION.tgz, and tests the
# package where it is installed.
set -eu
cd "$(dirname "$0")/.."

scripts/install-deps.sh site
# Where Debian keeps the modules that its emscripten needs; a node from elsewhere does not look there.
export NODE_PATH=/usr/share/nodejs
emcmake cmake --preset wasm
cmake --build --preset wasm --parallel "$(nproc)"

rm -rf build/wasm/try build/wasm/*.tgz
mkdir build/wasm/try
cp packaging/wasm/test.js build/wasm/try
cd build/wasm/try
npm pack --silent --pack-destination .. ../kdx-wasm
npm install --silent --offline --no-audit ../kdx-wasm-*.tgz
node --test test.js
