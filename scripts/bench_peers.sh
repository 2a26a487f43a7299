#!/usr/bin/env bash
# bench_peers.sh [ARGUMENT...]: our benchmarks beside other libraries, in one run, after their answers
# were compared. Writes docs/performance.md and bench/results; arguments go to the benchmark.
set -euo pipefail
cd "$(dirname "$0")/.."
flags="-O3 -march=x86-64-v2 -DNDEBUG"
boost=$PWD/build/boost

# Boost 1.81 cannot be installed beside the default Boost that CGAL's package asks for.
if [[ ! -d $boost/usr ]]; then
    folder=$(mktemp -d)
    trap 'rm -rf "$folder"' EXIT
    (cd "$folder" &&
        apt-get download -qq libboost1.81-dev libboost-serialization1.81-dev \
            libboost-serialization1.81.0 &&
        for package in *.deb; do dpkg -x "$package" unpacked; done)
    mkdir -p build
    mv "$folder/unpacked" "$boost"
fi

cmake --preset release -B build/peers -DCMAKE_CXX_FLAGS_RELEASE="$flags" -DCNTR_TESTS=OFF \
    -DCNTR_TOOLS=OFF -DCNTR_EXAMPLES=OFF -DCNTR_BENCH=ON -DCNTR_PEERS=ON \
    -DCNTR_BOOST_PREFIX="$boost/usr" >/dev/null
cmake --build build/peers --target peers memory_report

build/peers/bench/peers/peers --check
# A steady allocator: memory is not given back to the system between two rounds.
export MALLOC_TRIM_THRESHOLD_=1000000000 MALLOC_TOP_PAD_=64000000 MALLOC_MMAP_MAX_=0
build/peers/bench/peers/peers --benchmark_filter='/[0-9]*0$' --benchmark_min_time=0.05 \
    --benchmark_repetitions=3 --benchmark_out=build/peers/run.json "$@"
build/peers/bench/memory_report >build/peers/memory.md
scripts/bench_table.py build/peers/run.json --flags "$flags" --memory build/peers/memory.md
