#include "plan/whole_reels.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <map>

#include "plan/reel_dive.h"
#include "plan/reel_neighbourhood.h"

namespace corvane::plan {

namespace {

// Columns in the plan, or in the LP's, when they are above this.
constexpr double kUsed = 1e-6;
constexpr double kDirectGap = 1e-5;
constexpr int kDirectNodes = 5000;
constexpr double kDirectShare = 0.5;  // of the time

// The size of a neighbourhood in the first round: reels, nodes, and seconds lest one eat all.
struct Size {
  std::size_t reels;
  int nodes;
  double seconds;
};
constexpr Size kGradePeriod{60, 100, 3};
constexpr Size kMachinePeriod{80, 100, 3};
constexpr Size kGradePeriods{100, 100, 4};
constexpr Size kPeriod{150, 100, 5};
constexpr std::array kReserves = {1.0, 0.5, 0.25};
constexpr int kLargestScale = 8;

// The columns of reels by a key, in its order.
using Groups = std::map<std::pair<std::string, Index>, std::vector<int>>;

class Search {
 public:
  Search(const ReelSpace &space, const LinearSolution &optimum, const WholeReelOptions &options,
         const WholeReelProgress &progress)
      : space_(space), optimum_(optimum), options_(options), progress_(progress) {
    lpObjective_ = space.objectiveOf(optimum.primal);
    for (const int column : space.reels()) {
      const ColumnRole &role = space.lp().column(column);
      const Pattern &pattern = space.problem().patterns[role.what];
      const Cutter &cutter = space.problem().cutters[pattern.cutter];
      grades_[{pattern.grade, role.period}].push_back(column);
      machines_[{space.problem().machines[cutter.machine].name, role.period}].push_back(column);
      periods_[{"", role.period}].push_back(column);
    }
  }

  std::optional<WholeReels> run() {
    if (!dive()) {
      return std::nullopt;
    }
    if (space_.reels().size() > kDirectReels || !solveDirectly()) {
      searchNeighbourhoods();
    }
    return WholeReels{std::move(plan_), way_ + (secondsLeft() <= 0 ? ", ended by time" : "")};
  }

 private:
  // The best of a few dives; which reserve serves best, no rule tells.
  bool dive() {
    bool isFound = false;
    for (const double reserve : kReserves) {
      std::optional<ReelPlan> plan =
          diveForReels(space_, reserve, [this] { return secondsLeft() <= 0; });
      if (plan && (!isFound || plan->objective < plan_.objective)) {
        isFound = true;
        plan_ = std::move(*plan);
        found("dive");
      }
    }
    return isFound;
  }

  void found(const std::string &way) {
    way_ = way;
    progress_(way, gap());
  }

  double gap() const {
    return (plan_.objective - lpObjective_) / std::max(std::fabs(lpObjective_), 1.0);
  }
  bool isOver() const { return gap() <= options_.gap || secondsLeft() <= 0; }

  double secondsLeft() const {
    const std::chrono::duration<double> spent = std::chrono::steady_clock::now() - start_;
    return options_.seconds > 0 ? options_.seconds - spent.count() : kInfinite;
  }

  // True when the plan is the best there is.
  bool solveDirectly() {
    if (isOver()) {
      return true;
    }
    WholeLimits limits;
    limits.nodes = kDirectNodes;
    limits.seconds = std::min(kDirectShare * secondsLeft(), 1e6);
    limits.gap = std::max(options_.gap, kDirectGap);
    const ReelNeighbourhood everything(space_, plan_, space_.reels());
    const NeighbourhoodResult result = everything.search(limits);
    if (result.plan) {
      plan_ = *result.plan;
    }
    found("direct");
    return result.isOptimal;
  }

  void searchNeighbourhoods() {
    for (int scale = 1; scale <= kLargestScale && !isOver();) {
      const double before = plan_.objective;
      searchEach(grades_, kGradePeriod, scale);
      searchEach(machines_, kMachinePeriod, scale);
      searchPairs(scale);
      searchEach(periods_, kPeriod, scale);
      scale *= plan_.objective < before ? 1 : 2;
    }
  }

  void searchEach(const Groups &groups, const Size &size, int scale) {
    for (const auto &[key, columns] : groups) {
      search(columns, size, scale);
    }
  }

  // A grade in a period and in the next one.
  void searchPairs(int scale) {
    for (const auto &[key, columns] : grades_) {
      const auto next = grades_.find({key.first, key.second + 1});
      if (next != grades_.end()) {
        std::vector<int> both = columns;
        both.insert(both.end(), next->second.begin(), next->second.end());
        search(both, kGradePeriods, scale);
      }
    }
  }

  void search(const std::vector<int> &columns, const Size &size, int scale) {
    if (isOver()) {
      return;
    }
    WholeLimits limits;
    limits.nodes = size.nodes * scale;
    limits.seconds = std::min(size.seconds * scale, secondsLeft());
    const ReelNeighbourhood part(
        space_, plan_, mostPromising(columns, size.reels * static_cast<std::size_t>(scale)));
    if (std::optional<ReelPlan> better = part.search(limits).plan) {
      plan_ = std::move(*better);
      found("neighbourhoods");
    }
  }

  // Those of the plan first, then those of the LP's plan, then by reduced cost.
  std::vector<int> mostPromising(const std::vector<int> &columns, std::size_t most) const {
    std::vector<std::pair<std::pair<int, double>, int>> ranked;
    for (const int column : columns) {
      const auto at = static_cast<std::size_t>(column);
      const int rank = plan_.values[at] > kUsed ? 0 : optimum_.primal[at] > kUsed ? 1 : 2;
      ranked.push_back({{rank, optimum_.reducedCost[at]}, column});
    }
    std::sort(ranked.begin(), ranked.end());
    ranked.resize(std::min(ranked.size(), most));
    std::vector<int> chosen;
    for (const auto &[rank, column] : ranked) {
      chosen.push_back(column);
    }
    std::sort(chosen.begin(), chosen.end());
    return chosen;
  }

  const ReelSpace &space_;
  const LinearSolution &optimum_;
  WholeReelOptions options_;
  const WholeReelProgress &progress_;
  double lpObjective_ = 0;
  Groups grades_;
  Groups machines_;
  Groups periods_;
  ReelPlan plan_;
  std::string way_;
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

}  // namespace

std::optional<WholeReels> planWholeReels(const ReelSpace &space, const LinearSolution &optimum,
                                         const WholeReelOptions &options,
                                         const WholeReelProgress &progress) {
  return Search(space, optimum, options, progress).run();
}

}  // namespace corvane::plan
