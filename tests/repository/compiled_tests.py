#!/usr/bin/env python3
"""Fails on a test file that no test program compiles, or that holds no test: neither would ever be missed."""

import argparse
import pathlib
import re
import sys

TEST = re.compile(r"^\s*(?:TEST|TEST_F|TEST_P|TYPED_TEST|TYPED_TEST_P)\(", re.MULTILINE)


def check(tests, compiled):
    """Returns the number of test files below a folder and a message for each bad one."""
    files = sorted(tests.glob("*/*_test.cpp"))
    messages = [f"{file}: no program compiles it" for file in files if file.resolve() not in compiled]
    messages += [f"{file}: no test in it" for file in files if not TEST.search(file.read_text(encoding="utf-8"))]
    return len(files), messages


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--tests", type=pathlib.Path, required=True, help="folder of the tests")
    parser.add_argument("--compiled", type=pathlib.Path, required=True, help="file with a compiled source a line")
    arguments = parser.parse_args()
    compiled = {(arguments.tests / source).resolve() for source in arguments.compiled.read_text().splitlines()}
    count, messages = check(arguments.tests, compiled)
    print(*messages, f"{count} test files, {len(messages)} remarks", sep="\n")
    return 1 if messages or not count else 0


if __name__ == "__main__":
    sys.exit(main())
