#!/usr/bin/env python3
"""Runs the program on random mills and checks each import file that it writes.

usage: check_random_mills.py PROGRAM CHECKER MILLS FIRST LAST

PROGRAM is corvane, CHECKER check_import, MILLS the folder of mills.py; the
mills are those of the seeds FIRST to LAST. Runs that end in an error write no
import file and are only counted. Exit status 1 when a file has a fault, or
when more than a third of the runs end in an error.
"""

import os
import re
import subprocess
import sys
import tempfile

RUN_LIMIT = 120


def section_of(folder):
    """The last section of the log of a full run, wherever the parameters put it."""
    for path, _, names in os.walk(folder):
        for name in names:
            with open(os.path.join(path, name), "rb") as stream:
                content = stream.read()
            if b"**** End Corvane. " in content:
                return content[content.rindex(b"**** Start Corvane. "):].decode("utf-8")
    return None


def opened(folder, name):
    """The path under which the program opened a file: the literal name, or folders."""
    literal = os.path.join(folder, name)
    return literal if os.path.exists(literal) else os.path.join(folder, name.replace("\\", "/"))


def checker_arguments(folder, section):
    def setting(label):
        return re.search("^" + label + " *: (.*)$", section, re.MULTILINE).group(1)

    arguments = ["--odd-data"]
    if setting("Batch") == "True":
        arguments.append("--batch")
    if setting("Delay") == "False":
        arguments.append("--no-delay")
    if setting("Patterns Only") == "True":
        arguments.append("--patterns-only")
    arguments += ["--machines", opened(folder, setting("Machine File"))]
    arguments += ["--orders", opened(folder, setting("Order File"))]
    return arguments + [opened(folder, setting("Output File"))]


def check_mill(program, checker, mill, folder):
    """The checker's complaints; None for a run that ended in an error."""
    mill.write(folder)
    environment = dict(os.environ)
    environment.pop("ZEM_CVN_PARAM", None)
    environment.update(mill.environment)
    environment.pop("CORVANE_SCRIPTED_LP_SCRIPT", None)
    run = subprocess.run([program], cwd=folder, env=environment, capture_output=True,
                         timeout=RUN_LIMIT, check=False)
    if run.returncode == 1:
        return None
    section = section_of(folder)
    if run.returncode != 0 or section is None:
        return "exit status %d, log %s" % (run.returncode, "found" if section else "missing")
    done = subprocess.run([checker] + checker_arguments(folder, section), capture_output=True,
                          text=True, errors="replace", timeout=RUN_LIMIT, check=False)
    return done.stdout + done.stderr if done.returncode else ""


def main(arguments):
    if len(arguments) != 6:
        sys.stderr.write(__doc__)
        return 2
    program, checker, mills = (os.path.abspath(path) for path in arguments[1:4])
    sys.dont_write_bytecode = True
    sys.path.insert(0, mills)
    from mills import Mill
    checked = faulty = failed = 0
    for seed in range(int(arguments[4]), int(arguments[5]) + 1):
        with tempfile.TemporaryDirectory() as folder:
            complaints = check_mill(program, checker, Mill(seed), folder)
        if complaints is None:
            failed += 1
            continue
        checked += 1
        if complaints:
            faulty += 1
            print("mill %d:\n%s" % (seed, complaints))
    print("%d import files checked, %d with faults; %d runs ended in an error"
          % (checked, faulty, failed))
    return 1 if faulty or 3 * failed > checked + failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
