#!/usr/bin/env bash
# bench_since.sh COMMIT [FILTER]: today's benchmarks with the library of an older commit beside today's,
# by default of 4, 16 and 64 vertices. The two run in turn; the least time of each counts.
set -euo pipefail
cd "$(dirname "$0")/.."
commit=$(git rev-parse --short "$1^{commit}")
filter=${2:-/(4|16|64)$}
work=build/since
flags="-std=c++17 -O3 -DNDEBUG -ffp-contract=off"

build() { # build SOURCES NAME: the libraries, and all benchmarks in one program
    cmake -S "$1" -B "$work/$2" -DCMAKE_BUILD_TYPE=Release -DCNTR_TESTS=OFF -DCNTR_TOOLS=OFF \
        -DCNTR_EXAMPLES=OFF -DCNTR_BENCH=OFF >/dev/null
    cmake --build "$work/$2" -j "$(nproc)" --target cntr >/dev/null
    local sources
    mapfile -t sources < <(ls bench/*_bench.cpp bench/support/*.cpp | grep -v edge_index_bench)
    # shellcheck disable=SC2086
    c++ $flags -DCNTR_EXAMPLE_DATA="\"$PWD/examples/data\"" -Ibench -I"$1/include" \
        -I"$1/foundation" "${sources[@]}" -o "$work/$2/all_bench" -L"$work/$2" -lcntr \
        -lqcfoundation -lbenchmark -lpthread -Wl,-rpath,"$PWD/$work/$2"
}

rm -rf "$work/source"
mkdir -p "$work/source"
git archive "$commit" | tar -x -C "$work/source"
build "$work/source" then
build . now
for round in 1 2 3; do
    for state in then now; do
        "$work/$state/all_bench" --benchmark_filter="$filter" --benchmark_min_time=0.01 \
            --benchmark_repetitions=3 --benchmark_out="$work/$state.$round.json" >/dev/null
    done
done
scripts/since_table.py "$commit" "$work"/{then,now}.[123].json
