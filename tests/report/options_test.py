#!/usr/bin/env python3
"""The options of corvane-report on runs of a small mill: options_test.py CORVANE_REPORT CORVANE
CORVANE_PLAN MILL."""

import json
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

OPTIONS = ["--output", "--plan", "--with", "--record", "--csv", "--extract", "--used-only", "--help",
           "--version"]
STUDY = {"schema": "corvane-study/1", "mill": "small", "varies": {"rand num gen seed": ["1"]},
         "runs": [{"run": "abc", "settings": {"rand num gen seed": "1"}, "data": "d",
                   "state": "done", "cost_total": 5, "unmet_rolls": 0}], "pooled": []}


class Options(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.made = tempfile.TemporaryDirectory(prefix="corvane-report-")
        mill = pathlib.Path(cls.made.name, "mill")
        shutil.copytree(MILL, mill)
        for program in (CORVANE, PLAN):
            subprocess.run([program], cwd=mill, check=True, stdout=subprocess.DEVNULL)

    @classmethod
    def tearDownClass(cls):
        cls.made.cleanup()

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="corvane-report-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        shutil.copytree(pathlib.Path(self.made.name, "mill"), self.folder / "mill")

    def run_report(self, *words, folder="."):
        return subprocess.run([REPORT, *map(str, words)], cwd=self.folder / folder,
                              capture_output=True, check=False)

    def report(self, *words, folder="."):
        done = self.run_report(*words, folder=folder)
        self.assertEqual((done.returncode, done.stderr), (0, b""))
        return done.stdout.decode()

    def refused(self, status, words, *options):
        done = self.run_report(*options)
        self.assertEqual(done.returncode, status, done)
        self.assertIn(words, done.stderr.decode())
        self.assertEqual(done.stdout, b"")

    def read(self, name):
        return (self.folder / name).read_text()

    def test_by_default_the_page_of_the_present_folder_beside_the_import_file(self):
        self.assertEqual(self.report(folder="mill"), "Report: data/report.html\n")
        self.assertIn("trim of the plan", self.read("mill/data/report.html"))

    def test_a_folder_and_a_page_elsewhere(self):
        self.assertEqual(self.report("mill", "-o", "p.html"), "Report: p.html\n")
        self.assertEqual(self.report("mill", "--output", "q.html"), "Report: q.html\n")
        self.assertEqual(self.read("p.html"), self.read("q.html"))
        self.assertFalse((self.folder / "mill/data/report.html").exists())

    def test_the_plan_elsewhere_or_none(self):
        (self.folder / "mill/data/plan/plan.json").rename(self.folder / "other.json")
        self.assertIn("There is no plan yet", self.report("mill", "-o", "none.html"))
        self.assertNotIn("trim of the plan", self.read("none.html"))
        self.report("mill", "-o", "with.html", "--plan", "other.json")
        self.assertIn("trim of the plan", self.read("with.html"))

    def test_record_and_extract_give_the_same_bytes(self):
        self.report("mill", "-o", "p.html", "--record", "run.json")
        record = self.read("run.json")
        self.assertEqual(json.loads(record)["schema"], "corvane-run/1")
        self.assertEqual(self.report("--extract", "p.html"), record)
        self.assertEqual(self.report("--extract", "p.html", "--record", "again.json"), "")
        self.assertEqual(self.read("again.json"), record)

    def test_the_page_comes_again_from_its_record_or_from_itself(self):
        self.report("mill", "-o", "p.html", "--record", "run.json")
        self.assertEqual(self.report("run.json"), "Report: report.html\n")
        self.report("p.html", "-o", "q.html")
        self.assertEqual(self.read("report.html"), self.read("p.html"))
        self.assertEqual(self.read("q.html"), self.read("p.html"))

    def test_with_a_folder_a_page_or_a_record(self):
        self.report("mill", "-o", "p.html", "--record", "run.json")
        self.assertNotIn("id=compare", self.read("p.html"))
        pages = []
        for other in ("mill", "p.html", "run.json"):
            self.report("mill", "-o", "with.html", "--with", other)
            pages.append(self.read("with.html"))
        self.assertIn("id=compare-figures", pages[0])
        self.assertEqual(pages, pages[:1] * 3)

    def test_tables_as_files(self):
        self.report("mill", "-o", "p.html", "--csv", "new/tables")
        names = {path.name for path in (self.folder / "new/tables").iterdir()}
        self.assertLessEqual({"trim-by-grade.csv", "machine-time.csv", "rolls-by-width.csv",
                              "shipments.csv", "parameters.csv"}, names)
        self.assertTrue(self.read("new/tables/shipments.csv").startswith("Mode,From,To,Rolls"))

    def test_used_only(self):
        self.report("mill", "-o", "all.html")
        self.report("mill", "-o", "used.html", "--used-only")
        self.assertIn("<tr class=u>", self.read("all.html"))
        self.assertNotIn("<tr class=u>", self.read("used.html"))
        self.assertEqual(self.report("--extract", "used.html"), self.report("--extract", "all.html"))

    def test_a_study_by_its_folder_or_file(self):
        (self.folder / "seeds-study").mkdir()
        (self.folder / "seeds-study/study.json").write_text(json.dumps(STUDY))
        self.assertEqual(self.report("seeds-study"), "Report: seeds-study/study.html\n")
        page = self.read("seeds-study/study.html")
        self.assertIn("<h1>Seeds-study</h1>", page)
        self.report("seeds-study/study.json", "-o", "p.html", "--csv", "tables")
        self.assertEqual(self.read("p.html"), page)
        self.assertIn("abc", self.read("tables/study-runs.csv"))
        for option in (["--with", "mill"], ["--plan", "x"], ["--record", "x"], ["--used-only"]):
            self.refused(1, "is a study", "seeds-study", *option)
        self.refused(1, "is read", "seeds-study", "-o", "seeds-study/study.json")

    def test_help_and_version(self):
        text = self.report("--help")
        for option in OPTIONS:
            self.assertIn(option, text)
        self.assertRegex(self.report("--version"), r"^corvane-report \d+\.\d+\.\d+\n$")

    def test_wrong_options_are_status_2(self):
        for words in (["--no-such"], ["mill", "mill"], ["--extract", "p.html", "mill"], ["-o"]):
            self.refused(2, "corvane-report: ", *words)

    def test_what_cannot_be_read_is_status_1(self):
        self.refused(1, "nowhere", "nowhere")
        self.refused(1, "The plan nowhere cannot be taken", "mill", "--plan", "nowhere")
        self.refused(1, "nowhere", "mill", "--with", "nowhere")
        self.refused(1, "There is no run record", "--extract", "mill/data/orders.data")
        self.refused(1, "is no run record", "mill/data/orders.data")
        (self.folder / "mill/data/CV.imp").unlink()
        self.refused(1, "CV.imp", "mill")

    def test_what_cannot_be_written_is_status_1(self):
        for option in ("-o", "--record"):
            self.refused(1, "cannot be written", "mill", option, "mill")
        self.refused(1, "cannot be made", "mill", "--csv", "mill/data/CV.imp/x")

    def test_what_is_read_is_not_written(self):
        self.report("mill", "-o", "p.html", "--record", "run.json")
        shutil.copy(self.folder / "mill/data/plan/plan.json", self.folder / "plan.json")
        before = {path: path.read_bytes() for path in self.folder.rglob("*") if path.is_file()}
        for option in ("-o", "--record"):
            for name in ("CV.imp", "orders.data", "machines.data", "freightRates.data", "corvane.log",
                         "Parameters.data", "plan/plan.json"):
                self.refused(1, "is read", "mill", option, f"mill/data/{name}")
            self.refused(1, "is read", "run.json", option, "run.json")
            self.refused(1, "is read", "mill", "--with", "p.html", option, "p.html")
            self.refused(1, "is read", "run.json", "--with", "mill", option, "mill/data/CV.imp")
            self.refused(1, "is read", "mill", "--plan", "plan.json", option, "plan.json")
        self.refused(1, "is read", "--extract", "p.html", "--record", "p.html")
        self.refused(1, "cannot be the page and the record", "mill", "-o", "x", "--record", "x")
        self.assertEqual(before, {path: path.read_bytes() for path in self.folder.rglob("*")
                                  if path.is_file()})


if __name__ == "__main__":
    REPORT, CORVANE, PLAN, MILL = sys.argv[1:]
    unittest.main(argv=sys.argv[:1])
