#include "plan/whole_reels.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <map>
#include <unordered_set>

#include "plan/reel_anneal.h"
#include "plan/reel_dive.h"
#include "plan/reel_neighbourhood.h"

namespace corvane::plan {

namespace {

// Columns in the plan, or in the LP's, when they are above this.
constexpr double kInUse = 1e-6;
constexpr double kDirectGap = 1e-5;
constexpr int kFirstNodes = 500;
constexpr int kDirectNodes = 20000;
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
// Which dive serves best, no rule tells. The later ones are for mills that are short of time.
constexpr std::array kDives = {DiveOptions{1, 0}, DiveOptions{1, 0.2}, DiveOptions{0.5, 0},
                               DiveOptions{0.25, 0}};
constexpr std::size_t kFirstDives = 2;
constexpr int kLargestScale = 8;
// The heat of the annealings one after the other: great for few reels of each pattern, small for
// many. Moves for each column of reels, and in all lest large mills see only the first one.
constexpr std::array kHeats = {0.2, 0.1, 0.05, 0.025, 0.0125};
constexpr double kMovesAColumn = 3000;
constexpr double kMostMoves = 2e7;
// To the bound; and to what it was before, for a round to have helped.
constexpr double kMuchLeft = 0.1;
constexpr double kStillHelps = 0.98;
// How many reels more or less of a pattern a part may have than the plan.
constexpr double kSpan = 2;

// The columns of reels by a key, in its order.
using Groups = std::map<std::pair<std::string, Index>, std::vector<int>>;

class NeighbourSearch {
 public:
  NeighbourSearch(const ReelSpace &space, const LinearSolution &optimum,
                  const WholeReelOptions &options, const WholeReelProgress &progress)
      : space_(space),
        optimum_(optimum),
        bound_(space.planOf(optimum.primal)),
        options_(options),
        progress_(progress) {
    for (const int column : space.reels()) {
      const ColumnRole &role = space.lp().column(column);
      const Pattern &pattern = space.problem().patterns[role.what];
      const Cutter &cutter = space.problem().cutters[pattern.cutter];
      grades_[{pattern.grade, role.period}].push_back(column);
      wholeGrades_[{pattern.grade, 0}].push_back(column);
      machines_[{space.problem().machines[cutter.machine].name, role.period}].push_back(column);
      periods_[{"", role.period}].push_back(column);
    }
  }

  std::optional<WholeReels> run() {
    if (!dive()) {
      return std::nullopt;
    }
    const bool isSmall = space_.reels().size() <= kDirectReels;
    if (!isSmall || !solveDirectly(kFirstNodes, false)) {
      anneal();
      searchNeighbourhoods(false);
      searchNeighbourhoods(true);
      if (isSmall) {
        solveDirectly(kDirectNodes, true);
      }
    }
    return WholeReels{std::move(plan_), way_ + (secondsLeft() <= 0 ? ", ended by time" : "")};
  }

 private:
  // The best of a few dives.
  bool dive() {
    bool isFound = false;
    for (std::size_t i = 0; i < kDives.size(); ++i) {
      if (i >= kFirstDives && isFound && plan_.unmet < bound_.unmet + 1) {
        break;
      }
      std::optional<ReelPlan> plan =
          diveForReels(space_, kDives.at(i), [this] { return secondsLeft() <= 0; });
      if (plan && (!isFound || isBetter(*plan, plan_))) {
        isFound = true;
        plan_ = std::move(*plan);
        found("dive");
      }
    }
    return isFound;
  }

  void found(const std::string &way) {
    way_ = way;
    progress_(way, plan_.unmet - bound_.unmet, gap());
  }

  double gap() const { return (plan_.cost - bound_.cost) / std::max(std::fabs(bound_.cost), 1.0); }
  bool isOver() const {
    return secondsLeft() <= 0 || (gap() <= options_.gap && plan_.unmet < bound_.unmet + 1);
  }

  double secondsLeft() const {
    const std::chrono::duration<double> spent = std::chrono::steady_clock::now() - start_;
    return options_.seconds > 0 ? options_.seconds - spent.count() : kInfinite;
  }

  // True when the plan is the best there is, or good enough.
  bool solveDirectly(int nodes, bool cuts) {
    if (isOver()) {
      return true;
    }
    WholeLimits limits;
    limits.nodes = nodes;
    limits.cuts = cuts;
    limits.seconds = std::min(kDirectShare * secondsLeft(), 1e6);
    limits.gap = std::max(options_.gap, kDirectGap);
    const ReelNeighbourhood everything(space_, plan_, space_.reels());
    const NeighbourhoodResult result = everything.search(limits);
    if (result.plan) {
      plan_ = *result.plan;
    }
    if (result.plan || result.isOptimal) {
      found("direct");
    }
    return result.isOptimal;
  }

