#include "plan/reel_dive.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace corvane::plan {

namespace {

// Fractions this close to a whole number are noise.
constexpr double kNoise = 1e-6;
// The part of the fractional columns that a step rounds up, and the fraction from which it takes
// all.
constexpr double kShare = 0.1;
constexpr double kNearlyUp = 0.9;

struct Fraction {
  int column;
  double value;     // of the column
  double fraction;  // beyond the whole number below
};

class Dive {
 public:
  Dive(const ReelSpace &space, double reserve)
      : space_(space),
        reserve_(reserve),
        solver_(space.model()),
        lower_(space.costs().size(), 0.0),
        room_(space.model().rowUpper) {
    for (int column = 0; column < space.model().columns(); ++column) {
      solver_.setCost(column, space.costs()[static_cast<std::size_t>(column)]);
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
    reserveTime(fractions);
    return !fractions.empty();
  }

 private:
  // Largest fraction first.
  std::vector<Fraction> fractionsOf(const LinearSolution &solution) const {
    std::vector<Fraction> fractions;
    for (const int column : space_.reels()) {
      const double value = solution.primal[static_cast<std::size_t>(column)];
      const double fraction = value - std::floor(value + kNoise);
      if (fraction > kNoise) {
        fractions.push_back({column, value, fraction});
      }
    }
    std::stable_sort(fractions.begin(), fractions.end(),
                     [](const Fraction &a, const Fraction &b) { return a.fraction > b.fraction; });
    return fractions;
  }

  void reserveTime(const std::vector<Fraction> &fractions) {
    std::map<int, double> reserves;
    for (const auto &[row, reserve] : reserves_) {
      reserves[row] = 0;
    }
    for (const Fraction &fraction : fractions) {
      reserves[space_.rowsOf(fraction.column).front()] +=
          reserve_ * (1 - fraction.fraction) * space_.entriesOf(fraction.column).front();
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
    const double whole = std::ceil(fraction.value - kNoise);
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
  double reserve_;
  LinearSolver solver_;
  std::vector<double> lower_;
  std::map<int, double> reserves_;  // days, by row
  std::vector<double> room_;        // days that fixed reels leave, by row
};

ReelPlan wholePlan(const ReelSpace &space, const LinearSolution &solution) {
  ReelPlan plan{solution.primal, 0};
  for (const int column : space.reels()) {
    double &value = plan.values[static_cast<std::size_t>(column)];
    value = std::round(value);
  }
  plan.objective = space.objectiveOf(plan.values);
  return plan;
}

}  // namespace

std::optional<ReelPlan> diveForReels(const ReelSpace &space, double reserve,
                                     const std::function<bool()> &isOver) {
  Dive dive(space, reserve);
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
