#!/usr/bin/env python3
"""Writes kolmogorov_tail.csv: the limiting distribution by SciPy."""

import pathlib

import scipy
from scipy.special import kolmogorov

rows = [f"{k / 20!r},{kolmogorov(k / 20):.16e}" for k in range(1, 371)]
lines = [f"# make_kolmogorov_tail.py, SciPy {scipy.__version__}", "z,p", *rows]
(pathlib.Path(__file__).parent / "kolmogorov_tail.csv").write_text("\n".join(lines) + "\n")
