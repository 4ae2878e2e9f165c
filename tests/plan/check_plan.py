#!/usr/bin/env python3
"""Recomputes a plan from plan.json and the import file alone.

usage: check_plan.py IMPORT_FILE PLAN_JSON

Says which sums do not hold; exit status 1 when any does not. Nothing of the
programs is used: the import file is read here a second time, by its document.
"""

import json
import math
import re
import sys
from collections import defaultdict

TOLERANCE = 1e-6
NAME = r'"(.*?)"'
PATTERNS = {
    "period": re.compile(r'addperiod <name> ' + NAME + "$"),
    "node": re.compile(r'addnode <type> "(\w+)" <name> ' + NAME + r' (<.*)$'),
    "attach": re.compile(r'addattach <node> ' + NAME + r' <commodity> ' + NAME + r' (<.*)$'),
    "arc": re.compile(r'addarc <commodity> ' + NAME + r' <from> ' + NAME + r' <to> ' + NAME +
                      r' (<flow>.*)$'),
}


def attribute(text, name):
    found = re.search("<%s> (\"(.*)\"|\\S+)" % name, text)
    if not found:
        return None
    return found.group(2) if found.group(2) is not None else found.group(1)


class Carried(dict):
    """Values by period; a period without one has that of the last before it, else the first."""

    def __init__(self, periods):
        super().__init__()
        self.periods = periods

    def at(self, period):
        place = self.periods.index(period)
        for name in reversed(self.periods[:place + 1]):
            if name in self:
                return self[name]
        for name in self.periods[place:]:
            if name in self:
                return self[name]
        return None


class ImportFile:
    def __init__(self, path):
        self.periods = []
        self.days, self.capacity, self.storage, self.delays = {}, {}, {}, {}
        self.demand, self.recipe, self.trim, self.cost = {}, defaultdict(dict), {}, {}
        self.into, self.written_delay = defaultdict(set), {}
        with open(path, encoding="utf-8", newline="\n") as stream:
            for line in stream:
                for kind, pattern in PATTERNS.items():
                    match = pattern.match(line.rstrip("\n"))
                    if match:
                        getattr(self, "take_" + kind)(*match.groups())
                        break

    def take_period(self, name):
        self.periods.append(name)

    def put(self, table, key, period, value):
        table.setdefault(key, Carried(self.periods))[period] = value

    def take_node(self, kind, name, rest):
        period = attribute(rest, "period")
        if kind == "Machine":
            self.put(self.days, name, period, float(attribute(rest, "max")))
        elif kind == "Delay":
            self.put(self.delays, name, period, float(attribute(rest, "periodstodelay")))
        elif kind == "Process":
            self.recipe[name], self.trim[name] = {}, 0.0
        elif kind == "StorageDemand":
            amount = attribute(rest, "demandamount")
            if amount is not None:
                self.demand[name, period] = float(amount)
            self.put(self.storage, name, period,
                     float(attribute(rest, "storagemax").replace("+infinity", "inf")))

    def take_attach(self, node, commodity, rest):
        quantity = attribute(rest, "quantity")
        if quantity is None or "<in> True" in rest:
            return
        if commodity == "Waste":
            self.trim[node] = float(quantity)
        elif commodity.startswith("Deckle"):
            self.capacity[node] = (float(quantity), float(commodity[len("Deckle"):]))
        else:
            width = commodity[len("DemandWidth"):]
            self.recipe[node][width] = self.recipe[node].get(width, 0) + float(quantity)

    def take_arc(self, commodity, source, target, rest):
        period = attribute(rest, "period")
        if period is None:
            period = self.periods[0]
        self.put(self.cost, (source, target), period, float(attribute(rest, "cost")))
        self.into[target].add(source)
        if target in self.delays:
            self.put(self.written_delay, (source, target), period, self.delays[target].at(period))


