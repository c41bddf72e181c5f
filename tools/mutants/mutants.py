#!/usr/bin/env python3
"""Plants one fault at a time in src/ and says which of them no test notices. Started by scripts/mutants."""

import argparse
import concurrent.futures
import fcntl
import queue
import sys
import time
from pathlib import Path

import build as building
import campaign
from suites import Suites

_ROOT = Path(__file__).resolve().parents[2]


def _arguments():
    parser = argparse.ArgumentParser(prog="scripts/mutants", description=__doc__)
    parser.add_argument("--count", type=int, help="faults to plant (100)")
    parser.add_argument("--seed", default="1", help="another seed plants others (%(default)s)")
    parser.add_argument("--files", nargs="+", default=[], metavar="PART", help="only files with such a part in the path")
    parser.add_argument("--kinds", nargs="+", default=[], metavar="KIND", help="only these kinds (tools/mutants/faults.py)")
    parser.add_argument("--jobs", type=int, default=2, help="faults tested at a time (%(default)s)")
    parser.add_argument("--resume", action="store_true", help="go on with the last run, on its copy of the sources")
    parser.add_argument("--again", action="store_true", help="plant the last run's survivors again, in today's sources")
    parser.add_argument("--report", action="store_true", help="print the last run's report only")
    parser.add_argument("--need", type=int, default=0, metavar="N", help="fail when fewer than N are noticed")
    parser.add_argument("--max-units", type=int, default=1000, metavar="N",
                        help="leave out files that more than N objects are made of (%(default)s)")
    parser.add_argument("--rounds", type=float, default=0.02, help="DV_TEST_ROUNDS of the short runs (%(default)s)")
    parser.add_argument("--folder", type=Path, default=_ROOT / "build" / "mutants", help="where it builds (%(default)s)")
    return parser.parse_args()


def _say(text):
    print(text, flush=True)


