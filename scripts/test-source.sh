#!/bin/sh
# Holds of the source archive that it is complete, and fit for Debian, without building all of it: the
# static library is built of it alone and installed, and a program finds that by CMake and by
# pkg-config; lintian reads the Debian source package. `scripts/test.sh` comes first: what the library
# that it built exports is compared with the list of the package.
set -eu
cd "$(dirname "$0")/.."
scripts/install-deps.sh
scripts/install-deps.sh packages

library=$PWD/build/dev/libKIVKDXParseUtilities.so
folder=$PWD/build/source
name=kivkdxparseutilities
version=$(dpkg-parsechangelog --show-field Version | sed 's/-[^-]*$//')
tree=$folder/$name-$version

build() {
    cmake -S "$1" -B "$folder/$2" -G Ninja -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=OFF "$3"
    cmake --build "$folder/$2" --parallel "$(nproc)"
}

rm -rf "$folder" && mkdir -p "$folder"
git archive --prefix="$name-$version/" HEAD ':!debian' | gzip -n >"$folder/${name}_$version.orig.tar.gz"
tar -x -C "$folder" -f "$folder/${name}_$version.orig.tar.gz"

build "$tree" library -DKIV_BUILD_TOOL=OFF
cmake --install "$folder/library" --prefix "$folder/installed"
for way in find_package pkg_config; do
    CMAKE_PREFIX_PATH=$folder/installed build "$tree/tests/consumer" $way -DWAY=$way
    "$folder/$way/consumer"
done

git archive --prefix="$name-$version/" HEAD debian | tar -x -C "$folder"
cd "$tree"
dpkg-source --build .
lintian --fail-on error,warning "$folder"/*.dsc
dpkg-gensymbols -c4 -plib${name}1 -v"$version" -e"$library" -Idebian/lib${name}1.symbols \
    -O"$folder/symbols"
