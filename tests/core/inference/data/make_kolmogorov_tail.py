#!/usr/bin/env python3
"""Writes kolmogorov_tail.csv: the limiting distribution by SciPy."""

import pathlib

import scipy
from scipy.special import kolmogorov

# At 1 the two series meet, and each needs the most terms.
places = sorted([k / 20 for k in range(1, 371)] + [0.999, 1.001])
rows = [f"{z!r},{kolmogorov(z):.16e}" for z in places]
lines = [f"# make_kolmogorov_tail.py, SciPy {scipy.__version__}", "z,p", *rows]
(pathlib.Path(__file__).parent / "kolmogorov_tail.csv").write_text("\n".join(lines) + "\n")
