#!/usr/bin/env python3
"""A second, literal implementation of the whole program, to compare runs with.

usage: corvane_model.py LIBRARY

It reads the files that the program reads, in the same working directory and
environment, solves through the same 13 operations of the solver library
LIBRARY, and gives the same exit status, standard output, standard error, log
and import file, byte for byte (time stamps apart), and the same solver calls.
It shares no code with the program, and puts clearness before speed: where the
program has a short cut, this has the long way.
"""

import ctypes
import math
import os
import re
import struct
import sys
import time

INT_MAX = 2**31 - 1
INT_MIN = -2**31
UNSIGNED = 2**32 - 1
TOLERANCE = 1e-8
LINE_LIMIT = 1023
INFINITE_BOUND = 1e20


# ---- Text and numbers ----------------------------------------------------------------------

_runtime = ctypes.CDLL(None)
_runtime.atof.restype = ctypes.c_double
_runtime.atof.argtypes = [ctypes.c_char_p]
_runtime.strtol.restype = ctypes.c_long
_runtime.strtol.argtypes = [ctypes.c_char_p, ctypes.c_void_p, ctypes.c_int]


def text(field):
    """The bytes of a field as text: UTF-8, else Latin-1."""
    try:
        return field.decode("utf-8")
    except UnicodeDecodeError:
        return field.decode("latin-1")


def encoded(value):
    return value.encode("utf-8", "surrogatepass")


def code_units(value):
    """A key that orders text by UTF-16 code units."""
    return value.encode("utf-16-be", "surrogatepass")


def text_compare(a, b):
    a, b = code_units(a), code_units(b)
    return -1 if a < b else 1 if b < a else 0


def number_compare(a, b):
    return -1 if b > a else 1 if a > b else 0


def tolerant_compare(a, b):
    difference = a - b
    return -1 if difference < -TOLERANCE else 1 if difference > TOLERANCE else 0


def atof(field):
    return _runtime.atof(field)


def atoi(field):
    return saturated(_runtime.strtol(field, None, 10))


def saturated(value):
    return max(INT_MIN, min(INT_MAX, value))


def _formatted(form, value):
    if value != value:  # the C library shows the sign of a NaN
        return "-nan" if math.copysign(1.0, value) < 0 else "nan"
    return form % value


def general(value):
    return _formatted("%g", value)


def fixed(value, digits):
    return _formatted("%%.%df" % digits, value)


_BLANKS = r"[ \t\n\v\f\r]*"
_INTEGER = re.compile(_BLANKS + r"([+-]?[0-9]+)" + _BLANKS)
_FLOAT = re.compile(_BLANKS + r"([+-]?(?:[0-9]+\.?[0-9]*|\.[0-9]+)(?:[eE][+-]?[0-9]+)?)" + _BLANKS)


def integer_parameter(value):
    match = _INTEGER.fullmatch(value)
    if not match:
        return 0
    number = int(match.group(1))
    return number if INT_MIN <= number <= INT_MAX else 0


def float_parameter(value):
    match = _FLOAT.fullmatch(value)
    if not match:
        return 0.0
    number = float(match.group(1))
    try:
        # The "<" matters: it is the form that checks for overflow.
        return struct.unpack("<f", struct.pack("<f", number))[0] if math.isfinite(number) else 0.0
    except OverflowError:
        return 0.0


def exchange_sort(items, out_of_order):
    for i in range(len(items)):
        for j in range(i + 1, len(items)):
            if out_of_order(items[i], items[j]):
                items[i], items[j] = items[j], items[i]


def sort_ascending(items):
    exchange_sort(items, lambda earlier, later: earlier > later)


def sort_descending(items):
    exchange_sort(items, lambda earlier, later: later > earlier)


def append_distinct(items, value):
    """Appends unless an equal value stands there; a NaN equals nothing, itself included."""
    if not any(item == value for item in items):
        items.append(value)


# ---- Files ---------------------------------------------------------------------------------


class Fatal(Exception):
    """The run ends with status 1; everything has been said."""


class Channel:
    """A file written through at once; nobody looks whether a write fails."""

    def __init__(self, descriptor):
        self.descriptor = descriptor

    def line(self, value):
        data = encoded(value + "\n")
        try:
            while data:
                data = data[os.write(self.descriptor, data):]
        except OSError:
            pass


class ImportFile:
    def __init__(self, descriptor):
        self.descriptor = descriptor
        self.lines = []

    def line(self, value):
        self.lines.append(value)

    def close(self):
        try:
            with os.fdopen(self.descriptor, "wb") as stream:
                stream.write(encoded("".join(line + "\n" for line in self.lines)))
        except OSError:
            pass


def existing_path(name):
    """A literal name that exists is meant; otherwise a backslash separates."""
    return name if os.path.exists(name) else name.replace(b"\\", b"/")


def read_bytes(name):
    """The content of an input file, or None when it cannot be opened."""
    try:
        with open(existing_path(name), "rb") as stream:
            return stream.read()
    except (OSError, ValueError):
        return None


def open_for_writing(name, mode):
    try:
        return os.open(existing_path(name), os.O_WRONLY | os.O_CREAT | mode, 0o666)
    except (OSError, ValueError):
        return None


def same_file(a, b):
    """Whether both names are one regular file; of files that are not there, would be."""
    a, b = existing_path(a), existing_path(b)
    if not os.path.exists(a) and not os.path.exists(b):
        return os.path.realpath(a) == os.path.realpath(b)
    return os.path.isfile(a) and os.path.isfile(b) and os.path.samefile(a, b)


class Line:
    """One read of a line: number from 1, its bytes up to a NUL, whether it was too long for the
    buffer, and whether a line break ended it; the last read of a file ends without one."""

    def __init__(self, number, data, ended):
        if ended and data.endswith(b"\r"):
            data = data[:-1]
        self.number = number
        self.ended = ended
        self.too_long = len(data) > LINE_LIMIT
        self.data = data.split(b"\0", 1)[0]

    def tokens(self, separator):
        return [token for token in self.data.split(separator) if token]


def lines_of(content):
    """A byte order mark is dropped at the very start, and only there."""
    pieces = content.removeprefix(b"\xef\xbb\xbf").split(b"\n")
    last = len(pieces) - 1
    return [Line(n + 1, piece, n != last) for n, piece in enumerate(pieces)]


def too_long_warning(line, name):
    return "Warning: Line %d of %s is too long." % (line.number, name)


# ---- Run parameters ------------------------------------------------------------------------


