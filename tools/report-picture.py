#!/usr/bin/env python3
"""Makes docs/report.png anew: the first screen of the page of the three-mills sample.

    tools/report-picture.py [BUILD]        BUILD: by default build/release

Runs corvane, corvane-plan and corvane-report of the build on a copy of the sample. Needs Chromium.
"""

import pathlib
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests" / "report"))
import browser

WIDTH, HEIGHT = 1366, 1180


def main():
    programs = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else ROOT / "build" / "release") / "bin"
    with tempfile.TemporaryDirectory(prefix="corvane-picture-") as name:
        mill = pathlib.Path(name) / "three_mills"
        shutil.copytree(ROOT / "samples" / "three_mills", mill)
        for program in ("corvane", "corvane-plan", "corvane-report"):
            subprocess.run([(programs / program).resolve()], cwd=mill, check=True,
                           stdout=subprocess.DEVNULL)
        with browser.Browser() as chromium:
            chromium.media()
            chromium.resize(WIDTH, HEIGHT)
            chromium.open(mill / "data" / "report.html")
            chromium.screenshot(ROOT / "docs" / "report.png")


if __name__ == "__main__":
    main()
