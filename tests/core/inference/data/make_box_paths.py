#!/usr/bin/env python3
"""Writes box_paths.csv and box_choices.csv: the patient rule induction method on small scans.

Written from the publications, by values and sets of runs, without anything of the library: Friedman and Fisher,
Statistics and Computing 9, 1999; Bryant and Lempert, Technological Forecasting and Social Change 77, 2010; the
criterion for peels of many runs after Kwakkel and Jaxa-Rozen, Environmental Modelling and Software 79, 2016.
"""

from fractions import Fraction
from math import inf
import platform

import scipy
from scipy.stats import binom

SCANS = 16
PARAMETERS = 5
CATEGORIES = 4
LEAST_MASS = 0.05


class Random:
    """Knuth's MMIX generator, whose upper 20 bits make a number in [0, 1)."""

    def __init__(self, seed):
        self.state = seed

    def uniform(self):
        self.state = (self.state * 6364136223846793005 + 1442695040888963407) % 2**64
        return (self.state >> 44) / 2**20


class Scan:
    def __init__(self, number):
        random = Random(number)
        self.fraction = 0.1 if number % 2 else 0.05
        self.kinds = [("numbers", "levels", "missing", "text")[(number + j) % 4] for j in range(PARAMETERS)]
        self.rows = []
        self.passing = set()
        for run in range(100 + 25 * number):
            uniform = [random.uniform() for _ in range(PARAMETERS)]
            noise = random.uniform() < 0.1
            if (uniform[0] < 0.6 and uniform[1] > 0.3) != noise:
                self.passing.add(run)
            self.rows.append([self.value(kind, u, random, number) for kind, u in zip(self.kinds, uniform)])
        self.runs = set(range(len(self.rows)))

    @staticmethod
    def value(kind, uniform, random, number):
        if kind == "levels":
            return float(int(uniform * (5 + number)))
        if kind == "missing":
            return None if random.uniform() < 0.125 else uniform
        if kind == "text":
            return int(uniform * CATEGORIES)
        return inf if uniform > 0.97 else uniform

    def inside(self, box):
        return {run for run in self.runs if all(holds(limits, self.rows[run][j]) for j, limits in box.items())}

    def only_outside_of(self, box, parameter):
        """Runs that the range of one parameter alone keeps out."""
        others = {j: limits for j, limits in box.items() if j != parameter}
        return self.inside(others) - self.inside(box)


def holds(limits, value):
    if value is None:
        return False
    return value in limits if isinstance(limits, frozenset) else limits[0] <= value <= limits[1]


def is_free(limits):
    return len(limits) == CATEGORIES if isinstance(limits, frozenset) else limits == (-inf, inf)


def without_free(box):
    return {j: limits for j, limits in box.items() if not is_free(limits)}


def limit(inside, outside):
    return inside if abs(inside) == inf or abs(outside) == inf else (inside + outside) / 2


def everything(scan, parameter):
    return frozenset(range(CATEGORIES)) if scan.kinds[parameter] == "text" else (-inf, inf)


def share(fraction, runs):
    return max(1, int(fraction * len(runs)))


def first_values(values, counts, most):
    """Of values in the order in which they are taken: those taken."""
    taken = values[:1]
    while len(taken) < len(values) and sum(counts[v] for v in values[: len(taken) + 1]) <= most:
        taken = values[: len(taken) + 1]
    return taken


def counted(values):
    counts = {}
    for value in values:
        counts[value] = counts.get(value, 0) + 1
    return counts


def peels(scan, box, runs):
    """(parameter, kind, limit or category, new range) in the order in which the first of equal ones counts."""
    for j in range(PARAMETERS):
        counts = counted(scan.rows[run][j] for run in runs if scan.rows[run][j] is not None)
        now = box.get(j, everything(scan, j))
        values = sorted(counts)
        if len(values) < 2:
            continue
        if scan.kinds[j] == "text":
            for category in values:
                yield j, "category", category, now - {category}
            continue
        k = share(scan.fraction, runs)
        taken = first_values(values[:-1], counts, k)
        low = limit(values[len(taken)], taken[-1])
        yield j, "low", low, (low, now[1])
        taken = first_values(values[:0:-1], counts, k)
        high = limit(values[-1 - len(taken)], taken[-1])
        yield j, "high", high, (now[0], high)


def density(scan, runs):
    return Fraction(len(runs & scan.passing), len(runs))


