"""The tables of the results: rows of text, made into Markdown."""

import statistics
from dataclasses import dataclass

import cases

NOT_MEASURED = "not measured"


@dataclass
class Pair:
    """A case of ours and a peer's of the same run."""
    ours: str
    peer: str
    own_seconds: float
    peer_seconds: float
    ratio: float  # ours to the peer's: the median over the rounds that count
    rounds: str  # how many count, of how many


def duration(seconds):
    for unit, size in (("ns", 1e-9), ("us", 1e-6), ("ms", 1e-3), ("s", 1.0)):
        if seconds < 1000 * size or unit == "s":
            return f"{seconds / size:.3g} {unit}" if seconds < 100 * size else f"{seconds / size:.0f} {unit}"


def _first(names, times):
    return next((name for name in names if name in times), None)


def _fastest(pairs):
    return max(pairs, key=lambda pair: pair.ratio, default=None)


def _named(pair):
    return f"{cases.library_of(pair.peer)}, {duration(pair.peer_seconds)}"


class Results:
    """What was measured. Where no round counts, all do."""

    def __init__(self, quiet):
        self._quiet = quiet
        self._groups = []  # (program, times)

    def _counted(self, *compared):
        return self._quiet.rounds_of(*compared) or list(zip(*([each.seconds for each in case] for case in compared)))

    def _median(self, repetitions):
        return statistics.median(seconds for seconds, in self._counted(repetitions))

    def _pair(self, times, ours, peer):
        rounds = self._counted(times[ours], times[peer])
        mine, others = zip(*rounds)
        undisturbed = len(self._quiet.rounds_of(times[ours], times[peer]))
        return Pair(ours, peer, statistics.median(mine), statistics.median(others),
                    statistics.median(x / y for x, y in rounds), f"{undisturbed} of {len(times[ours])}")

    def add(self, program, times):
        self._groups.append((program, times))

    def _pairs(self, programs, names, peers=None):
        """Our case, the first of names, beside each peer of its groups, or the first of peers."""
        for program, times in self._groups:
            ours = _first(names, times)
            if program not in programs or ours is None:
                continue
            if peers is None:
                others = [case for case in times if not cases.is_ours(case)]
            else:
                others = [case for case in [_first(peers, times)] if case is not None]
            yield from (self._pair(times, ours, case) for case in others)

    def goal_row(self, goal):
        pair = next(self._pairs(goal.programs, goal.ours, goal.peers), None)
        if pair is None:
            return [goal.operation, "", "", NOT_MEASURED, goal.text(), "", "", ""]
        figure = 1 / pair.ratio if goal.is_work else pair.ratio
        met = "met" if goal.is_met(figure) else "**missed**"
        row = [goal.operation, duration(pair.own_seconds), _named(pair), f"{figure:.3f}", goal.text(), met,
               pair.rounds]
        if goal.is_work:
            return [*row[:2], f"1 thread, {duration(pair.peer_seconds)}", f"{figure:.3f} times", *row[4:], ""]
        best = _fastest(self._pairs(goal.programs, goal.ours))
        is_other = best is not None and best.peer != pair.peer and best.ratio > pair.ratio
        return [*row, f"{_named(best)}: {best.ratio:.3f}" if is_other else ""]

    def own_rows(self, program):
        """A program's cases, which have no peers."""
        for measured, times in self._groups:
            if measured == program:
                yield from ([cases.title_of(case), duration(self._median(each))] for case, each in times.items())

    def other_rows(self, goals, without):
        """Our cases without a goal, beside their fastest peers; but not those of one program."""
        family_of = {program: goal.programs for goal in goals for program in goal.programs}
        seen = {(goal.programs, case) for goal in goals for case in goal.ours + goal.peers}
        for program, times in self._groups:
            family = family_of.get(program, (program,))
            for case in times:
                if program == without or not cases.is_ours(case) or (family, case) in seen:
                    continue
                seen.add((family, case))
                best = _fastest(self._pairs(family, (case,)))
                peer = [_named(best), f"{best.ratio:.3f}"] if best is not None else ["", ""]
                yield [family[0].removesuffix("_bench"), cases.title_of(case),
                       duration(self._median(times[case])), *peer]


def markdown(header, rows):
    rows = [[str(cell).replace("|", "\\|") for cell in row] for row in rows]
    lines = [header, ["---"] * len(header), *rows]
    return "\n".join("| " + " | ".join(line) + " |" for line in lines)
