#!/bin/sh
# Measures the library next to other parsers, and prints tables. Installs what is missing.
#
#   scripts/bench.sh                 everything below but --quick, and draws the chart
#   scripts/bench.sh --quick         the library, its floors and RapidJSON: half a minute
#   scripts/bench.sh --all           the same with every other parser
#   scripts/bench.sh --memory        peak heap of the conversions
#   scripts/bench.sh --growth        1 MB against 100 MB, one level against 1,000, an edit in 100 MB
#   scripts/bench.sh --instructions  instructions per parameter of each task
#
# BENCH_SIZE sets the size of each corpus in MB, BENCH_ROUNDS the number of rounds, BENCH_CORE the
# processor core, BENCH_STATISTIC what is taken of the rounds (median or best).
set -eu
cd "$(dirname "$0")/.."

size=${BENCH_SIZE:-10}
rounds=${BENCH_ROUNDS:-7}
core=${BENCH_CORE:-$(($(nproc) - 1))}
statistic=${BENCH_STATISTIC:-median}
corpora=build/corpora
results=build/bench-results
programs=build/bench/bench

build() {
    cmake --preset bench >/dev/null
    cmake --build --preset bench >build/bench-build.log || { cat build/bench-build.log; exit 1; }
    mkdir -p "$results"
    make_corpora "$size"
}

# make_corpora SIZE OPTION...
make_corpora() {
    made="$corpora/made-$(echo "$*" | tr -d ' ')"
    [ -e "$made" ] || { python3 bench/make_corpora.py "$corpora" --size "$@" && touch "$made"; }
}

# run NAME FILTER CORPUS...: in every round all contestants in turn, in a process of its own
run() {
    name=$1
    filter=$2
    shift 2
    rm -f "$results/$name"-*.json
    for round in $(seq -w "$rounds"); do
        taskset -c "$core" "$programs/kdx_bench" "$corpora" "$@" --benchmark_filter="$filter" \
            --benchmark_out="$results/$name-$round.json" --benchmark_out_format=json \
            >"$results/log" 2>&1 || { cat "$results/log"; exit 1; }
    done
}

table() {
    python3 bench/table.py --statistic "$statistic" "$@"
}

quick() {
    run quick '/(KDX|floor|RapidJSON|indentKDX)/' "packages-$size" "codes-$size"
    table "$results/quick"
}

all() {
    run all . "packages-$size" "codes-$size"
    table "$results/all"
}

memory() {
    "$programs/memory" "$corpora" "packages-$size" "codes-$size"
}

growth() {
    make_corpora 1 --levels
    make_corpora 100 --formats
    run growth '/(KDX|floor)/.*-(1|100)/' packages-1 packages-100 codes-1 codes-100
    run levels 'events/KDX' levels-1 levels-1000
    run edit '^edit/' packages-100 codes-100
    table --growth "$results/growth" --levels "$results/levels" --edit "$results/edit"
}

instructions() {
    make_corpora 1 --levels
    echo "| instructions per parameter | packages | codes |"
    echo "| -------------------------- | -------: | ----: |"
    for task in events read document text-to-map lines-to-map map-to-text re-indent format; do
        packages=$(count packages-1 "$task")
        codes=$(count codes-1 "$task")
        printf '| %-26s | %8s | %5s |\n' "$task" "$packages" "$codes"
    done
}

# count CORPUS TASK: what the library needs for each parameter
count() {
    valgrind --tool=callgrind --collect-atstart=no --callgrind-out-file="$results/$2-$1.callgrind" \
        "$programs/one_task" "$corpora" "$1" "$2" KDX >"$results/parameters" 2>"$results/log" ||
        { cat "$results/log" >&2; exit 1; }
    sed -n 's/.*Collected : //p' "$results/log" | tail -n 1 |
        { read -r total; echo $((total / $(cat "$results/parameters"))); }
}

case "${1:-everything}" in
    --quick) tasks=quick ;;
    --all) tasks=all ;;
    --memory) tasks=memory ;;
    --growth) tasks=growth ;;
    --instructions) tasks=instructions ;;
    everything) tasks="all memory growth instructions" ;;
    *)
        sed -n '2,13s/^# \{0,1\}//p' scripts/bench.sh >&2
        exit 2
        ;;
esac

scripts/install-deps.sh bench
build
for task in $tasks; do
    "$task"
    echo
done
if [ "$tasks" != "${tasks#all}" ]; then
    python3 bench/chart.py "$results/all" docs/performance.svg
fi
