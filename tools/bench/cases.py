"""Runs the benchmark programs and collects the seconds that each case took, round by round.

Names are operation/case/library, then what Google Benchmark adds ("/threads:2"). Cases that differ in the library
alone, and those that a goal names together, are compared: they form a group, which runs in a process of its own,
its repetitions interleaved at random, so that what disturbs one disturbs the others. Repetition i of each is round i.
A round counts for two cases when both had their cores to themselves.
"""

import itertools
import json
import re
import subprocess
import tempfile
import time
from dataclasses import dataclass
from pathlib import Path

_BUDGET_SECONDS = 12.0  # of a group: slow ones get fewer rounds
_PATIENCE_SECONDS = 30.0  # with a group whose rounds are disturbed
_MIN_ROUNDS = 5
_ADDED = re.compile(r"/(real_time|manual_time|process_time|threads:\d+|iterations:\d+)(?=/|$)")


@dataclass(frozen=True)
class Repetition:
    seconds: float  # of an operation
    crowding: float  # see bench/gauged.h


class Quiet:
    """Knows the repetitions that had their cores to themselves: they come within 3 % of the least crowding seen."""

    def __init__(self):
        self._least = float("inf")

    def see(self, times):
        self._least = min([self._least, *(each.crowding for rounds in times.values() for each in rounds)])

    def rounds_of(self, *compared):
        """The rounds that count for the compared cases, as tuples of seconds."""
        return [tuple(each.seconds for each in together) for together in zip(*compared, strict=True)
                if all(each.crowding <= 1.03 * self._least for each in together)]

    def fewest(self, times):
        """Of the pairs of a group."""
        ours, peers = ([case for case in times if is_ours(case) == wanted] for wanted in (True, False))
        pairs = itertools.product(ours or peers, peers or ours)
        return min(len(self.rounds_of(times[x], times[y])) for x, y in pairs)


def library_of(case):
    return _ADDED.sub("", case).rpartition("/")[2]


def operation_of(case):
    return _ADDED.sub("", case).rpartition("/")[0]


def title_of(case):
    """The name of a case of ours without what goes without saying."""
    return re.sub(r"/(dvtypes|real_time|manual_time|iterations:\d+)(?=[/_]|$)", "", case)


def is_ours(case):
    return library_of(case).startswith("dvtypes")


def listed(program):
    out = subprocess.run([program, "--benchmark_list_tests"], check=True, capture_output=True, text=True).stdout
    return out.split("\n")[:-1]


def groups_of(program, goals):
    """The cases of a program, as lists of those that are compared."""
    group_of = {case: operation_of(case) for case in listed(program)}
    for goal in goals:
        ours = [case for case in goal.ours if case in group_of]
        if program.name not in goal.programs or not ours:
            continue
        for peer in goal.peers:
            if peer in group_of:
                joined, into = group_of[peer], group_of[ours[0]]
                group_of = {case: into if group == joined else group for case, group in group_of.items()}
    groups = {}
    for case, group in group_of.items():
        groups.setdefault(group, []).append(case)
    return list(groups.values())


def _seconds(run):
    if "per_op" in run:
        return run["per_op"]
    is_real = re.search(r"/(real_time|manual_time)(/|$)", run["run_name"])
    unit = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0}[run["time_unit"]]
    return run["real_time" if is_real else "cpu_time"] * unit


def _run(program, arguments):
    """{case: [Repetition of round 0, 1, ...]} and the messages of what went wrong."""
    with tempfile.TemporaryDirectory() as folder:
        out = Path(folder) / "out.json"
        done = subprocess.run([program, *arguments, f"--benchmark_out={out}", "--benchmark_out_format=json"],
                              stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
        text = out.read_text() if out.exists() else ""
    times, wrong = {}, []
    if done.returncode != 0:
        wrong.append(f"{program.name}: ended with {done.returncode}: {done.stderr.strip()[-500:]}")
        if not text.rstrip().endswith("}"):  # cut off
            return times, wrong
    for run in json.loads(text)["benchmarks"]:
        if run["run_type"] != "iteration":
            continue
        if run.get("error_occurred"):
            wrong.append(f"{program.name}: {run['run_name']}: {run['error_message']}")
        else:
            rounds = times.setdefault(run["run_name"], {})
            rounds[run["repetition_index"]] = Repetition(_seconds(run), run["crowding"])
    return {case: [rounds[i] for i in sorted(rounds)] for case, rounds in times.items()}, wrong


def run_once(program):
    """Every case for a moment: what went wrong."""
    return _run(program, ["--benchmark_min_time=0.001"])[1]


def _filter(cases):
    escaped = (re.sub(r"([.^$*+?()\[\]{}|\\])", r"\\\1", case) for case in cases)
    return f"--benchmark_filter=^({'|'.join(escaped)})$"


def measure(program, cases, rounds, seconds, quiet):
    """As _run, after a first run that warms up and shows how many rounds are affordable; again while too few count."""
    arguments = [_filter(cases), f"--benchmark_min_time={seconds}"]
    begin = time.monotonic()
    _, wrong = _run(program, arguments)
    affordable = int(_BUDGET_SECONDS / (time.monotonic() - begin))
    rounds = max(min(rounds, _MIN_ROUNDS), min(rounds, affordable))
    arguments += ["--benchmark_enable_random_interleaving=true", f"--benchmark_repetitions={rounds}"]
    times = {}
    while not wrong:
        more, wrong = _run(program, arguments)
        times = {case: times.get(case, []) + more[case] for case in more}
        quiet.see(more)
        if wrong or quiet.fewest(times) >= rounds or time.monotonic() - begin > _PATIENCE_SECONDS:
            break
    return times, wrong