class Parameters:
    def __init__(self, out):
        self.out = out
        self.batch = 0
        self.delay = 1
        self.maximum_widths = 5
        self.threshold = 5.0
        self.occur_min = 1
        self.days_per_period = 7
        self.new_patterns = 100
        self.pick_percentage = 10.0
        self.stop_threshold = 1000
        self.order_file = "data\\orders.data"
        self.machine_file = "data\\machines.data"
        self.freight_rate_file = "data\\freightRates.data"
        self.output = "data\\CV.imp"
        self.log_file = "data\\corvane.log"
        self.solver = "Dual"
        self.patterns_only = 0
        self.seed = -1
        self.time_limit = -1

    def read(self):
        path = parameter_path()
        content = read_bytes(path)
        if content is None:
            self.out.line("Could not open parameter file.")
            raise Fatal
        for line in lines_of(content):
            if line.too_long and line.ended:
                self.out.line(too_long_warning(line, text(path)))
            elif line.ended and not line.data.startswith(b"#"):
                tokens = line.tokens(b"=")
                if len(tokens) >= 2:
                    self.set(text(tokens[0]), text(tokens[1]))

    def set(self, key, value):
        setters = {
            "batch": self.set_flag("batch"),
            "delay": self.set_flag("delay"),
            "patterns only": self.set_flag("patterns_only"),
            "maximum widths in pattern": self.set_clamped(
                "maximum_widths", "Maximum widths in pattern", 5, 10, "more"),
            "threshold": self.set_threshold,
            "occur min": self.set_positive("occur_min"),
            "days per period": self.set_positive("days_per_period"),
            "new patterns per iteration": self.set_clamped(
                "new_patterns", "New patterns per iteration", 10, 100000, "greater"),
            "width pick set size": self.set_pick_percentage,
            "stop generating threshold": self.set_clamped(
                "stop_threshold", "Stop Generating Threshold", 100, 10000, "greater"),
            "rand num gen seed": self.set_clamped(
                "seed", "Random Number Generator Seed", 0, 10000, "greater"),
            "time limit": lambda v: setattr(self, "time_limit", integer_parameter(v)),
            "solver": self.set_solver,
            "order file": lambda v: setattr(self, "order_file", v),
            "machine file": lambda v: setattr(self, "machine_file", v),
            "freight rate file": lambda v: setattr(self, "freight_rate_file", v),
            "output": lambda v: setattr(self, "output", v),
            "log file": lambda v: setattr(self, "log_file", v),
        }
        if key in setters:
            setters[key](value)
        else:
            self.out.line("Unknown Parameter: " + key + " = " + value)

    def set_flag(self, field):
        def setter(value):
            if value in ("True", "False"):
                setattr(self, field, 1 if value == "True" else 0)
        return setter

    def set_positive(self, field):
        def setter(value):
            number = integer_parameter(value)
            if number > 0:
                setattr(self, field, number)
        return setter

    def set_clamped(self, field, label, least, most, word):
        def setter(value):
            number = integer_parameter(value)
            if number < least:
                self.out.line("%s cannot be less than %d." % (label, least))
            elif number > most:
                self.out.line("%s cannot be %s than %d." % (label, word, most))
            setattr(self, field, max(least, min(most, number)))
        return setter

    def set_threshold(self, value):
        number = float_parameter(value)
        if 0.0 <= number <= 100.0:
            self.threshold = number

    def set_pick_percentage(self, value):
        number = float_parameter(value)
        if number <= 0.0:
            self.out.line("Width Pick Set Size cannot be less than or equal to 0.0%.")
            self.out.line("Setting Width Pick Set Size to 1.0%.")
            number = 1.0
        elif number > 100.0:
            self.out.line("Width Pick Set Size cannot be greater than 100.0%.")
            self.out.line("Setting Width Pick Set Size to 100.0%.")
            number = 100.0
        self.pick_percentage = number

    def set_solver(self, value):
        if value in ("Dual", "Barrier"):
            self.solver = value
        else:
            self.out.line("Solver " + value + " invalid, using Dual by default.")

    def print_to(self, log):
        def flag(value):
            return "True" if value == 1 else "False"
        log.line("Parameters:")
        for label, value in (
                ("Batch", flag(self.batch)),
                ("Delay", flag(self.delay)),
                ("Threshold", general(self.threshold)),
                ("Occur Min", str(self.occur_min)),
                ("Days Per Period", str(self.days_per_period)),
                ("Max Widths In Pattern", str(self.maximum_widths)),
                ("New Patterns per Iter", str(self.new_patterns)),
                ("Width Pick Set Size", general(self.pick_percentage) + "%"),
                ("Stop Generating Thres", str(self.stop_threshold)),
                ("Order File", self.order_file),
                ("Machine File", self.machine_file),
                ("Freight Rate File", self.freight_rate_file),
                ("Output File", self.output),
                ("Log File", self.log_file),
                ("Solver", self.solver),
                ("Patterns Only", flag(self.patterns_only)),
                ("Time Limit", "None" if self.time_limit < 0 else str(self.time_limit))):
            log.line("%-21s: %s" % (label, value))


# ---- Skip list -----------------------------------------------------------------------------


class SkipNode:
    def __init__(self, element, level):
        self.element = element
        self.forward = [None] * level


class SkipList:
    """The ordered container with the random levels of construction argument 3, no duplicates.
    The levels matter: under a comparator with a tolerance the way of a search decides."""

    LEVEL_LIMIT = 32

    def __init__(self, compare):
        self.compare = compare
        self.head = SkipNode(None, 3)
        self.random_state = 0x1E9EB544

    def __iter__(self):
        node = self.head.forward[0]
        while node is not None:
            yield node.element
            node = node.forward[0]

    def search(self, key):
        """(equal element or None, predecessor node of each level)"""
        node, compared, found = self.head, None, None
        predecessors = [None] * len(self.head.forward)
        for level in reversed(range(len(predecessors))):
            while found is None:
                successor = node.forward[level]
                if successor is None or successor is compared:
                    break
                result = self.compare(successor.element, key)
                if result < 0:
                    node = successor
                    continue
                compared = successor
                if result == 0:
                    found = successor
                break
            predecessors[level] = node
        return found, predecessors

    def insert(self, element):
        """0 when stored, 2 when an equal element is there already"""
        found, predecessors = self.search(element)
        if found is not None:
            return 2
        level = self.random_level()
        current = len(self.head.forward)
        if level > current:
            count = min(level, self.LEVEL_LIMIT)
            self.head.forward += [None] * (count - current)
            predecessors += [self.head] * (count - current)
        node = SkipNode(element, level)
        for i in range(level):
            node.forward[i] = predecessors[i].forward[i]
            predecessors[i].forward[i] = node
        return 0

    def draw(self):
        if self.random_state & 0x80000000 == 0:
            self.random_state = (self.random_state << 1) & UNSIGNED
            return 0
        self.random_state = (((self.random_state ^ 0x57) << 1) + 1) & UNSIGNED
        return 1

    def random_level(self):
        level = 1
        while self.draw() == 0:
            level += 1
        return level - 1 if level >= 2 else level


