#!/usr/bin/env bash
# demo.sh COMMAND: measures the real outlines in examples/data, makes some of them cross themselves
# and overlap, and lets the command put them right. Pictures and files go to build/demo.
set -euo pipefail
command=$1
data=examples/data
out=build/demo
mkdir -p "$out"

# show TEXT ARGUMENT...: runs the command and shows how
show() {
    local text=$1
    shift
    printf '\n%s\n$ cntr %s\n' "$text" "$*"
    "$command" "$@"
}

# shift_outline X Y: CSV from the input, moved
shift_outline() { awk -F, -v dx="$1" -v dy="$2" 'NF == 2 && $1 ~ /[0-9]/ { print $1 + dx "," $2 + dy; next } { print }'; }

# crude_offset D: every vertex of the CSV outlines pushed out by D along the normal of its
# neighbours, with nothing done about what then crosses
crude_offset() {
    awk -F, -v d="$1" '
        function flush(i, p, q, l) {
            for (i = 0; i < n; i++) {
                p = (i + n - 5) % n; q = (i + 5) % n
                l = sqrt((x[q] - x[p]) ^ 2 + (y[q] - y[p]) ^ 2); if (l == 0) l = 1
                printf "%.3f,%.3f\n", x[i] + d * (y[q] - y[p]) / l, y[i] - d * (x[q] - x[p]) / l
            }
            if (n) print ""
            n = 0
        }
        NF == 2 && $1 ~ /[0-9]/ { x[n] = $1; y[n] = $2; n++; next }
        { flush(); if (/^#/) print }
        END { flush() }'
}

columns=name,vertices,length,area,centroid,diameter,solidity
show 'Borders, which are open' measure $data/borders.wkt --precision 2 \
    --columns name,vertices,length,mean,diameter,crosses
show 'Countries; one has a hole' measure $data/countries.wkt --precision 2 \
    --columns $columns,holes --svg $out/countries.svg | awk 'NR <= 9'
show 'A letter with two holes and its equal ellipse' measure - --precision 1 \
    --columns $columns,holes,ellipseRadii --svg $out/letter.svg < <(awk '/^#/ && NR > 1 { exit } { print }' $data/glyphs.wkt)
show 'Where points lie' locate $data/horse.csv --point 200,100 330,250 100,150 --precision 2 \
    --svg $out/horse_points.svg --y-down

crude_offset 6 <$data/horse.csv >$out/crude_horse.csv
show 'A horse grown crudely crosses itself; cleaned' clean $out/crude_horse.csv --closed \
    -o $out/clean_horse.wkt --svg $out/clean_horse.svg --y-down

awk '/^# coin/ { on = $3 <= 5 } on' $data/coins.csv | tee $out/coins.csv |
    shift_outline 7.77 3.21 >$out/coins_moved.csv
show 'Coins laid over each other, merged into one set' merge $out/coins.csv $out/coins_moved.csv \
    --closed --outer-hull -o $out/merged.cntr --svg $out/merged.svg --y-down
show 'The set as it was saved' archive $out/merged.cntr | awk 'NR <= 7'
show 'Loaded and measured' measure $out/merged.cntr --set --precision 3 \
    --columns regions,area,centroid,low,high

printf '\nMade in %s: %s\n' "$out" "$(cd $out && echo *)"
