#!/usr/bin/env python3
"""The page in a real browser: page_browser_test.py CORVANE_REPORT. Skipped (77) without Chromium."""

import json
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parent))
import browser
import make_record

# What the rules of accessibility ask of the page, as far as a page can be asked: names of what can
# be used, heads and captions of tables, the order of headings, one main part, a language, a title.
RULES = r"""(() => {
  const faults = [];
  const named = (e) => (e.getAttribute("aria-label") || e.textContent ||
    (e.labels && e.labels.length && e.labels[0].textContent) || "").trim();
  if (!document.documentElement.lang || !document.title) faults.push("no language or title");
  if (document.querySelectorAll("main").length !== 1) faults.push("not one main part");
  if (document.querySelectorAll("h1").length !== 1) faults.push("not one h1");
  let last = 0;
  for (const h of document.querySelectorAll("h1,h2,h3")) {
    const level = Number(h.tagName[1]);
    if (level > last + 1) faults.push("heading jumps: " + h.textContent);
    last = level;
  }
  for (const e of document.querySelectorAll("a,button,input,select,summary")) {
    if (!named(e)) faults.push("no name: " + e.outerHTML.slice(0, 80));
    if (e.tabIndex < 0) faults.push("not in reach of the keyboard: " + named(e));
  }
  for (const t of document.querySelectorAll("table")) {
    if (!t.caption || !t.caption.textContent.trim()) faults.push("no caption: " + t.id);
    for (const c of t.tHead.rows[0].cells) if (c.scope !== "col") faults.push("no scope: " + t.id);
    for (const b of t.tBodies) for (const r of b.rows)
      if (r.cells[0].tagName !== "TH" || r.cells[0].scope !== "row") faults.push("no row head: " + t.id);
  }
  for (const r of document.querySelectorAll("[role=region]")) {
    const by = r.getAttribute("aria-labelledby");
    if (!r.getAttribute("aria-label") && !(by && document.getElementById(by)))
      faults.push("no name of a region");
    if (r.tabIndex !== 0) faults.push("a region that scrolls is out of reach of the keyboard");
  }
  for (const p of document.querySelectorAll("svg,canvas,img"))
    if (p.getAttribute("aria-hidden") !== "true" && !p.getAttribute("aria-label"))
      faults.push("a picture without text");
  const ids = [...document.querySelectorAll("[id]")].map((e) => e.id);
  if (new Set(ids).size !== ids.length) faults.push("an id stands twice");
  for (const a of document.querySelectorAll("a[href^='#']"))
    if (!document.getElementById(a.getAttribute("href").slice(1))) faults.push("leads nowhere: " + a.href);
  return faults;
})()"""

# The least contrast of any text with its ground, and where.
CONTRAST = r"""(() => {
  const rgb = (text) => { const n = text.match(/[\d.]+/g).map(Number);
    return {c: n.slice(0, 3), a: n.length > 3 ? n[3] : 1}; };
  const lum = (c) => { const l = c.map((v) => { v /= 255;
    return v <= 0.04045 ? v / 12.92 : ((v + 0.055) / 1.055) ** 2.4; });
    return 0.2126 * l[0] + 0.7152 * l[1] + 0.0722 * l[2]; };
  const ground = (e) => { for (; e; e = e.parentElement) {
    const b = rgb(getComputedStyle(e).backgroundColor); if (b.a === 1) return b.c; }
    return [255, 255, 255]; };
  let least = [21, ""];
  const walker = document.createTreeWalker(document.body, NodeFilter.SHOW_TEXT);
  for (let n = walker.nextNode(); n; n = walker.nextNode()) {
    const e = n.parentElement;
    if (!n.textContent.trim() || e.closest("script,style,svg,noscript,option")) continue;
    const x = lum(rgb(getComputedStyle(e).color).c), y = lum(ground(e));
    const ratio = (Math.max(x, y) + 0.05) / (Math.min(x, y) + 0.05);
    if (ratio < least[0]) least = [ratio, e.className + ": " + n.textContent.trim().slice(0, 40)];
  }
  return least;
})()"""

COLUMN = """(id, column) => [...document.querySelectorAll(`#${id} tbody:not(.total) tr`)]
  .filter((row) => !row.hidden).map((row) => row.cells[column] ? row.cells[column].textContent : "")"""


