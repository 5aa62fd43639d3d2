#!/bin/bash
# Builds the Debian packages from what is committed, has lintian read them, and uses them as a user
# would in a minimal Debian of their own: installed, tried, and removed again without a trace.
#
#   scripts/test-packages.sh [DIR]     where packages and the minimal Debian go; build/packages
#
# Needs root for the minimal Debian.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh packages

folder=$(realpath -m "${1-build/packages}")
version=$(dpkg-parsechangelog --show-field Version | sed 's/-[^-]*$//')
name=kivkdxparseutilities
root=$folder/debian

buildPackages() {
    rm -rf "$folder/source" && mkdir -p "$folder/source"
    git archive --prefix="$name-$version/" HEAD | tar -x -C "$folder/source"
    cd "$folder/source"
    git -C "$OLDPWD" archive --prefix="$name-$version/" HEAD ':!debian' |
        gzip -n >"${name}_$version.orig.tar.gz"
    cd "$name-$version"
    dpkg-buildpackage --build=full --no-sign
    lintian --fail-on error,warning --display-info "../${name}_$version"-*.changes
}

inDebian() {
    chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 \
        DEBIAN_FRONTEND=noninteractive "$@"
}

makeDebian() {
    rm -rf "$root"
    debootstrap --variant=minbase bookworm "$root" >"$folder/debootstrap.log"
    mkdir "$root/packages" "$root/try"
    cp "$folder"/source/*.deb "$root/packages"
    tar -x -C "$root/try" --strip-components=1 -f "$folder/source/${name}_$version.orig.tar.gz"
    cp -r debian "$root/try"
}

files() {
    inDebian find / -xdev -ipath '*kdx*' -not -path '/packages*' -not -path '/try*' \
        -not -path '/var/lib/apt/*' -not -path '/var/cache/*' -not -path '/proc/*'
}

usePackages() {
    inDebian apt-get -qq update
    inDebian sh -c 'apt-get -qq -y install --no-install-recommends /packages/*.deb \
        cmake g++ ninja-build pkg-config' >"$folder/install.log"
    for test in debian/tests/tool debian/tests/module debian/tests/consumer; do
        inDebian sh -c "cd /try && mkdir -p /tmp/try && AUTOPKGTEST_TMP=/tmp/try $test"
    done
    inDebian sh -c 'for package in /packages/*.deb; do dpkg-deb --field "$package" Package; done |
        xargs apt-get -qq -y purge' >"$folder/purge.log"
    inDebian rm -rf /tmp/try
    left=$(files)
    [ -z "$left" ] || { printf 'left behind:\n%s\n' "$left" >&2; exit 1; }
}

(buildPackages)
makeDebian
usePackages
echo "The packages in $folder/source are built, and were installed, used and removed."