# ---- Planning data -------------------------------------------------------------------------


class Cutter:
    def __init__(self):
        self.location = self.name = self.grade = ""
        self.width = self.capacity = self.lbs_per_inch = self.waste_cost = 0.0


class Order:
    def __init__(self):
        self.good = True
        self.period = self.grade = self.customer = ""
        self.width = 0.0
        self.quantity = 0


class FreightRate:
    def __init__(self):
        self.customer = self.mill = self.mode = ""
        self.rate = self.delay = 0.0

    def __str__(self):
        return "Customer: %s Mill: %s Mode: %s Rate: %s Delay: %s" % (
            self.customer, self.mill, self.mode, general(self.rate), general(self.delay))


class Demand:
    def __init__(self, width, quantity):
        self.width, self.quantity = width, quantity


class PeriodEntry:
    def __init__(self, period):
        self.period, self.demands = period, []


class GradeEntry:
    def __init__(self, grade):
        self.grade, self.periods = grade, []


def entry_of(entries, field, value, make):
    for entry in entries:
        if getattr(entry, field) == value:
            return entry
    entries.append(make(value))
    return entries[-1]


def first_difference(*results):
    return next((result for result in results if result != 0), 0)


def compare_cutters(a, b):
    return first_difference(text_compare(a.location, b.location), text_compare(a.name, b.name),
                            text_compare(a.grade, b.grade))


def compare_orders(a, b):
    return first_difference(text_compare(a.grade, b.grade), text_compare(a.period, b.period),
                            text_compare(a.customer, b.customer),
                            number_compare(a.width, b.width))


def compare_freight_rates(a, b):
    return first_difference(text_compare(a.customer, b.customer), text_compare(a.mill, b.mill),
                            text_compare(a.mode, b.mode))


class Plan:
    """The planning data, and the three readers that fill it."""

    def __init__(self, parameters, out, err, log):
        self.parameters, self.out, self.err, self.log = parameters, out, err, log
        self.cutters = SkipList(compare_cutters)
        self.cutter_widths = []
        self.orders = SkipList(compare_orders)
        self.demand_table = []
        self.grades = []
        self.periods = []
        self.freight_rates = SkipList(compare_freight_rates)

    def say(self, message):
        self.out.line(message)
        self.log.line(message)

    def open_lines(self, name, message):
        content = read_bytes(encoded(name))
        if content is None:
            self.say(message)
            raise Fatal
        return lines_of(content)

    # Machine file

    def read_machines(self):
        name = self.parameters.machine_file
        for line in self.open_lines(name, "Error: Could not open machine data file."):
            if line.too_long:
                if line.ended:
                    self.err.line(too_long_warning(line, name))
                    self.log.line(too_long_warning(line, name))
                continue
            cutter = self.parse_cutter(line)
            if line.ended:
                self.cutters.insert(cutter)
                append_distinct(self.cutter_widths, cutter.width)
        sort_ascending(self.cutter_widths)

    def parse_cutter(self, line):
        cutter = Cutter()
        if not line.data:
            return cutter
        tokens = line.tokens(b",")
        for n, (label, field, convert) in enumerate((
                ("Location", "location", text), ("Name", "name", text), ("Grade", "grade", text),
                ("Width", "width", atof), ("Capacity", "capacity", atof),
                ("Lbs/Inch", "lbs_per_inch", atof), ("WasteCost", "waste_cost", atof))):
            if n < len(tokens):
                setattr(cutter, field, convert(tokens[n]))
            else:
                self.err.line("Could not set %s of cutter." % label)
        return cutter

    # Order file

    def read_orders(self):
        name = self.parameters.order_file
        for line in self.open_lines(name, "Error: Could not open orders file."):
            order = self.parse_order(line)
            if not line.ended:
                break
            if not order.good:
                self.say("Warning: Order number %d is bad.\n" % line.number)
            elif not self.machine_can_process(order):
                self.say("Warning: No machine can process order number %d."
                         " Check grade and demand width." % line.number)
            else:
                self.accept(order)
        exchange_sort(self.grades, lambda earlier, later: text_compare(later, earlier) < 0)

    def parse_order(self, line):
        order = Order()
        if line.too_long:
            order.good = False
            return order
        if not line.data:
            return order
        tokens = dict(enumerate(line.tokens(b",")))
        if 0 in tokens:
            order.period = text(tokens[0])
        if 1 in tokens:
            order.grade = text(tokens[1])
        if 2 in tokens:
            if atof(tokens[2]) <= 0.0:
                self.out.line("Width must be > 0.0.")
                order.good = False
                return order
            order.width = atof(tokens[2])
        if 3 in tokens:
            if atoi(tokens[3]) < 1:
                self.out.line("Quantity must be > 0.")
                order.good = False
                return order
            order.quantity = atoi(tokens[3])
        if 4 in tokens:
            order.customer = text(tokens[4])
        else:
            order.good = False
        return order

    def machine_can_process(self, order):
        return any(cutter.grade == order.grade and cutter.width >= order.width
                   for cutter in self.cutters)

    def accept(self, order):
        stored, _ = self.orders.search(order)
        if stored is None:
            self.orders.insert(order)
        else:
            stored.element.quantity = saturated(stored.element.quantity + order.quantity)
            order = stored.element
        self.record_demand(order)
        append_distinct(self.grades, order.grade)
        append_distinct(self.periods, order.period)

    def record_demand(self, order):
        grade = entry_of(self.demand_table, "grade", order.grade, GradeEntry)
        period = entry_of(grade.periods, "period", order.period, PeriodEntry)
        for demand in period.demands:
            if demand.width == order.width and demand.quantity == order.quantity:
                demand.quantity = saturated(demand.quantity + order.quantity)
                return
        period.demands.append(Demand(order.width, order.quantity))

    # Freight rate file

    def read_freight_rates(self):
        name = self.parameters.freight_rate_file
        for line in self.open_lines(name, "Error: Could not open freight rate file."):
            if line.too_long:
                if line.ended:
                    self.say(too_long_warning(line, name))
                continue
            rate = self.parse_freight_rate(line)
            if line.ended and self.freight_rates.insert(rate) == 2:
                self.out.line("Duplicate Freight Rate: %s" % rate)

    @staticmethod
    def parse_freight_rate(line):
        rate = FreightRate()
        for token, (field, convert) in zip(line.tokens(b","), (
                ("customer", text), ("mill", text), ("mode", text), ("rate", atof),
                ("delay", atof))):
            setattr(rate, field, convert(token))
        return rate

    # What the later steps look up

    def grade_entry(self, grade):
        return next((entry for entry in self.demand_table if entry.grade == grade), None)

    def demand_widths(self, grade):
        """The distinct widths of all demand entries of the grade, widest first."""
        widths = []
        entry = self.grade_entry(grade)
        for period in entry.periods if entry else []:
            for demand in period.demands:
                append_distinct(widths, demand.width)
        sort_descending(widths)
        return widths

    def demand_list(self, grade, period_name):
        """[(width, count)] of the grade in the period, widest first; the first of a width counts"""
        pairs = []
        entry = self.grade_entry(grade)
        for period in entry.periods if entry else []:
            if period.period != period_name:
                continue
            for demand in period.demands:
                if not any(pair[0] == demand.width for pair in pairs):
                    pairs.append((demand.width, demand.quantity))
        exchange_sort(pairs, lambda earlier, later: later[0] > earlier[0])
        return pairs


