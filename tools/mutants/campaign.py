"""Which faults are planted, what became of them, and the report."""

import itertools
import json
import random
from collections import Counter
from pathlib import Path

from faults import SHARES, faults_of

# What can become of a fault. The first three are noticed; the last three are left out, and others planted instead.
TEST, HANG, COMPILER, SURVIVED = "test", "hang", "compiler", "survived"
REFUSED, SAME_CODE, EQUIVALENT = "does not compile", "same code", "equivalent"
NOTICED = (TEST, HANG, COMPILER)
PLANTED = (*NOTICED, SURVIVED)

_SUFFIXES = (".cpp", ".h", ".hpp")
_EQUIVALENT = Path(__file__).with_name("equivalent.txt")


def read_sources(folder, patterns):
    """The sources below src/ that contain one of the patterns in their path, by path."""
    paths = sorted(p for p in (folder / "src").rglob("*") if p.suffix in _SUFFIXES)
    named = {str(p.relative_to(folder / "src")): p for p in paths}
    return {n: p.read_text() for n, p in named.items() if not patterns or any(part in n for part in patterns)}


def planned(sources, seed):
    """All faults in an order that depends on the seed and the sources alone: a kind by its share, then any of it."""
    chance = random.Random(seed)
    pools = {kind: [] for kind in SHARES}
    for path, source in sources.items():
        for fault in faults_of(path, source):
            pools[fault.kind].append(fault)
    for pool in pools.values():
        chance.shuffle(pool)
    while any(pools.values()):
        kinds = [kind for kind in pools if pools[kind]]
        yield pools[chance.choices(kinds, [SHARES[kind] for kind in kinds])[0]].pop()


def area_of(path):
    folders = path.split("/")
    if folders[0] == "include":
        return "C++ headers" if path.endswith(".hpp") else "C headers"
    return folders[2] if folders[0] == "common" and len(folders) > 3 else folders[0]


def read_equivalent():
    """The reviewed faults that change nothing, each as its identity."""
    found = set()
    for entry in _EQUIVALENT.read_text().split("\n\n"):
        lines = [line for line in entry.splitlines() if not line.startswith("#")]
        if lines:
            path, kind = lines[0].split()
            old, new = (" ".join(line[2:] for line in lines if line.startswith(mark)) for mark in ("- ", "+ "))
            found.add(identity({"path": path, "kind": kind, "old": old, "new": new}))
    return found


def record_of(fault, source, verdict, by, seconds):
    number, old, new = fault.lines(source)
    return {"key": fault.key, "path": fault.path, "line": number, "kind": fault.kind, "old": old, "new": new,
            "verdict": verdict, "by": by, "seconds": round(seconds, 2)}


def identity(record):
    """What a fault is, wherever its line has moved."""
    return record["path"], record["kind"], " ".join(record["old"].split()), " ".join(record["new"].split())


class Results:
    """A file of JSON lines: what was asked for, then a line for each fault."""

    def __init__(self, path):
        self.path, self.asked, self.records = path, {}, []

    def read(self):
        lines = self.path.read_text().splitlines()
        self.asked = json.loads(lines[0])
        self.records = [json.loads(line) for line in lines[1:] if line.endswith("}")]
        return self

    def begin(self, asked):
        self.asked, self.records = asked, []
        self.write()

    def write(self):
        lines = [json.dumps(entry, ensure_ascii=False) for entry in (self.asked, *self.records)]
        self.path.write_text("\n".join(lines) + "\n")

    def add(self, record):
        self.records.append(record)
        with open(self.path, "a", encoding="utf-8") as file:
            file.write(json.dumps(record, ensure_ascii=False) + "\n")


def line_of(record):
    place = f"src/{record['path']}:{record['line']}"
    return f"{record['verdict']:<16} {record['kind']:<10} {place}" + (f"  by {record['by']}" if record["by"] else "")


def _table(title, groups):
    yield f"{title:<14} planted  noticed  survived  noticed %"
    for name, verdicts in sorted(groups.items()):
        planted = sum(verdicts[v] for v in PLANTED)
        noticed = planted - verdicts[SURVIVED]
        if planted:
            yield f"{name:<14} {planted:7}  {noticed:7}  {verdicts[SURVIVED]:8}  {100 * noticed / planted:9.1f}"


def report(records):
    for title, group_of in (("area", lambda r: area_of(r["path"])), ("kind", lambda r: r["kind"]), ("all", lambda r: "")):
        groups = {}
        for record in records:
            groups.setdefault(group_of(record), Counter())[record["verdict"]] += 1
        yield from _table(title, groups)
        yield ""
    survivors = sorted((r for r in records if r["verdict"] == SURVIVED), key=lambda r: (r["kind"], r["path"], r["line"]))
    for kind, group in itertools.groupby(survivors, key=lambda r: r["kind"]):
        yield f"survivors: {kind}"
        for record in group:
            yield f"  src/{record['path']}:{record['line']}"
            yield from (f"    - {line.strip()}" for line in record["old"].splitlines())
            yield from (f"    + {line.strip()}" for line in record["new"].splitlines())
    count = Counter(record["verdict"] for record in records)
    yield (f"noticed by tests {count[TEST]}, as hangs {count[HANG]}, by the compiler {count[COMPILER]}; "
           f"survived {count[SURVIVED]}")
    yield (f"left out: {count[REFUSED]} do not compile, {count[SAME_CODE]} give the same code, "
           f"{count[EQUIVALENT]} reviewed as equivalent")


def noticed_of(records):
    return sum(record["verdict"] in NOTICED for record in records)
