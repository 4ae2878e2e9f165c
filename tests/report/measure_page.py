#!/usr/bin/env python3
"""How quick a page is: measure_page.py CORVANE_REPORT [OPTION OF make_record.py ...], by default of
10,000 patterns. Tells the time to make it, its size, when Chromium has first painted it, and how
long frames take while all of it is scrolled, on the clock and of the main thread's processor time,
which says more on a machine that is not idle."""

import json
import os
import pathlib
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, str(pathlib.Path(__file__).parent))
import browser
import make_record

LARGE = "--patterns 10000 --grades 6 --widths 60 --customers 12".split()

# Scrolls to the end, a third of a screen a frame: what comes into view is laid out on the way.
SCROLL = """new Promise((done) => {
  const frames = [];
  let last = performance.now();
  const next = () => {
    const now = performance.now();
    frames.push(now - last);
    last = now;
    if (scrollY < document.documentElement.scrollHeight - innerHeight - 1 && frames.length < 1000) {
      scrollBy(0, 300);
      requestAnimationFrame(next);
    } else {
      done(frames.slice(1));
    }
  };
  requestAnimationFrame(next);
})"""


def made(program, record, page):
    """Wall and processor seconds of the program."""
    before, start = os.times(), time.monotonic()
    subprocess.run([program, record, "-o", page], check=True, stdout=subprocess.DEVNULL)
    after = os.times()
    return (time.monotonic() - start,
            after.children_user + after.children_system
            - before.children_user - before.children_system)


def spread(frames):
    frames = sorted(frames)
    late = sum(1 for frame in frames if frame >= 50)
    return (f"median {frames[len(frames) // 2]:.0f} ms, 95 % within "
            f"{frames[int(0.95 * len(frames))]:.0f}, longest {frames[-1]:.0f}, "
            f"{100 * late / len(frames):.1f} % take 50 or more")


def main():
    program, *arguments = sys.argv[1:]
    record = make_record.Maker(make_record.options(arguments or LARGE)).make()
    nodes = sum(len(group["places"]) // 2 for group in record["network"]["nodes"])
    print(f"{len(record['patterns'])} patterns, {nodes} nodes")
    with tempfile.TemporaryDirectory(prefix="corvane-report-") as name, browser.Browser() as chromium:
        folder = pathlib.Path(name)
        (folder / "run.json").write_text(json.dumps(record))
        page = folder / "page.html"
        wall, processor = made(program, folder / "run.json", page)
        print(f"made in {wall:.2f} s ({processor:.2f} s of processor time), "
              f"{page.stat().st_size / 1e6:.2f} MB")
        chromium.resize(1366)
        for _ in range(3):
            chromium.open(page)
            painted = chromium.evaluate("performance.getEntriesByType('paint').map((e) => e.startTime)")
            frames, busy = chromium.traced("cc", "ProxyMain::BeginMainFrame",
                                           lambda: chromium.evaluate(SCROLL))
            print(f"painted after {max(painted) / 1000:.2f} s; {len(frames)} frames: "
                  f"{spread(frames)}; of the main thread's processor time in each: "
                  f"{spread([1000 * frame for frame in busy])}", flush=True)


if __name__ == "__main__":
    main()
