"""Runs the benchmark programs and collects the seconds that each case took, round by round.

Names are operation/case/library, then what Google Benchmark adds ("/threads:2"). Cases that differ in the library
alone, and those that a goal names together, are compared: they form a group, which runs in a process of its own,
its repetitions interleaved at random, so that what disturbs one disturbs the others. Repetition i of each is round i.
"""

import json
import re
import statistics
import subprocess
import tempfile
import time
from pathlib import Path

_BUDGET_SECONDS = 12.0  # of a group: slow ones get fewer rounds
_MIN_ROUNDS = 5
_ADDED = re.compile(r"/(real_time|manual_time|process_time|threads:\d+|iterations:\d+)(?=/|$)")


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
    """{case: [seconds of round 0, 1, ...]} and the messages of what went wrong."""
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
            times.setdefault(run["run_name"], {})[run["repetition_index"]] = _seconds(run)
    return {case: [rounds[i] for i in sorted(rounds)] for case, rounds in times.items()}, wrong


def run_once(program):
    """Every case for a moment: what went wrong."""
    return _run(program, ["--benchmark_min_time=0.001"])[1]


def _filter(cases):
    escaped = (re.sub(r"([.^$*+?()\[\]{}|\\])", r"\\\1", case) for case in cases)
    return f"--benchmark_filter=^({'|'.join(escaped)})$"


def measure(program, cases, rounds, seconds):
    """As _run, after a first run that warms up and shows how many rounds are affordable."""
    arguments = [_filter(cases), f"--benchmark_min_time={seconds}"]
    begin = time.monotonic()
    _, wrong = _run(program, arguments)
    affordable = int(_BUDGET_SECONDS / (time.monotonic() - begin))
    if wrong:
        return {}, wrong
    rounds = max(min(rounds, _MIN_ROUNDS), min(rounds, affordable))
    return _run(program, [*arguments, "--benchmark_enable_random_interleaving=true",
                          f"--benchmark_repetitions={rounds}"])


def ratio(ours, peer):
    """The median over the rounds of ours to the peer's."""
    return statistics.median(x / y for x, y in zip(ours, peer, strict=True))
