#!/usr/bin/env bash
# demo.sh COMMAND: measures the real outlines in examples/data.
set -euo pipefail
command=$1

shopt -s nullglob
for file in examples/data/*.{wkt,csv}; do
    echo
    echo "$ cntr measure $file"
    "$command" measure "$file"
done