# ---- Patterns ------------------------------------------------------------------------------


class Pattern:
    def __init__(self, trim):
        self.widths = []
        self.trim = trim
        self.x_values = []
        self.reduced_costs = []
        self.in_model = []

    def tally(self):
        """[[width, count]], widest first"""
        tally = []
        for width in self.widths:
            for pair in tally:
                if pair[0] == width:
                    pair[1] += 1
                    break
            else:
                tally.append([width, 1])
        exchange_sort(tally, lambda earlier, later: later[0] > earlier[0])
        return tally


def compare_patterns(a, b):
    if len(a.widths) != len(b.widths):
        return -1 if len(a.widths) < len(b.widths) else 1
    for width_a, width_b in zip(a.widths, b.widths):
        result = tolerant_compare(width_a, width_b)
        if result != 0:
            return result
    return tolerant_compare(a.trim, b.trim)


class PatternSet:
    def __init__(self, grade, deckle_width):
        self.grade, self.deckle_width = grade, deckle_width
        self.patterns = SkipList(compare_patterns)


# ---- Solver --------------------------------------------------------------------------------


def c_doubles(values):
    return (ctypes.c_double * max(1, len(values)))(*values)


def c_integers(values):
    return (ctypes.c_int * max(1, len(values)))(*values)


class Library:
    """The 13 operations of a library file."""

    def __init__(self, path):
        pointer, integer = ctypes.c_void_p, ctypes.c_int
        self.file = ctypes.CDLL(path)
        for name, result, arguments in (
                ("CPXopenCPLEXruntime", pointer, [pointer, integer, pointer]),
                ("CPXcloseCPLEX", integer, [pointer]),
                ("CPXcreateprob", pointer, [pointer, pointer, ctypes.c_char_p]),
                ("CPXcopylp", integer, [pointer] * 2 + [integer] * 3 + [pointer] * 10),
                ("CPXaddcols", integer, [pointer] * 2 + [integer] * 2 + [pointer] * 7),
                ("CPXprimopt", integer, [pointer] * 2),
                ("CPXhybbaropt", integer, [pointer, pointer, integer]),
                ("CPXgetstat", integer, [pointer] * 2),
                ("CPXgetobjval", integer, [pointer] * 3),
                ("CPXgetx", integer, [pointer] * 3 + [integer] * 2),
                ("CPXgetpi", integer, [pointer] * 3 + [integer] * 2),
                ("CPXgetdj", integer, [pointer] * 3 + [integer] * 2),
                ("CPXfreeprob", integer, [pointer] * 2)):
            operation = getattr(self.file, name)
            operation.restype, operation.argtypes = result, arguments
            setattr(self, name[3:], operation)


class Columns:
    """Columns in the layout of the library; lower bounds 0, upper bounds infinite."""

    def __init__(self):
        self.objective, self.starts, self.counts, self.rows, self.values = [], [], [], [], []

    def append(self, cost, entries):
        self.objective.append(cost)
        self.starts.append(len(self.rows))
        self.counts.append(len(entries))
        for row, value in entries:
            self.rows.append(row)
            self.values.append(value)

    def bounds(self):
        return c_doubles([0.0] * len(self.objective)), c_doubles(
            [INFINITE_BOUND] * len(self.objective))


class Solver:
    """One environment with one current problem; every failure ends the run."""

    def __init__(self, library, plan):
        self.library, self.plan = library, plan
        self.env = self.lp = None

    def fail(self, message):
        self.plan.say(message)
        raise Fatal

    def open(self):
        status = ctypes.c_int(0)
        self.env = self.library.openCPLEXruntime(ctypes.byref(status), 0, None)
        if status.value != 0 or not self.env:
            self.fail("Error: Could not open cplex.")

    def close(self):
        env = ctypes.c_void_p(self.env)
        if self.library.closeCPLEX(ctypes.byref(env)) != 0:
            self.fail("Error: Could not close cplex.")

    def load(self, columns, right_hand_sides):
        status = ctypes.c_int(0)
        self.lp = self.library.createprob(self.env, ctypes.byref(status), b"selectPatterns")
        if not self.lp:
            self.fail("Error: Could not create LP.")
        lower, upper = columns.bounds()
        rows = len(right_hand_sides)
        self.library.copylp(
            self.env, self.lp, len(columns.objective), rows, 1, c_doubles(columns.objective),
            c_doubles(right_hand_sides), ctypes.create_string_buffer(b"G" * rows),
            c_integers(columns.starts), c_integers(columns.counts), c_integers(columns.rows),
            c_doubles(columns.values), lower, upper, None)

    def add(self, columns):
        lower, upper = columns.bounds()
        result = self.library.addcols(
            self.env, self.lp, len(columns.objective), len(columns.rows),
            c_doubles(columns.objective), c_integers(columns.starts), c_integers(columns.rows),
            c_doubles(columns.values), lower, upper, None)
        if result != 0:
            self.fail("Error: Could not add columns to LP.")

    def solve(self, grade, period):
        if self.plan.parameters.solver == "Barrier":
            result = self.library.hybbaropt(self.env, self.lp, ord("p"))
        else:
            result = self.library.primopt(self.env, self.lp)
        if result != 0:
            self.plan.say("Error: No solution to lp, status : %d\nGrade : %s\nPeriod : %s" % (
                result, grade, period))
            self.fail("Error: Solution not optimal, status : %d" % self.library.getstat(
                self.env, self.lp))
        if self.library.getstat(self.env, self.lp) != 1:
            self.fail("Error: Solution not optimal.")

    def duals(self, rows):
        values = c_doubles([0.0] * rows)
        result = self.library.getpi(self.env, self.lp, values, 0, rows - 1)
        if result != 0:
            self.fail("Error: Could not get dual values from LP : %d" % result)
        return list(values)[:rows]

    def activities(self, columns):
        objective = ctypes.c_double(0.0)
        self.library.getobjval(self.env, self.lp, ctypes.byref(objective))
        x_values, reduced_costs = c_doubles([0.0] * columns), c_doubles([0.0] * columns)
        self.library.getx(self.env, self.lp, x_values, 0, columns - 1)
        self.library.getdj(self.env, self.lp, reduced_costs, 0, columns - 1)
        return list(x_values)[:columns], list(reduced_costs)[:columns]

    def free(self):
        lp = ctypes.c_void_p(self.lp)
        if self.library.freeprob(self.env, ctypes.byref(lp)) != 0:
            self.fail("Error: LP did not unload successfully.")


