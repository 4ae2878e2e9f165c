#include "plan/network_pricing.h"

#include <algorithm>
#include <map>

#include "core/numbers.h"
#include "plan/pattern_pricing.h"

namespace corvane::plan {

namespace {

// The export takes less for noise.
constexpr double kLeastTrim = 1e-8;

// What pricing knows of one cutter in one period.
struct ReelPrice {
  double base = 0;
  double waste = 0;        // an inch
  double machineDual = 0;  // a reel
};

class Pricing {
 public:
  Pricing(const Network &network, const PlanProblem &problem, const CompactLp &lp,
          const LinearSolution &solution, int limit, PlanStep step)
      : network_(network),
        problem_(problem),
        lp_(lp),
        solution_(solution),
        limit_(limit),
        step_(step),
        gains_(problem.machines.size() * problem.periodCount(), 0.0) {}

  void price(const CutterMenu &menu) {
    for (std::size_t period = 0; period < problem_.periodCount(); ++period) {
      const Cutter &cutter = problem_.cutters[menu.cutter];
      if (problem_.machines[cutter.machine].days[period] > 0) {
        price(menu, period);
      }
    }
  }

  PricingRound round() {
    for (std::size_t i = 0; i < gains_.size(); ++i) {
      const Machine &machine = problem_.machines[i / problem_.periodCount()];
      round_.mostGain += gains_[i] * machine.days[i % problem_.periodCount()];
    }
    return std::move(round_);
  }

 private:
  double dual(int row) const { return row < 0 ? 0 : solution_.dual[static_cast<std::size_t>(row)]; }

  ReelPrice reelPrice(const Cutter &cutter, std::size_t period) const {
    ReelPrice price;
    price.machineDual = dual(lp_.machineRow(cutter.machine, period)) / cutter.capacity;
    if (step_ == PlanStep::kCost) {
      const double day = network_.arcCost(cutter.timeArc, period) +
                         problem_.machines[cutter.machine].dayCost[period];
      price.base = cutter.feedCost[period] + day / cutter.capacity;
      price.waste = cutter.wasteCost[period];
    }
    return price;
  }

  void price(const CutterMenu &menu, std::size_t period) {
    const Cutter &cutter = problem_.cutters[menu.cutter];
    const ReelPrice price = reelPrice(cutter, period);
    std::vector<Roll> rolls;
    for (const MenuEntry &entry : menu.entries) {
      rolls.push_back(
          {entry.width, dual(lp_.storeRow(entry.store, period)) + price.waste * entry.width});
    }
    const double reel = price.base + price.waste * menu.deckle - price.machineDual;
    const std::optional<Cut> cut = bestCut(rolls, menu.deckle, limit_, reel);
    // Where waste is gain, a reel that is nothing but waste bounds those that are not looked for.
    const double gain = cut ? cut->value - reel : std::max(0.0, -reel);
    double &most = gains_[cutter.machine * problem_.periodCount() + period];
    most = std::max(most, gain * cutter.capacity);
    if (cut) {
      take(menu, *cut, gain);
    }
  }

  // Cuts that several periods ask for come once.
  void take(const CutterMenu &menu, const Cut &cut, double gain) {
    const auto [place, isNew] =
        places_.try_emplace({menu.cutter, cut.rolls}, round_.patterns.size());
    if (isNew) {
      round_.patterns.push_back({patternOf(menu, cut), -gain});
    } else {
      double &reducedCost = round_.patterns[place->second].reducedCost;
      reducedCost = std::min(reducedCost, -gain);
    }
  }

  static NewPattern patternOf(const CutterMenu &menu, const Cut &cut) {
    NewPattern pattern{menu.cutter, {}, 0};
    double trim = menu.deckle;
    Index last = kNone;
    for (const std::size_t roll : cut.rolls) {
      const MenuEntry &entry = menu.entries[roll];
      trim -= entry.width;
      if (entry.store == last) {
        ++pattern.rolls.back().count;
      } else {
        pattern.rolls.push_back({entry.store, 1});
      }
      last = entry.store;
    }
    pattern.trim = writtenTrim(trim);
    return pattern;
  }

  const Network &network_;
  const PlanProblem &problem_;
  const CompactLp &lp_;
  const LinearSolution &solution_;
  int limit_;
  PlanStep step_;
  std::vector<double> gains_;  // money a day, by machine and period
  std::map<std::pair<Index, std::vector<std::size_t>>, std::size_t> places_;
  PricingRound round_;
};

}  // namespace

PricingRound pricePatterns(const Network &network, const PlanProblem &problem, const CompactLp &lp,
                           const LinearSolution &solution, const std::vector<CutterMenu> &menus,
                           int limit, PlanStep step) {
  Pricing pricing(network, problem, lp, solution, limit, step);
  for (const CutterMenu &menu : menus) {
    pricing.price(menu);
  }
  return pricing.round();
}

double writtenTrim(double trim) {
  return trim < kLeastTrim ? 0 : leadingNumber(general(trim).c_str());
}

}  // namespace corvane::plan
