#!/usr/bin/env python3
"""Runs random mills through the program and the model and compares what they leave.

usage: differential.py PROGRAM LIBRARY FIRST LAST [--keep FOLDER] [--limit N] [--show-kinds]

PROGRAM is the executable linked with the scripted solver library, LIBRARY the
file of that library, FIRST and LAST the range of seeds, both included. Compared
are exit status, standard output, standard error, every file in the folder of
the run (time stamps masked), and the solver calls. A difference is shown with
its seed, the folder, and the first differing lines; after N of them (default
10) the runs stop. Exit status 1 when there was a difference, or when more than
half of the runs ended in an error, which would compare too little.
"""

import argparse
import os
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time

sys.dont_write_bytecode = True
import corvane_model
from mills import Mill

RUN_LIMIT = 120
FULL_RUN = "full run"
STAMP = re.compile(rb"\d{4}/\d{2}/\d{2} \d{2}:\d{2}:\d{2} \*{4}")
SEED_LINE = re.compile(rb"^Seed                 : \d+$", re.MULTILINE)


class Result:
    """What a run left: {name: bytes}; the exit status stands under a name of its own."""

    def __init__(self, folder, status, unseeded):
        self.parts = {"exit status": str(status).encode()}
        for path, _, names in os.walk(folder):
            for name in names:
                full = os.path.join(path, name)
                with open(full, "rb") as stream:
                    content = STAMP.sub(b"YYYY/MM/DD HH:MM:SS ****", stream.read())
                if unseeded:
                    content = SEED_LINE.sub(b"Seed                 : N", content)
                self.parts[os.path.relpath(full, folder)] = content


def environment_of(mill):
    environment = dict(os.environ)
    environment.pop("ZEM_CVN_PARAM", None)
    environment.pop("CORVANE_SCRIPTED_LP_SCRIPT", None)
    environment.update(mill.environment)
    environment["CORVANE_SCRIPTED_LP_LOG"] = "solver calls"
    return environment


def run_program(program, folder, mill):
    with open(os.path.join(folder, "stdout"), "wb") as out, \
            open(os.path.join(folder, "stderr"), "wb") as err:
        try:
            done = subprocess.run([program], cwd=folder, env=environment_of(mill), stdout=out,
                                  stderr=err, stdin=subprocess.DEVNULL, timeout=RUN_LIMIT,
                                  check=False)
            return done.returncode
        except subprocess.TimeoutExpired:
            return "timeout"


def run_model(library, folder, mill):
    """In a child process: the model uses the process's streams, environment and folder."""
    child = os.fork()
    if child == 0:
        status = 70
        try:
            signal.alarm(RUN_LIMIT)
            os.chdir(folder)
            for n, name in ((1, "stdout"), (2, "stderr")):
                descriptor = os.open(name, os.O_WRONLY | os.O_CREAT | os.O_TRUNC, 0o666)
                os.dup2(descriptor, n)
                os.close(descriptor)
            environment = environment_of(mill)
            for name in list(os.environ):
                if name not in environment:
                    del os.environ[name]
            os.environ.update(environment)
            status = corvane_model.run(library)
        except BaseException:
            import traceback
            traceback.print_exc()
            sys.stderr.flush()
        finally:
            os._exit(status)
    _, status = os.waitpid(child, 0)
    return os.waitstatus_to_exitcode(status)


def first_difference(ours, theirs):
    """Lines around the first one that differs."""
    ours, theirs = ours.split(b"\n"), theirs.split(b"\n")
    n = next((i for i, (a, b) in enumerate(zip(ours, theirs)) if a != b),
             min(len(ours), len(theirs)))
    shown = []
    for label, lines in (("program", ours), ("model  ", theirs)):
        for i in (n, n + 1):
            line = lines[i] if i < len(lines) else b"(no such line)"
            shown.append("    %s %d: %r" % (label, i + 1, line[:400]))
    return "\n".join(shown)


def compare(program_result, model_result):
    """[(name, description)] of the parts that differ"""
    differences = []
    for name in sorted(set(program_result.parts) | set(model_result.parts)):
        ours, theirs = program_result.parts.get(name), model_result.parts.get(name)
        if ours is None or theirs is None:
            side = "program" if theirs is None else "model"
            differences.append((name, "    only the %s left this file" % side))
        elif ours != theirs:
            differences.append((name, first_difference(ours, theirs)))
    return differences


def run_seed(program, library, seed, base):
    """The differences of one mill, and how the program's run ended."""
    mill = Mill(seed)
    folders = {side: os.path.join(base, str(seed), side) for side in ("program", "model")}
    for folder in folders.values():
        shutil.rmtree(folder, ignore_errors=True)
        os.makedirs(folder)
        mill.write(folder)
    program_status = run_program(program, folders["program"], mill)
    model_status = run_model(library, folders["model"], mill)
    program_result = Result(folders["program"], program_status, mill.unseeded)
    differences = compare(program_result, Result(folders["model"], model_status, mill.unseeded))
    if not differences:
        shutil.rmtree(os.path.join(base, str(seed)))
    kind = program_result.parts["stdout"] + program_result.parts["stderr"]
    errors = re.findall(rb"^(?:Error: |Could not open).*$", kind, re.MULTILINE)
    ending = errors[0].decode("utf-8", "replace")[:60] if errors else FULL_RUN
    return differences, "status %s, %s" % (program_status, ending)


def parse_arguments():
    parser = argparse.ArgumentParser(description="compare the program with the model")
    parser.add_argument("program")
    parser.add_argument("library")
    parser.add_argument("first", type=int)
    parser.add_argument("last", type=int)
    parser.add_argument("--keep", help="folder for the runs that differ")
    parser.add_argument("--limit", type=int, default=10, help="differences to stop after")
    parser.add_argument("--show-kinds", action="store_true", help="count how the runs ended")
    return parser.parse_args()


def main():
    arguments = parse_arguments()
    base = arguments.keep or tempfile.mkdtemp(prefix="corvane-differential-")
    program, library = os.path.abspath(arguments.program), os.path.abspath(arguments.library)
    different, kinds, start = [], {}, time.monotonic()
    for seed in range(arguments.first, arguments.last + 1):
        differences, kind = run_seed(program, library, seed, base)
        kinds[kind] = kinds.get(kind, 0) + 1
        if not differences:
            continue
        different.append(seed)
        print("seed %d differs, kept in %s" % (seed, os.path.join(base, str(seed))))
        for name, description in differences:
            print("  %s\n%s" % (name, description))
        sys.stdout.flush()
        if len(different) >= arguments.limit:
            break
    if arguments.show_kinds:
        for kind, count in sorted(kinds.items(), key=lambda item: -item[1]):
            print("%6d  %s" % (count, kind))
    if not different and not arguments.keep:
        os.rmdir(base)
    full = sum(count for kind, count in kinds.items() if kind.endswith(FULL_RUN))
    mills = sum(kinds.values())
    print("%d mills, %d of them full runs, %d different, %.0f s%s" % (
        mills, full, len(different), time.monotonic() - start,
        ": " + " ".join(map(str, different)) if different else ""))
    return 1 if different or 2 * full < mills else 0


if __name__ == "__main__":
    sys.exit(main())
