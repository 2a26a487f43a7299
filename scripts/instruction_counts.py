#!/usr/bin/env python3
"""instruction_counts.py PROGRAM [--update]: instructions of every workload against the baseline.

Runs each workload of PROGRAM (bench/workloads.cpp) under callgrind and compares its count with
bench/results/instructions.csv. Ends with status 1 where one has changed by more than 5 %, in either
direction: a gain belongs into the baseline too. --update writes the baseline instead.
"""
import csv
import os
import re
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

BASELINE = Path(__file__).resolve().parent.parent / "bench/results/instructions.csv"
ALLOWED = 0.05


def count(program, workload):
    run = subprocess.run(
        ["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null", program, workload],
        capture_output=True, text=True)
    found = re.search(r"Collected : (\d+)", run.stderr)
    if run.returncode != 0 or not found:
        sys.exit(f"{workload}: {run.stderr}")
    return int(found.group(1))


def main():
    program = next(argument for argument in sys.argv[1:] if not argument.startswith("--"))
    names = subprocess.run([program], capture_output=True, text=True, check=True).stdout.split()
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        counts = dict(zip(names, pool.map(lambda name: count(program, name), names)))
    if "--update" in sys.argv:
        rows = "".join(f"{name},{number}\n" for name, number in counts.items())
        BASELINE.write_text("workload,instructions\n" + rows, encoding="utf-8")
        return 0
    with BASELINE.open(encoding="utf-8") as lines:
        before = {row["workload"]: int(row["instructions"]) for row in csv.DictReader(lines)}
    changed = set(before) ^ set(counts)
    for name, number in counts.items():
        change = number / before[name] - 1 if name in before else float("nan")
        if abs(change) > ALLOWED:
            changed.add(name)
        print(f"{name:24} {number:14,} {change:+8.1%}{'  CHANGED' if name in changed else ''}")
    if changed:
        print("changed: " + ", ".join(sorted(changed)))
        print("Where that is meant: ./dev check --update instructions")
    return 1 if changed else 0


if __name__ == "__main__":
    sys.exit(main())
