#!/usr/bin/env python3
"""Spoils every exported function, one at a time, and says which of them no test misses. Started by scripts/check-called,
which says more."""

import argparse
import concurrent.futures
import os
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

import interposer

_ROOT = Path(__file__).resolve().parents[2]
_PROGRAMS = ("vectors_test", "dvtypes_test")
_FAULTS = ("nothing", "answer")  # as in interposer.py
_FAILED = 1  # the exit code of a program whose expectations were not all met
_TOO_SLOW = (-signal.SIGXCPU, -signal.SIGKILL)


def _arguments():
    parser = argparse.ArgumentParser(prog="scripts/check-called", description=__doc__)
    parser.add_argument("--build", type=Path, default=_ROOT / "build" / "release", help="a build with shared libraries")
    parser.add_argument("--jobs", type=int, default=os.cpu_count(), help="tests run at a time (%(default)s)")
    parser.add_argument("--rounds", default="0.01", help="DV_TEST_ROUNDS (%(default)s)")
    parser.add_argument("--seconds", type=int, default=2, help="of a processor: slower tests are left out (%(default)s)")
    parser.add_argument("--callers", action="store_true", help="print which tests call which function, and stop")
    parser.add_argument("functions", nargs="*", help="these alone")
    return parser.parse_args()


def _build_interposer(functions, build, folder):
    headers = sorted(path.name for path in (_ROOT / "src/include/dvtypes").glob("*.h"))
    text, library = folder / "interposer.c", folder / "interposer.so"
    text.write_text(interposer.source(functions, headers))
    include = [f"-I{path}" for path in (_ROOT / "src/include", build / "tools/tzgen/tables/include")]
    subprocess.run(["cc", "-std=c11", "-O1", "-w", "-shared", "-fPIC", *include, text, "-o", library], check=True)
    return library


class Tests:
    """The tests of the programs, each run in a process of its own behind the preloaded library."""

    def __init__(self, arguments, library, folder):
        self._arguments, self._library, self._folder = arguments, library, folder

    def _exit_code(self, test, **environment):
        program, name = test
        words = ["prlimit", "--core=0", f"--cpu={self._arguments.seconds}", self._arguments.build / "bin" / program,
                 "--gtest_brief=1", f"--gtest_filter={name}"]
        variables = {**os.environ, "LD_PRELOAD": str(self._library), "DV_TEST_ROUNDS": self._arguments.rounds}
        return subprocess.run(words, env={**variables, **environment}, check=False, stdin=subprocess.DEVNULL,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode

    def all(self):
        for program in _PROGRAMS:
            words = [self._arguments.build / "bin" / program, "--gtest_list_tests"]
            suite = ""
            for line in subprocess.run(words, check=True, capture_output=True, text=True).stdout.splitlines():
                if not line.startswith(" "):
                    suite = line.split()[0]
                elif suite.endswith("."):
                    yield program, suite + line.split()[0]

    def calls_of(self, test):
        """The functions that a test calls, none if it is slow, and the seconds that it takes."""
        calls, begin = self._folder / test[1].replace("/", "_"), time.monotonic()
        code = self._exit_code(test, DV_CALLED=str(calls))
        if code not in (0, *_TOO_SLOW):
            raise SystemExit(f"{test[1]} fails though every function is in its place (exit code {code})")
        return set(calls.read_text().split()) if code == 0 else set(), time.monotonic() - begin

    def verdict(self, function, fault, callers):
        """"" when a test fails for the fault; else what is to be said of it."""
        if not callers:
            return "no test calls it"
        verdict = "no test fails: " + ", ".join(name for _, name in callers[:3])
        for test in callers:
            code = self._exit_code(test, DV_LOST=function, DV_FAULT=fault)
            if code == _FAILED:
                return ""
            if code != 0:  # what it computes with was wrong, but nothing was compared
                verdict = f"only a crash or a hang: {test[1]}"
        return verdict


def _check(arguments, folder):
    interface = (_ROOT / "abi" / "interface.txt").read_text().splitlines()
    functions = list(interposer.exported_functions(interface))
    tests = Tests(arguments, _build_interposer(functions, arguments.build, folder), folder)
    pool = concurrent.futures.ThreadPoolExecutor(arguments.jobs)

    every_test = list(tests.all())
    calls = dict(zip(every_test, pool.map(tests.calls_of, every_test)))
    callers = {name: sorted((t for t in every_test if name in calls[t][0]), key=lambda t: calls[t][1])
               for name, _, _ in functions if not arguments.functions or name in arguments.functions}
    if arguments.callers:
        for name, callers_of in callers.items():
            print(name, *(test for _, test in callers_of))
        return 0

    faults = [(name, fault) for name, result, _ in functions for fault in _FAULTS
              if name in callers and not (result == "void" and fault == "answer")]
    verdicts = list(pool.map(lambda f: tests.verdict(*f, callers[f[0]]), faults))
    unnoticed = [(*fault, verdict) for fault, verdict in zip(faults, verdicts) if verdict]
    for name, fault, verdict in unnoticed:
        print(f"{name} {'does nothing' if fault == 'nothing' else 'gives another answer'}: {verdict}")
    print(f"{len(callers)} functions, {len(every_test)} tests: {len(faults) - len(unnoticed)} of {len(faults)} faults are noticed")
    return 1 if unnoticed else 0


if __name__ == "__main__":
    with tempfile.TemporaryDirectory() as scratch:
        sys.exit(_check(_arguments(), Path(scratch)))
