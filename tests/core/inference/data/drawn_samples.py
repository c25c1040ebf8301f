"""Samples that Python, R and the tests draw alike, and exact p-values by counting paths with whole numbers."""

import decimal
import itertools
import math
import random

GENERATOR_MODULUS = 2147483647
UNTIED = 2000000  # levels of samples that are to have no ties


def drawn(seed, passing, others, levels, shift):
    """A value is floor(levels * u), with u of the generator of Park and Miller (std::minstd_rand0); those of the
    passing, which are drawn first, are shifted."""
    state = seed
    values = []
    for _ in range(passing + others):
        state = state * 16807 % GENERATOR_MODULUS
        values.append(state * levels // GENERATOR_MODULUS)
    return [value + shift for value in values[:passing]], values[passing:]


def group_ends(passing, others):
    """For each distinct value the number of all and of passing values up to it."""
    pooled = sorted([(value, 1) for value in passing] + [(value, 0) for value in others])
    met = met_passing = 0
    for _, group in itertools.groupby(pooled, key=lambda pair: pair[0]):
        sides = [side for _, side in group]
        met += len(sides)
        met_passing += sum(sides)
        yield met, met_passing


def difference(passing, others):
    """F of the others less F of the passing, times both sizes, where its magnitude is largest first."""
    return max(((met - i) * len(passing) - i * len(others) for met, i in group_ends(passing, others)), key=abs)


def exact_p(passing, others):
    """The share of all splits of the pooled values that differ at least as much."""
    m, n = len(passing), len(others)
    distance = abs(difference(passing, others))
    ends = {met for met, _ in group_ends(passing, others)}
    inside = [1]  # paths to each number of passing values that have never been outside
    for met in range(1, m + n + 1):
        inside = [a + b for a, b in zip([0] + inside, inside + [0])][: m + 1]
        if met in ends:
            inside = [c if abs(i * n - (met - i) * m) < distance else 0 for i, c in enumerate(inside)]
        for i in range(max(0, min(met - n, len(inside)))):
            inside[i] = 0
    paths = math.comb(m + n, m)
    decimal.getcontext().prec = 40
    return decimal.Decimal(paths - inside[m]) / decimal.Decimal(paths)


def tied_case(generator):
    """Few levels, the passing shifted by up to all of them."""
    passing, others = random_sizes(generator)
    levels = generator.randint(2, 10)
    shift = generator.choice([0, 0, 1, generator.randint(0, levels)])
    return generator.randrange(1, 2**30), passing, others, levels, shift


def untied_case(generator):
    while True:
        passing, others = random_sizes(generator)
        shift = int(UNTIED * generator.choice([0.0, generator.uniform(-0.3, 0.3), generator.uniform(0.3, 1.1)]))
        case = generator.randrange(1, 2**30), passing, others, UNTIED, shift
        values = sum(drawn(*case), [])
        if len(set(values)) == len(values):
            return case


def random_sizes(generator):
    """1 to 300, small and large ones about as often."""
    return [round(math.exp(generator.uniform(0, math.log(300)))) if generator.random() < 0.5 else generator.randint(1, 300)
            for _ in range(2)]


def random_generator(seed):
    return random.Random(seed)
