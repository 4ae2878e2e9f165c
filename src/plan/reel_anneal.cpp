#include "plan/reel_anneal.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <string>

namespace corvane::plan {

namespace {

// What an undelivered roll costs, in rolls of surplus: at the beginning; after this part of the
// moves, to which it grows; and at the end, from there on, lest a roll be left.
constexpr double kFirstPenalty = 2;
constexpr double kGrownPenalty = 5;
constexpr double kPenaltyGrows = 0.75;
constexpr double kLastPenalty = 20;
constexpr double kEnd = 0.9;
// The penalty changes in so many steps.
constexpr int kStages = 20;
// Of the temperature at the beginning, at the end.
constexpr double kCooled = 0.03;
// Of the moves, those that add a reel, and those that drop one.
constexpr double kAdds = 0.1;
constexpr double kDrops = 0.1;
// How much the first patterns of a group are preferred: the power of an even chance.
constexpr int kPreference = 3;
// How many of the chances go to the same period for one that goes to each beside it.
constexpr int kSamePeriod = 3;
constexpr int kMovesAnAsking = 1024;
constexpr double kNoisePerDay = 1e-10;
constexpr double kLeastProgress = 1e-6;
constexpr double kRange = 4294967296.0;  // of the generator

double penaltyAt(double part) {
  return part >= kEnd ? kLastPenalty
                      : kFirstPenalty * std::pow(kGrownPenalty / kFirstPenalty,
                                                 std::min(1.0, part / kPenaltyGrows));
}

}  // namespace

ReelAnneal::ReelAnneal(const ReelSpace &space, const LinearSolution &optimum)
    : space_(space),
      flow_(space, 0),
      groupOf_(space.costs().size(), -1),
      counts_(space.costs().size()) {
  groupColumns(optimum);
  findSurplusCost();
}

void ReelAnneal::groupColumns(const LinearSolution &optimum) {
  std::map<std::pair<std::string, Index>, int> numbers;
  for (const int column : space_.reels()) {
    const ColumnRole &role = space_.lp().column(column);
    const auto [entry, isNew] =
        numbers.try_emplace({space_.problem().patterns[role.what].grade, role.period},
                            static_cast<int>(groups_.size()));
    if (isNew) {
      groups_.emplace_back();
    }
    groupOf_[static_cast<std::size_t>(column)] = entry->second;
    groups_[static_cast<std::size_t>(entry->second)].push_back(column);
  }
  for (std::vector<int> &group : groups_) {
    std::stable_sort(group.begin(), group.end(), [&](int a, int b) {
      return optimum.reducedCost[static_cast<std::size_t>(a)] <
             optimum.reducedCost[static_cast<std::size_t>(b)];
    });
  }
  near_.resize(groups_.size());
  for (const auto &[key, number] : numbers) {
    std::vector<int> &near = near_[static_cast<std::size_t>(number)];
    near.assign(kSamePeriod, number);
    for (const Index period : {key.second - 1, key.second + 1}) {  // kNone before the first
      if (const auto other = numbers.find({key.first, period}); other != numbers.end()) {
        near.push_back(other->second);
      }
    }
  }
}

void ReelAnneal::findSurplusCost() {
  int stores = 0;
  for (int column = 0; column < space_.model().columns(); ++column) {
    if (space_.lp().column(column).kind == ColumnKind::kSurplus) {
      surplusCost_ += std::fabs(space_.costs()[static_cast<std::size_t>(column)]);
      ++stores;
    }
  }
  surplusCost_ /= std::max(stores, 1);
}

ReelPlan ReelAnneal::run(const ReelPlan &start, const AnnealOptions &options,
                         const std::function<bool()> &isOver) {
  random_.seed(options.seed);
  take(start.values);
  const double hot = options.heat * surplusCost_;
  double temperature = hot;
  int stage = -1;
  for (double move = 0; move < options.moves && !space_.reels().empty(); ++move) {
    const double part = move / options.moves;
    if (part * kStages >= stage + 1) {
      ++stage;
      rebuild(surplusCost_ * penaltyAt(part));
    }
    if (std::fmod(move, kMovesAnAsking) == 0) {
      if (isOver()) {
        break;
      }
      temperature = hot * std::pow(kCooled, part);
    }
    // Drawn one after the other: a compiler may take arguments in any order.
    const double most = -temperature * std::log(chance());
    tryMove(propose(), most);
  }
  take(best_);
  rebuild(surplusCost_ * kLastPenalty);
  std::vector<double> values = counts_;
  flow_.write(values);
  return space_.planOf(std::move(values));
}

void ReelAnneal::take(const std::vector<double> &reels) {
  units_.clear();
  for (const int column : space_.reels()) {
    const auto at = static_cast<std::size_t>(column);
    counts_[at] = std::round(reels[at]);
    units_.insert(units_.end(), static_cast<std::size_t>(counts_[at]), column);
  }
  best_ = counts_;
}

// All sums anew, which takes the noise out of them, too. Plans before had another penalty and
// cannot be compared.
void ReelAnneal::rebuild(double penalty) {
  flow_.restart(penalty);
  reelCost_ = 0;
  days_.assign(static_cast<std::size_t>(space_.model().rows()), 0.0);
  for (const int column : space_.reels()) {
    if (const double made = counts_[static_cast<std::size_t>(column)]; made > 0) {
      flow_.add(column, made);
      reelCost_ += made * space_.costs()[static_cast<std::size_t>(column)];
      days_[static_cast<std::size_t>(space_.rowsOf(column).front())] +=
          made * space_.entriesOf(column).front();
    }
  }
  flow_.commit();
  keepBest();
}

void ReelAnneal::keepBest() {
  bestCost_ = cost();
  best_ = counts_;
}

std::size_t ReelAnneal::below(std::size_t count) {
  return static_cast<std::size_t>(std::uint64_t{random_()} * count >> 32U);
}

// Between 0 and 1, and neither. The library's own distributions may differ between libraries.
double ReelAnneal::chance() {
  return (static_cast<double>(random_()) + 0.5) / kRange;
}

ReelAnneal::Move ReelAnneal::propose() {
  Move move;
  const double kind = chance();
  if (kind < kAdds || units_.empty()) {
    move.more = space_.reels()[below(space_.reels().size())];
    return move;
  }
  move.unit = below(units_.size());
  move.less = units_[move.unit];
  if (kind > kAdds + kDrops) {
    const auto &near =
        near_[static_cast<std::size_t>(groupOf_[static_cast<std::size_t>(move.less)])];
    const auto &group = groups_[static_cast<std::size_t>(near[below(near.size())])];
    const double place = std::pow(chance(), kPreference) * static_cast<double>(group.size());
    move.more = group[static_cast<std::size_t>(place)];
  }
  return move;
}

bool ReelAnneal::hasTime(const Move &move) const {
  if (move.more < 0) {
    return true;
  }
  const auto row = static_cast<std::size_t>(space_.rowsOf(move.more).front());
  double days = days_[row] + space_.entriesOf(move.more).front();
  if (move.less >= 0 && space_.rowsOf(move.less).front() == space_.rowsOf(move.more).front()) {
    days -= space_.entriesOf(move.less).front();
  }
  return days <= days_[row] || days <= space_.model().rowUpper[row] * (1 + kNoisePerDay);
}

void ReelAnneal::count(const Move &move, int sign) {
  const auto change = [this](int column, int reels) {
    if (column >= 0) {
      counts_[static_cast<std::size_t>(column)] += reels;
      reelCost_ += reels * space_.costs()[static_cast<std::size_t>(column)];
      days_[static_cast<std::size_t>(space_.rowsOf(column).front())] +=
          reels * space_.entriesOf(column).front();
    }
  };
  change(move.more, sign);
  change(move.less, -sign);
}

// Makes the move if it adds at most so much to the cost.
void ReelAnneal::tryMove(const Move &move, double most) {
  if (move.more == move.less || !hasTime(move)) {
    return;
  }
  const auto costOf = [this](int column) {
    return column < 0 ? 0 : space_.costs()[static_cast<std::size_t>(column)];
  };
  if (costOf(move.more) - costOf(move.less) + flow_.boundOfSwap(move.more, move.less) > most) {
    return;
  }
  const double before = cost();
  count(move, 1);
  if (move.more >= 0) {
    flow_.add(move.more, 1);
  }
  if (move.less >= 0) {
    flow_.remove(move.less, 1);
  }
  if (cost() - before > most) {
    flow_.rollBack();
    count(move, -1);
    return;
  }
  flow_.commit();
  if (move.less < 0) {
    units_.push_back(move.more);
  } else if (move.more >= 0) {
    units_[move.unit] = move.more;
  } else {
    units_[move.unit] = units_.back();
    units_.pop_back();
  }
  if (cost() < bestCost_ - kLeastProgress) {
    keepBest();
  }
}

}  // namespace corvane::plan
