#include "plan/reel_dive.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace corvane::plan {

namespace {

// Fractions this close to a whole number are noise.
constexpr double kNearlyWhole = 1e-6;
// The part of the fractional columns that a step rounds up, and the fraction from which it takes
// all.
constexpr double kShare = 0.1;
constexpr double kNearlyUp = 0.9;
constexpr double kHalf = 0.5;

// What a reel could cost at most, as far as the columns tell: all of its rolls surplus, or all sent
// the dearest way.
double dearestReel(const PlanProblem &problem, const CompactLp &lp) {
  double freight = 0;
  for (int column = 0; column < lp.model().columns(); ++column) {
    if (lp.column(column).kind == ColumnKind::kShip) {
      freight = std::max(freight, lp.model().cost[static_cast<std::size_t>(column)]);
    }
  }
  double dearest = 0;
  for (int column = 0; column < lp.model().columns(); ++column) {
    const ColumnRole &role = lp.column(column);
    if (role.kind != ColumnKind::kReels) {
      continue;
    }
    double cost = lp.model().cost[static_cast<std::size_t>(column)];
    for (const Yield &yield : problem.patterns[role.what].yields) {
      double roll = freight;
      for (const Index store : yield.stores) {
        roll = std::max(roll, problem.stores[store].surplusCost[role.period]);
      }
      cost += yield.rolls * roll;
    }
    dearest = std::max(dearest, cost);
  }
  return dearest;
}

// One number for both steps, in which a roll that is not delivered costs more than a reel and
// another one in its place could. It only steers the dive; plans are compared by isBetter().
std::vector<double> mergedObjective(const PlanProblem &problem, const CompactLp &lp) {
  std::vector<double> costs = lp.model().cost;
  const double penalty = 1 + 2 * dearestReel(problem, lp);
  for (const int column : lp.unmetColumns()) {
    costs[static_cast<std::size_t>(column)] = penalty * lp.unmetWeight(problem, column);
  }
  return costs;
}

struct Fraction {
  int column;
  double value;     // of the column
  double fraction;  // beyond the whole number below
};

class Dive {
 public:
  Dive(const ReelSpace &space, const DiveOptions &options)
      : space_(space),
        options_(options),
        solver_(space.model()),
        lower_(space.costs().size(), 0.0),
        room_(space.model().rowUpper) {
    const std::vector<double> costs = mergedObjective(space.problem(), space.lp());
    for (int column = 0; column < space.model().columns(); ++column) {
      solver_.setCost(column, costs[static_cast<std::size_t>(column)]);
    }
  }

  LinearSolution solve() { return solver_.solve(Method::kDual); }

  // One step; false when all reels are whole.
  bool roundSome(const LinearSolution &solution) {
    const std::vector<Fraction> fractions = fractionsOf(solution);
    const auto share =
        static_cast<std::size_t>(std::ceil(kShare * static_cast<double>(fractions.size())));
    for (std::size_t i = 0; i < fractions.size(); ++i) {
      if (i >= share && fractions[i].fraction < kNearlyUp) {
        break;
      }
      roundUp(fractions[i]);
    }
    holdSmallest(fractions, share);
    reserveTime(fractions);
    return !fractions.empty();
  }

 private:
  // Largest fraction first.
  std::vector<Fraction> fractionsOf(const LinearSolution &solution) const {
    std::vector<Fraction> fractions;
    for (const int column : space_.reels()) {
      const double value = solution.primal[static_cast<std::size_t>(column)];
      const double fraction = value - std::floor(value + kNearlyWhole);
      if (fraction > kNearlyWhole) {
        fractions.push_back({column, value, fraction});
      }
    }
    std::stable_sort(fractions.begin(), fractions.end(),
                     [](const Fraction &a, const Fraction &b) { return a.fraction > b.fraction; });
    return fractions;
  }

  // Some of the smallest fractions get no further reel, so that the LP asks for more of others.
  void holdSmallest(const std::vector<Fraction> &fractions, std::size_t rounded) {
    auto held = static_cast<std::size_t>(options_.hold * static_cast<double>(fractions.size()));
    for (std::size_t i = fractions.size(); i > rounded && held > 0; --i, --held) {
      const Fraction &fraction = fractions[i - 1];
      if (fraction.fraction >= kHalf) {
        break;
      }
      solver_.setColumnBounds(fraction.column, lower_[static_cast<std::size_t>(fraction.column)],
                              std::floor(fraction.value + kNearlyWhole));
    }
  }

  void reserveTime(const std::vector<Fraction> &fractions) {
    std::map<int, double> reserves;
    for (const auto &[row, reserve] : reserves_) {
      reserves[row] = 0;
    }
    for (const Fraction &fraction : fractions) {
      reserves[space_.rowsOf(fraction.column).front()] +=
          options_.reserve * (1 - fraction.fraction) * space_.entriesOf(fraction.column).front();
    }
    for (const auto &[row, reserve] : reserves) {
      const double days = space_.model().rowUpper[static_cast<std::size_t>(row)];
      const double room = room_[static_cast<std::size_t>(row)];
      solver_.setRowBounds(row, -kInfinite, days - std::min(reserve, std::max(room, 0.0)));
    }
    reserves_ = std::move(reserves);
  }

  // Where the machine has no time for one more reel besides those that are fixed, there will be no
  // more than there are.
  void roundUp(const Fraction &fraction) {
    const auto column = static_cast<std::size_t>(fraction.column);
    const LinearModel &model = space_.model();
    const auto entry = static_cast<std::size_t>(model.start[column]);  // that of the machine
    double &room = room_[static_cast<std::size_t>(model.rowOf[entry])];
    const double whole = std::ceil(fraction.value - kNearlyWhole);
    const double time = (whole - lower_[column]) * model.value[entry];
    if (time <= room * (1 + 1e-12)) {
      room -= time;
      lower_[column] = whole;
      solver_.setColumnBounds(fraction.column, whole, kInfinite);
    } else {
      solver_.setColumnBounds(fraction.column, lower_[column], std::floor(fraction.value));
    }
  }

  const ReelSpace &space_;
  DiveOptions options_;
  LinearSolver solver_;
  std::vector<double> lower_;
  std::map<int, double> reserves_;  // days, by row
  std::vector<double> room_;        // days that fixed reels leave, by row
};

ReelPlan wholePlan(const ReelSpace &space, const LinearSolution &solution) {
  std::vector<double> values = solution.primal;
  for (const int column : space.reels()) {
    double &value = values[static_cast<std::size_t>(column)];
    value = std::round(value);
  }
  return space.planOf(std::move(values));
}

}  // namespace

std::optional<ReelPlan> diveForReels(const ReelSpace &space, const DiveOptions &options,
                                     const std::function<bool()> &isOver) {
  Dive dive(space, options);
  LinearSolution solution;
  do {
    solution = dive.solve();
    if (solution.status != Status::kOptimal || isOver()) {
      return std::nullopt;
    }
  } while (dive.roundSome(solution));
  return wholePlan(space, solution);
}

}  // namespace corvane::plan
