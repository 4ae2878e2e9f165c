#!/usr/bin/env python3
"""Makes up a run record whose plan adds up: for the tests of the page, and for measuring it.

    make_record.py [--patterns N] [--grades N] [--widths N] [--customers N] [--seed N] [--no-plan]
"""

import argparse
import json
import random

PERIODS = [str(period) for period in range(1, 7)]
MODES = ["Rail", "Truck"]
MILLS = ["Alder Falls", "Birch Landing", "Cedar <Narrows> & \"Co\""]
EVIL = "<script>window.wasRun = true</script>"


def pattern_rolls(dice, widths, deckle):
    """A few widths that fill the deckle as far as they go."""
    rolls, left = {}, deckle
    for width in dice.sample(widths, min(4, len(widths))):
        count = min(int(left // width), dice.randint(1, 4))
        if count:
            rolls[width] = count
            left -= width * count
    return [[width, rolls[width]] for width in sorted(rolls, reverse=True)], left


class Maker:
    def __init__(self, options):
        self.options = options
        self.dice = random.Random(options.seed)
        self.machines = [{"name": f"W{i + 1}", "mill": mill} for i, mill in enumerate(MILLS)]
        self.cutters, self.stores, self.orders, self.patterns = [], [], [], []
        self.grades = [f"G{grade + 1}" for grade in range(options.grades)]
        self.widths = {}
        self.reels, self.made = [], {}

    def make_patterns(self):
        each = self.options.patterns // (len(self.grades) * len(self.machines))
        for number, grade in enumerate(self.grades):
            self.widths[grade] = sorted(
                self.dice.sample([12 + eighth / 8 for eighth in range(500)], self.options.widths))
            for machine in range(len(self.machines)):
                deckle = 120 + 40 * machine + number
                cutter = len(self.cutters)
                name = f"{grade}_W{machine + 1}_{deckle}"
                self.cutters.append({"name": name, "machine": machine, "grade": grade,
                                     "deckle": deckle, "capacity": 60.0, "waste_cost": 12.5})
                for width in self.widths[grade]:
                    self.stores.append([f"{grade}_W{machine + 1}_{width:.3f}", cutter, width])
                for index in range(each):
                    rolls, trim = pattern_rolls(self.dice, self.widths[grade], deckle)
                    self.patterns.append(
                        [f"{grade}_Pattern_{index}_W{machine + 1}_{deckle}", cutter, trim, rolls])

    def run_patterns(self):
        for index, (_, cutter, _, rolls) in enumerate(self.patterns):
            if self.dice.random() < 0.3:
                for period in self.dice.sample(range(len(PERIODS)), self.dice.randint(1, 3)):
                    reels = float(self.dice.randint(1, 40))
                    self.reels.append([index, period, reels])
                    for width, count in rolls:
                        key = (cutter, width, period)
                        self.made[key] = self.made.get(key, 0) + reels * count

    def make_orders(self):
        """What is made of a width goes to a few customers; one of them gets a little too little."""
        self.place = {}
        customers = [EVIL] + [f"Customer {i + 1}" for i in range(self.options.customers - 1)]
        for grade in self.grades:
            for width in self.widths[grade]:
                for customer in self.dice.sample(customers, min(3, len(customers))):
                    self.place.setdefault((grade, width), []).append(len(self.orders))
                    self.orders.append({"name": f"{grade}_{customer}_{width:.3f}", "grade": grade,
                                        "customer": customer, "width": width,
                                        "rolls": [0.0] * len(PERIODS)})

    def ship(self):
        store_of = {(cutter, width): i for i, (_, cutter, width) in enumerate(self.stores)}
        self.shipments, self.delivered = [], {}
        for (cutter, width, period), rolls in sorted(self.made.items()):
            grade = self.cutters[cutter]["grade"]
            order = self.dice.choice(self.place[grade, width])
            mode = self.dice.randrange(len(MODES))
            self.shipments.append([mode, store_of[cutter, width], order, period, period, rolls,
                                   round(rolls * width * 0.3, 4)])
            key = (order, period)
            self.delivered[key] = self.delivered.get(key, 0) + rolls

    def deliveries(self):
        result = []
        for (order, period), rolls in sorted(self.delivered.items()):
            short = 2.0 if len(result) % 97 == 5 else 0.0
            self.orders[order]["rolls"][period] = rolls + short
            result.append([order, period, rolls, short, "the machines are full" if short else ""])
        return result

    def network(self):
        groups, count, first = [], 0, {}
        delays = [f"{mode}_{order['name']}" for mode in MODES for order in self.orders]
        wastes = [f"{grade}_Waste" for grade in self.grades]
        sizes = {"machine": len(self.machines), "cutter": len(self.cutters),
                 "pattern": len(self.patterns), "store": len(self.stores),
                 "order": len(self.orders), "delay": len(delays), "waste": len(wastes)}
        for column, (kind, size) in enumerate(sizes.items()):
            first[kind] = count
            count += size
            names = {"delay": delays, "waste": wastes}.get(kind, [])
            places = [value for i in range(size) for value in (10 + 200 * column, 20 * i)]
            groups.append({"kind": kind, "names": names, "places": places})
        arcs = [[m] + [first["cutter"] + i for i, cutter in enumerate(self.cutters)
                       if cutter["machine"] == m] for m in range(len(self.machines))]
        store_of = {(cutter, width): first["store"] + i
                    for i, (_, cutter, width) in enumerate(self.stores)}
        by_cutter = {}
        for i, (_, cutter, _, rolls) in enumerate(self.patterns):
            node = first["pattern"] + i
            by_cutter.setdefault(cutter, [first["cutter"] + cutter]).append(node)
            waste = first["waste"] + self.grades.index(self.cutters[cutter]["grade"])
            arcs.append([node] + [store_of[cutter, width] for width, _ in rolls] + [waste])
        arcs += by_cutter.values()
        for i, (_, cutter, width) in enumerate(self.stores):
            orders = self.place[self.cutters[cutter]["grade"], width]
            arcs.append([first["store"] + i] + [first["delay"] + mode * len(self.orders) + order
                                                for mode in range(len(MODES)) for order in orders])
        for i in range(len(delays)):
            arcs.append([first["delay"] + i, first["order"] + i % len(self.orders)])
        self.first, self.store_of = first, store_of
        return {"nodes": groups, "arcs": arcs}

    def flows(self):
        flows = {}

        def add(start, end, inches):
            flows[start, end] = flows.get((start, end), 0) + inches

        for index, _, reels in self.reels:
            _, cutter, trim, rolls = self.patterns[index]
            node = self.first["pattern"] + index
            paper = reels * self.cutters[cutter]["deckle"]
            add(self.cutters[cutter]["machine"], self.first["cutter"] + cutter, paper)
            add(self.first["cutter"] + cutter, node, paper)
            for width, count in rolls:
                add(node, self.store_of[cutter, width], reels * width * count)
            grade = self.grades.index(self.cutters[cutter]["grade"])
            add(node, self.first["waste"] + grade, reels * trim)
        for mode, store, order, _, _, rolls, _ in self.shipments:
            delay = self.first["delay"] + mode * len(self.orders) + order
            add(self.first["store"] + store, delay, rolls * self.stores[store][2])
            add(delay, self.first["order"] + order, rolls * self.stores[store][2])
        return [[start, end, round(inches, 3)] for (start, end), inches in sorted(flows.items())
                if inches > 0]

    def plan(self, deliveries):
        freight = sum(shipment[6] for shipment in self.shipments)
        waste = sum(reels * self.patterns[index][2] * 12.5 for index, _, reels in self.reels)
        bounds = [[grade, sum(self.orders[o]["width"] * rolls for o, _, rolls, _, _ in deliveries
                              if self.orders[o]["grade"] == grade)] for grade in self.grades]
        times = [[machine, period, 7.0 if period == 0 else 7.0 * self.dice.random(), 7.0]
                 for machine in range(len(self.machines)) for period in range(len(PERIODS))]
        return {"whole_reels": False, "cost": [["freight", freight], ["waste", waste]],
                "total_cost": freight + waste, "bound_cost": freight + waste,
                "warnings": [], "advice": [], "paper_bounds": bounds, "modes": MODES,
                "reels": self.reels, "machine_time": times, "deliveries": deliveries,
                "shipments": self.shipments, "surplus": [], "stock": [], "flows": self.flows()}

    def make(self):
        self.make_patterns()
        self.run_patterns()
        self.make_orders()
        self.ship()
        deliveries = self.deliveries()
        demand = sum(order["width"] * rolls for order in self.orders for rolls in order["rolls"])
        network = self.network()
        return {
            "schema": "corvane-run/1", "version": "1.0.0", "name": "made_up",
            "log": {"started": "2026/11/21 14:03:22", "ended": "2026/11/21 14:03:25",
                    "complete": True, "seed": self.options.seed, "demand_inches": demand,
                    "generated_patterns": len(self.patterns), "messages": [EVIL]},
            "parameters": [{"key": "occur min", "value": "2", "origin": "file"}],
            "files": [], "periods": PERIODS, "days_per_period": 7, "machines": self.machines,
            "cutters": self.cutters, "stores": self.stores, "orders": self.orders, "seen": [],
            "patterns": self.patterns, "network": network, "inputs_checked": True, "findings": [],
            "plan": None if self.options.no_plan else self.plan(deliveries),
        }


def options(arguments=None):
    parser = argparse.ArgumentParser()
    parser.add_argument("--patterns", type=int, default=120)
    parser.add_argument("--grades", type=int, default=2)
    parser.add_argument("--widths", type=int, default=8)
    parser.add_argument("--customers", type=int, default=5)
    parser.add_argument("--seed", type=int, default=7)
    parser.add_argument("--no-plan", action="store_true")
    return parser.parse_args(arguments)


if __name__ == "__main__":
    print(json.dumps(Maker(options()).make()))
