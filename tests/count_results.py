#!/usr/bin/env python3
"""Counts what a run of ctest did: TESTs where a test of ctest runs an executable full of them.

usage: count_results.py JUNIT RESULTS

JUNIT is the file that ctest --output-junit wrote, RESULTS the folder of the
files that the executables wrote, <test>.xml. Prints three numbers: passed,
failed, skipped. An executable that ends before it has written its file, or
fails without a failed TEST, counts as one failure.
"""

import os
import sys
import xml.etree.ElementTree


def count_executable(path):
    """Passed, failed and skipped TESTs of one file."""
    passed = failed = skipped = 0
    for case in xml.etree.ElementTree.parse(path).getroot().iter("testcase"):
        if case.find("failure") is not None:
            failed += 1
        elif case.get("result") == "completed":
            passed += 1
        else:
            skipped += 1
    return passed, failed, skipped


def is_skipped(case):
    """Whether the test itself said so. One that could not be started is not run either."""
    skipped = case.find("skipped")
    return skipped is not None and skipped.get("message", "").startswith("SKIP_")


def count_test(case, results):
    if is_skipped(case):
        return 0, 0, 1
    done = case.get("status") == "run"
    path = os.path.join(results, case.get("name") + ".xml")
    if not os.path.exists(path):
        return (1, 0, 0) if done else (0, 1, 0)
    passed, failed, skipped = count_executable(path)
    if not done and not failed:
        failed = 1
    if done and not passed:
        # Nothing failed, but nothing was tested either.
        failed += 1
    return passed, failed, skipped


def main(arguments):
    if len(arguments) != 3:
        sys.stderr.write(__doc__)
        return 2
    root = xml.etree.ElementTree.parse(arguments[1]).getroot()
    counts = [count_test(case, arguments[2]) for case in root.iter("testcase")]
    print(*(sum(column) for column in zip(*counts)))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
