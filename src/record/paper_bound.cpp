#include "record/paper_bound.h"

#include <algorithm>
#include <map>
#include <set>

#include "plan/linear_solver.h"
#include "plan/pattern_pricing.h"

namespace corvane::record {

namespace {

// The rolls of one grade are cut from its deckles with the least paper:
//
//   minimise   sum d_p x_p   over all patterns p that fit their deckle d_p
//   subject to sum a_wp x_p >= delivered rolls of width w,   x >= 0
//
// by column generation (Gilmore and Gomory, Operations Research 9, 1961). In every round the duals
// y price the best pattern of each deckle, worth z_d. y divided by the largest z_d / d is feasible
// for the dual, so its value is a bound (Farley, Operations Research 38, 1990), whenever the rounds
// end.
class GradeBound {
 public:
  GradeBound(const std::map<double, double> &rolls, const std::set<double> &deckles, int mostRolls)
      : deckles_(deckles), mostRolls_(mostRolls) {
    for (const auto &[width, count] : rolls) {
      if (count > 0) {
        widths_.push_back(width);
        counts_.push_back(count);
      }
    }
  }

  double find() {
    if (widths_.empty() || deckles_.empty() || widths_.back() > *deckles_.rbegin()) {
      return 0;  // nothing delivered, or by a pattern that does not fit: no bound
    }
    addSeeds();
    plan::LinearSolver solver(model_);
    double bound = 0;
    for (int round = 0; round < kMostRounds; ++round) {
      const plan::LinearSolution solution = solver.solve(plan::Method::kPrimal);
      const int known = model_.columns();
      bound = std::max(bound, solution.objective / price(solution.dual));
      if (bound >= solution.objective * (1 - kGap) || model_.columns() == known) {
        break;
      }
      solver.addColumns(model_, known);
    }
    return bound;
  }

 private:
  static constexpr int kMostRounds = 2000;
  static constexpr double kGap = 1e-7;

  void addPattern(double deckle, const std::vector<std::size_t> &rolls) {
    std::map<int, double> counts;
    for (const std::size_t roll : rolls) {
      counts[static_cast<int>(roll)] += 1;
    }
    std::vector<plan::Entry> entries;
    entries.reserve(counts.size());
    for (const auto &[row, count] : counts) {
      entries.push_back({row, count});
    }
    model_.addColumn(deckle, 0, plan::kInfinite, entries);
  }

  void addSeeds() {
    for (std::size_t i = 0; i < widths_.size(); ++i) {
      model_.addRow(counts_[i], plan::kInfinite);
    }
    for (std::size_t i = 0; i < widths_.size(); ++i) {
      addPattern(*deckles_.rbegin(), {i});
    }
  }

  // Adds the best pattern of each deckle that is worth more than the deckle; returns the largest
  // worth of an inch of deckle, at least 1.
  double price(const std::vector<double> &duals) {
    std::vector<plan::Roll> rolls;
    for (std::size_t i = 0; i < widths_.size(); ++i) {
      rolls.push_back({widths_[i], std::max(0.0, duals[i])});
    }
    double largest = 1;
    for (const double deckle : deckles_) {
      const auto cut = plan::bestCut(rolls, deckle, mostRolls_, deckle);
      if (cut.has_value()) {
        // What the search leaves out may be worth this much more.
        largest = std::max(largest, cut->value * (1 + plan::kValueGap) / deckle);
        addPattern(deckle, cut->rolls);
      }
    }
    return largest * (1 + plan::kValueGap);
  }

  const std::set<double> &deckles_;
  int mostRolls_;
  std::vector<double> widths_;  // ascending
  std::vector<double> counts_;
  plan::LinearModel model_;
};

}  // namespace

std::vector<PaperBound> paperBounds(const Record &record, int mostRolls) {
  std::map<QString, std::map<double, double>> rolls;
  for (const Delivery &delivery : record.plan->deliveries) {
    const Order &order = record.orders[static_cast<std::size_t>(delivery.order)];
    rolls[order.grade][order.width] += delivery.delivered;
  }
  std::map<QString, std::set<double>> deckles;
  for (const Cutter &cutter : record.cutters) {
    if (cutter.deckle > 0) {
      deckles[cutter.grade].insert(cutter.deckle);
    }
  }
  for (const Pattern &pattern : record.patterns) {
    int count = 0;
    for (const auto &roll : pattern.rolls) {
      count += roll.second;
    }
    mostRolls = std::max(mostRolls, count);
  }
  std::vector<PaperBound> bounds;
  for (const auto &[grade, byWidth] : rolls) {
    if (const double bound = GradeBound(byWidth, deckles[grade], mostRolls).find(); bound > 0) {
      bounds.push_back({grade, bound});
    }
  }
  return bounds;
}

}  // namespace corvane::record
