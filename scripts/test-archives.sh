#!/bin/bash
# Makes the archives twice, in two folders, holds that they are the same byte for byte, and uses them
# as a user would: unpacked in an empty folder, kdx run, and a consumer built in every way.
#
#   scripts/test-archives.sh [DIR]     where all of this happens; build/archives-test
set -euo pipefail
cd "$(dirname "$0")/.."

folder=$(realpath -m "${1-build/archives-test}")
wineRun=$PWD/scripts/wine-run
scripts/make-archives.sh "$folder/first"
scripts/make-archives.sh "$folder/in/another"
for archive in "$folder"/first/*.tar.gz "$folder"/first/*.zip; do
    cmp "$archive" "$folder/in/another/${archive##*/}"
done

user=$folder/user
rm -rf "$user"
mkdir "$user"
cd "$user"
for archive in "$folder"/first/*.tar.gz; do tar -x -f "$archive"; done
unzip -q "$folder"/first/*.zip
linux=$(echo "$PWD"/kdx-*-linux-x86_64)
windows=$(echo "$PWD"/kdx-*-windows-x86_64)
tree=${linux%-linux-x86_64}
sourceArchive=$folder/first/${tree##*/}.tar.gz

# build NAME OPTION...: builds the consumer as NAME.
build() {
    cmake -S "$tree/tests/consumer" -G Ninja -B "$@"
    cmake --build "$1" --parallel "$(nproc)"
}

# kdx runs where there is nothing else, not even a C library.
printf 'Sample:s1\nGain=10\nEND\n' >"$linux/text.kdx"
unshare --map-root-user chroot "$linux" /bin/kdx fmt -i /text.kdx
unshare --map-root-user chroot "$linux" /bin/kdx get /text.kdx /Sample:s1 Gain | grep -x 10
for file in share/man/man1/kdx.1 share/bash-completion/completions/kdx \
    share/doc/KIVKDXParseUtilities/{LICENSE,CHANGELOG.md,licences/libpcre2-dev}; do
    [ -s "$linux/$file" ] || { echo "missing: $file" >&2; exit 1; }
done

for shared in ON OFF; do
    build "linux-$shared" -D WAY=find_package -D BUILD_SHARED_LIBS=$shared -D CMAKE_PREFIX_PATH="$linux"
    "linux-$shared/consumer"
done
export PKG_CONFIG_PATH=$linux/lib/pkgconfig
build pkg_config -D WAY=pkg_config
pkg_config/consumer
# shellcheck disable=SC2046  # words
g++ -std=c++17 -static "$tree/tests/consumer/consumer.cpp" -o static \
    $(pkg-config --static --cflags --libs KIVKDXParseUtilities)
./static
build fetch_content -D WAY=fetch_content -D KIV_ARCHIVE="file://$sourceArchive"
fetch_content/consumer

"$wineRun" wineboot --init
cd "$windows/bin"
cp "$linux/text.kdx" .
WINEPATH='' "$wineRun" ./kdx.exe get text.kdx /Sample:s1 Gain | grep -x 10
for shared in ON OFF; do
    build "$user/windows-$shared" -D WAY=find_package -D BUILD_SHARED_LIBS=$shared \
        -D CMAKE_TOOLCHAIN_FILE="$tree/cmake/mingw-w64.cmake" \
        -D KIVKDXParseUtilities_DIR="$windows/lib/cmake/KIVKDXParseUtilities"
    "$wineRun" "$user/windows-$shared/consumer.exe"
done
echo "The archives in $folder/first are made twice alike, and were used."
