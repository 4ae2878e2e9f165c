#!/usr/bin/env python3
"""A study with the real programs, killed while its engine goes on, and made whole:
local_sweep_test.py CORVANE_SWEEP MILL. Skipped (77) without GNU parallel."""

import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parent))
from study_results import results, rows, write_study


class Study(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="corvane-sweep-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.study = self.folder / "some.study"
        write_study(self.study, os.path.abspath(MILL), ["seed = 1, 2", "freight = 0 %, +10 %"])

    def sweep(self, output, **environment):
        return subprocess.run([PROGRAM, self.study, "-o", self.folder / output], check=True,
                              capture_output=True, text=True, env=dict(os.environ, **environment))

    def test_its_pages_show_every_run_and_the_plans_side_by_side(self):
        # Somebody's parameters in the environment are not those of the runs.
        self.sweep("made", ZEM_CVN_PARAM="/nowhere")
        made = self.folder / "made"
        page = (made / "study.html").read_text()
        for row in rows(made):
            self.assertEqual(row["state"], "done")
            self.assertIn(row["run"], page)
        beside = list(made.glob("compare-*.html"))
        self.assertEqual(len(beside), 2)
        for path in beside:
            self.assertIn(f'href="{path.name}"', page)
            self.assertIn("<th scope=row>Cost of the plan", path.read_text())

    def test_nothing_is_made_twice_after_a_kill(self):
        self.sweep("whole")
        killed = self.folder / "killed"
        # Only the sweep: its engine goes on beside the next one.
        with subprocess.Popen([PROGRAM, self.study, "-o", killed, "-j", "1"],
                              stdout=subprocess.DEVNULL) as sweep:
            while not results(killed) and sweep.poll() is None:
                time.sleep(0.01)
            sweep.send_signal(signal.SIGKILL)
        before = results(killed)
        self.assertTrue(before)
        self.assertFalse((killed / "study.csv").exists())
        self.sweep("killed")
        self.assertEqual(rows(killed), rows(self.folder / "whole"))
        after = results(killed)
        self.assertEqual({path: after[path] for path in before}, before)


if __name__ == "__main__":
    if shutil.which("parallel") is None:
        print("skipped: there is no GNU parallel")
        sys.exit(77)
    PROGRAM, MILL = sys.argv[1:]
    unittest.main(argv=sys.argv[:1])