  // Where much is left the runs are made again, hotter and twice as long, while that helps.
  void anneal() {
    ReelAnneal search(space_, optimum_);
    AnnealOptions options;
    options.moves =
        std::min(kMovesAColumn * static_cast<double>(space_.reels().size()), kMostMoves);
    double hotter = 1;
    for (double before = kInfinite; gap() < before; options.moves *= 2) {
      before = kStillHelps * gap();
      for (const double heat : kHeats) {
        if (isOver()) {
          return;
        }
        options.heat = heat * hotter;
        anneal(search, options);
        ++options.seed;
      }
      if (gap() < kMuchLeft) {
        return;
      }
      hotter = 2;
    }
  }

  void anneal(ReelAnneal &search, const AnnealOptions &options) {
    ReelPlan plan = search.run(plan_, options, [this] { return secondsLeft() <= 0; });
    if (isBetter(plan, plan_)) {
      plan_ = std::move(plan);
      found("annealing");
    }
  }

  void searchNeighbourhoods(bool cuts) {
    searched_.clear();
    cuts_ = cuts;
    for (int scale = 1; scale <= kLargestScale && !isOver();) {
      const ReelPlan before = plan_;
      searchEach(grades_, kGradePeriod, scale);
      searchEach(machines_, kMachinePeriod, scale);
      searchWindows(2, kGradePeriods, scale);
      if (!isBetter(plan_, before)) {
        searchWindows(3, kPeriod, scale);
        searchEach(wholeGrades_, kPeriod, scale);
        searchEach(periods_, kPeriod, scale);
      }
      scale *= isBetter(plan_, before) ? 1 : 2;
    }
  }

  void searchEach(const Groups &groups, const Size &size, int scale) {
    for (const auto &[key, columns] : groups) {
      search(columns, size, scale);
    }
  }

  // A grade in so many periods one after the other; windows overlap.
  void searchWindows(Index length, const Size &size, int scale) {
    for (const auto &[key, columns] : grades_) {
      std::vector<int> window = columns;
      for (Index next = 1; next < length; ++next) {
        if (const auto more = grades_.find({key.first, key.second + next}); more != grades_.end()) {
          window.insert(window.end(), more->second.begin(), more->second.end());
        }
      }
      if (window.size() > columns.size()) {
        search(window, size, scale);
      }
    }
  }

  void search(const std::vector<int> &columns, const Size &size, int scale) {
    if (isOver()) {
      return;
    }
    WholeLimits limits;
    limits.nodes = size.nodes * scale;
    limits.cuts = cuts_;
    limits.seconds = std::min(size.seconds * scale, secondsLeft());
    const ReelNeighbourhood part(
        space_, plan_, mostPromising(columns, size.reels * static_cast<std::size_t>(scale)),
        kSpan * scale);
    const std::size_t key = part.fingerprint() + static_cast<std::size_t>(scale);
    if (searched_.contains(key)) {
      return;
    }
    if (std::optional<ReelPlan> better = part.search(limits).plan) {
      plan_ = std::move(*better);
      found("neighbourhoods");
    } else {
      searched_.insert(key);
    }
  }

  // Those of the plan first, then those of the LP's plan, then by reduced cost.
  std::vector<int> mostPromising(const std::vector<int> &columns, std::size_t most) const {
    std::vector<std::pair<std::pair<int, double>, int>> ranked;
    ranked.reserve(columns.size());
    for (const int column : columns) {
      const auto at = static_cast<std::size_t>(column);
      const int rank = plan_.values[at] > kInUse ? 0 : optimum_.primal[at] > kInUse ? 1 : 2;
      ranked.push_back({{rank, optimum_.reducedCost[at]}, column});
    }
    std::sort(ranked.begin(), ranked.end());
    ranked.resize(std::min(ranked.size(), most));
    std::vector<int> chosen;
    chosen.reserve(ranked.size());
    for (const auto &[rank, column] : ranked) {
      chosen.push_back(column);
    }
    std::sort(chosen.begin(), chosen.end());
    return chosen;
  }

  const ReelSpace &space_;
  const LinearSolution &optimum_;
  ReelPlan bound_;
  WholeReelOptions options_;
  const WholeReelProgress &progress_;
  Groups grades_;
  Groups wholeGrades_;
  Groups machines_;
  Groups periods_;
  ReelPlan plan_;
  std::string way_;
  bool cuts_ = false;
  std::unordered_set<std::size_t> searched_;  // parts in which nothing better was found
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

}  // namespace

std::optional<WholeReels> planWholeReels(const ReelSpace &space, const LinearSolution &optimum,
                                         const WholeReelOptions &options,
                                         const WholeReelProgress &progress) {
  return NeighbourSearch(space, optimum, options, progress).run();
}

}  // namespace corvane::plan
