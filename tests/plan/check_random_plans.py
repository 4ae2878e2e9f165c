#!/usr/bin/env python3
"""Plans random mills and checks each plan from the import file alone, and against the full form.

usage: check_random_plans.py CORVANE PLAN FULL_FORM MILLS FIRST LAST

The mills are those of mills.py in the folder MILLS, by their seeds. Runs that
write no import file, and files that cannot be planned, are only counted. Where
orders reach the largest number of rolls that there is, one roll is less than
the tolerance of an LP solver: two solvers then may differ by some rolls and
what they cost, so those plans are checked from the file alone. Exit status 1
when a plan has a fault.
"""

import glob
import json
import os
import subprocess
import sys
import tempfile

RUN_LIMIT = 120
VARIANTS = [("file", "file"), ("inf", "file"), ("file", "by-mill")]
CHECK = os.path.join(os.path.dirname(os.path.abspath(__file__)), "check_plan.py")


def run(command, **keywords):
    return subprocess.run(command, capture_output=True, text=True, errors="replace",
                          timeout=RUN_LIMIT, check=False, **keywords)


def import_file(corvane, mill, folder):
    mill.write(folder)
    environment = dict(os.environ)
    environment.pop("ZEM_CVN_PARAM", None)
    environment.update(mill.environment)
    if run([corvane], cwd=folder, env=environment).returncode != 0:
        return None
    for path in glob.glob(os.path.join(folder, "**", "*"), recursive=True):
        if os.path.isfile(path):
            with open(path, "rb") as stream:
                if stream.read().endswith(b"# End of Corvane. import file.\n"):
                    return path
    return None


# Above this one roll is below a billionth of the orders, which solvers cannot tell from none.
COMPARABLE_ROLLS = 1e8


def near(left, right):
    return abs(left - right) <= 1e-6 * max(1.0, abs(left), abs(right))


def check(programs, path, folder, variant):
    """None for a file that cannot be planned, else the faults of its plan."""
    storage, delays = variant
    output = os.path.join(folder, "plan of " + storage + delays)
    arguments = ["--import-file", path, "-o", output]
    arguments += ["--storage", "inf"] if storage == "inf" else []
    arguments += ["--delays", "by-mill"] if delays == "by-mill" else []
    planned = run([programs["plan"]] + arguments)
    if planned.returncode == 2:
        return None
    if planned.returncode != 0:
        return planned.stderr
    checked = run([sys.executable, CHECK, path, os.path.join(output, "plan.json")])
    if checked.returncode != 0:
        return checked.stdout + checked.stderr
    with open(os.path.join(output, "plan.json"), encoding="utf-8") as stream:
        plan = json.load(stream)
    if plan["totals"]["ordered_rolls"] > COMPARABLE_ROLLS:
        return ""
    # Of whole reels, which a file with batches asks for, the bound is what the full form gives.
    solver = plan["solver"]
    full = run([programs["full"], path, storage, delays])
    if full.returncode != 0:
        return "the full form: " + full.stderr
    unmet, cost = (float(word) for word in full.stdout.split())
    if near(unmet, solver["lp_unmet"]) and near(cost, solver["lp_cost"]):
        return ""
    return "unmet %r and %r, cost %r and %r" % (solver["lp_unmet"], unmet, solver["lp_cost"], cost)


def main(arguments):
    if len(arguments) != 7:
        sys.stderr.write(__doc__)
        return 2
    corvane, plan, full, mills = (os.path.abspath(path) for path in arguments[1:5])
    sys.dont_write_bytecode = True
    sys.path.insert(0, mills)
    from mills import Mill
    planned = refused = faulty = 0
    for seed in range(int(arguments[5]), int(arguments[6]) + 1):
        with tempfile.TemporaryDirectory() as folder:
            path = import_file(corvane, Mill(seed), folder)
            if path is None:
                continue
            for variant in VARIANTS:
                faults = check({"plan": plan, "full": full}, path, folder, variant)
                refused += faults is None
                planned += faults is not None
                if faults:
                    faulty += 1
                    print("mill %d %s:\n%s" % (seed, variant, faults))
    print("%d plans checked, %d refused, %d with faults" % (planned, refused, faulty))
    return 1 if faulty or not planned else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
