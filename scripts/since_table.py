#!/usr/bin/env python3
"""since_table.py COMMIT THEN.json... NOW.json...: the runs of scripts/bench_since.sh, one half of an older
library and one of today's, as the table of docs/performance.md about small contours.
"""
import sys
from collections import defaultdict

from bench_table import duration, insert, times


def least(paths):
    """{(question, shape, n): nanoseconds}, the least of all runs."""
    found = times(paths, pick=min)[0]
    return {key: row["cntr"] for key, row in found.items() if "cntr" in row}


def table(then, now):
    sizes = sorted({n for _, _, n in now})
    rows = defaultdict(dict)
    for (question, shape, n), time in now.items():
        if (question, shape, n) in then:
            before = then[question, shape, n]
            slower = " (slower)" if time > 1.1 * before else ""
            rows[question, shape][n] = (f"{duration(before)} to {duration(time)}: "
                                        f"**{before / time:.2g}x**{slower}")
    lines = ["| question | shape | " + " | ".join(f"n = {n}" for n in sizes) + " |",
             "| --- | --- |" + " --- |" * len(sizes)]
    for (question, shape), cells in rows.items():
        lines.append(f"| {question.replace('_', ' ')} | {shape} | "
                     + " | ".join(cells.get(n, "-") for n in sizes) + " |")
    return "\n".join(lines) + "\n"


def main():
    commit, paths = sys.argv[1], sys.argv[2:]
    half = len(paths) // 2
    text = table(least(paths[:half]), least(paths[half:]))
    insert("small", f"`./dev bench --since {commit}`:\n\n" + text)
    print(text)


if __name__ == "__main__":
    main()
