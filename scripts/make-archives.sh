#!/bin/sh
# Makes, of what is committed, the source archive, a tarball for Linux and a zip for 64-bit Windows:
# the library shared and static, and a kdx that needs no other library. Whenever and wherever they are
# made, with the same compilers they are the same byte for byte.
#
#   scripts/make-archives.sh [DIR]     where they go, and are built; build/archives
set -eu
cd "$(dirname "$0")/.."
scripts/install-deps.sh archives

folder=$(realpath -m "${1-build/archives}")
version=$(sed -n 's/^project(.* VERSION \([0-9.]*\) .*/\1/p' CMakeLists.txt)
source=$folder/kdx-$version
: "${SOURCE_DATE_EPOCH:=$(git log -1 --format=%ct)}"
export SOURCE_DATE_EPOCH
umask 022

# The static library first: its pkg-config file, for a static one alone, gives way to that for both.
build() {
    system=$1
    shift
    stage=kdx-$version-$system
    for kind in static shared; do
        tool=OFF shared=ON
        [ "$kind" = shared ] || { tool=ON shared=OFF; }
        cmake -S "$source" -B "$folder/$system-$kind" -G Ninja -DCMAKE_BUILD_TYPE=Release \
            -DBUILD_SHARED_LIBS=$shared -DKIV_BUILD_TOOL=$tool -DKIV_STATIC_TOOL=$tool "$@"
        cmake --build "$folder/$system-$kind" --parallel "$(nproc)"
        cmake --install "$folder/$system-$kind" --strip --prefix "$folder/$stage"
    done
}

# The licences of what is part of kdx, as the packages have them that it comes from.
addLicences() {
    licences=$folder/$stage/share/doc/KIVKDXParseUtilities/licences
    mkdir -p "$licences"
    for package in libcli11-dev nlohmann-json3-dev "$@"; do
        cp "/usr/share/doc/$package/copyright" "$licences/$package"
    done
}

packTar() {
    tar --sort=name --format=ustar --mtime="@$SOURCE_DATE_EPOCH" --owner=0 --group=0 --numeric-owner \
        -C "$folder" -c "$stage" | gzip -n >"$folder/$stage.tar.gz"
}

packZip() (
    cd "$folder"
    rm -f "$stage.zip"
    find "$stage" -exec touch --date="@$SOURCE_DATE_EPOCH" {} +
    find "$stage" | LC_ALL=C sort | TZ=UTC zip -q -X -@ "$stage.zip"
)

rm -rf "$folder"
mkdir -p "$folder"
git archive --format=tar --prefix="kdx-$version/" HEAD | gzip -n >"$source.tar.gz"
tar -x -C "$folder" -f "$source.tar.gz"

build linux-x86_64
addLicences libc6-dev libeditorconfig-dev libpcre2-dev
packTar
build windows-x86_64 -DCMAKE_TOOLCHAIN_FILE="$source/cmake/mingw-w64.cmake"
addLicences mingw-w64-common
packZip
(cd "$folder" && sha256sum ./*.tar.gz ./*.zip)
