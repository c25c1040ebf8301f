#!/usr/bin/env python3
"""Fails if the core, or the program without its desk, needs libraries of windows or drawing to run."""

import argparse
import pathlib
import subprocess
import sys

DRAWING = ("libvtk", "libQt", "libGL", "libOpenGL", "libEGL", "libX11", "libxcb")


def needed_libraries(output):
    """Names of the libraries in the output of ldd."""
    return [line.split()[0].rpartition("/")[2] for line in output.splitlines() if line.strip()]


def objections(file, output):
    return [f"{file} needs {library}" for library in needed_libraries(output) if library.startswith(DRAWING)]


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("files", type=pathlib.Path, nargs="+")
    messages = []
    for file in parser.parse_args().files:
        output = subprocess.run(["ldd", file], stdout=subprocess.PIPE, text=True, check=True).stdout
        messages += objections(file.name, output)
        if "libc.so" not in output:
            messages.append(f"{file.name}: ldd lists no libraries")
    print(*messages, f"{len(messages)} objections", sep="\n")
    return 1 if messages else 0


if __name__ == "__main__":
    sys.exit(main())
