#!/usr/bin/env python3
"""Fails on an #include that points against the layers of the project.

core <- records <- tables, items <- selection, stats, charts, adapters, persist <- styles <- plot <- widgets <- app

The core knows neither Qt nor VTK. Its folders are rooms of their own: text <- scan <- files <- read, write <- sieve.
"""

import argparse
import pathlib
import re
import sys

EXPORT_HEADERS = {"runsieve_export.h", "core/runsieve_core_export.h"}

CORE = "core"

# Rooms of the library that a room may include besides itself. No room reaches itself through others.
BELOW = {
    "core/kernels": set(),
    "core/parallel": set(),
    "core/coverage": {"core/parallel"},
    "core/text": set(),
    "core/scan": {"core/text"},
    "core/files": {"core/text", "core/scan"},
    "core/compare": {"core/text", "core/parallel", "core/kernels", "core/inference", "core/scan"},
    "core/inference": {"core/parallel"},
    "core/gate": {"core/text", "core/scan", "core/compare"},
    "core/live": {"core/parallel", "core/inference", "core/scan", "core/gate"},
    "core/read": {"core/text", "core/parallel", "core/scan", "core/files", "core/kernels"},
    "core/write": {"core/text", "core/scan", "core/files"},
    "core/sieve": {"core/text", "core/scan", "core/files", "core/kernels", "core/compare", "core/gate", "core/read"},
    "records": {"core/kernels"},
    "tables": {"records"},
    "items": {"core/parallel", "core/kernels", "core/coverage", "records"},
    "selection": {"core/parallel", "core/kernels", "records", "tables"},
    "stats": {"core/parallel", "core/kernels", "records", "tables", "selection"},
    "charts": {"records", "tables", "items"},
    "styles": {"records", "tables", "items", "charts"},
    "adapters": {"core/scan", "records", "tables"},
    "persist": {"records", "tables"},
    "plot": {"core/parallel", "records", "tables", "items", "selection", "stats", "charts", "styles", "adapters", "persist"},
    "widgets": {"records", "tables", "items", "plot"},
}

LIBRARY = "runsieve"
USERS_OF_THE_LIBRARY = ("app", "examples")
# Pictures without a display, which the gallery shares with the program.
SHARED_BY_USERS = "app/render/"
# Rooms of the core from which the program takes more than public headers: numbers as text, safe files, threads, runs
# as counts.
SHARED_WITH_APP = {"core/text", "core/files", "core/parallel", "core/coverage"}
UPPER_FOLDERS = ("app", "tests", "support", "bench", "examples")

INCLUDE = re.compile(r'^\s*#\s*include\s*(?:<([^>]+)>|"([^"]+)"|(\w+))')
BLOCK_COMMENT = re.compile(r"/\*.*?\*/", re.DOTALL)
VTK_HEADER = re.compile(r"^(vtk|QVTK)")
QT_HEADER = re.compile(r"^(Qt\w*/)?(Q[A-Z]\w*|Qt\w*|q[a-z]\w*\.h)$")


class Include:
    """One #include line."""

    def __init__(self, line, angled, quoted, macro):
        self.line = line
        self.target = angled or quoted or macro
        self.quoted = quoted is not None
        self.computed = macro is not None

    @property
    def own(self):
        """The path below runsieve/ of a header of the library, or None."""
        folder, _, path = self.target.partition("/")
        return path if folder == LIBRARY else None

    def __str__(self):
        return f'"{self.target}"' if self.quoted else f"<{self.target}>"


def room_of(path):
    """The folder of a file below runsieve/; those of the core have two parts."""
    first, _, rest = str(path).partition("/")
    return f"{first}/{rest.partition('/')[0]}" if first == CORE else first


def includes_of(text):
    text = BLOCK_COMMENT.sub(lambda comment: "\n" * comment.group().count("\n"), text)
    for number, line in enumerate(text.splitlines(), 1):
        match = INCLUDE.match(line)
        if match:
            yield Include(number, *match.groups())


class Layers:
    """The rules, with the lists that only the build knows."""

    def __init__(self, public_headers, qt_widgets):
        self.public = set(public_headers) | EXPORT_HEADERS
        self.qt_widgets = set(qt_widgets)

    def is_qt_widget(self, target):
        return target.startswith(("QtWidgets", "QVTK")) or target.split("/")[-1] in self.qt_widgets

    def objections(self, path, include):
        """Why the file at a path below the root of the project may not have this include, a line for each reason."""
        if include.computed:
            yield "a computed include hides its arrow"
        elif path.parts[0] in USERS_OF_THE_LIBRARY:
            yield from self.to_user(path.parts[0], include)
        else:
            yield from self.to_library(pathlib.PurePosixPath(*path.parts[1:]), include)

    def to_user(self, folder, include):
        shared = folder == "app" and include.own is not None and room_of(include.own) in SHARED_WITH_APP
        if include.own is not None and include.own not in self.public and not shared:
            yield f"{folder} includes public headers of the library only"
        first = include.target.split("/")[0]
        if first in UPPER_FOLDERS and first != folder and not include.target.startswith(SHARED_BY_USERS):
            yield f"{folder} includes nothing of {first}"

    def to_library(self, path, include):
        if include.target.split("/")[0] in UPPER_FOLDERS:
            yield "the library includes nothing of what uses it"
        elif include.quoted:
            yield "the library's own headers are included as <runsieve/...>"
        elif include.own is None:
            yield from self.to_foreign(path, include.target)
        elif include.own not in EXPORT_HEADERS:
            yield from self.to_own(path, include.own)

    def to_foreign(self, path, target):
        if path.parts[0] == CORE and (VTK_HEADER.match(target) or QT_HEADER.match(target)):
            yield "the core includes neither Qt nor VTK"
        elif path.parts[0] != "widgets" and self.is_qt_widget(target):
            yield "only widgets includes Qt Widgets"

    def to_own(self, path, target):
        room = room_of(path)
        allowed = BELOW.get(room, set()) | {room}
        if room_of(target) not in allowed:
            yield f"{room} includes only {', '.join(sorted(allowed))}"
        if str(path) in self.public and target not in self.public:
            yield "a public header includes public headers only"


def source_files(root):
    for folder in (LIBRARY, *USERS_OF_THE_LIBRARY):
        for file in sorted((root / folder).rglob("*")):
            if file.suffix in (".h", ".cpp"):
                yield file


def check(root, layers):
    """Returns the number of includes read and a message for each objection."""
    read = 0
    messages = []
    for file in source_files(root):
        path = file.relative_to(root)
        for include in includes_of(file.read_text(encoding="utf-8")):
            read += 1
            for objection in layers.objections(path, include):
                messages.append(f"{path}:{include.line}: {include}: {objection}")
    messages += [f"public header {header} does not exist" for header in sorted(layers.public - EXPORT_HEADERS)
                 if not (root / LIBRARY / header).is_file()]
    return read, messages


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--root", type=pathlib.Path, required=True, help="source folder of the project")
    parser.add_argument("--public-headers", type=pathlib.Path, required=True, help="file with a header a line")
    parser.add_argument("--qt-widgets", type=pathlib.Path, required=True, help="folder of the Qt Widgets headers")
    arguments = parser.parse_args()
    layers = Layers(arguments.public_headers.read_text().split(), [header.name for header in arguments.qt_widgets.iterdir()])
    read, messages = check(arguments.root, layers)
    print(*messages, f"{read} includes read, {len(messages)} objections", sep="\n")
    return 1 if messages or not (read and layers.qt_widgets) else 0


if __name__ == "__main__":
    sys.exit(main())
