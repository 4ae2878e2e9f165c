#!/usr/bin/env python3
"""A study on a Slurm of its own, killed in the middle and made whole: slurm_sweep_test.py
CORVANE_SWEEP MILL [STUDY LINE ...]. Skipped (77) where Slurm or GNU parallel is not there or does
not start."""

import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, str(pathlib.Path(__file__).parent))
import slurm
from study_results import results, rows, write_study

PATIENCE = 120  # seconds until the first run has its result


def fail(what):
    print("FAILED:", what)
    sys.exit(1)


def kill_in_the_middle(words, environment, folder):
    """Starts a sweep and kills it, and only it, once a run is done."""
    with subprocess.Popen(words, env=environment, stdout=subprocess.DEVNULL) as sweep:
        deadline = time.monotonic() + PATIENCE
        while not results(folder) and sweep.poll() is None and time.monotonic() < deadline:
            time.sleep(0.02)
        sweep.send_signal(signal.SIGKILL)


TRIES = 5  # on a busy machine this process may see the first run when all are done


def begin(sweep, runs, folder, cluster):
    """A folder in which some of the runs are done and some are not, and those that are."""
    for number in range(TRIES):
        remote = folder / f"slurm{number}"
        kill_in_the_middle([*sweep, "-o", remote, "--jobs", "1"], cluster.environment, remote)
        cluster.cancel()
        done = results(remote)
        if 0 < len(done) < runs:
            return remote, done
    fail("the study was never killed in the middle")


def check(program, study, folder, cluster):
    local = folder / "local"
    subprocess.run([program, study, "-o", local], check=True, stdout=subprocess.DEVNULL)
    if len(rows(local)) < 3:
        fail("the study is too small to be killed in the middle")

    sweep = [program, study, "--engine", "slurm"]
    remote, before = begin(sweep, len(rows(local)), folder, cluster)
    if (remote / "study.csv").exists():
        fail("a study that was killed has a table")

    subprocess.run([*sweep, "-o", remote], env=cluster.environment, check=True,
                   stdout=subprocess.DEVNULL)
    after = results(remote)
    if any(after[path] != content for path, content in before.items()):
        fail("a run that was done was made again")
    if rows(remote) != rows(local):
        fail(f"the tables differ:\n{rows(local)}\n{rows(remote)}")
    print(f"{len(before)} of {len(after)} runs before the kill, then the same table as made here")


def main():
    program, mill, *lines = sys.argv[1:]
    if shutil.which("parallel") is None:
        print("skipped: there is no GNU parallel")
        return 77
    with tempfile.TemporaryDirectory(prefix="corvane-sweep-") as name:
        folder = pathlib.Path(name)
        study = folder / "some.study"
        write_study(study, os.path.abspath(mill), lines or ["seed = 1, 2", "occur min = 1, 2"])
        try:
            with slurm.Slurm() as cluster:
                check(program, study, folder, cluster)
        except slurm.NotHere as reason:
            print("skipped:", reason)
            return 77
    return 0


if __name__ == "__main__":
    sys.exit(main())
