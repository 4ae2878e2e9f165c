#!/usr/bin/env python3
"""Tells what of the sources the tests reached, and fails where that is too little.

usage: tools/coverage.py BUILD [UNREACHED]

BUILD is a build folder of Clang with source-based coverage, such as
build/debug-sanitizers, whose tests have run: each process left its counts in
BUILD/profiles. Prints lines and branches of each folder under src and of all;
UNREACHED, if given, becomes a file of all lines that no test reached. Exit
status 1 when the whole is below one of the thresholds.
"""

import json
import os
import subprocess
import sys

# In per cent of all lines and branches under src.
LEAST = {"lines": 92.0, "branches": 83.0}


def tool(name):
    """Debian's commands bear the version of the compiler that wrote the counts."""
    version = subprocess.run(["clang++", "-dumpversion"], capture_output=True, text=True,
                             check=True).stdout.split(".")[0]
    return "%s-%s" % (name, version)


def is_covered_program(path):
    with open(path, "rb") as stream:
        return stream.read(4) == b"\x7fELF" and not os.path.islink(path)


def programs(build):
    folders = [os.path.join(build, "bin"), os.path.join(build, "lib", "corvane", "solver")]
    paths = [os.path.join(folder, name) for folder in folders for name in sorted(os.listdir(folder))]
    return [path for path in paths if os.path.isfile(path) and is_covered_program(path)]


def merged(build):
    folder = os.path.join(build, "profiles")
    target = os.path.join(build, "merged.profdata")
    profiles = [os.path.join(folder, name) for name in sorted(os.listdir(folder))]
    subprocess.run([tool("llvm-profdata"), "merge", "-sparse", "-o", target] + profiles, check=True)
    return target


def exported(build, sources):
    """What llvm-cov knows of the files below the folder."""
    build = os.path.abspath(build)
    paths = programs(build)
    command = [tool("llvm-cov"), "export", "-skip-functions", "-skip-expansions",
               "-instr-profile", merged(build), paths[0]]
    command += [argument for path in paths[1:] for argument in ("-object", path)]
    done = subprocess.run(command, capture_output=True, check=True)
    files = json.loads(done.stdout)["data"][0]["files"]
    for file in files:
        # A compiler may have been told paths relative to the build folder.
        file["filename"] = os.path.normpath(os.path.join(build, file["filename"]))
    return [file for file in files if file["filename"].startswith(sources + os.sep)]


def unreached_lines(segments):
    """Line numbers of the code that ran 0 times."""
    lines = set()
    for (line, _, count, counted, _, _), following in zip(segments, segments[1:]):
        if counted and count == 0:
            lines.update(range(line, following[0] + (1 if following[1] > 1 else 0)))
    return sorted(lines)


def table(files, sources):
    folders = {}
    for file in files:
        folder = os.path.relpath(file["filename"], sources).split(os.sep)[0]
        for row in (folder, "all"):
            counts = folders.setdefault(row, {kind: [0, 0] for kind in LEAST})
            for kind in LEAST:
                counts[kind][0] += file["summary"][kind]["covered"]
                counts[kind][1] += file["summary"][kind]["count"]
    return folders


def percent(covered, count):
    return 100.0 * covered / count if count else 100.0


def main(arguments):
    if len(arguments) not in (2, 3):
        sys.stderr.write(__doc__)
        return 2
    sources = os.path.join(os.path.dirname(os.path.dirname(os.path.abspath(__file__))), "src")
    files = exported(arguments[1], sources)
    folders = table(files, sources)
    for folder in sorted(folders, key=lambda name: (name == "all", name)):
        figures = ["%5.1f %% of %d %s" % (percent(*folders[folder][kind]),
                                          folders[folder][kind][1], kind) for kind in LEAST]
        print("%-10s  %s" % (folder, ", ".join(figures)))
    if len(arguments) == 3:
        with open(arguments[2], "w", encoding="utf-8") as stream:
            for file in files:
                for line in unreached_lines(file["segments"]):
                    stream.write("%s:%d\n" % (os.path.relpath(file["filename"], sources), line))
    low = [kind for kind in LEAST if percent(*folders["all"][kind]) < LEAST[kind]]
    for kind in low:
        print("below %.1f %% of the %s" % (LEAST[kind], kind))
    return 1 if low else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
