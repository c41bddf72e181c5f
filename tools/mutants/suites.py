"""Runs the tests that are likely to notice a fault first, and stops at the first that does.

Likely are those that noticed an earlier fault in the same file, then those of its area, then all others. Random tests
are short at first (DV_TEST_ROUNDS); those of the fault's area then run once more, longer.
"""

import json
import os
import re
import subprocess
from collections import Counter
from pathlib import Path

_SLOW = 0.5  # seconds: such a test runs after all others, and once
_OF_OTHER_PROGRAMS = ("Tzgen.",)  # what these tests run is made before the fault
_EVERYWHERE = "vectors"  # an area whose tests are about all areas
_MORE_ROUNDS = 12  # the factor of the longer run


class Suites:
    def __init__(self, build, rounds):
        self._rounds = rounds
        self._tests = {}  # by program: (name, area, seconds)
        self._noticed = {}  # by file: how often each test noticed a fault in it
        for name, path in build.items():
            self._tests[name] = self._measure(name, path)

    def learn(self, path, test):
        self._noticed.setdefault(path, Counter())[test] += 1

    def _environment(self, more, factor=1):
        return {**os.environ, "DV_TEST_ROUNDS": str(self._rounds * factor), **more}

    def _measure(self, name, path):
        """Runs everything once: it must pass, and says how long each test takes."""
        report = Path(f"{path}.json")
        run = [path, "--gtest_break_on_failure", f"--gtest_output=json:{report}"]
        done = subprocess.run(run, env=self._environment({}), cwd=path.parent, capture_output=True, text=True, check=False)
        if done.returncode != 0:
            raise SystemExit(f"{name} fails without any fault:\n{done.stdout[-2000:]}")
        tests = []
        for suite in json.loads(report.read_text())["testsuites"]:
            for test in suite["testsuite"]:
                full_name = f"{test['classname']}.{test['name']}"
                if test["result"] == "COMPLETED" and not full_name.startswith(_OF_OTHER_PROGRAMS):
                    tests.append((full_name, Path(test["file"]).parent.name, float(test["time"].rstrip("s"))))
        return tests

    def _phases(self, programs, path, area):
        """Programs and lists of tests, the likelier ones first; with the seconds and the factor of their rounds."""
        known = {name for name, _ in self._noticed.get(path, Counter()).most_common(12)}
        ranked = [{}, {}, {}, {}]
        for program in programs:
            for name, test_area, seconds in self._tests[program]:
                is_near = test_area in (area, _EVERYWHERE)
                rank = 3 if seconds > _SLOW else 0 if name in known else 1 if is_near else 2
                ranked[rank].setdefault(program, []).append((name, seconds))
        for phase in ranked:
            for program, tests in phase.items():
                yield program, [name for name, _ in tests], sum(seconds for _, seconds in tests), 1
        for program in programs:
            tests = [(name, seconds) for name, test_area, seconds in self._tests[program]
                     if test_area == area and seconds <= _SLOW]
            if tests:
                yield program, [name for name, _ in tests], sum(s for _, s in tests) * _MORE_ROUNDS, _MORE_ROUNDS

    def first_to_notice(self, programs, path, area, workshop):
        """The name of a test that notices the fault ("hang: NAME" where it does not end), or None."""
        for program, names, seconds, factor in self._phases(programs, path, area):
            found = self._run(workshop, program, names, seconds, factor)
            if found is not None:
                self.learn(path, found.removeprefix("hang: "))
                return found
        return None

    def _run(self, workshop, program, names, seconds, factor):
        cpu = int(5 + 5 * seconds)
        limits = ["prlimit", f"--cpu={cpu}", "--core=0", f"--as={8 << 30}", f"--fsize={256 << 20}"]
        words = limits + [workshop.program(program), "--gtest_break_on_failure", "--gtest_filter=" + ":".join(names)]
        folder, output = workshop.folder / "run", workshop.folder / "output"
        with open(output, "wb") as log:
            process = subprocess.Popen(words, stdout=log, stderr=subprocess.DEVNULL, cwd=folder,
                                       env=self._environment(workshop.environment(), factor), start_new_session=True)
            try:
                code = process.wait(timeout=20 * cpu)
            except subprocess.TimeoutExpired:
                os.killpg(process.pid, 9)
                code = process.wait()
        if code == 0:
            return None
        text = output.read_bytes()[-(1 << 20):].decode(errors="replace")
        begun = re.findall(r"^\[ RUN      \] (\S+)", text, re.MULTILINE)
        is_hang = code in (-9, -24) and "Failure" not in text[text.rfind("[ RUN"):]
        return ("hang: " if is_hang else "") + (begun[-1] if begun else "(before the first test)")
