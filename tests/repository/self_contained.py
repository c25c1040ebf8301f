#!/usr/bin/env python3
"""Fails on text that a reader of this project alone cannot follow.

That is: numbered parts of a document that is not here, documents that are not here, folders of one developer's machine,
and hosts from which only some machines install packages.
"""

import argparse
import pathlib
import re
import sys

SKIPPED_FOLDERS = {".git", ".ci", ".cache", "build", "out", "prefix", "__pycache__"}
SKIPPED_SUFFIXES = {".png", ".pdf", ".csv", ".gz", ".dat", ".dump", ".npy", ".npz", ".h5"}

TOP_LEVEL_DOMAINS = "com|dev|internal|io|lan|local|net|org"
PHRASES = {
    "a part of a document that is not here": re.compile(r"\b[Pp]arts?\s+(?:[A-Z]\s+)?\d+\.\d+|§\s*\d"),
    "a folder of one machine": re.compile(r"(?<![\w.*/-])/(?:home|root|tmp|work|Users)/\w+"),
    "a package host": re.compile(
        r"\b(?:artifactory|mirror|nexus|proxy|pypi|registry)\.(?:[\w-]+\.)*(?:%s)\b" % TOP_LEVEL_DOMAINS),
}
DOCUMENT = re.compile(r"(?<![\w*<])((?:[\w.-]+/)*[\w-]+\.md)\b")


def text_files(root):
    """All text files of the project; build folders are left out wherever they stand."""
    for path in sorted(root.iterdir()):
        if path.name in SKIPPED_FOLDERS:
            continue  # .git is a file in a further working tree
        if path.is_dir():
            if not (path / "CMakeCache.txt").exists():
                yield from text_files(path)
        elif path.suffix not in SKIPPED_SUFFIXES:
            yield path


def remarks_on(line, documents):
    for kind, pattern in PHRASES.items():
        for match in pattern.finditer(line):
            yield f"names {kind}: {match.group()}"
    for match in DOCUMENT.finditer(line):
        name = match.group(1)
        if not any(document == name or document.endswith("/" + name) for document in documents):
            yield f"names a document that is not here: {name}"


def check(root):
    """Returns the number of lines read and a message for each remark."""
    files = list(text_files(root))
    documents = {str(path.relative_to(root)) for path in files if path.suffix == ".md"}
    read = 0
    messages = []
    for path in files:
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            read += 1
            messages += [f"{path.relative_to(root)}:{number}: {remark}" for remark in remarks_on(line, documents)]
    return read, messages


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--root", type=pathlib.Path, required=True, help="source folder of the project")
    read, messages = check(parser.parse_args().root)
    print(*messages, f"{read} lines read, {len(messages)} remarks", sep="\n")
    return 1 if messages or not read else 0


if __name__ == "__main__":
    sys.exit(main())
