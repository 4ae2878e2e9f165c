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

class ReelPrices {
 public:
  ReelPrices(const PricingBase &base, const std::vector<double> &duals, PlanStep step)
      : base_(base), duals_(duals), step_(step) {}

  double store(Index store, std::size_t period) const {
    return dual(base_.lp.storeRow(store, period));
  }

  ReelPrice of(const Cutter &cutter, std::size_t period) const {
    ReelPrice price;
    price.machineDual = dual(base_.lp.machineRow(cutter.machine, period)) / cutter.capacity;
    if (step_ == PlanStep::kCost) {
      const double day = base_.network.arcCost(cutter.timeArc, period) +
                         base_.problem.machines[cutter.machine].dayCost[period];
      price.base = cutter.feedCost[period] + day / cutter.capacity;
      price.waste = cutter.wasteCost[period];
    }
    return price;
  }

 private:
  double dual(int row) const { return row < 0 ? 0 : duals_[static_cast<std::size_t>(row)]; }

  const PricingBase &base_;
  const std::vector<double> &duals_;
  PlanStep step_;
};

class Pricing {
 public:
  Pricing(const PricingBase &base, const std::vector<double> &duals, PlanStep step, int disjoint)
      : problem_(base.problem),
        prices_(base, duals, step),
        limit_(base.limit),
        disjoint_(disjoint),
        gains_(problem_.machines.size() * problem_.periodCount(), 0.0) {}

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
  void price(const CutterMenu &menu, std::size_t period) {
    const Cutter &cutter = problem_.cutters[menu.cutter];
    const ReelPrice price = prices_.of(cutter, period);
    std::vector<Roll> rolls;
    for (const MenuEntry &entry : menu.entries) {
      rolls.push_back(
          {entry.width, prices_.store(entry.store, period) + price.waste * entry.width});
    }
    const double reel = price.base + price.waste * menu.deckle - price.machineDual;
    std::optional<Cut> cut = bestCut(rolls, menu.deckle, limit_, reel);
    // Where waste is gain, a reel that is nothing but waste bounds those that are not looked for.
    const double gain = cut ? cut->value - reel : std::max(0.0, -reel);
    double &most = gains_[cutter.machine * problem_.periodCount() + period];
    most = std::max(most, gain * cutter.capacity);
    for (int more = disjoint_ - 1; cut; --more) {
      take(menu, *cut, cut->value - reel);
      for (const std::size_t roll : cut->rolls) {
        rolls[roll].value = 0;
      }
      cut = more > 0 ? bestCut(rolls, menu.deckle, limit_, reel) : std::nullopt;
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

  const PlanProblem &problem_;
  ReelPrices prices_;
  int limit_;
  int disjoint_;
  std::vector<double> gains_;  // money a day, by machine and period
  std::map<std::pair<Index, std::vector<std::size_t>>, std::size_t> places_;
  PricingRound round_;
};

}  // namespace

PricingRound pricePatterns(const PricingBase &base, const std::vector<double> &duals, PlanStep step,
                           int disjoint) {
  Pricing pricing(base, duals, step, disjoint);
  for (const CutterMenu &menu : base.menus) {
    pricing.price(menu);
  }
  return pricing.round();
}

double writtenTrim(double trim) {
  return trim < kLeastTrim ? 0 : leadingNumber(general(trim).c_str());
}

}  // namespace corvane::plan
