#!/usr/bin/env python3
"""Random small mills, as unfriendly as the file formats allow.

usage: mills.py SEED FOLDER

A mill is a folder to run in: parameter file, data files, perhaps older output,
and environment variables. Most of it is sound, so that most runs reach the end;
each mill has a few of the oddities below.
"""

import os
import random
import sys

GRADES = ["G1", "G2", "G10", "g1", "Kraft 40#", "\u00e9cru", "\uff21", "\U0001f4c4", "A\"B", " G1",
          "\u7d19", "G-1_2"]
LOCATIONS = ["North", "South", "north", "M\u00fcnchen", "\ufffd\ue000", "\U00010400x", "N 1"]
NAMES = ["C1", "C2", "C10", "Winder", "C1 ", "\u00c5"]
CUSTOMERS = ["Acme", "Bolt", "acme", "Caf\u00e9", "\uff3a", "\U0001f6b2", "Z=1", "#9", "A_B"]
PERIODS = ["1", "2", "10", "P1", " 1", "\u9031", "01", "2026-W05"]
MODES = ["Truck", "Rail", "truck", "Barge", "\u00e4"]
DECKLES = [80.0, 100.0, 120.5, 101.25, 62.5, 100.00000001, 99.999999995, 250.0, 1234567.0, 33.3]
# No "-nan": the sign of a product of two NaNs is the compiler's choice.
ODD_NUMBERS = ["", "abc", "nan", "inf", "-inf", "1e400", "-1", "0", "-0.0", "0x1p6", "0X40",
               "1e2", " 50", "50 ", "+50", "50abc", "5,", "1e-320", "1e308", "infinity", "nan(7)",
               ".5", "5.", "1e", "--5", "\u0665", "3.0000000000000004", "12345678.9"]
ODD_QUANTITIES = ["0", "-1", "abc", "7abc", " 8", "+9", "0x10", "2147483647", "2147483646",
                  "2147483648", "99999999999999999999", "-99999999999", "1e3", "2.9", "1"]
ODD_INTEGERS = ["abc", "", "-5", "0", "1", " 7", "7 ", "\t50", "+60", "+ 60", "1e3", "0x20", "12.5",
                "2147483647", "2147483648", "-2147483648", "-2147483649", "99999999999", "007",
                "1,000", "1000000", "5", "10", "11", "\u0665", "\u00a07", "9\v"]
ODD_FLOATS = ["abc", "nan", "inf", "0x10", "-1", "0", "-0.0", "100", "100.1", "100.000001", "5.1",
              " 5.5", "5.5 ", "1e1", "1e-50", "1e39", "1e400", "3.4e38", ".5", "5.", "+2", "2e", "",
              "1e-5", "33.333333333333", "1 2", "\t9", "0.1", "infinity", "1e+1", "00012.50"]
TEXTS = ["True", "False", "true", "TRUE", " True", "True ", "1", "0", "yes", "T\u00e9"]

OPERATIONS = ["open", "close", "createprob", "copylp", "addcols", "primopt", "hybbaropt", "getstat",
              "getobjval", "getx", "getpi", "getdj", "freeprob"]


class Mill:
    """files: name -> bytes; folders: names of empty folders; environment: added variables"""

    def __init__(self, seed):
        self.random = random.Random(seed)
        self.files = {}
        self.folders = ["data"]
        self.environment = {}
        self.unseeded = False
        _Maker(self).make()

    def write(self, folder):
        for name in self.folders:
            os.makedirs(os.path.join(folder, name), exist_ok=True)
        for name, content in self.files.items():
            path = os.path.join(folder, name)
            os.makedirs(os.path.dirname(path), exist_ok=True)
            with open(path, "wb") as stream:
                stream.write(content)


