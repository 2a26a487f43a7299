#!/usr/bin/env bash
# fuzz.sh PROGRAMS SECONDS: replays the corpus of every fuzz target, then searches from it. What
# the search finds stays in build/, a crashing input in build/fuzz_findings.
set -euo pipefail
programs=$1 seconds=$2

mkdir -p build/fuzz_findings
for source in fuzz/*_fuzz.cpp; do
    name=$(basename "$source" .cpp)
    corpus=fuzz/corpus/${name%_fuzz}
    found=build/fuzz_corpus/$name
    mkdir -p "$found"
    limits=(-timeout=20 -rss_limit_mb=2048 "-artifact_prefix=build/fuzz_findings/$name-")
    echo "fuzz: $name, ${seconds} s"
    if [[ -d $corpus ]]; then
        "$programs/$name" "${limits[@]}" -runs=0 "$corpus"
    fi
    "$programs/$name" "${limits[@]}" "-max_total_time=$seconds" -print_final_stats=1 \
        "$found" $([[ -d $corpus ]] && echo "$corpus")
done
