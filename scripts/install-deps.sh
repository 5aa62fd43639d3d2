#!/bin/sh
# Installs with apt-get what this machine lacks, and nothing where it lacks nothing.
#
#   scripts/install-deps.sh            what building and testing need
#   scripts/install-deps.sh check      that, and what .ci/run needs besides
#   scripts/install-deps.sh bench      that of the first, and what scripts/bench.sh needs besides
#   scripts/install-deps.sh python     what building and testing the Python module need besides
#   scripts/install-deps.sh windows    that of the first, and what scripts/test-windows.sh needs besides
#   scripts/install-deps.sh editors    likewise the editors that the tests run
#   scripts/install-deps.sh platforms  likewise for scripts/test-all-platforms.sh
#   scripts/install-deps.sh packages   likewise for scripts/test-packages.sh and test-source.sh
#   scripts/install-deps.sh archives   likewise for scripts/make-archives.sh and test-archives.sh
#   scripts/install-deps.sh site       likewise for scripts/site.sh
set -eu

packages="g++ cmake ninja-build pkg-config python3 git \
    libgtest-dev libgmock-dev libcli11-dev nlohmann-json3-dev libeditorconfig-dev"
case "${1-}" in
    '') ;;
    check) packages="$packages clang clang-tidy clang-format gcovr strace valgrind abigail-tools" ;;
    bench) packages="$packages valgrind iso-codes libbenchmark-dev rapidjson-dev libsimdjson-dev \
        libpugixml-dev libexpat1-dev libtomlplusplus-dev libyaml-cpp-dev libinih-dev python3-yaml" ;;
    python) packages="python3-dev pybind11-dev python3-pytest python3-hypothesis mypy \
        python3-pip python3-venv python3-wheel python3-distributed" ;;
    windows) packages="$packages googletest g++-mingw-w64-x86-64-posix wine wine64" ;;
    editors)
        packages="$packages neovim vim vim-ale emacs-nox elpa-eglot"
        command -v npm >/dev/null || packages="$packages nodejs npm"
        ;;
    platforms) packages="$packages googletest qemu-user-static g++-s390x-linux-gnu g++-i686-linux-gnu" ;;
    packages) packages="$packages build-essential debhelper debootstrap dh-python lintian pybind11-dev \
        python3-dev" ;;
    archives) packages="$packages g++-mingw-w64-x86-64-posix libpcre2-dev wine wine64 zip unzip" ;;
    site)
        packages="$packages doxygen doxygen-awesome-css emscripten chromium"
        command -v npm >/dev/null || packages="$packages nodejs npm"
        ;;
    *)
        echo "usage: $0 [check | bench | python | windows | editors | platforms | packages | archives | site]" >&2
        exit 2
        ;;
esac

log=$(mktemp)
trap 'rm -f "$log"' EXIT

fail() {
    echo "$0: $*" >&2
    exit 1
}

isInstalled() {
    dpkg-query -W -f '${db:Status-Status}\n' "$1" 2>/dev/null | grep -qx installed
}

missing() {
    for package in "$@"; do
        isInstalled "$package" || printf '%s ' "$package"
    done
}

asRoot() {
    if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

aptGet() {
    asRoot env DEBIAN_FRONTEND=noninteractive apt-get -qq -y -o DPkg::Lock::Timeout=300 "$@" \
        >"$log" 2>&1 </dev/null && return
    cat "$log" >&2
    fail "apt-get $1 failed"
}

# Clang's sanitizer and fuzzing runtime is a package of its own, named after clang's version.
clangRuntime() {
    version=$(dpkg-query -W -f '${Version}' clang | sed 's/^[0-9]*://; s/[^0-9].*//')
    runtime="libclang-rt-$version-dev"
    if apt-cache show "$runtime" >/dev/null 2>&1; then echo "$runtime"; fi
}

install() {
    wanted=$(missing "$@")
    [ -n "$wanted" ] || return 0
    command -v apt-get >/dev/null || fail "please install what corresponds to: $wanted"
    [ "$(id -u)" -eq 0 ] || command -v sudo >/dev/null ||
        fail "please run as root, or install: $wanted"
    echo "Installing ${wanted% }"
    aptGet update
    # shellcheck disable=SC2086  # a list of words
    aptGet install --no-install-recommends $wanted
}

# shellcheck disable=SC2086  # a list of words
install $packages
if [ "${1-}" = check ]; then
    # shellcheck disable=SC2046  # one word or none
    install $(clangRuntime)
fi
