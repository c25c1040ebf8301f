#!/usr/bin/env python3
"""Writes two_sample_p.csv and two_sample_p_tail.csv: p-values by counting paths with whole numbers, and those of SciPy
for samples without ties. Afterwards run make_two_sample_p_r.R."""

import pathlib
import platform

import scipy
from scipy.stats import ks_2samp

from drawn_samples import UNTIED, difference, drawn, exact_p, random_generator, tied_case, untied_case

FOLDER = pathlib.Path(__file__).parent
MADE_BY = f"# make_two_sample_p.py, Python {platform.python_version()}, SciPy {scipy.__version__}"


def write(name, header, rows):
    lines = [MADE_BY, header] + [",".join(str(field) for field in row) for row in rows]
    (FOLDER / name).write_text("\n".join(lines) + "\n")


def small_cases():
    generator = random_generator(1)
    for kind in [tied_case] * 1000 + [untied_case] * 1000:
        case = kind(generator)
        passing, others = drawn(*case)
        scipys = ks_2samp(passing, others, method="exact").pvalue if kind is untied_case else float("nan")
        yield *case, difference(passing, others), f"{exact_p(passing, others):.11e}", f"{scipys:.11e}"


def tail_cases():
    """Larger samples far apart, every other pair so far that p is about 1e-300."""
    generator = random_generator(2)
    for k in range(60):
        levels = generator.choice([20, 100, 1000, UNTIED])
        sizes = generator.randint(450, 900), generator.randint(450, 900)
        seed = generator.randrange(1, 2**30)
        if k % 2 == 0:
            shift = int(levels * generator.uniform(0.6, 1.02))
        else:
            shift = least_shift_below(-300, seed, *sizes, levels) - generator.randint(0, 1)
        case = seed, *sizes, levels, shift
        samples = drawn(*case)
        yield *case, difference(*samples), f"{exact_p(*samples):.11e}"


def least_shift_below(exponent, seed, passing, others, levels):
    """The first shift at which p is less than 10**exponent, or one at which the samples are apart."""
    above, below = 0, levels + 1
    while below - above > max(1, levels // 2000):
        middle = (above + below) // 2
        if exact_p(*drawn(seed, passing, others, levels, middle)).adjusted() < exponent:
            below = middle
        else:
            above = middle
    return below


write("two_sample_p.csv", "seed,passing,others,levels,shift,difference,p,p_scipy", small_cases())
write("two_sample_p_tail.csv", "seed,passing,others,levels,shift,difference,p", tail_cases())