class _Maker:
    def __init__(self, mill):
        self.mill = mill
        self.random = mill.random
        # How often something odd stands in a line; zero in many mills.
        self.oddity = self.random.choice([0.0, 0.0, 0.01, 0.03, 0.1, 0.4])
        self.names = {"order file": "data/orders.data", "machine file": "data/machines.data",
                      "freight rate file": "data/freightRates.data", "output": "data/CV.imp",
                      "log file": "data/corvane.log"}

    def chance(self, probability):
        return self.random.random() < probability

    def odd(self):
        return self.chance(self.oddity)

    def some(self, items, least, most):
        return self.random.sample(items, self.random.randint(least, min(most, len(items))))

    # ---- The mill ----

    def make(self):
        plain = self.chance(0.5)
        # How many widths and order lines, and how often a width lies next to an earlier one.
        self.most_widths, self.most_lines = self.random.choice(
            [(3, 4), (6, 10), (10, 40), (20, 60), (45, 150)] if self.chance(0.99) else [(250, 700)])
        # Many orders of few keys: merged quantities meet other entries of the demand table.
        self.crowded = self.chance(0.08)
        if self.crowded:
            self.most_widths, self.most_lines = 3, 300
        # A width that the pattern comparison takes for another one has no seed pattern of its own,
        # and the final LP is then often infeasible; so most mills keep clear of the tolerance.
        self.nearness = self.random.choice([0.0, 0.0, 0.1, 0.3, 0.8])
        self.steps = self.random.choice(
            [[2e-8, 1.1e-8, -3e-8], [2e-8, 1.1e-8, -3e-8], [1e-6, 1.01e-8, 1.1e-8],
             [1e-8, 0.5e-8, 0.9e-8, 2e-8, -1e-8, 1e-9, 1e-13]])
        self.grades = GRADES[:self.random.randint(1, 2)] if plain else self.some(GRADES, 1, 3)
        self.locations = self.some(LOCATIONS, 1, 2)
        self.customers = self.some(CUSTOMERS, 1, 3)
        self.periods = self.some(PERIODS, 1, 3)
        self.deckles = self.make_deckles()
        self.pick = None
        if self.chance(0.01):
            self.make_awkward_pick()
        machines = self.machine_lines()
        orders = self.order_lines()
        rates = self.freight_lines()
        parameters = self.parameter_lines()
        self.store(self.names["machine file"], machines)
        self.store(self.names["order file"], orders)
        self.store(self.names["freight rate file"], rates)
        name = self.place_parameters()
        self.store(name, parameters)
        self.mill.files[name] += b"\n" + self.last_parameters()
        self.older_output()
        self.break_something()
        if self.chance(0.12):
            self.mill.environment["CORVANE_SCRIPTED_LP_SCRIPT"] = self.script()

    def make_awkward_pick(self):
        """A count of widths whose percentage is a whole number that rounding may miss."""
        self.pick = self.random.choice([(50, "58"), (100, "29"), (100, "57"), (75, "56"),
                                        (50, "56"), (100, "58"), (50, "30"), (100, "33")])
        self.periods, self.deckles, self.oddity = self.periods[:1], [100.0], 0.0

    def make_deckles(self):
        if self.chance(0.02):
            return [self.random.choice([-50.0, 0.0, 1e308, 1e-300]), 100.0]
        if self.chance(0.3):
            return [round(self.random.uniform(20, 200), self.random.choice([0, 1, 3, 9]))
                    for _ in range(self.random.randint(1, 3))]
        return self.some(DECKLES, 1, 3)

    def number(self, value):
        if self.odd():
            return self.random.choice(ODD_NUMBERS)
        return repr(value) if self.chance(0.5) else "%.10g" % value

    def machine_lines(self):
        lines = []
        for _ in range(self.random.randint(1, 6)):
            lines.append([self.random.choice(self.locations), self.random.choice(NAMES[:3]),
                          self.random.choice(self.grades + ["Unplanned"] * self.chance(0.1)),
                          self.number(self.random.choice(self.deckles)),
                          self.number(self.random.choice([1000.0, 0.5, 1234567.89, 0.0])),
                          self.number(round(self.random.uniform(0, 5), 3)),
                          self.number(self.random.choice([0.0, 1.5, 1e-7, 250.0]))])
        self.makeable = sorted({line[2] for line in lines})
        return lines

    def order_widths(self):
        largest = max(self.deckles + [10.0])
        widths = []
        for _ in range(self.random.randint(1, self.most_widths)):
            kind = self.random.random()
            if widths and self.chance(self.nearness):
                widths.append(self.random.choice(widths) +
                              self.random.choice(self.steps) * self.random.randint(1, 3))
            elif kind < 0.07:
                widths.append(self.random.choice(self.deckles))
            elif kind < 0.12:
                widths.append(largest * 1.5)
            elif kind < 0.22:
                widths.append(largest / self.random.randint(1, 12))
            else:
                widths.append(round(self.random.uniform(0.05, 0.6) * min(largest, 300.0),
                                    self.random.choice([0, 1, 2, 4])))
        return widths

    def order_lines(self):
        if self.pick:
            return [[self.periods[0], self.makeable[0], "%.1f" % (10 + 0.7 * n), self.quantity(),
                     self.customers[0]] for n in range(self.pick[0])]
        widths = self.order_widths()
        lines = []
        for _ in range(self.random.randint(1, self.most_lines)):
            if lines and self.chance(0.1):
                line = list(self.random.choice(lines))
                if self.chance(0.5):
                    line[3] = self.quantity()
                lines.append(line)
                continue
            lines.append([self.random.choice(self.periods),
                          self.random.choice(self.makeable if self.chance(0.9) else self.grades),
                          self.number(self.random.choice(widths)), self.quantity(),
                          self.random.choice(self.customers)])
        return lines

    def quantity(self):
        if self.odd():
            return self.random.choice(ODD_QUANTITIES)
        if self.chance(0.03):
            return str(self.random.choice([2147483647, 2147483640, 1073741824]))
        if self.crowded:
            return str(self.random.randint(1, 4))
        return str(self.random.randint(1, self.random.choice([3, 50, 5000])))

    def freight_lines(self):
        lines = []
        for customer in self.customers:
            for location in self.locations:
                if self.chance(0.15):
                    continue
                for mode in self.some(MODES, 1, 3):
                    lines.append([customer, location, mode,
                                  self.number(round(self.random.uniform(0, 80), 2)),
                                  "-nan" if self.odd() else
                                  self.number(float(self.random.randint(0, 5)))])
        if lines and self.chance(0.2):
            line = list(self.random.choice(lines))
            line[3] = self.number(14.0)
            lines.append(line)
        self.random.shuffle(lines)
        return lines

    # ---- Parameters ----

    def parameter_lines(self):
        lines = []
        self.mill.unseeded = self.chance(0.02)
        self.seed_line(lines)
        self.effort_lines(lines)
        self.flag_lines(lines)
        self.file_lines(lines)
        for _ in range(self.random.choice([0, 0, 0, 1, 3, 30])):
            lines.append(self.odd_parameter())
        self.random.shuffle(lines)
        return lines

    def last_parameters(self):
        """Sound lines that decide, so that no odd value makes a run slow or unrepeatable; what
        follows them is not used."""
        lines = []
        if self.mill.unseeded:
            lines.append(["time limit", "0"])
        else:
            self.seed_line(lines)
            self.effort_lines(lines)
        content = "".join("%s=%s\n" % tuple(line) for line in lines)
        unused = self.random.choice(["", "", "", "batch=True", "#", "x=y", "=", "\r",
                                     "batch=True" + "x" * 1020])
        return (content + unused).encode()

    def seed_line(self, lines):
        if self.mill.unseeded:
            return
        value = self.random.choice(["0", "1", "42", "10000", "20000", "-3", "x", "9999"])
        if self.chance(0.6):
            value = str(self.random.randint(0, 10000))
        lines.append(["rand num gen seed", value])

    def effort_lines(self, lines):
        lines.append(["stop generating threshold", self.random.choice(["100", "200", "500", "99"])])
        lines.append(["new patterns per iteration", self.random.choice(["10", "15", "40", "100"])])

    def flag_lines(self, lines):
        for key in ("batch", "delay", "patterns only"):
            if self.chance(0.6):
                probability = 0.15 if key == "patterns only" else 0.5
                lines.append([key, "True" if self.chance(probability) else "False"])
        if self.chance(0.3):
            lines.append(["occur min", str(self.random.randint(1, 6))])
        if self.chance(0.3):
            lines.append(["maximum widths in pattern", str(self.random.randint(4, 11))])
        if self.pick:
            lines.append(["width pick set size", self.pick[1]])
        elif self.chance(0.4):
            lines.append(["width pick set size",
                          self.random.choice(["1", "10", "50", "100", "75.5", "99.9", "0"])])
        if self.chance(0.2):
            lines.append(["solver", self.random.choice(["Dual", "Barrier", "Barrier", "barrier"])])
        if self.chance(0.15):
            lines.append(["time limit", self.random.choice(["0", "-1", "-5", "1000", " 500", "3"])])
        if self.chance(0.2):
            lines.append(["days per period", str(self.random.randint(-1, 31))])
        if self.chance(0.2):
            lines.append(["threshold", self.random.choice(ODD_FLOATS)])

    def file_lines(self, lines):
        for key, standard in list(self.names.items()):
            if not self.chance(0.3):
                continue
            base = self.random.choice(["a.txt", "sub/b.data", "data/x y.data", "data/\u00fc.data",
                                       "./c", "sub/deep/d"])
            name = "%s_%s" % (base, key[:2])
            self.names[key] = name
            self.mill.folders.append(os.path.dirname(name) or ".")
            lines.append([key, name.replace("/", "\\") if self.chance(0.5) else name])

    def odd_parameter(self):
        integer_keys = ["occur min", "days per period", "maximum widths in pattern", "time limit",
                        "new patterns per iteration", "stop generating threshold"]
        if not self.mill.unseeded:
            integer_keys.append("rand num gen seed")
        kind = self.random.random()
        if kind < 0.4:
            return [self.random.choice(integer_keys), self.random.choice(ODD_INTEGERS)]
        if kind < 0.6:
            return [self.random.choice(["threshold", "width pick set size"]),
                    self.random.choice(ODD_FLOATS)]
        if kind < 0.75:
            return [self.random.choice(["batch", "delay", "patterns only", "solver"]),
                    self.random.choice(TEXTS + ["Dual", "Barrier", "barrier"])]
        if kind < 0.85:
            return ["# comment", "x"]
        return [self.random.choice(["Batch", "batch ", " batch", "unknown", "\u00e9", "solver\t",
                                    " # no comment", "order  file"]),
                self.random.choice(["1", "True", "a=b", "\u00fc", " "])]

    def place_parameters(self):
        if self.chance(0.85):
            return "data/Parameters.data"
        name = self.random.choice(["p.txt", "data/other.data", "sub/\u00fc.p"])
        self.mill.environment["ZEM_CVN_PARAM"] = (
            name.replace("/", "\\") if self.chance(0.5) else name)
        return name

    # ---- Bytes ----

    def store(self, name, records):
        separator = b"=" if name == self.parameter_name() else b","
        line_break = b"\r\n" if self.chance(0.15) else b"\n"
        content = b""
        for record in records:
            content += self.line(record, separator) + (
                line_break if not self.odd() else self.random.choice([b"\r\n", b"\r\r\n", b"\n\n"]))
        if self.chance(0.04):
            content = b"\xef\xbb\xbf" + content
        if self.chance(0.06):
            content = content.rstrip(b"\r\n") + self.random.choice([b"", b"", b"\r", b","])
        if self.chance(0.06):
            # The last read of a file speaks about its fields and is then dropped.
            fields = self.random.choice(records or [[""]])
            content += separator.join(field.encode() for field in
                                      fields[:self.random.randrange(len(fields))] + ["\r"])
        if self.chance(0.05):
            content += self.padded(content[-40:].replace(b"\n", b""),
                                   self.random.choice([1022, 1023, 1024, 1025, 2047, 2048, 5000]))
            content += self.random.choice([b"", b"", b"\r", b"\n", b"\r\n"])
        self.mill.files[name] = content

    def parameter_name(self):
        return self.mill.environment.get("ZEM_CVN_PARAM", "data/Parameters.data").replace("\\", "/")

    def line(self, record, separator):
        fields = [field.encode("utf-8") for field in record]
        if self.odd():
            return self.odd_line(fields, separator)
        return separator.join(fields)

    def odd_line(self, fields, separator):
        kind = self.random.randrange(13)
        whole = separator.join(fields)
        if kind == 0:
            return b""
        if kind == 1:
            return separator.join(fields[:self.random.randint(0, len(fields) - 1)])
        if kind == 2:
            return (separator * self.random.randint(2, 3)).join(fields)
        if kind == 3:
            return separator * self.random.randint(1, 3) + whole + separator
        if kind == 4:
            return self.padded(whole, self.random.choice([1022, 1023, 1024, 1025, 3000]))
        if kind == 5:
            position = self.random.randint(0, len(whole))
            return whole[:position] + b"\0" + whole[position:]
        if kind == 6:
            n = self.random.randrange(len(fields))
            fields[n] = self.random.choice([b"\xe9t\xe9", b"\xff", b"\xed\xa0\x80", b"\xc0\x80",
                                            b"\xef\xbb\xbf" + fields[n], b"\xf5\x80\x80\x80",
                                            b"\xef\xbf\xbe", b"\xf0\x9f\x93", b"\xef\xbb\xbf" * 2])
            return separator.join(fields)
        if kind == 7:
            return separator.join(fields + [b"extra", b""])
        if kind == 8:
            return b"#" + whole
        if kind == 9:
            return b" " + whole + b" "
        if kind == 10:
            return whole + b"\r"
        if kind == 11:
            fields[self.random.randrange(len(fields))] = b""
            return separator.join(fields)
        return separator.join([fields[0]] * len(fields))

    def padded(self, whole, length):
        if len(whole) >= length:
            return whole
        return whole + b"x" * (length - len(whole))

    # ---- Surroundings ----

    def older_output(self):
        if self.chance(0.1):
            self.mill.files[self.names["output"]] = b"old\n"
        if self.chance(0.1):
            self.mill.files[self.names["log file"]] = b"old log\n"
        if self.chance(0.04):
            # A file of the literal name comes before the backslash as a separator.
            key, base = self.random.choice([("order file", "orders"), ("machine file", "machines"),
                                            ("freight rate file", "freightRates")])
            self.mill.files["data\\%s.data" % base] = self.mill.files[self.names[key]]
            if self.chance(0.5):
                self.mill.files["data/%s.data" % base] = b"\n"
        if self.chance(0.04):
            self.mill.files["data\\" + self.random.choice(["CV.imp", "corvane.log"])] = b"literal\n"

    def break_something(self):
        if not self.chance(0.06):
            return
        kind = self.random.randrange(7)
        key = self.random.choice(list(self.names))
        name = self.names[key]
        if kind in (0, 1):
            self.mill.files.pop(name, None)
        elif kind == 2:
            self.mill.files.pop(name, None)
            self.mill.folders.append(name)
        elif kind == 3:
            self.mill.files[self.parameter_name()] += ("\n%s=no\\such\\folder\\f\n" % key).encode()
        elif kind == 4:
            self.mill.environment["ZEM_CVN_PARAM"] = self.random.choice(
                ["", "missing", "data", "d" * 511, "./" * 300 + "data/Parameters.data"])
        elif kind == 5:
            # A file that is written is another one too.
            key = self.random.choice(["log file", "output"])
            other = self.random.choice([self.parameter_name()] + list(self.names.values()))
            spelled = self.random.choice([other, "./" + other, other.replace("/", "\\")])
            self.mill.files[self.parameter_name()] += ("\n%s=%s\n" % (key, spelled)).encode()
        else:
            # The parameter file stays: without its seed a run cannot be repeated.
            self.mill.files[self.random.choice(
                sorted(set(self.mill.files) - {self.parameter_name()}))] = b""

    def script(self):
        entries = []
        for _ in range(self.random.choice([1, 1, 2])):
            operation = self.random.choice(OPERATIONS)
            answer = str(self.random.choice([1217, 3, 2, 1, -7, 0, 1001]))
            if operation in ("open", "createprob"):
                answer = self.random.choice(["null", "1217", "-3"])
            elif operation in ("getx", "getpi", "getdj") and self.chance(0.5):
                answer = "[%s]" % ",".join(
                    self.random.choice(["0", "1", "50.5", "-1", "1e-9", "100", "nan", "1e-7"])
                    for _ in range(self.random.randint(1, 6)))
            entries.append("%s:%d%s=%s" % (operation, self.random.choice([1, 1, 2, 3, 4, 7]),
                                           "+" if self.chance(0.2) else "", answer))
        return ";".join(entries)


def main(arguments):
    if len(arguments) != 3:
        sys.stderr.write(__doc__)
        return 2
    mill = Mill(int(arguments[1]))
    mill.write(arguments[2])
    for name, value in mill.environment.items():
        print("%s=%s" % (name, value))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
