#!/usr/bin/env python3
"""Checks the rules of the house: who includes whom, and how long files and functions are.

Folders and families of files stand in one order. A file includes only what stands before it or
beside it; the exceptions are named below. Prints every breach and ends with status 1 if there is
one. Ends with figures: lines of code, the part of them that is tests, functions above 30 lines.
"""
import re
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
MAX_FILE_LINES = 430
MAX_FUNCTION_LINES = 60

# Rank and pattern of the path, the first match counts. Families share a rank with their public
# header, so that a contour's source does not come to include the region's header.
RANKS = [
    (0, r"foundation/qc/core/"),
    (1, r"foundation/qc/(features|display)/"),
    (2, r"include/cntr/(config|contour_defs)\.h"),
    (3, r"cntr/internal/"),
    (4, r"(include/cntr|cntr)/(moments|ellipse_fit)"),
    (5, r"(include/cntr|cntr)/contour"),
    (6, r"(include/cntr|cntr)/region(_|\.)"),
    (7, r"(include/cntr|cntr)/regionst"),
    (8, r"(include/cntr/cntrtmpl|ch_core/)"),
    (9, r"(include/cntr/cntr\.h|cntr/registration)"),
    (10, r"(tools|examples|bench)/"),
    (11, r"(fuzz|tests)/"),
]
ALLOWED = {("cntr/contour_hull.cpp", "include/cntr/region.h")}  # the hull of a contour is a region

PUBLIC = re.compile(r"(include/cntr|foundation/qc/(core|features|display))/[^/]+\.h")
INTERNAL = re.compile(r"(foundation/qc/core/internal|cntr|ch_core)/")
# Programs see the public face; one benchmark looks at the index inside.
OUTSIDE = re.compile(r"(tools|examples|fuzz)/|bench/(?!edge_index_bench)")

SIGNATURE_END = re.compile(r"^\s*(namespace|class|struct|enum|union|extern)\b|=\s*$")
TESTS = "tests/"


def rank(path):
    return next((number for number, pattern in RANKS if re.match(pattern, path)), None)


def resolve(name, includer):
    """The project's file that an include names, or None for a header from elsewhere."""
    beside = (ROOT / includer).parent
    for base in (beside, ROOT / "include", ROOT / "foundation", ROOT, ROOT / "tools"):
        if (base / name).is_file():
            return (base / name).resolve().relative_to(ROOT).as_posix()
    return None


def include_faults(path, lines):
    own_rank = rank(path)
    if own_rank is None:
        yield f"{path}: no place in the order of the house (RANKS in scripts/check_house.py)"
        return
    for number, line in enumerate(lines, 1):
        match = re.match(r'\s*#\s*include\s*[<"]([^>"]+)[>"]', line)
        target = match and resolve(match.group(1), path)
        if not target or (path, target) in ALLOWED:
            continue
        if rank(target) is not None and rank(target) > own_rank:
            yield f"{path}:{number}: {target} stands later in the house"
        elif PUBLIC.fullmatch(path) and not PUBLIC.fullmatch(target):
            yield f"{path}:{number}: a public header includes {target}, which is not installed"
        elif OUTSIDE.match(path) and INTERNAL.match(target):
            yield f"{path}:{number}: {target} is not part of the public face"


def functions(lines):
    """Line number and length of every function body: an opening brace alone on its line and the
    closing brace at the same indentation, as the formatter leaves them."""
    for start, line in enumerate(lines):
        if line.strip() != "{" or start == 0 or SIGNATURE_END.search(lines[start - 1]):
            continue
        indentation = line[: line.index("{")]
        for end in range(start + 1, len(lines)):
            if re.match(re.escape(indentation) + r"\}", lines[end]):
                yield start, end - start - 1
                break


def main():
    listing = subprocess.run([ROOT / "scripts/sources.sh"], capture_output=True, text=True, check=True)
    faults, code_lines, test_lines, long_functions, all_functions = [], 0, 0, 0, 0
    for path in listing.stdout.split():
        lines = (ROOT / path).read_text(encoding="utf-8").splitlines()
        faults += include_faults(path, lines)
        if len(lines) > MAX_FILE_LINES:
            faults.append(f"{path}: {len(lines)} lines, at most {MAX_FILE_LINES}")
        if path.startswith(TESTS):
            test_lines += len(lines)
            continue
        code_lines += len(lines)
        for start, length in functions(lines):
            all_functions += 1
            long_functions += length > 30
            if length > MAX_FUNCTION_LINES:
                faults.append(
                    f"{path}:{start}: a function of {length} lines, at most {MAX_FUNCTION_LINES}"
                )
    for fault in faults:
        print(fault)
    share = 100 * test_lines / max(1, code_lines + test_lines)
    print(
        f"{code_lines} lines of code, {test_lines} of tests ({share:.0f} % of all), "
        f"{long_functions} of {all_functions} functions above 30 lines"
    )
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