class Page(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory(prefix="corvane-report-")
        path = pathlib.Path(cls.folder.name)
        for name, arguments in [("run", []), ("other", ["--seed", "8"]), ("bare", ["--no-plan"]),
                                ("long", ["--patterns", "400", "--grades", "1"])]:
            record = make_record.Maker(make_record.options(arguments)).make()
            (path / f"{name}.json").write_text(json.dumps(record))
        cls.page = path / "page.html"
        cls.bare = path / "bare.html"
        cls.make(path / "run.json", "-o", cls.page, "--with", path / "other.json")
        cls.make(path / "bare.json", "-o", cls.bare)
        cls.long = path / "long.html"
        cls.make(path / "long.json", "-o", cls.long)
        cls.browser = browser.Browser()

    @classmethod
    def tearDownClass(cls):
        cls.browser.close()
        cls.folder.cleanup()

    @staticmethod
    def make(*arguments):
        subprocess.run([PROGRAM, *map(str, arguments)], check=True, stdout=subprocess.DEVNULL)

    def setUp(self):
        self.browser.media()
        self.browser.resize(1366)
        self.browser.open(self.page)

    def column(self, table, column):
        return self.browser.evaluate(f"({COLUMN})({json.dumps(table)}, {column})")

    def click_head(self, table, column):
        self.browser.evaluate(
            f"document.querySelectorAll('#{table} thead button')[{column}].click()")

    def draw(self):
        self.browser.evaluate("dispatchEvent(new Event('beforeprint'))")

    def test_asks_for_nothing_and_complains_of_nothing(self):
        self.draw()
        self.assertEqual(self.browser.complaints(), [])
        self.assertEqual(self.browser.requests(), [self.page.resolve().as_uri()])

    def test_a_customer_named_like_a_script_is_a_name(self):
        self.assertIsNone(self.browser.evaluate("window.wasRun || null"))
        self.assertIn(make_record.EVIL, set(self.column("shipments", 2)))

    def test_tables_sort_by_number_and_by_text(self):
        self.click_head("shipments", 3)
        rolls = [float(text.replace(",", "")) for text in self.column("shipments", 3)]
        self.assertEqual(rolls, sorted(rolls))
        self.assertGreater(len(set(rolls)), 10)
        self.click_head("shipments", 3)
        rolls = [float(text.replace(",", "")) for text in self.column("shipments", 3)]
        self.assertEqual(rolls, sorted(rolls, reverse=True))
        self.assertEqual(self.browser.evaluate(
            "document.querySelectorAll('#shipments th')[3].getAttribute('aria-sort')"), "descending")
        self.click_head("shipments", 0)
        modes = self.column("shipments", 0)
        self.assertEqual(modes, sorted(modes))

    def test_empty_cells_come_last_either_way(self):
        for _ in range(2):
            self.click_head("patterns-1", 6)
            reels = self.column("patterns-1", 6)
            used = sum(1 for text in reels if text)
            self.assertTrue(all(reels[:used]))
            self.assertGreater(len(reels), used)

    def test_totals_stay_first(self):
        self.click_head("shipments", 3)
        self.assertEqual(self.browser.evaluate(
            "document.querySelector('#shipments tbody').className"), "total")

    def test_filters_rows_by_all_words(self):
        everything = self.column("shipments", 0)
        self.browser.evaluate("""(() => {
          const filter = document.querySelector('#shipments').parentElement.previousElementSibling
            .querySelector('input');
          filter.value = 'rail falls';
          filter.dispatchEvent(new Event('input'));
        })()""")
        shown = self.column("shipments", 0)
        self.assertEqual(set(shown), {"Rail"})
        self.assertEqual(set(self.column("shipments", 1)), {"Alder Falls"})
        self.assertLess(len(shown), len(everything))

    def test_saves_what_is_shown_as_csv(self):
        csv = self.browser.evaluate("""(async () => {
          let made = null;
          URL.createObjectURL = (blob) => { made = blob; return 'blob:none'; };
          HTMLAnchorElement.prototype.click = function () { made.file = this.download; };
          const tools = document.querySelector('#shipments').parentElement.previousElementSibling;
          tools.querySelector('button').click();
          return [made.file, await made.text()];
        })()""")
        self.assertEqual(csv[0], "shipments.csv")
        lines = csv[1].split("\r\n")
        self.assertEqual(lines[0], "Mode,From,To,Rolls,Inches,Freight,A roll")
        self.assertEqual(len(lines), len(self.column("shipments", 0)) + 2)
        self.assertIn('"Cedar <Narrows> & ""Co"""', csv[1])
        self.assertNotRegex(csv[1], r"\d,\d{3}\.\d")

    def test_the_comparison_is_there(self):
        names = self.column("compare-figures", 0)
        self.assertEqual(names[0], "Cost of the plan")
        self.assertIn("– freight", names)

    def test_the_network_is_drawn_when_it_is_looked_at(self):
        self.assertIsNone(self.browser.evaluate("document.getElementById('drawing').dataset.arcs || null"))
        self.draw()
        flows = len(json.loads(pathlib.Path(self.folder.name, "run.json").read_text())["plan"]["flows"])
        drawn = "Number(document.getElementById('drawing').dataset.arcs)"
        self.assertEqual(self.browser.evaluate(drawn), flows)
        self.browser.evaluate("""(() => {
          const grade = document.querySelector('#drawing select');
          grade.value = 'G1';
          grade.dispatchEvent(new Event('change'));
        })()""")
        self.assertTrue(0 < self.browser.evaluate(drawn) < flows)
        self.browser.evaluate("document.querySelectorAll('#drawing input')[0].click()")
        self.assertGreater(self.browser.evaluate(drawn), flows // 2)
        inked = """(() => {
          const canvas = document.querySelector('canvas');
          const data = canvas.getContext('2d').getImageData(0, 0, canvas.width, canvas.height).data;
          return data.some((value, i) => i % 4 === 3 && value > 0);
        })()"""
        self.assertTrue(self.browser.evaluate(inked))
        self.browser.evaluate("document.querySelectorAll('#drawing input')[1].click()")
        self.assertTrue(self.browser.evaluate(inked))
        self.assertEqual(self.browser.complaints(), [])

    def test_keeps_the_rules_of_accessibility(self):
        for page in (self.page, self.bare):
            self.browser.open(page)
            self.draw()
            self.assertEqual(self.browser.evaluate(RULES), [])

    def test_text_can_be_read_on_its_ground(self):
        for scheme in ("light", "dark"):
            self.browser.media("", scheme)
            ratio, where = self.browser.evaluate(CONTRAST)
            self.assertGreaterEqual(ratio, 4.5, f"{scheme}: {where}")

    def test_nothing_is_cut_off_at_any_width(self):
        for width in (1366, 360):
            self.browser.resize(width)
            self.assertLessEqual(self.browser.evaluate("document.documentElement.scrollWidth"), width)
            cut = self.browser.evaluate("""[...document.querySelectorAll('table')].filter((table) =>
              table.getBoundingClientRect().width > table.parentElement.clientWidth + 1
              && getComputedStyle(table.parentElement).overflowX !== 'auto').map((table) => table.id)""")
            self.assertEqual(cut, [])

    def test_at_1366_the_patterns_need_no_scrolling(self):
        self.assertTrue(self.browser.evaluate(
            "[...document.querySelectorAll('details .box')].every((b) => b.scrollWidth <= b.clientWidth)"))

    def test_printed_heads_repeat_and_no_row_is_split(self):
        self.browser.media("print")
        style = "getComputedStyle(document.querySelector('#patterns-1 %s')).%s"
        self.assertEqual(self.browser.evaluate(style % ("thead", "display")), "table-header-group")
        self.assertEqual(self.browser.evaluate(style % ("tbody tr", "breakInside")), "avoid")
        self.assertEqual(self.browser.evaluate(
            "getComputedStyle(document.querySelector('#patterns-1').parentElement).overflowX"), "visible")
        printed = self.browser.pdf()
        sheets = re.findall(rb"/MediaBox\s*\[([^\]]*)\]", printed)
        self.assertGreater(len(sheets), 3)
        width, height = (float(n) for n in sheets[0].split()[2:])
        self.assertAlmostEqual(width, 842, delta=2)
        self.assertAlmostEqual(height, 595, delta=2)

    def test_printed_heads_stand_on_every_page_of_a_table(self):
        if shutil.which("pdftotext") is None:
            self.skipTest("there is no pdftotext (package poppler-utils)")
        self.browser.open(self.long)
        printed = pathlib.Path(self.folder.name, "long.pdf")
        printed.write_bytes(self.browser.pdf())
        text = subprocess.run(["pdftotext", "-layout", printed, "-"], check=True,
                              capture_output=True, text=True).stdout
        pages = [page for page in text.split("\f") if page.count(" × ") > 10]
        self.assertGreater(len(pages), 5)
        for page in pages:
            self.assertRegex(page, r"Machine +Deckle +Cut, to one scale +Rolls, in")

    # Rows of a long table stand in several, of which the first has the heads that sort.
    LONG_ROWS = """[...document.querySelectorAll('#patterns .piece')].filter((part) => !part.hidden)
      .flatMap((part) => [...part.querySelectorAll('tbody tr')]).filter((row) => !row.hidden)
      .map((row) => row.cells[4].textContent)"""

    def test_a_long_table_in_parts_sorts_and_filters_as_one(self):
        self.browser.open(self.long)
        before = self.browser.evaluate(self.LONG_ROWS)
        self.assertGreater(self.browser.evaluate("document.querySelectorAll('#patterns .piece').length"),
                           5)
        self.click_head("patterns-1", 4)
        trims = self.browser.evaluate(self.LONG_ROWS)
        self.assertEqual(sorted(trims), sorted(before))
        numbers = [float(text.replace(",", "")) for text in trims]
        self.assertEqual(numbers, sorted(numbers))
        self.browser.evaluate("""(() => {
          const filter = document.querySelector('#patterns input');
          filter.value = document.querySelector('#patterns-1 tbody tr').cells[0].textContent;
          filter.dispatchEvent(new Event('input'));
        })()""")
        some = self.browser.evaluate(self.LONG_ROWS)
        self.assertTrue(0 < len(some) < len(trims))
        heights = self.browser.evaluate("""[...document.querySelectorAll('#patterns .piece')]
          .filter((part) => !part.hidden).map((part) => part.querySelectorAll('tbody tr:not([hidden])').length)""")
        self.assertTrue(all(rows == 40 for rows in heights[:-1]), heights)

    def test_columns_of_all_parts_are_as_wide(self):
        self.browser.open(self.long)
        for width in (1366, 1000):
            self.browser.resize(width)
            self.browser.evaluate("new Promise((done) => requestAnimationFrame(done))")
            places = self.browser.evaluate("""[...document.querySelectorAll('#patterns .piece')].map((part) =>
              [...part.querySelector('tbody tr').cells].slice(0, 6).map((cell) => Math.round(cell.getBoundingClientRect().x)).join())""")
            self.assertEqual(len(set(places)), 1, places)

    def test_a_long_table_is_whole_on_paper_and_in_parts_again(self):
        self.browser.open(self.long)
        before = self.browser.evaluate(self.LONG_ROWS)
        self.browser.evaluate("dispatchEvent(new Event('beforeprint'))")
        self.assertEqual(self.browser.evaluate("document.querySelectorAll('.piece').length"), 0)
        self.assertEqual(self.column("patterns-1", 4), before)
        self.browser.evaluate("dispatchEvent(new Event('afterprint'))")
        self.assertEqual(self.browser.evaluate(self.LONG_ROWS), before)

    def test_reads_without_script(self):
        self.browser.call("Emulation.setScriptExecutionDisabled", value=True)
        try:
            self.browser.open(self.page)
            text = self.browser.evaluate("document.body.innerText")
            heads = self.browser.evaluate("document.querySelectorAll('thead button, .tools').length")
        finally:
            self.browser.call("Emulation.setScriptExecutionDisabled", value=False)
        self.assertIn("trim of the plan", text)
        self.assertIn("The drawing needs the page's own script", text)
        self.assertEqual(heads, 0)

    def test_a_catalogue_shows_no_trim(self):
        self.browser.open(self.bare)
        text = self.browser.evaluate("document.querySelector('main').innerText")
        self.assertNotIn("Trim", text)
        self.assertNotIn("%", text)
        self.assertIn("corvane-plan", text)
        self.assertEqual(self.browser.complaints(), [])


if __name__ == "__main__":
    if browser.find() is None:
        print("there is no Chromium here")
        sys.exit(77)
    PROGRAM = sys.argv.pop(1)
    unittest.main()
