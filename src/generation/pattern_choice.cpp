#include "generation/pattern_choice.h"

#include <algorithm>
#include <functional>

#include "core/skip_list_cursor.h"

namespace corvane {

namespace {

// The choice among the patterns of one set. Patterns and widths are numbered: patterns in the order
// of the set, widths in the order of the demand widths.
class PatternChoice {
 public:
  PatternChoice(const PatternCompPattern &set, const std::vector<double> &demandWidths,
                qint32 occurMin)
      : demandWidths_(demandWidths), occurMin_(occurMin), holders_(demandWidths.size()) {
    forEachElement(*set.patterns, [this](Pattern &pattern) { addPattern(pattern); });
  }

  std::vector<RareWidth> run(qint32 periodCount) {
    for (qint32 period = 0; period < periodCount; ++period) {
      counters_.assign(demandWidths_.size(), 0);
      takeActive(period);
      topUp(period);
      noteRareWidths();
    }
    return rareWidths_;
  }

 private:
  struct PatternView {
    Pattern *pattern;
    // Its part of countedWidths_: the widths whose counters it raises.
    std::size_t countedBegin;
    std::size_t countedEnd;
  };

  static constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

  std::size_t positionOf(double width) const {
    const auto at =
        std::lower_bound(demandWidths_.begin(), demandWidths_.end(), width, std::greater<>());
    return at != demandWidths_.end() && *at == width
               ? static_cast<std::size_t>(at - demandWidths_.begin())
               : kNowhere;
  }

  void addPattern(Pattern &pattern) {
    const std::size_t number = patterns_.size();
    const std::size_t begin = countedWidths_.size();
    double previous = 0.0;
    for (const double width : pattern.widths) {
      const std::size_t position = positionOf(width);
      if (position != kNowhere) {
        addWidth(number, position, width != previous);
      }
      previous = width;
    }
    patterns_.push_back({&pattern, begin, countedWidths_.size()});
  }

  void addWidth(std::size_t pattern, std::size_t position, bool counts) {
    if (counts) {
      countedWidths_.push_back(position);
    }
    std::vector<std::size_t> &holders = holders_[position];
    if (holders.empty() || holders.back() != pattern) {
      holders.push_back(pattern);
    }
  }

  void take(const PatternView &view, qint32 period) {
    view.pattern->inModel.set(period, 1);
    for (std::size_t at = view.countedBegin; at < view.countedEnd; ++at) {
      ++counters_[countedWidths_[at]];
    }
  }

  void takeActive(qint32 period) {
    for (const PatternView &view : patterns_) {
      if (view.pattern->xValues.at(period) > 0.0) {
        take(view, period);
      }
    }
  }

  void topUp(qint32 period) {
    for (std::size_t position = 0; position < demandWidths_.size(); ++position) {
      for (const std::size_t number : holders_[position]) {
        if (counters_[position] >= occurMin_) {
          break;
        }
        if (patterns_[number].pattern->inModel.at(period) == 0) {
          take(patterns_[number], period);
        }
      }
    }
  }

  void noteRareWidths() {
    for (std::size_t position = 0; position < demandWidths_.size(); ++position) {
      if (counters_[position] < occurMin_) {
        rareWidths_.push_back({demandWidths_[position], counters_[position]});
      }
    }
  }

  const std::vector<double> &demandWidths_;
  qint32 occurMin_;
  std::vector<PatternView> patterns_;
  std::vector<std::size_t> countedWidths_;
  // For each width the patterns that hold it, in the order of the set.
  std::vector<std::vector<std::size_t>> holders_;
  std::vector<qint32> counters_;
  std::vector<RareWidth> rareWidths_;
};

}  // namespace

std::vector<RareWidth> choosePatterns(const PatternCompPattern &set,
                                      const std::vector<double> &demandWidths, qint32 periodCount,
                                      qint32 occurMin) {
  return PatternChoice(set, demandWidths, occurMin).run(periodCount);
}

}  // namespace corvane
