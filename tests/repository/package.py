#!/usr/bin/env python3
"""Installs the build into an empty prefix, builds the smallest host against it and runs it on the test display.

Fails unless exactly the public headers are installed, the host takes the library from the prefix and nothing from the
source or build folder, and what it shows is not blank.
"""

import argparse
import json
import os
import pathlib
import shlex
import shutil
import subprocess
import sys


def run(*command):
    # Only the prefix given to the host's configuration may lead to the package.
    environment = {name: value for name, value in os.environ.items()
                   if name not in ("CMAKE_PREFIX_PATH", "Runsieve_DIR", "Runsieve_ROOT", "LD_LIBRARY_PATH")}
    finished = subprocess.run([str(word) for word in command], stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                              text=True, env=environment, check=False)
    if finished.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))}\nended with {finished.returncode}:\n{finished.stdout}")
    return finished.stdout


def expect(condition, message):
    if not condition:
        sys.exit(message)


def check_headers(prefix, include_folder, public_headers):
    root = prefix / include_folder / "runsieve"
    installed = {str(header.relative_to(root)) for header in root.rglob("*") if header.is_file()}
    expected = set(public_headers) | {"runsieve_export.h", "core/runsieve_core_export.h"}
    expect(installed == expected, f"installed headers differ from the public ones: {sorted(installed ^ expected)}")


def include_folders(commands):
    """The folders that the compiler searches, from a compile database."""
    for entry in json.loads(commands):
        words = shlex.split(entry["command"])
        for option, following in zip(words, words[1:]):
            if option == "-isystem":
                yield pathlib.Path(following)
            elif option.startswith("-I"):
                yield pathlib.Path(option[2:])


def check_origin(host, prefix, source, build):
    """The host must have found the prefix and must not look into the folders that the prefix was made from."""
    cache = (host / "CMakeCache.txt").read_text()
    expect(f"Runsieve_DIR:PATH={prefix}/" in cache, f"the package was not taken from {prefix}")
    folders = set(include_folders((host / "compile_commands.json").read_text()))
    expect(any(folder.is_relative_to(prefix) for folder in folders), "the host has no include folder of the package")
    for folder in folders:
        foreign = folder.is_relative_to(prefix) or not (folder.is_relative_to(source) or folder.is_relative_to(build))
        expect(foreign, f"the host includes from {folder}")


def build_host(name, arguments, prefix):
    """Builds an example as a host would, from the installed package; returns the program."""
    host = arguments.scratch / name
    run(arguments.cmake, "-S", arguments.source / "examples" / name, "-B", host, "-G", arguments.generator,
        f"-DCMAKE_PREFIX_PATH={prefix}", "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON",
        *("-D" + entry for entry in arguments.configure))
    check_origin(host, prefix, arguments.source, arguments.build)
    run(arguments.cmake, "--build", host)
    return host / name


def check_program(prefix, scan):
    """The installed program finds its libraries, that which draws too."""
    program = prefix / "bin" / "runsieve"
    if not program.exists():
        return
    expect("7" in run(program, "info", scan), "the installed program does not read a scan")
    picture = scan.with_suffix(".png")
    run(program, "render", scan, "-o", picture, "--width", "200", "--height", "200")
    expect(picture.stat().st_size > 500, "the installed program draws nothing")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--build", type=pathlib.Path, required=True, help="build folder of the project")
    parser.add_argument("--source", type=pathlib.Path, required=True, help="source folder of the project")
    parser.add_argument("--scratch", type=pathlib.Path, required=True, help="folder that is emptied and written")
    parser.add_argument("--public-headers", type=pathlib.Path, required=True, help="file with a header a line")
    parser.add_argument("--include-folder", default="include", help="folder of headers below the prefix")
    parser.add_argument("--cmake", default="cmake")
    parser.add_argument("--generator", default="Ninja")
    parser.add_argument("--configure", nargs="*", default=[], metavar="ARGUMENT=VALUE", help="further cache entries")
    arguments = parser.parse_args()

    prefix = arguments.scratch / "prefix"
    shutil.rmtree(arguments.scratch, ignore_errors=True)
    run(arguments.cmake, "--install", arguments.build, "--prefix", prefix)
    check_headers(prefix, arguments.include_folder, arguments.public_headers.read_text().split())

    host = build_host("minimal_host", arguments, prefix)
    print(run(host, "--quit-after-show"))

    host = build_host("core_host", arguments, prefix)
    cache = (host.parent / "CMakeCache.txt").read_text()
    expect("VTK_DIR" not in cache and "Qt5" not in cache, "a host of the core alone looks for VTK or Qt")
    scan = arguments.scratch / "scan.csv"
    scan.write_text("time,A,k\n" + "".join(f"{time},{run_number * time},{run_number}\n"
                                           for run_number in range(2, 9) for time in range(3)))
    expect("4 of 7 runs pass" in run(host, scan, "A @ 2 in 9.."), "the core gives another number of runs")
    check_program(prefix, scan)


if __name__ == "__main__":
    main()
