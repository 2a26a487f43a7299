#!/usr/bin/env bash
# Lists every C++ file of the project.
cd "$(dirname "$0")/.." || exit
for folder in foundation include cntr ch_core tests tools bench fuzz examples; do
    [[ -d $folder ]] && find "$folder" -name '*.cpp' -o -name '*.h'
done | sort