class Campaign:
    def __init__(self, arguments, results):
        self._arguments, self._results = arguments, results
        self._build = building.Build(_ROOT, arguments.folder)
        if not arguments.resume:
            building.copy_sources(_ROOT, self._build.source)
        self._build.make()
        self._suites = Suites({n: self._build.folder / path for n, path in building.TESTS.items()}, arguments.rounds)
        self._workshops = queue.Queue()
        for i in range(arguments.jobs):
            self._workshops.put(building.Workshop(self._build, arguments.folder / f"worker-{i + 1}"))
        self._equivalent = campaign.read_equivalent()
        self._sources = campaign.read_sources(self._build.source, results.asked["files"])

    def _verdict(self, workshop, fault):
        """What becomes of a planted fault, and the test that noticed it."""
        area, changed = campaign.area_of(fault.path), False
        # The tests as they were compiled before the fault first: to them, a changed constant of a header is one of
        # the library's alone.
        steps = [(building.LIBRARIES, ["vectors_test", "dvtypes_test"]), ((building.EXTENSION,), ["dvsqlite_test"]),
                 *(((path,), [name]) for name, path in building.TESTS.items())]
        for linked, programs in steps:
            if not workshop.rebuild(fault.path, linked):
                continue
            changed = True
            test = self._suites.first_to_notice(programs, fault.path, area, workshop)
            if test is not None:
                return (campaign.HANG if test.startswith("hang: ") else campaign.TEST), test
        return (campaign.SURVIVED if changed else campaign.SAME_CODE), ""

    def _test(self, fault):
        source, begin = self._sources[fault.path], time.monotonic()
        untested = campaign.record_of(fault, source, campaign.EQUIVALENT, "", 0)
        if campaign.identity(untested) in self._equivalent:
            return untested
        workshop = self._workshops.get()
        try:
            workshop.plant(fault, source)
            verdict, by = self._verdict(workshop, fault)
        except building.CompilerRefuses as refusal:
            verdict, by = (campaign.COMPILER if refusal.is_noticed else campaign.REFUSED), ""
        finally:
            workshop.restore(fault, source)
            self._workshops.put(workshop)
        return campaign.record_of(fault, source, verdict, by, time.monotonic() - begin)

    def _planned(self):
        kinds, limit = self._results.asked["kinds"], self._results.asked["max_units"]
        for fault in campaign.planned(self._sources, self._results.asked["seed"]):
            is_light = len(self._build.users.get(f"src/{fault.path}", ())) <= limit
            if is_light and (not kinds or fault.kind in kinds):
                yield fault

    def run(self):
        """Plants faults until `count` of them were neither refused nor equivalent; the results come in any order."""
        known = {record["key"]: record for record in self._results.records}
        for record in known.values():
            if record["by"]:
                self._suites.learn(record["path"], record["by"].removeprefix("hang: "))
        self._run(self._planned(), known, self._results.asked["count"], self._results.add)

    def run_again(self):
        """Plants the survivors again, wherever their lines have moved, and puts what becomes of them in their place."""
        places = {campaign.identity(r): i for i, r in enumerate(self._results.records) if r["verdict"] == campaign.SURVIVED}
        # Of files that are gone the lines are looked for in all others.
        moved = {identity[1:]: i for identity, i in places.items() if identity[0] not in self._sources}
        if not moved:
            self._sources = {path: s for path, s in self._sources.items() if any(path == p[0] for p in places)}
        found, place_of = {}, {}  # by place: the fault; by the fault's identity: the place
        for fault in campaign.planned(self._sources, "1"):
            identity = campaign.identity(campaign.record_of(fault, self._sources[fault.path], "", "", 0))
            place = places.get(identity, moved.get(identity[1:]))
            if place is not None:
                found[place], place_of[identity] = fault, place
        for place in set(places.values()) - found.keys():
            _say(f"no longer there: {campaign.identity(self._results.records[place])}")

        def put(record):
            self._results.records[place_of[campaign.identity(record)]] = record
            self._results.write()

        self._run(iter(found.values()), {}, len(found), put)

    def _run(self, faults, known, count, add):
        planted, tested, begin = 0, 0, time.monotonic()
        with concurrent.futures.ThreadPoolExecutor(self._arguments.jobs) as pool:
            running = set()
            while True:
                while planted + len(running) < count and len(running) < self._arguments.jobs:
                    fault = next(faults, None)
                    if fault is None:
                        break
                    if fault.key in known:
                        planted += known[fault.key]["verdict"] in campaign.PLANTED
                    else:
                        running.add(pool.submit(self._test, fault))
                if not running:
                    break
                done, running = concurrent.futures.wait(running, return_when=concurrent.futures.FIRST_COMPLETED)
                for record in (future.result() for future in done):
                    add(record)
                    is_planted = record["verdict"] in campaign.PLANTED
                    planted, tested = planted + is_planted, tested + is_planted
                    _say(f"{planted:4}/{count} {time.monotonic() - begin:6.0f} s  {campaign.line_of(record)}")
        if tested:
            _say(f"\n{(time.monotonic() - begin) / tested:.2f} s for each of {tested} faults, {self._arguments.jobs} at a time")


def main():
    arguments = _arguments()
    arguments.folder = arguments.folder.resolve()
    arguments.folder.mkdir(parents=True, exist_ok=True)
    lock = open(arguments.folder / "lock", "w", encoding="utf-8")  # until the end: a folder has one run at a time
    if not arguments.report:
        fcntl.flock(lock, fcntl.LOCK_EX)
    results = campaign.Results(arguments.folder / "results.jsonl")
    if arguments.resume or arguments.again or arguments.report:
        results.read()
        results.asked["count"] = arguments.count or results.asked["count"]
    else:
        arguments.count = arguments.count or 100
        results.begin({name: getattr(arguments, name) for name in ("count", "seed", "files", "kinds", "max_units")})
    if arguments.again:
        Campaign(arguments, results).run_again()
    elif not arguments.report:
        Campaign(arguments, results).run()
    _say("\n" + "\n".join(campaign.report(results.records)))
    noticed = campaign.noticed_of(results.records)
    if noticed < arguments.need:
        _say(f"{noticed} are noticed, {arguments.need} are asked for")
    return 1 if noticed < arguments.need else 0


if __name__ == "__main__":
    sys.exit(main())
