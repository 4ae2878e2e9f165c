#include "plan/pattern_pricing.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "plan/cut_grid.h"
#include "plan/cut_table.h"

namespace corvane::plan {

namespace {

// The nodes after which a search makes a table of cuts.
constexpr double kNodesWithoutTable = 20000;
// Of dynamic programming in the time of a node of the search.
constexpr double kAdditionsANode = 256;
// Of dynamic programming in the time of a table.
constexpr double kMostAdditions = 5e7;

struct Point {
  double width;
  double value;
};

// The rolls that an optimal cut may need: a roll goes where another one is worth as much and is no
// wider, for it can stand in its place. Ascending in width and value.
std::vector<PricedWidth> undominated(const std::vector<Roll> &rolls, double deckle) {
  std::vector<PricedWidth> candidates;
  for (std::size_t i = 0; i < rolls.size(); ++i) {
    if (rolls[i].value > 0 && rolls[i].width <= deckle + kFitTolerance) {
      candidates.push_back({rolls[i].width, rolls[i].value, i});
    }
  }
  std::stable_sort(candidates.begin(), candidates.end(),
                   [](const PricedWidth &a, const PricedWidth &b) {
                     return a.width != b.width ? a.width < b.width : a.value > b.value;
                   });
  double best = 0;
  std::erase_if(candidates, [&](const PricedWidth &candidate) {
    const bool isDominated = candidate.value <= best;
    best = std::max(best, candidate.value);
    return isDominated;
  });
  return candidates;
}

std::vector<PricedWidth> byValuePerInch(std::vector<PricedWidth> widths) {
  std::stable_sort(widths.begin(), widths.end(), [](const PricedWidth &a, const PricedWidth &b) {
    return a.value * b.width > b.value * a.width;
  });
  return widths;
}

// True when b is on or below the line from a to c.
bool isBelow(const Point &a, const Point &b, const Point &c) {
  return (b.value - a.value) * (c.width - a.width) <= (c.value - a.value) * (b.width - a.width);
}

// The upper concave hull of (0, 0) and the points, which come by ascending width (Andrew's monotone
// chain), as far as it rises.
std::vector<Point> concaveHull(const std::vector<Point> &points) {
  std::vector<Point> hull{{0, 0}};
  for (const Point &point : points) {
    if (point.value <= hull.back().value) {
      continue;
    }
    while (hull.size() > 1 && isBelow(hull[hull.size() - 2], hull.back(), point)) {
      hull.pop_back();
    }
    hull.push_back(point);
  }
  return hull;
}

double heightAt(const std::vector<Point> &hull, double width) {
  if (width >= hull.back().width) {
    return hull.back().value;
  }
  const auto right =
      std::upper_bound(hull.begin(), hull.end(), width,
                       [](double value, const Point &point) { return value < point.width; });
  const auto left = right - 1;
  return left->value +
         (right->value - left->value) * (width - left->width) / (right->width - left->width);
}

class WidthSearch {
 public:
  WidthSearch(const std::vector<Roll> &rolls, double deckle, int limit, double above)
      : candidates_(byValuePerInch(undominated(rolls, deckle))),
        limit_(limit),
        grid_(candidates_, deckle + kFitTolerance, limit),
        patience_(std::min(kNodesWithoutTable, grid_.work() / kAdditionsANode)),
        best_(above) {
    makeHulls();
  }

  // Tries every way to go on with the candidates from `first`, one more roll at a time, unless it
  // cannot be worth more than the best.
  // NOLINTNEXTLINE(misc-no-recursion): as deep as a pattern has rolls
  void extend(std::size_t first, double room, int rollsLeft, double value) {
    take(value, chosen_);
    if (++nodes_ > patience_ && !isLasting_) {
      searchOtherwise();
    }
    if (isAtEnd_ || completeFromTable(room, rollsLeft, value)) {
      return;
    }
    for (std::size_t i = first; i < candidates_.size() && rollsLeft > 0 && !isAtEnd_; ++i) {
      const double bound = value + rollsLeft * heightAt(hulls_[i], room / rollsLeft);
      if (!isBetter(bound)) {
        return;  // the bounds of later candidates are no higher
      }
      if (candidates_[i].width <= room) {
        chosen_.push_back(candidates_[i].index);
        extend(i, room - candidates_[i].width, rollsLeft - 1, value + candidates_[i].value);
        chosen_.pop_back();
      }
    }
  }

  bool found() const { return found_; }
  double bestValue() const { return best_; }
  const std::vector<std::size_t> &bestRolls() const { return bestRolls_; }

 private:
  void makeHulls() {
    hulls_.resize(candidates_.size());
    std::vector<Point> points;
    for (std::size_t i = candidates_.size(); i-- > 0;) {
      const Point point{candidates_[i].width, candidates_[i].value};
      points.insert(
          std::upper_bound(points.begin(), points.end(), point,
                           [](const Point &a, const Point &b) { return a.width < b.width; }),
          point);
      hulls_[i] = concaveHull(points);
    }
  }

  bool isBetter(double value) const { return value > best_ + kValueGap * std::fabs(best_); }

  void take(double value, const std::vector<std::size_t> &rolls) {
    if (isBetter(value)) {
      best_ = value;
      bestRolls_ = rolls;
      found_ = true;
    }
  }

  // Bounds do not end the search soon.
  void searchOtherwise() {
    isLasting_ = true;
    if (grid_.work() > kMostAdditions) {
      table_ = CutTable(candidates_, limit_);
      return;
    }
    const CutGrid::Best best = grid_.best();
    take(best.value, best.rolls);
    isAtEnd_ = true;
  }

  // True when the table says all about the node.
  bool completeFromTable(double room, int rollsLeft, double value) {
    if (table_.rolls() == 0 || rollsLeft < table_.rolls()) {
      return false;
    }
    const std::size_t place = table_.bestWithin(room);
    if (isBetter(value + table_.valueAt(place))) {
      std::vector<std::size_t> rolls = table_.rollsAt(place);
      rolls.insert(rolls.begin(), chosen_.begin(), chosen_.end());
      take(value + table_.valueAt(place), rolls);
    }
    return rollsLeft == table_.rolls();
  }

  std::vector<PricedWidth> candidates_;    // by value per inch, highest first
  std::vector<std::vector<Point>> hulls_;  // of the candidates from each one on
  int limit_;
  CutGrid grid_;
  CutTable table_;
  double patience_;  // nodes
  double nodes_ = 0;
  bool isLasting_ = false;
  bool isAtEnd_ = false;
  std::vector<std::size_t> chosen_;
  double best_;
  bool found_ = false;
  std::vector<std::size_t> bestRolls_;
};

}  // namespace

std::optional<Cut> bestCut(const std::vector<Roll> &rolls, double deckle, int limit, double above) {
  WidthSearch search(rolls, deckle, limit, std::max(above, 0.0));
  search.extend(0, deckle + kFitTolerance, limit, 0.0);
  if (!search.found()) {
    return std::nullopt;
  }
  Cut cut{search.bestValue(), search.bestRolls()};
  std::stable_sort(cut.rolls.begin(), cut.rolls.end(),
                   [&](std::size_t a, std::size_t b) { return rolls[a].width > rolls[b].width; });
  return cut;
}

}  // namespace corvane::plan
