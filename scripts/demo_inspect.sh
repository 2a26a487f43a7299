#!/usr/bin/env bash
# demo_inspect.sh PROGRAM: finds and measures the coins in the photograph among the real data. The
# picture, a table and an archive go to build/demo/coins.
set -euo pipefail
program=$1
out=build/demo/coins

printf '\nA photograph of coins: their edges found, traced into regions, measured in pixels\n'
printf '$ inspect_parts examples/data/coins.png %s\n' "$out"
"$program" examples/data/coins.png "$out"
printf '\nThe coins with their edge points: %s/parts.svg\n' "$out"