class Check:
    def __init__(self, file, plan):
        self.file, self.plan, self.faults = file, plan, []
        self.by_mill = plan["options"]["delays"] == "by-mill"
        self.free_stock = plan["options"]["storage"] == "inf"
        self.place = {name: at for at, name in enumerate(file.periods)}

    def equal(self, left, right, what, scale=1.0):
        if not abs(left - right) <= TOLERANCE * max(1.0, abs(left), abs(right), scale):
            self.faults.append("%s: %r is not %r" % (what, left, right))

    def at_most(self, value, most, what):
        if not value <= most + TOLERANCE * max(1.0, abs(most)):
            self.faults.append("%s: %r is more than %r" % (what, value, most))

    def run(self):
        if self.plan["schema"] != "corvane-plan/1" or self.plan["periods"] != self.file.periods:
            self.faults.append("another schema or other periods")
        made, cost = self.patterns()
        cost["freight"] = self.shipments(made)
        cost["surplus"] = sum(one["cost"] for one in self.plan["surplus"])
        self.orders()
        self.totals(cost)
        return self.faults

    def patterns(self):
        """Rolls at stores by (store, period), and the cost of feed and waste."""
        days, made = defaultdict(float), defaultdict(float)
        cost = {"feed": 0.0, "waste": 0.0, "machine_time": 0.0}
        self.reels = self.paper = self.trim = 0.0
        for run in self.plan["patterns"]:
            name, period, reels = run["pattern"], run["period"], run["reels"]
            if run["offered"]:
                raise SystemExit("a plan with patterns of other runs is not checked here")
            if reels < 0 or {w: r for w, r in run["rolls"].items() if r} != \
                    {w: r for w, r in self.file.recipe[name].items() if r}:
                self.faults.append("the recipe of " + name)
            capacity, deckle = self.file.capacity[run["cutter"]]
            days[run["machine"], period] += reels / capacity
            self.reels += reels
            self.paper += reels * deckle
            self.trim += reels * self.file.trim[name]
            batch = name.replace("_Pattern_", "_Batch_", 1)
            feed = self.file.cost.get((run["cutter"], name)) or \
                self.file.cost[run["cutter"], batch]
            cost["feed"] += reels * feed.at(period)
            waste = self.file.cost[name, run["grade"] + "_Waste"]
            cost["waste"] += reels * self.file.trim[name] * waste.at(period)
            self.add_rolls(name, run, made)
        for (machine, period), used in days.items():
            self.at_most(used, self.file.days[machine].at(period), "%s in %s" % (machine, period))
        for one in self.plan["machines"]:
            self.equal(one["used"], days[one["machine"], one["period"]], "days of machines")
        return made, cost

    def add_rolls(self, name, run, made):
        for width, rolls in self.file.recipe[name].items():
            stores = [target for source, target in self.file.cost if source == name and
                      target.endswith("_%.3f" % float(width))]
            if len(stores) == 1:
                made[stores[0], run["period"]] += rolls * run["reels"]
            elif rolls:
                self.ambiguous = True

    def shipments(self, made):
        arrived, left, freight = defaultdict(float), defaultdict(float), 0.0
        for one in self.plan["shipments"]:
            leaves, arrives = self.place[one["leaves"]], self.place[one["arrives"]]
            store, order, rolls = one["from"], one["to"], one["rolls"]
            node = order if one["mode"] == "direct" else one["mode"] + "_" + order
            cost = self.file.cost.get((store, node))
            if cost is None:
                self.faults.append("no way from %s to %s" % (store, node))
                continue
            delay = 0
            if one["mode"] != "direct":
                table = self.file.written_delay[store, node] if self.by_mill else \
                    self.file.delays[node]
                delay = math.ceil(table.at(one["leaves"]))
            if arrives != leaves + delay or rolls < 0:
                self.faults.append("a shipment to %s arrives wrongly" % order)
            self.equal(one["cost"], rolls * cost.at(one["leaves"]), "freight to " + order)
            freight += one["cost"]
            arrived[order, one["arrives"]] += rolls
            left[store, one["leaves"]] += rolls
        self.arrived = arrived
        self.stores(made, left)
        return freight

    def stores(self, made, left):
        if getattr(self, "ambiguous", False):
            return  # widths that are alike in six digits share their rolls
        surplus = {(one["store"], one["period"]): one["rolls"] for one in self.plan["surplus"]}
        stock = {(one["store"], one["period"]): one["rolls"] for one in self.plan["stock"]}
        names = {store for store, _ in list(made) + list(left) + list(surplus) + list(stock)}
        for store in sorted(names):
            kept = 0.0
            for period in self.file.periods:
                now = stock.get((store, period), 0.0)
                self.equal(kept + made[store, period],
                           left[store, period] + now + surplus.get((store, period), 0.0),
                           "rolls at %s in %s" % (store, period))
                if not self.free_stock:
                    self.at_most(now, self.file.storage[store].at(period), "stock at " + store)
                kept = now
            self.equal(kept, 0.0, "stock at the end at " + store)

    def orders(self):
        told = {(one["order"], one["period"]): one for one in self.plan["orders"]}
        wanted = {key: amount for key, amount in self.file.demand.items() if amount > 0}
        if set(told) != set(wanted):
            self.faults.append("other orders than the file's")
            return
        for key, amount in wanted.items():
            self.equal(told[key]["demand"], amount, "demand of %s in %s" % key)
            self.equal(self.arrived[key] + told[key]["unmet"], amount, "order %s in %s" % key)
            if (told[key]["unmet"] > 0) != (told[key]["reason"] is not None):
                self.faults.append("the reason of %s in %s" % key)
        self.unmet = sum(one["unmet"] for one in told.values())

    def totals(self, cost):
        totals = self.plan["totals"]
        scale = sum(abs(part) for part in cost.values())
        for kind, amount in cost.items():
            self.equal(totals["cost"][kind], amount, "cost of " + kind, scale)
        self.equal(totals["cost"]["total"], sum(cost.values()), "total cost", scale)
        self.equal(totals["reels"], self.reels, "reels")
        self.equal(totals["deckle_inches"], self.paper, "paper")
        self.equal(totals["trim_inches"], self.trim, "trim", self.paper)
        self.equal(totals["unmet_rolls"], self.unmet, "unmet rolls")
        self.equal(totals["ordered_rolls"], sum(self.file.demand.values()), "ordered rolls")


def main(arguments):
    if len(arguments) != 3:
        sys.stderr.write(__doc__)
        return 2
    with open(arguments[2], encoding="utf-8") as stream:
        plan = json.load(stream)
    faults = Check(ImportFile(arguments[1]), plan).run()
    for fault in faults[:20]:
        print(fault)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
