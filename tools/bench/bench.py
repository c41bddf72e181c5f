#!/usr/bin/env python3
"""Measures the library beside its peers and compares the ratios with bench/goals.txt. Started by scripts/bench, which
builds the programs."""

import argparse
import datetime
import re
import sys
from pathlib import Path

import cases
import goals as goals_file
import library
import machine
import table

_ROOT = Path(__file__).resolve().parents[2]
_BUILD = _ROOT / "build" / "bench"
_DOCUMENT = _ROOT / "docs" / "performance.md"
_BEGIN = "<!-- measured: written by scripts/bench --write -->"
_END = "<!-- measured: end -->"

_GOAL_HEADER = ["operation", "ours", "the goal's peer", "ratio", "goal", "", "rounds", "where another is faster"]
_LIBRARY_HEADER = ["property", "value", "goal", ""]
_LOADING = "load_bench"
_OTHER_HEADER = ["program", "case", "ours", "fastest peer", "ratio"]


def _arguments():
    parser = argparse.ArgumentParser(prog="scripts/bench", description=__doc__)
    parser.add_argument("--smoke", action="store_true", help="run every case for a moment: is every answer right?")
    parser.add_argument("--write", action="store_true", help="write the measured part of docs/performance.md")
    parser.add_argument("--filter", metavar="REGEX", help="only groups with a case whose program/name matches")
    parser.add_argument("--rounds", type=int, default=15, help="undisturbed repetitions wanted (%(default)s)")
    parser.add_argument("--seconds", type=float, default=0.05, help="the least time of each (%(default)s)")
    arguments = parser.parse_args()
    if arguments.write and (arguments.smoke or arguments.filter):
        parser.error("--write needs every case measured")
    return arguments


def _programs():
    return sorted((_BUILD / "bin").glob("*_bench"))


def _say(text):
    print(text, file=sys.stderr, flush=True)


def _give_up_on(wrong):
    if wrong:
        sys.exit("\n".join(wrong))


def _smoke(goals):
    wrong, listed = [], set()
    for program in _programs():
        _say(program.name)
        listed |= {(program.name, case) for case in cases.listed(program)}
        wrong += cases.run_once(program)
    for goal in goals:
        shows = [any((program, case) in listed for program in goal.programs for case in names)
                 for names in (goal.ours, goal.peers)]
        if goal.programs != ("library",) and not all(shows):
            print(f"no case shows the goal: {goal.operation}")
    _give_up_on(wrong)
    print("every answer right")


def _measure(goals, arguments):
    quiet = cases.Quiet()
    results = table.Results(quiet)
    for program in _programs():
        groups = [group for group in cases.groups_of(program, goals)
                  if any(re.search(arguments.filter or "", f"{program.name}/{case}") for case in group)]
        for number, group in enumerate(groups, 1):
            _say(f"{program.name} {number}/{len(groups)}: {', '.join(group)}")
            times, wrong = cases.measure(program, group, arguments.rounds, arguments.seconds, quiet)
            _give_up_on(wrong)
            results.add(program.name, times)
    return results


def _library_rows(goals, results):
    limits = {goal.ours[0]: goal for goal in goals if goal.programs == ("library",)}
    for key, (value, text) in library.properties(_BUILD).items():
        goal = limits.get(key)
        verdict = [] if goal is None else [f"{goal.limit:,.0f}", "met" if goal.is_met(value) else "**missed**"]
        yield [text, f"{value:,}", *(verdict or ["", ""])]
    yield from ([*row, "", ""] for row in results.own_rows(_LOADING))


def _tables(goals, results, is_whole):
    """The parts of the report: (heading, table)."""
    rows = [results.goal_row(goal) for goal in goals if goal.programs != ("library",)]
    if not is_whole:
        rows = [row for row in rows if row[3] != table.NOT_MEASURED]
    yield "Goals", table.markdown(_GOAL_HEADER, rows)
    yield "Further cases", table.markdown(_OTHER_HEADER, results.other_rows(goals, without=_LOADING))
    yield "The library", table.markdown(_LIBRARY_HEADER, _library_rows(goals, results))


def _written(parts, arguments):
    facts = [f"- {name}: {text}" for name, text in machine.facts(_BUILD)]
    facts.append(f"- Day: {datetime.date.today()}; "
                 f"up to {arguments.rounds} undisturbed rounds of {arguments.seconds:g} s")
    texts = [_BEGIN, "\n".join(facts), *(f"### {heading}\n\n{text}" for heading, text in parts), _END]
    return "\n\n".join(texts)


def main():
    arguments = _arguments()
    goals = goals_file.read(_ROOT / "bench" / "goals.txt")
    if arguments.smoke:
        return _smoke(goals)
    parts = list(_tables(goals, _measure(goals, arguments), is_whole=not arguments.filter))
    for heading, text in parts:
        print(f"\n{heading}\n\n{text}")
    if arguments.write:
        before, found, rest = _DOCUMENT.read_text().partition(_BEGIN)
        _, found_end, after = rest.partition(_END)
        if not found or not found_end:
            sys.exit(f"{_DOCUMENT.name} has lost its markers")
        _DOCUMENT.write_text(before + _written(parts, arguments) + after)
        print(f"\ndocs/{_DOCUMENT.name} written")


if __name__ == "__main__":
    main()
