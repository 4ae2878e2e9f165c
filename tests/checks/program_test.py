#!/usr/bin/python3
"""The program as a shell sees it: exit statuses, the options, formats that others read.

    program_test.py CORVANE_CHECK SAMPLES

The findings themselves are tested in C++; here is what only the whole program can show.
"""
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

PROGRAM, SAMPLES = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
VALIDATE = pathlib.Path(__file__).parent / "sarif" / "validate.py"
GCC_LINE = re.compile(r"^[^:]+:(\d+:\d+:)? (error|warning|note): .+ \[CV\d{3}\]$")

# Mistakes of every file, some of them about a file as a whole and some in odd characters.
MISTAKES = {
    "Parameters.data": b"# A mill\nbatch =True\ntime limit=None\nlog file=logs/a.log\n",
    "machines.data": b'Alder Falls,AF1,LB42,3149.6,46,68.5,13.75\nAlder Falls,"AF2",LB42,124,0,61,10.5\n',
    "orders.data": ("1,LB42,44,75,60,Badger Box\n2,LB42\u2028,30,60,M\u00fcller Box\n"
                    "1,LB42,30,x,Badger B\u00f6x\n").encode(),
    "freightRates.data": b"Badger Box,Alder Falls,Rail,18.5,-1\nM\xfcller Box,Alder Falls,Truck,20,0",
}


def run(*arguments, folder=None, **environment):
    """Status, standard output and standard error."""
    result = subprocess.run([PROGRAM, *map(str, arguments)], cwd=folder, text=True, check=False,
                            env={**os.environ, **environment}, capture_output=True)
    return result.returncode, result.stdout, result.stderr


class ProgramTest(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.folder)
        self.mill = self.folder / "mill"
        (self.mill / "data").mkdir(parents=True)
        for name, content in MISTAKES.items():
            (self.mill / "data" / name).write_bytes(content)

    def test_exit_statuses(self):
        self.assertEqual(run(SAMPLES / "small")[0], 0)
        self.assertEqual(run(self.mill)[0], 1)
        self.assertEqual(run(self.folder / "nowhere")[0], 2)

    def test_wrong_options_are_status_two_and_say_nothing_on_standard_output(self):
        for wrong in (["--fromat", "text"], ["--format", "html"], ["--level", "all"], ["--select", "CX"],
                      ["--ignore", "CV2,"], ["--max-per-code", "-1"], ["--baseline", "/nowhere"],
                      ["--unsafe-fixes"], ["--explain", "CV999"], ["a", "b"], ["--import-file", "/nowhere"],
                      ["--import-file", "a", "--fix", "b"]):
            with self.subTest(wrong):
                status, out, errors = run(*wrong)
                self.assertEqual((status, out), (2, ""))
                self.assertTrue(errors.strip())

    def test_what_needs_no_mill_is_status_zero(self):
        for option in (["--help"], ["--version"], ["--list"], ["--explain", "cv204"]):
            status, out, errors = run(*option, folder=self.folder)
            self.assertEqual((status, errors), (0, ""))
            self.assertTrue(out.strip())

    def test_every_line_of_gcc_format_is_one(self):
        lines = run("--format", "gcc", "--level", "info", self.mill)[1].splitlines()
        self.assertGreater(len(lines), 8)
        for line in lines:
            self.assertRegex(line, GCC_LINE)

    def test_level_selection_and_bound(self):
        def codes(*options):
            out = run("--format", "json", *options, self.mill)[1]
            return [(finding["code"], finding["severity"]) for finding in json.loads(out)["findings"]]
        everything = codes("--level", "info")
        errors = codes("--level", "error")
        self.assertEqual(errors, [finding for finding in everything if finding[1] == "error"])
        self.assertLess(len(errors), len(codes()))
        self.assertEqual({code[:3] for code, _ in codes("--select", "CV7,CV3")}, {"CV7", "CV3"})
        self.assertNotIn("CV3", {code[:3] for code, _ in codes("--ignore", "CV3")})
        self.assertEqual({code for code, _ in codes("--select", "CV3", "--ignore", "CV304")}, {"CV308"})
        once = codes("--max-per-code", "1")
        self.assertEqual(len(once), len({code for code, _ in once}))

    def test_the_order_does_not_change(self):
        outputs = {run("--level", "info", self.mill, QT_HASH_SEED=seed)[1] for seed in ("0", "", "")}
        self.assertEqual(len(outputs), 1)

    def test_the_present_folder_and_the_environment_name_the_parameters(self):
        self.assertIn("\ndata/orders.data", run(folder=SAMPLES / "small")[1])
        status, out, _ = run(folder=self.folder, ZEM_CVN_PARAM=str(self.mill / "data" / "Parameters.data"))
        self.assertEqual(status, 1)
        self.assertIn("mill/data/Parameters.data:2:1: error CV701", out)

    def test_a_baseline_keeps_quiet_until_something_new_comes(self):
        baseline = self.folder / "known.json"
        baseline.write_text(run("--format", "json", "--level", "info", self.mill)[1])
        status, out, _ = run("--baseline", baseline, "--level", "info", self.mill)
        self.assertEqual(status, 0)
        self.assertIn("known in the baseline", out)
        orders = self.mill / "data" / "orders.data"
        orders.write_bytes(orders.read_bytes() + b"1,LB42,12,5\n")
        status, out, _ = run("--baseline", baseline, "--level", "info", "--format", "gcc", self.mill)
        self.assertEqual((status, out.count("\n"), "[CV202]" in out), (1, 1, True))

    def test_mended_copies_are_clean_and_the_originals_as_they_were(self):
        for options in ([], ["--unsafe-fixes"]):
            mended = self.folder / ("guessed" if options else "sure")
            self.assertEqual(run("--fix", mended, *options, self.mill)[0], 1)
            found = {code for code in re.findall(r"CV\d{3}", run("--format", "gcc", mended)[1])}
            sure = {"CV102", "CV105", "CV112", "CV113", "CV204", "CV701", "CV712"}
            self.assertFalse(found & (sure | ({"CV308", "CV211"} if options else set())))
        self.assertEqual({name: (self.mill / "data" / name).read_bytes() for name in MISTAKES}, MISTAKES)

    def test_sarif_of_many_mistakes_validates(self):
        for level in ("error", "info"):
            subprocess.run([VALIDATE, PROGRAM, "--format", "sarif", "--level", level,
                            self.mill], check=True, capture_output=True)

    def test_an_import_file_of_other_orders_is_told(self):
        status, out, _ = run("--import-file", self.mill / "data" / "orders.data", SAMPLES / "small")
        self.assertEqual(status, 1)
        self.assertIn("orders.data:1:1: error CV803", out)


unittest.main(argv=sys.argv[:1])
