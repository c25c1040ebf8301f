#!/usr/bin/env python3
"""Writes binomial_tails.csv: upper tails of binomial distributions by SciPy, checked against exact arithmetic."""

from fractions import Fraction
from math import comb
import platform

import scipy
from scipy.stats import binom

CASES = [
    (0, 10, 0.3), (1, 1, 0.25), (10, 10, 0.5), (3, 10, 0.3), (9, 10, 0.3), (11, 10, 0.3), (0, 0, 0.5), (5, 20, 0.0),
    (5, 20, 1.0), (50, 100, 0.5), (51, 100, 0.5), (95, 100, 0.5), (100, 100, 0.9), (7, 400, 0.01), (300, 500, 0.55),
    (490, 500, 0.7), (500, 500, 0.25), (800, 1000, 0.78), (999, 1000, 0.5), (2, 3000, 0.0001), (1500, 3000, 0.48),
    (2900, 3000, 0.9), (5000, 10000, 0.5), (5200, 10000, 0.5), (250000, 1000000, 0.25), (251000, 1000000, 0.25),
]


def exact(successes, trials, p):
    p = Fraction(p)
    return float(sum(comb(trials, k) * p**k * (1 - p) ** (trials - k) for k in range(successes, trials + 1)))


def main():
    with open("binomial_tails.csv", "w", encoding="utf-8") as out:
        print(f"# make_binomial_tails.py, Python {platform.python_version()}, SciPy {scipy.__version__}", file=out)
        print("successes,trials,p,upper_tail", file=out)
        for successes, trials, p in CASES:
            tail = float(binom.sf(successes - 1, trials, p))
            if trials <= 1000:
                truth = exact(successes, trials, p)
                assert abs(tail - truth) <= 1e-10 * truth, (successes, trials, p, tail, truth)
            print(successes, trials, p, repr(tail), sep=",", file=out)


if __name__ == "__main__":
    main()
