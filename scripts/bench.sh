#!/bin/sh
# Measures the library next to other parsers and prints one table. Installs what is missing.
#
#   scripts/bench.sh           everything
#   scripts/bench.sh --quick   the library, its floors and RapidJSON: under a minute
#
# BENCH_SIZE sets the size of each corpus in MB, BENCH_ROUNDS the number of rounds, BENCH_CORE the
# processor core, BENCH_STATISTIC what is taken of the rounds (median or best).
set -eu
cd "$(dirname "$0")/.."

size=${BENCH_SIZE:-10}
rounds=${BENCH_ROUNDS:-7}
core=${BENCH_CORE:-1}
statistic=${BENCH_STATISTIC:-median}
corpora=build/corpora
results=build/bench-results

install_packages() {
    missing=
    for package in g++ cmake ninja-build python3 iso-codes libbenchmark-dev rapidjson-dev; do
        dpkg -s "$package" >/dev/null 2>&1 || missing="$missing $package"
    done
    # shellcheck disable=SC2086  # one word for each package
    [ -z "$missing" ] || { apt-get update && apt-get install -y --no-install-recommends $missing; }
}

build() {
    cmake --preset bench >/dev/null
    cmake --build --preset bench | grep -v '^\[' || true
    [ -e "$corpora/codes-$size.counts" ] || python3 bench/make_corpora.py "$corpora" --size "$size"
}

# run OUTPUT ARGUMENT...
run() {
    output=$1
    shift
    mkdir -p "$results"
    taskset -c "$core" build/bench/bench/kdx_bench "$corpora" "$@" \
        --benchmark_enable_random_interleaving --benchmark_repetitions="$rounds" \
        --benchmark_out="$results/$output" --benchmark_out_format=json >/dev/null
}

quick() {
    run quick.json "packages-$size" "codes-$size" --benchmark_filter='/(KDX|floor|RapidJSON)/'
    python3 bench/table.py --statistic "$statistic" "$results/quick.json"
}

install_packages
build
case "${1:-}" in
    --quick) quick ;;
    *)
        sed -n '2,8s/^# \{0,1\}//p' "$0" >&2
        exit 2
        ;;
esac