# ---- Pattern generation --------------------------------------------------------------------


class RandomNumbers:
    def __init__(self):
        self.state, self.multiplier, self.increment, self.modulus = 1, 205, 29573, 139968
        self.low, self.high = 0, 100

    def draw(self):
        self.state = ((self.multiplier * self.state + self.increment) & UNSIGNED) % self.modulus
        span = (self.high - self.low + 1) & UNSIGNED
        return (self.low + ((span * self.state) & UNSIGNED) // self.modulus) & UNSIGNED


class Price:
    def __init__(self, width, dual):
        self.width, self.dual = width, dual
        self.ratio = 0.0 if width == 0 else dual / width


class Generation:
    def __init__(self, plan, library):
        self.plan, self.parameters, self.library = plan, plan.parameters, library
        self.random = RandomNumbers()
        self.sets = []
        self.total_patterns = 0
        # of the current grade and period
        self.widths = []
        self.prices = []

    def run(self):
        seed = self.parameters.seed
        if seed < 0:
            seed = int(time.time()) % 10000
        self.plan.log.line("%-21s: %d" % ("Seed", seed))
        self.random.state = seed
        for grade in self.plan.grades:
            self.run_columns(grade, self.create_sets(grade))
        self.select()
        self.report()
        self.prune()

    def create_sets(self, grade):
        deckle_widths = []
        for cutter in self.plan.cutters:
            if cutter.grade == grade and not any(w == cutter.width for w in deckle_widths):
                deckle_widths.append(cutter.width)
                self.sets.append(PatternSet(grade, cutter.width))
        sort_ascending(deckle_widths)
        return deckle_widths

    def sets_of(self, grade):
        return [one for one in self.sets if one.grade == grade]

    # Column generation of one grade

    def run_columns(self, grade, deckle_widths):
        solver = Solver(self.library, self.plan)
        solver.open()
        remembered = None
        entry = self.plan.grade_entry(grade)
        for period in self.plan.periods:
            for candidate in entry.periods if entry else []:
                if candidate.period == period and candidate.demands:
                    remembered = candidate
                    break
            if remembered is None:
                continue
            self.widths = []
            for demand in remembered.demands:
                append_distinct(self.widths, demand.width)
            sort_descending(self.widths)
            if not self.widths:
                continue
            self.set_pick_range()
            self.build_master(solver, grade, period, deckle_widths)
            while True:
                solver.solve(grade, period)
                self.build_prices(solver.duals(len(self.widths)))
                if not self.generate(solver, grade):
                    break
        solver.close()

    def set_pick_range(self):
        count = len(self.widths)
        size = int(count * (self.parameters.pick_percentage / 100.0))
        if size < 15:
            size = min(15, count)
        self.random.low, self.random.high = 0, size - 1

    def build_master(self, solver, grade, period, deckle_widths):
        smallest = deckle_widths[0]
        seeds = next((one for one in self.sets
                      if one.grade == grade and one.deckle_width == smallest), None)
        columns = Columns()
        for row, width in enumerate(self.widths):
            columns.append(smallest, [(row, 1.0)])
            pattern = Pattern(smallest - width)
            pattern.widths.append(width)
            if seeds is not None:
                seeds.patterns.insert(pattern)
            self.total_patterns += 1
        counts = [float(count) for _, count in self.plan.demand_list(grade, period)]
        solver.load(columns, counts or [0.0] * len(self.widths))

    def build_prices(self, duals):
        self.prices = [Price(width, dual) for width, dual in zip(self.widths, duals)]
        exchange_sort(self.prices, lambda earlier, later: later.ratio > earlier.ratio)

    def generate(self, solver, grade):
        """One iteration's new patterns; whether there were any."""
        if self.parameters.time_limit == 0:
            return False
        columns = Columns()
        for pattern_set in self.sets_of(grade):
            self.generate_for(pattern_set, columns)
        if not columns.objective:
            return False
        solver.add(columns)
        return True

    def generate_for(self, pattern_set, columns):
        start = int(time.time())
        limit = self.parameters.time_limit
        for made in range(self.parameters.new_patterns):
            if limit >= 0 and int(time.time()) - start > limit:
                self.plan.say("Timed out on grade: %s, deckle width: %s after generating %d patterns."
                              % (pattern_set.grade, fixed(pattern_set.deckle_width, 3), made))
                return
            candidate = Pattern(pattern_set.deckle_width)
            if not self.price(candidate, pattern_set.deckle_width):
                return
            if pattern_set.patterns.insert(candidate) == 0:
                self.total_patterns += 1
                columns.append(pattern_set.deckle_width, [
                    (self.row_of(width), float(count)) for width, count in candidate.tally()])

    def row_of(self, width):
        return next(row for row, one in enumerate(self.widths) if one == width)

    def price(self, candidate, deckle_width):
        if deckle_width < 0:
            return True
        for _ in range(self.parameters.stop_threshold):
            value = self.attempt(candidate, deckle_width)
            sort_descending(candidate.widths)
            if not (-TOLERANCE < value < TOLERANCE or value >= 0):
                return True
        return False

    def attempt(self, candidate, deckle_width):
        """Fills the candidate; its reduced cost."""
        candidate.widths = []
        candidate.trim = value = deckle_width
        while len(candidate.widths) < self.parameters.maximum_widths and candidate.trim > 0:
            price = self.prices[self.random.draw()]
            if not candidate.trim - price.width >= 0:
                price = self.best_fitting(candidate.trim)
            if price is None:
                break
            candidate.widths.append(price.width)
            candidate.trim -= price.width
            value -= price.dual
        return value

    def best_fitting(self, free_width):
        best, choice = 0.0, None
        for price in self.prices:
            if not price.width > free_width and not price.dual < best:
                best, choice = price.dual, price
        return choice

    # Final selection

    def select(self):
        solver = Solver(self.library, self.plan)
        solver.open()
        for grade in self.plan.grades:
            widths = self.plan.demand_widths(grade)
            columns = Columns()
            patterns = []
            for pattern_set in self.sets_of(grade):
                for pattern in pattern_set.patterns:
                    patterns.append(pattern)
                    columns.append(pattern_set.deckle_width, [
                        (next(row for row, one in enumerate(widths) if one == width), float(count))
                        for width, count in pattern.tally()])
            for period in self.plan.periods:
                self.select_in_period(solver, grade, period, widths, columns, patterns)
        solver.close()

    def select_in_period(self, solver, grade, period, widths, columns, patterns):
        demands = self.plan.demand_list(grade, period)
        solver.load(columns, [
            next((float(count) for one, count in demands if one == width), 0.0)
            for width in widths])
        solver.solve(grade, period)
        x_values, reduced_costs = solver.activities(len(patterns))
        # Sets ordered by reduced cost are left out: nothing reads them.
        for pattern, x_value, reduced_cost in zip(patterns, x_values, reduced_costs):
            pattern.x_values.append(x_value)
            pattern.reduced_costs.append(reduced_cost)
            pattern.in_model.append(0)
        solver.free()

    # Report and pruning

    def report(self):
        for grade in self.plan.grades:
            widths = self.plan.demand_widths(grade)
            for pattern_set in self.sets_of(grade):
                for period in range(len(self.plan.periods)):
                    self.report_set(pattern_set, widths, period)

    def report_set(self, pattern_set, widths, period):
        counters = [0] * len(widths)
        for pattern in pattern_set.patterns:
            if pattern.x_values[period] > 0.0:
                self.take(pattern, period, widths, counters)
        for n, width in enumerate(widths):
            if counters[n] < self.parameters.occur_min:
                self.top_up(pattern_set, widths, period, counters, n)
        for n, width in enumerate(widths):
            if counters[n] < self.parameters.occur_min:
                self.plan.say("Deckle Width: %s, Demand Width: %s is in %d patterns." % (
                    fixed(pattern_set.deckle_width, 3), fixed(width, 3), counters[n]))

    def top_up(self, pattern_set, widths, period, counters, n):
        for pattern in pattern_set.patterns:
            if pattern.in_model[period] == 0 and widths[n] in pattern.widths:
                self.take(pattern, period, widths, counters)
                if counters[n] >= self.parameters.occur_min:
                    return

    @staticmethod
    def take(pattern, period, widths, counters):
        pattern.in_model[period] = 1
        previous = 0.0
        for width in pattern.widths:
            if width != previous:
                for n, one in enumerate(widths):
                    if one == width:
                        counters[n] += 1
                        break
            previous = width

    def prune(self):
        for pattern_set in self.sets:
            survivors = SkipList(compare_patterns)
            for pattern in pattern_set.patterns:
                if 1 in pattern.in_model:
                    survivors.insert(pattern)
            pattern_set.patterns = survivors


# ---- Import file ---------------------------------------------------------------------------


class Export:
    def __init__(self, plan, sets, imp):
        self.plan, self.parameters, self.sets = plan, plan.parameters, sets
        self.write = imp.line
        self.total_demand = 0.0
        self.batch_row = self.storage_row = self.block_row = self.delay_row = 0
        self.batch_shift = 290 if self.parameters.batch else 0
        self.delay_shift = 290 if self.parameters.delay else 0

    def run(self):
        self.root()
        self.commodities()
        for period in self.plan.periods:
            self.write('addperiod <name> "%s"' % period)
        if self.parameters.patterns_only:
            self.patterns()
        else:
            self.machines()
            self.patterns()
            self.storage_demand()
            self.blocks()
        self.write("# End of Corvane. import file.")

    def planned_cutters(self):
        return [cutter for cutter in self.plan.cutters if cutter.grade in self.plan.grades]

    def batch_nodes(self):
        return self.parameters.batch and not self.parameters.patterns_only

    # Header

    def root(self):
        tuned = self.batch_nodes()
        self.write(
            "addroot <CompressBlockNodes> True <batchSizeSolve> False <batchSizeTune> %s"
            " <initialSolverAlgorithm> networkDualSolve <BatLP> dualSolve <batchSizePeriods> 1"
            " <batchTuneStopThreshold> %d <batchTuneTries> 99999 <batchSizeMode> %d"
            " <batchSizePeriods> 9999 <batchSizeResolveFrequency> 5"
            % (("True", 0, 1) if tuned else ("False", 100, 0)))

    def commodities(self):
        for width in self.plan.cutter_widths:
            self.write('addcommodity <name> "Deckle%s"' % general(width))
        widths = SkipList(number_compare)
        for grade in self.plan.demand_table:
            for period in grade.periods:
                for demand in period.demands:
                    widths.insert(demand.width)
        for width in widths:
            self.write('addcommodity <name> "DemandWidth%s"' % general(width))
        self.write('addcommodity <name> "Waste"')
        self.write('addcommodity <name> "Machine_Time"')

    # Machines

    def machines(self):
        row = 0
        machine = None
        for cutter in self.planned_cutters():
            group = (cutter.location, cutter.name)
            row = self.cutter_nodes(cutter, row, group != machine)
            machine = group

    def cutter_nodes(self, cutter, row, first_of_machine):
        machine = '"M_%s"' % cutter.name
        process = cutter_width_name(cutter)
        y = 50 * row + 210
        if first_of_machine:
            for j, period in enumerate(self.plan.periods):
                place = " <x> 10 <y> %d" % y if j == 0 else ""
                self.write('addnode <type> "Machine" <name> %s%s <period> "%s" <fixed> False'
                           " <min> 0 <max> %d <cost> 0 <overcost> +infinity"
                           % (machine, place, period, self.parameters.days_per_period))
            self.write('addattach <node> %s <commodity> "Machine_Time" <in> False' % machine)
        self.write('addnode <type> "Process" <name> %s <x> 180 <y> %d <period> "%s"'
                   % (process, y, self.plan.periods[0]))
        self.write('addattach <node> %s <commodity> "Machine_Time" <in> True' % process)
        self.write('addattach <node> %s <commodity> "Deckle%s" <quantity> %s <in> False'
                   % (process, general(cutter.width), general(cutter.capacity)))
        self.write('addarc <commodity> "Machine_Time" <from> %s <to> %s <flow> 0 <fixed> False'
                   " <opportunity> 0 <cost> 0 <min> 0 <max> +infinity" % (machine, process))
        return row + 1

    # Pattern batches

    def patterns_of(self, cutter):
        for one in self.sets:
            if one.grade == cutter.grade and one.deckle_width == cutter.width:
                return list(one.patterns), one.deckle_width
        return [], 0.0

    def patterns(self):
        for cutter in self.planned_cutters():
            patterns, deckle_width = self.patterns_of(cutter)
            for n, pattern in enumerate(patterns):
                self.pattern(cutter, deckle_width, n, pattern)
                self.batch_row += 1

    def pattern(self, cutter, deckle_width, n, pattern):
        deckle = "Deckle" + general(deckle_width)
        batch = index_name(cutter, "Batch", n, deckle_width)
        node = index_name(cutter, "Pattern", n, deckle_width)
        y = 20 * self.batch_row
        if self.batch_nodes():
            for period in self.plan.periods:
                self.write('addnode <type> "Batch" <name> %s <singlePeriodSetups> True <x> 420'
                           " <y> %d <flow> 0 <fixed> False <minrunlength> 0 <batchsize> 1"
                           ' <setup> 0 <period> "%s"' % (batch, y, period))
            self.write('addattach <node> %s <commodity> "%s" <in> True' % (batch, deckle))
            self.write('addattach <node> %s <commodity> "%s" <in> False' % (batch, deckle))
        self.write('addnode <type> "Process" <name> %s <x> %d <y> %d <period> "%s"' % (
            node, 710 if self.batch_nodes() else 420, y, self.plan.periods[0]))
        self.write('addattach <node> %s <commodity> "%s" <in> True <quantity> -1' % (node, deckle))
        self.yields(node, pattern)
        if not self.parameters.patterns_only:
            self.deckle_arcs(deckle, cutter_width_name(cutter), batch, node)

    def yields(self, node, pattern):
        current, count = 0.0, 0

        def line():
            self.write('addattach <node> %s <commodity> "DemandWidth%s" <in> False <quantity> %d'
                       % (node, general(current), count))
        for width in pattern.widths:
            if width != current:
                if current > 0.0:
                    line()
                current, count = width, 1
            else:
                count += 1
        line()
        waste = 0.0 if pattern.trim < TOLERANCE else pattern.trim
        self.write('addattach <node> %s <commodity> "Waste" <in> False <quantity> %s'
                   % (node, general(waste)))

    def deckle_arcs(self, deckle, process, batch, node):
        arc = ('addarc <commodity> "%s" <from> %s <to> %s <flow> 0 <fixed> False <opportunity> 0'
               ' <cost> %d <min> 0 <max> +infinity <period> "%s"')
        for period in self.plan.periods:
            self.write(arc % (deckle, process, batch if self.batch_nodes() else node, 10, period))
        if self.batch_nodes():
            self.write(arc % (deckle, batch, node, 0, self.plan.periods[0]))

    # Storage demand of the cutters, waste

    def storage_demand(self):
        for cutter in self.planned_cutters():
            self.cutter_storage(cutter)
            self.storage_row += 1
        for grade in self.plan.grades:
            self.waste_node(grade)
            self.storage_row += 1
        for cutter in self.planned_cutters():
            self.cutter_arcs(cutter)

    def cutter_storage(self, cutter):
        cutter_set = '"%s_%s"' % (cutter.grade, cutter.name)
        x = 710 + self.batch_shift
        for width in self.plan.demand_widths(cutter.grade):
            store = cutter_value_name(cutter, width)
            for j, period in enumerate(self.plan.periods):
                place = " <x> %d <y> %d" % (x, 20 * self.storage_row) if j == 0 else ""
                self.write('addnode <type> "StorageDemand" <name> %s%s <storagemax> 0'
                           ' <period> "%s"' % (store, place, period))
            for side in ("True", "False"):
                self.write('addattach <node> %s <commodity> "DemandWidth%s" <in> %s'
                           % (store, general(width), side))
            self.write("addnodetoset %s %s" % (cutter_set, store))
        self.write("blockset %s" % cutter_set)
        self.write('%s <period> "%s"' % (
            block_node(cutter_set, x, 80 * self.storage_row), self.plan.periods[0]))

    def waste_node(self, grade):
        self.write('addnode <type> "Demand" <name> "%s_Waste" <x> %d <y> %d <amount> 0'
                   ' <fixed> False <period> "%s"' % (
                       grade, 1000 if self.parameters.batch else 710, 80 * self.storage_row,
                       self.plan.periods[0]))
        self.write('addattach <node> "%s_Waste" <commodity> "Waste" <in> True' % grade)

    def cutter_arcs(self, cutter):
        arc = ('addarc <commodity> "%s" <from> %s <to> %s <flow> 0 <fixed> False <opportunity> 0'
               ' <cost> %s <min> 0 <max> +infinity <period> "%s"')
        patterns, deckle_width = self.patterns_of(cutter)
        for n, pattern in enumerate(patterns):
            node = index_name(cutter, "Pattern", n, deckle_width)
            previous = 0.0
            for width in pattern.widths:
                if width != previous:
                    self.write(arc % ("DemandWidth" + general(width), node,
                                      cutter_value_name(cutter, width), "0",
                                      self.plan.periods[0]))
                previous = width
            for period in self.plan.periods:
                self.write(arc % ("Waste", node, '"%s_Waste"' % cutter.grade,
                                  general(cutter.waste_cost), period))

    # Orders: blocks, delays and freight

    def blocks(self):
        order_nodes, order_sets = SkipList(text_compare), SkipList(text_compare)
        for order in self.plan.orders:
            if self.order_storage(order, order_nodes, order_sets):
                for cutter in self.plan.cutters:
                    self.order_freight(cutter, order)
        for name in order_nodes:
            for period in self.plan.periods:
                self.write('addnode <type> "StorageDemand" <name> %s <undercost> 50000'
                           ' <storagemax> 0 <period> "%s"' % (name, period))
        self.block_row = 0
        for name in order_sets:
            self.write("blockset %s" % name)
            self.write(block_node(name, 910 + self.batch_shift + self.delay_shift,
                                  20 * self.block_row))
            self.block_row += 1

    def order_storage(self, order, order_nodes, order_sets):
        self.total_demand += order.quantity * order.width
        node = order_node_name(order)
        is_new = order_nodes.insert(node) == 0
        place = " <x> %d <y> %d" % (910 + self.batch_shift + self.delay_shift,
                                    20 * self.block_row) if is_new else ""
        self.write('addnode <type> "StorageDemand" <name> %s%s <undercost> 50000 <storagemax> 0'
                   ' <demandamount> %d <period> "%s"' % (node, place, order.quantity, order.period))
        if is_new:
            order_set = '"%s_%s"' % (order.grade, order.customer)
            self.write('addattach <node> %s <commodity> "DemandWidth%s" <in> True'
                       % (node, general(order.width)))
            order_sets.insert(order_set)
            self.write("addnodetoset %s %s" % (order_set, node))
        return is_new

    def freight_cost(self, cutter, order, mode):
        for rate in self.plan.freight_rates:
            if (rate.customer, rate.mill, rate.mode) == (order.customer, cutter.location, mode):
                return ((rate.rate / 2000.0) * cutter.lbs_per_inch) * order.width
        return 0.0

    def order_freight(self, cutter, order):
        if order.grade not in self.plan.grades or cutter.grade != order.grade:
            return
        rates = [rate for rate in self.plan.freight_rates
                 if (rate.customer, rate.mill) == (order.customer, cutter.location)]
        if not rates:
            self.plan.log.line("No freight rates for: %s - %s." % (order.customer, cutter.location))
            return
        commodity = "DemandWidth" + general(order.width)
        store, node = cutter_value_name(cutter, order.width), order_node_name(order)
        if self.parameters.delay:
            for rate in rates:
                self.delay_node(rate, cutter, order, commodity, store, node)
            self.delay_row += 1
        else:
            cost = general(self.freight_cost(cutter, order, rates[0].mode))
            for period in self.plan.periods:
                self.write(freight_arc(commodity, store, node, period, cost))

    def delay_node(self, rate, cutter, order, commodity, store, node):
        delay = '"%s_%s_%s_%s"' % (rate.mode, order.grade, order.customer, fixed(order.width, 3))
        cost = general(self.freight_cost(cutter, order, rate.mode))
        for j, period in enumerate(self.plan.periods):
            place = " <x> %d <y> %d" % (910 + self.batch_shift, 20 * self.delay_row)
            self.write('addnode <type> "Delay" <name> %s%s <periodstodelay> %s <period> "%s"'
                       % (delay, place if j == 0 else "", general(rate.delay), period))
            for side in ("True", "False"):
                self.write('addattach <node> %s <commodity> "%s" <in> %s'
                           % (delay, commodity, side))
            self.write(freight_arc(commodity, store, delay, period, cost))
            self.write(freight_arc(commodity, delay, node, period, "0"))


def cutter_width_name(cutter):
    return '"%s_%s_%s"' % (cutter.grade, cutter.name, fixed(cutter.width, 0))


def cutter_value_name(cutter, value):
    return '"%s_%s_%s"' % (cutter.grade, cutter.name, fixed(value, 3))


def index_name(cutter, kind, index, deckle_width):
    return '"%s_%s_%d_%s_%s"' % (cutter.grade, kind, index, cutter.name, fixed(deckle_width, 0))


def order_node_name(order):
    return '"%s_%s_%s"' % (order.grade, order.customer, fixed(order.width, 3))


def block_node(name, x, y):
    return ('addnode <type> "Block" <name> %s <capMan> False <openAtStart> True'
            " <shutdownBenefit> 0 <startupCost> 0 <x> %d <y> %d <fixedCost> 0"
            " <operational> Ignore <capManFixed> False <singlesource> False"
            ' <sourcingChange> True <node> "None"' % (name, x, y))


def freight_arc(commodity, source, target, period, cost):
    return ('addarc <commodity> "%s" <from> %s <to> %s <flow> 0 <fixed> False <opportunity> 0'
            ' <min> 0 <max> +infinity <period> "%s" <cost> %s'
            % (commodity, source, target, period, cost))


# ---- Driver --------------------------------------------------------------------------------


def time_stamp():
    return time.strftime("%Y/%m/%d %H:%M:%S", time.localtime())


def parameter_path():
    return os.environb.get(b"ZEM_CVN_PARAM", b"data\\Parameters.data")[:511]


def input_names(parameters):
    return [parameter_path()] + [encoded(name) for name in (
        parameters.machine_file, parameters.order_file, parameters.freight_rate_file)]


def open_apart_from(name, others, mode):
    """The descriptor, or None when the file is one of the others or cannot be opened."""
    if any(same_file(name, other) for other in others):
        return None
    return open_for_writing(name, mode)


def open_import_file(parameters, err):
    descriptor = open_apart_from(encoded(parameters.output), input_names(parameters), os.O_TRUNC)
    if descriptor is None:
        err.line("Could not open import file: " + parameters.output)
        raise Fatal
    return descriptor


def run_steps(library_path, out, err):
    parameters = Parameters(out)
    parameters.read()
    descriptor = open_apart_from(encoded(parameters.log_file),
                                 input_names(parameters) + [encoded(parameters.output)],
                                 os.O_APPEND)
    if descriptor is None:
        err.line("Could not open log file: " + parameters.log_file)
        raise Fatal
    log = Channel(descriptor)
    log.line("**** Start Corvane. " + time_stamp() + " ****")
    parameters.print_to(log)
    os.close(open_import_file(parameters, err))
    plan = Plan(parameters, out, err, log)
    plan.read_machines()
    plan.read_orders()
    plan.read_freight_rates()
    generation = Generation(plan, Library(library_path))
    generation.run()
    imp = ImportFile(open_import_file(parameters, err))
    export = Export(plan, generation.sets, imp)
    export.run()
    imp.close()
    log.line("Total demand in inches           : " + fixed(export.total_demand, 4))
    log.line("Total number of patterns in model: %d" % generation.total_patterns)
    log.line("**** End Corvane. " + time_stamp() + " ****\n")


def run(library_path):
    """A whole run in the working directory; the exit status."""
    try:
        run_steps(library_path, Channel(1), Channel(2))
    except Fatal:
        return 1
    return 0


def main(arguments):
    if len(arguments) != 2:
        sys.stderr.write(__doc__)
        return 2
    return run(arguments[1])


if __name__ == "__main__":
    sys.exit(main(sys.argv))
