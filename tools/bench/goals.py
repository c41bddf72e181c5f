"""Reads bench/goals.txt: see there for its form."""

from dataclasses import dataclass


@dataclass(frozen=True)
class Goal:
    operation: str
    programs: tuple  # names of programs; ("library",) for properties of the library
    ours: tuple  # names of the case, the first that exists counts
    peers: tuple
    limit: float
    is_work: bool  # so many times the peer's work; otherwise at most this share of its time

    def is_met(self, ratio):
        return ratio >= self.limit if self.is_work else ratio <= self.limit

    def text(self):
        return f"{self.limit:g} times" if self.is_work else f"{self.limit:.2f}"


def read(path):
    goals, programs = [], ()
    for number, line in enumerate(path.read_text().splitlines(), 1):
        if not line.strip() or line.startswith("#"):
            continue
        if line.startswith("["):
            programs = tuple(line.strip("[] ").split())
            continue
        fields = [field.strip() for field in line.split(" | ")]
        if len(fields) != 4 or not programs:
            raise SystemExit(f"{path.name}:{number}: operation | ours | peer | goal, under a line in brackets")
        operation, ours, peers, limit = fields
        goals.append(Goal(operation, programs, tuple(ours.split()), tuple(peers.split()),
                          float(limit.rstrip("x")), limit.endswith("x")))
    return goals
