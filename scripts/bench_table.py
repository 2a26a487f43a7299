#!/usr/bin/env python3
"""bench_table.py RESULTS.json...: ours against the best peer, from one run of build/peers/bench/peers.

Writes bench/results/<machine>.csv (a row a question, shape and size, with date and flags) and puts the
table between the markers of docs/performance.md. Memory (--memory FILE, rows of a table) goes between
its own markers. Times are CPU times of one thread: the median of the repetitions.
"""
import argparse
import csv
import json
import os
import re
from collections import defaultdict
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
OURS = "cntr"
NANOSECONDS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}

# What is aimed at: how many times faster than the best peer. (question, shape) or (question, size)
# comes before (question).
AIMS = {
    "perimeter": 2, "area": 1, "centre": 1, "second_moments": 3, "box": 2, "convex_hull": 1.5,
    "farthest_pair": 4, "distance_first": 1.5, "distance_repeated": 2,
    "nearest_vertex_repeated": 1, ("nearest_vertex_repeated", "comb"): 0.5,
    "inside_eight": 1, "inside_repeated": 2.5, "long_segment_repeated": 4,
    "short_segment_repeated": 1, ("short_segment_repeated", 100000): 3,
    "outline_x_outline": 3, ("outline_x_outline", 100000): 8,
    "self_crossing": 1, ("self_crossing", 100000): 2, "regularise": 3, "set_crossing": 8,
    "ellipse_fit": 10, ("ellipse_fit", 100000): 20, "save_load": 1.3, "copy": 1,
}
MARKERS = "<!-- {0}: written by a script -->\n", "<!-- end of {0} -->"


def aim(question, shape, size):
    return AIMS.get((question, size)) or AIMS.get((question, shape)) or AIMS.get(question)


def median(values):
    return sorted(values)[len(values) // 2]


def times(paths, pick=median):
    """{(question, shape, n): {library: nanoseconds}}, of which `pick` takes one of the repetitions, and
    the context of the run, with the number of repetitions."""
    samples, context = defaultdict(list), {}
    for path in paths:
        run = json.loads(Path(path).read_text(encoding="utf-8"))
        context = run["context"]
        for row in run["benchmarks"]:
            parts = row["run_name"].split("/")
            if row["run_type"] == "iteration" and len(parts) == 4 and not row.get("error_occurred"):
                samples[tuple(parts)].append(row["cpu_time"] * NANOSECONDS[row["time_unit"]])
    context["repetitions"] = max(map(len, samples.values()), default=0)
    found = defaultdict(dict)
    for (question, library, shape, size), values in samples.items():
        found[question, shape, int(size)][library] = pick(values)
    return found, context


def best_peer(row):
    peers = {library: time for library, time in row.items() if library != OURS}
    return min(peers.items(), key=lambda item: item[1]) if peers else None


def duration(nanoseconds):
    for unit, size in (("s", 1e9), ("ms", 1e6), ("us", 1e3)):
        if nanoseconds >= size:
            return f"{nanoseconds / size:.3g} {unit}"
    return f"{nanoseconds:.3g} ns"


def cell(row, wanted):
    peer = best_peer(row)
    if OURS not in row or peer is None:
        return "-"
    ratio = peer[1] / row[OURS]
    verdict = "" if wanted is None or ratio >= wanted * 0.9 else " (aim missed)"
    return f"{duration(row[OURS])}; {peer[0]} {duration(peer[1])}: **{ratio:.2g}x**{verdict}"


def table(found):
    sizes = sorted({key[2] for key, row in found.items() if best_peer(row) and OURS in row})
    lines = ["| question | shape | aim | " + " | ".join(f"n = {n}" for n in sizes) + " |",
             "| --- | --- | ---: |" + " --- |" * len(sizes)]
    compared = [key[:2] for key, row in found.items() if OURS in row and best_peer(row)]
    for question, shape in dict.fromkeys(compared):
        cells = [cell(found.get((question, shape, n), {}), aim(question, shape, n)) for n in sizes]
        ends = [aim(question, shape, n) for n in (1000, 100000)]
        wanted = "-" if ends[0] is None else "x; ".join(f"{a:g}" for a in dict.fromkeys(ends)) + "x"
        lines.append(f"| {question.replace('_', ' ')} | {shape} | {wanted} | {' | '.join(cells)} |")
    return "\n".join(lines) + "\n"


def cpu_model():
    for line in Path("/proc/cpuinfo").read_text(encoding="utf-8").splitlines():
        if line.startswith("model name"):
            return line.split(":", 1)[1].strip()
    return "unknown"


def write_csv(found, context, flags):
    machine = re.sub(r"\W+", "_", f"{cpu_model()} {os.cpu_count()} cores").strip("_").lower()
    path = ROOT / f"bench/results/{machine}.csv"
    path.parent.mkdir(exist_ok=True)
    with path.open("w", newline="", encoding="utf-8") as out:
        writer = csv.writer(out, lineterminator="\n")
        writer.writerow(["date", "flags", "question", "shape", "n", "library", "nanoseconds"])
        for (question, shape, size), row in found.items():
            for library, time in row.items():
                writer.writerow([context["date"][:10], flags, question, shape, size, library,
                                 f"{time:.4g}"])
    return path


def insert(name, text):
    path = ROOT / "docs/performance.md"
    begin, end = (marker.format(name) for marker in MARKERS)
    page = path.read_text(encoding="utf-8")
    head, rest = page.split(begin)
    path.write_text(head + begin + text + end + rest.split(end, 1)[1], encoding="utf-8")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("results", nargs="+")
    parser.add_argument("--flags", default="")
    parser.add_argument("--memory", help="file with the rows of bench/memory_report.cpp")
    parser.add_argument("--print", action="store_true", help="print the table, write nothing")
    options = parser.parse_args()
    found, context = times(options.results)
    if options.print:
        print(table(found))
        return
    path = write_csv(found, context, options.flags)
    head = (f"{context['date'][:10]}, {cpu_model()}, {os.cpu_count()} cores, load "
            f"{context['load_avg'][0] if context.get('load_avg') else 'unknown'}; repetitions: {context['repetitions']}; both sides "
            f"compiled with `{options.flags}`.\n\n")
    insert("ratios", head + table(found))
    if options.memory:
        insert("memory", Path(options.memory).read_text(encoding="utf-8"))
    print(f"{path.relative_to(ROOT)} and docs/performance.md are written")


if __name__ == "__main__":
    main()
