#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "network/network.h"

namespace corvane::plan {

using network::Index;
using network::kNone;
using network::Network;

// What a network plans, by the roles of its nodes: machines have days, a cutter turns a day of its
// machine into reels (deckles), a pattern slits a reel into rolls and trim, rolls stand at stores
// and go by routes to orders.
//
// Roles follow from the arcs, never from names. Costs are summed along the arcs. Periods are 0 to
// T - 1. Money is without a currency, widths and trim are inches.

struct Machine {
  std::string name;
  Index node = kNone;
  std::vector<double> days;  // by period
  std::vector<double> dayCost;
};

// A cutter on one of the machines that its file gives it; nearly always there is one.
struct Cutter {
  std::string name;
  Index node = kNone;
  Index machine = kNone;  // of PlanProblem::machines
  Index timeArc = kNone;
  Index deckle = kNone;  // commodity
  double deckleWidth = 0.0;
  double capacity = 0.0;  // reels a day
  std::string grade;      // of its patterns; empty where none of them has waste
  // By period, from its first pattern that has waste: what a reel costs beside its waste and the
  // machine's time, and an inch of waste. Infinite where there is no such pattern.
  std::vector<double> feedCost;
  std::vector<double> wasteCost;
  Index samplePattern = kNone;  // that pattern, of PlanProblem::patterns
};

// Where the rolls of one width of a pattern go. With several stores the rolls may be split.
struct Yield {
  Index commodity = kNone;
  double width = 0.0;
  double rolls = 0.0;         // a reel
  std::vector<Index> arcs;    // to the stores
  std::vector<Index> stores;  // of PlanProblem::stores, as many
};

// A pattern as one cutter feeds it.
struct Pattern {
  std::string name;
  Index node = kNone;
  Index cutter = kNone;  // of PlanProblem::cutters
  std::string grade;
  std::vector<Yield> yields;      // in the order of the file: widest first
  double trim = 0.0;              // inches a reel
  double rollInches = 0.0;        // the widths of its rolls together
  std::vector<Index> deckleArcs;  // cutter to pattern, or by way of a batch
  Index wasteArc = kNone;         // kNone where its waste is 0
  bool possible = true;           // its rolls fit into the deckle
  bool stopped = false;           // something that it yields has nowhere to go
  bool offered = false;           // it is not in the file, but from another run or from pricing
  // Money a reel by period: feed, waste and the time of its machine.
  std::vector<double> cost;

  bool usable() const { return possible && !stopped; }
};

struct Store {
  std::string name;
  Index node = kNone;
  Index commodity = kNone;
  double width = 0.0;
  std::vector<double> stockMax;     // by period: rolls that may stay until the next
  std::vector<double> surplusCost;  // by period: money a roll that nobody ordered
  std::vector<Index> patterns;      // usable ones that yield into it
};

// A way of rolls from a store to an order.
struct Route {
  Index store = kNone;
  Index order = kNone;
  Index delayNode = kNone;  // kNone: straight from the store
  Index arc = kNone;        // out of the store
  Index lastArc = kNone;    // into the order; the same without a delay
  std::string mode;
  // By the period of leaving. A roll that would arrive behind the last period may not leave.
  std::vector<Index> arrival;  // kNone: too late
  std::vector<double> cost;    // money a roll
};

// Why rolls of an order are not delivered; the first that holds.
enum class Reason {
  kMet,
  kNoRoute,      // no freight rate leads to the customer
  kNoPattern,    // no pattern cuts this width where a route begins
  kNoCapacity,   // the cutters that could have a capacity of 0
  kTooEarly,     // every shipment would have to leave before the first period
  kMachineTime,  // machines are full
  kWholeReels    // no further whole reel fits, or the search ended
};

// "machine-time", and "the machines that could make it in time are full"; empty for kMet.
std::string_view reasonName(Reason reason);
std::string_view reasonText(Reason reason);

struct Order {
  std::string name;
  std::string set;
  Index node = kNone;
  double width = 0.0;
  std::vector<double> demand;     // rolls by period
  std::vector<double> undercost;  // by period
  std::vector<Reason> reach;      // by period: kMet, or why it is out of reach whatever is planned
  std::vector<Index> routes;
};

// What the problem takes from a file otherwise than it stands there.
struct ProblemOptions {
  bool freeStock = false;       // rolls may stay at stores, whatever the file says
  bool delaysByMill = false;    // each arc has the delay that stood when it was written
  bool keepImpossible = false;  // patterns wider than their deckle may be run
};

struct PlanProblem {
  ProblemOptions options;
  std::vector<std::string> periods;
  std::vector<Machine> machines;
  std::vector<Cutter> cutters;
  std::vector<Pattern> patterns;
  std::vector<Store> stores;
  std::vector<Route> routes;
  std::vector<Order> orders;
  double highestUndercost = 0.0;
  std::vector<network::Warning> warnings;

  std::size_t periodCount() const { return periods.size(); }
  // Whether reels of the pattern can be made in the period.
  bool runs(const Pattern &pattern, std::size_t period) const {
    const Cutter &cutter = cutters[pattern.cutter];
    return pattern.usable() && cutter.capacity > 0.0 && machines[cutter.machine].days[period] > 0.0;
  }
};

// Finds the roles, and what is out of reach. Throws network::Refused for a network that cannot be
// planned. Its warnings are those of the roles; the network has its own.
PlanProblem makeProblem(const Network &network, const ProblemOptions &options);

// Finds anew which demand is out of reach, after patterns were added.
void findReach(PlanProblem &problem);

// A warning for each demand that is out of reach.
std::vector<network::Warning> reachWarnings(const Network &network, const PlanProblem &problem);

// A pattern that is not in the file.
struct NewPattern {
  Index cutter = kNone;  // of PlanProblem::cutters; REQUIRES: it has a samplePattern
  struct Rolls {
    Index store = kNone;  // of PlanProblem::stores
    double count = 0.0;
  };
  std::vector<Rolls> rolls;  // widest first, each store once
  double trim = 0.0;         // inches
};

// The next pattern of the cutter in the file's manner: its node, arcs and costs as those of the
// cutter's sample pattern. Both the network and the problem grow; indices stay. Returns its place
// in PlanProblem::patterns.
Index addPattern(Network &network, PlanProblem &problem, const NewPattern &wanted);

}  // namespace corvane::plan
