#!/usr/bin/env python3
"""Prints what gcovr measured (its JSON on standard input): lines and branches by folder of src and by file, or, for
the files with PART in their path, each line that nothing executes or that never goes some way. Started by
scripts/coverage.

    coverage_report.py [--need LINES BRANCHES | --uncovered PART]

--need: exits with 1 below these per cents.
"""

import json
import sys
from collections import Counter
from pathlib import Path


def _lines(file):
    return [line for line in file["lines"] if not line.get("gcovr/noncode")]


def _taken(line):
    return sum(1 for branch in line["branches"] if branch["count"])


def _count(file):
    """How many lines and branches there are, and how many are executed and taken."""
    lines = _lines(file)
    return Counter(lines=len(lines), executed=sum(1 for line in lines if line["count"]),
                   branches=sum(len(line["branches"]) for line in lines), taken=sum(map(_taken, lines)))


def _percent(part, whole):
    return 100 * part / whole if whole else 100.0


def _print_row(name, count):
    lines, branches = _percent(count["executed"], count["lines"]), _percent(count["taken"], count["branches"])
    print(f"{name:54} {count['lines']:6} {lines:6.1f} % {count['branches']:6} {branches:6.1f} %")


def _print_uncovered(files, part):
    for file in files:
        text = Path(file["file"]).read_text().splitlines()
        for line in _lines(file) if part in file["file"] else []:
            ways, number = len(line["branches"]), line["line_number"]
            if line["count"] and _taken(line) == ways:
                continue
            what = f"{_taken(line)} of {ways}" if line["count"] else "never"
            print(f"{file['file']}:{number}: {what}: {text[number - 1].strip()}")


def _print_tables(files):
    """Returns the per cents of lines and branches of all files."""
    areas, total = {}, Counter()
    for file in files:
        areas.setdefault(str(Path(file["file"]).parent), Counter()).update(_count(file))
        total.update(_count(file))
    print(f"{'':54} {'lines':>6} {'':8} {'branches':>6}")
    for file in files:
        _print_row(file["file"], _count(file))
    print()
    for area, count in sorted(areas.items()):
        _print_row(area, count)
    _print_row("all", total)
    return _percent(total["executed"], total["lines"]), _percent(total["taken"], total["branches"])


def _main():
    files = json.load(sys.stdin)["files"]
    if "--uncovered" in sys.argv:
        _print_uncovered(files, sys.argv[2])
        return 0
    measured = _print_tables(files)
    needed = map(float, sys.argv[2:4]) if "--need" in sys.argv else (0, 0)
    return 0 if all(got >= need for got, need in zip(measured, needed)) else 1


if __name__ == "__main__":
    sys.exit(_main())