def path(scan):
    """(box, runs, peel) for each step."""
    box, runs = {}, scan.runs
    steps = [(box, runs, None)]
    while 0 < density(scan, runs) < 1:
        best = None
        for j, kind, value, limits in peels(scan, box, runs):
            smaller = {**box, j: limits}
            left = {run for run in runs if holds(limits, scan.rows[run][j])}
            if len(left) / len(scan.runs) < LEAST_MASS or not left & scan.passing:
                continue
            removed = len(runs) - len(left)
            score = (density(scan, left) - density(scan, runs)) / max(removed, share(scan.fraction, runs))
            if best is None or (score, -removed) > best[0]:
                best = (score, -removed), smaller, left, (j, kind, value)
        if best is None:
            break
        _, box, runs, peel = best
        steps.append((box, runs, peel))
    return steps


def pastes(scan, box, runs):
    k = share(scan.fraction, runs)
    for j, limits in box.items():
        near = scan.only_outside_of(box, j)
        counts = counted(scan.rows[run][j] for run in near if scan.rows[run][j] is not None)
        if isinstance(limits, frozenset):
            for category in set(range(CATEGORIES)) - limits:
                yield {**box, j: limits | {category}}
            continue
        below = sorted((value for value in counts if value < limits[0]), reverse=True)
        if below:
            taken = first_values(below, counts, k)
            rest = below[len(taken) :]
            yield {**box, j: (limit(taken[-1], rest[0]) if rest else -inf, limits[1])}
        above = sorted(value for value in counts if value > limits[1])
        if above:
            taken = first_values(above, counts, k)
            rest = above[len(taken) :]
            yield {**box, j: (limits[0], limit(taken[-1], rest[0]) if rest else inf)}


def pasted(scan, box):
    while True:
        runs = scan.inside(box)
        best = (density(scan, runs), len(runs)), None
        for wider in map(without_free, pastes(scan, box, runs)):
            more = scan.inside(wider)
            value = density(scan, more), len(more)
            if (more - runs) & scan.passing and value > best[0]:
                best = value, wider
        if best[1] is None:
            return box
        box = best[1]


def quasi_p(scan, box, wider):
    """The value of the limits that a wider box lacks, and whether they keep out any run."""
    runs, more = scan.inside(box), scan.inside(wider)
    passing = len(runs & scan.passing)
    return float(binom.sf(passing - 1, len(runs), len(more & scan.passing) / len(more))), more != runs


def without_limits(box):
    """(parameter, side, the box that lacks it)"""
    for j, limits in box.items():
        others = {i: other for i, other in box.items() if i != j}
        if isinstance(limits, frozenset):
            yield j, "range", others
            continue
        if limits[0] > -inf:
            yield j, "low", without_free({**box, j: (-inf, limits[1])})
        if limits[1] < inf:
            yield j, "high", without_free({**box, j: (limits[0], inf)})


def significant(scan, box):
    while box:
        best = -1, None
        for _, _, wider in without_limits(box):
            p, matters = quasi_p(scan, box, wider)
            p = p if matters else inf
            if p > best[0]:
                best = p, wider
        if best[0] <= 0.05:
            break
        box = best[1]
    return box


def knee(scan, steps):
    def f1(step):
        inside = step[1]
        return Fraction(2 * len(inside & scan.passing), len(inside) + len(scan.passing))

    return max(steps, key=f1)[0]


def describe(scan, box):
    for j, limits in sorted(box.items()):
        sides = {side: quasi_p(scan, box, wider)[0] for i, side, wider in without_limits(box) if i == j}
        whole = quasi_p(scan, box, {i: other for i, other in box.items() if i != j})[0]
        text = isinstance(limits, frozenset)
        low, high = (-inf, inf) if text else limits
        kept = "".join("1" if c in limits else "0" for c in range(CATEGORIES)) if text else "-"
        yield j, repr(low), repr(high), kept, sides.get("low", "nan"), sides.get("high", "nan"), whole


def main():
    made_by = f"# make_box_paths.py, Python {platform.python_version()}, SciPy {scipy.__version__}"
    with open("box_paths.csv", "w", encoding="utf-8") as paths, open("box_choices.csv", "w", encoding="utf-8") as boxes:
        print(made_by, "scan,parameter,kind,limit,inside,passing", sep="\n", file=paths)
        print(made_by, "scan,box,parameter,low,high,kept,p_low,p_high,p_range", sep="\n", file=boxes)
        for number in range(1, SCANS + 1):
            scan = Scan(number)
            steps = path(scan)
            for _, runs, peel in steps[1:]:
                print(number, *peel, len(runs), len(runs & scan.passing), sep=",", file=paths)
            box = pasted(scan, knee(scan, steps))
            for name, chosen in ("pasted", box), ("significant", significant(scan, box)):
                for row in describe(scan, chosen):
                    print(number, name, *row, sep=",", file=boxes)


if __name__ == "__main__":
    main()
