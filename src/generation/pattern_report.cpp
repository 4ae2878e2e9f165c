#include "generation/pattern_report.h"

#include <algorithm>
#include <functional>
#include <iostream>
#include <vector>

#include "core/messages.h"
#include "core/numbers.h"
#include "core/skip_list_cursor.h"

namespace corvane {

namespace {

// The report of one pattern set. Patterns and widths are numbered: patterns in the order of the
// set, widths in the order of the demand-width list.
class SetReport {
 public:
  SetReport(const PatternCompPattern &set, const std::vector<double> &demandWidths, qint32 occurMin,
            std::ostream &log)
      : set_(set),
        demandWidths_(demandWidths),
        occurMin_(occurMin),
        log_(log),
        holders_(demandWidths.size()) {
    forEachElement(*set.patterns, [this](Pattern &pattern) { addPattern(pattern); });
  }

  void run(int periodCount) {
    for (int period = 0; period < periodCount; ++period) {
      counters_.assign(demandWidths_.size(), 0);
      countSelected();
      topUp();
      print();
      nextPeriod();
    }
  }

 private:
  struct PatternView {
    QLinkedList<double>::const_iterator x;
    QLinkedList<qint32>::iterator inModel;
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
    patterns_.push_back(
        {pattern.xValues.cbegin(), pattern.inModel.begin(), begin, countedWidths_.size()});
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

  void take(PatternView &pattern) {
    *pattern.inModel = 1;
    for (std::size_t at = pattern.countedBegin; at < pattern.countedEnd; ++at) {
      ++counters_[countedWidths_[at]];
    }
  }

  void countSelected() {
    for (PatternView &pattern : patterns_) {
      if (*pattern.x > 0.0) {
        take(pattern);
      }
    }
  }

  void topUp() {
    for (std::size_t position = 0; position < demandWidths_.size(); ++position) {
      for (const std::size_t number : holders_[position]) {
        if (counters_[position] >= occurMin_) {
          break;
        }
        if (*patterns_[number].inModel == 0) {
          take(patterns_[number]);
        }
      }
    }
  }

  void print() const {
    for (std::size_t position = 0; position < demandWidths_.size(); ++position) {
      if (counters_[position] < occurMin_) {
        tell(std::cout, log_,
             "Deckle Width: " + fixed(set_.deckleWidth, 3) +
                 ", Demand Width: " + fixed(demandWidths_[position], 3) + " is in " +
                 std::to_string(counters_[position]) + " patterns.");
      }
    }
  }

  void nextPeriod() {
    for (PatternView &pattern : patterns_) {
      ++pattern.x;
      ++pattern.inModel;
    }
  }

  const PatternCompPattern &set_;
  const std::vector<double> &demandWidths_;
  qint32 occurMin_;
  std::ostream &log_;
  std::vector<PatternView> patterns_;
  std::vector<std::size_t> countedWidths_;
  // For each width the patterns that hold it, in the order of the set.
  std::vector<std::vector<std::size_t>> holders_;
  std::vector<qint32> counters_;
};

}  // namespace

void reportPatterns(const QLinkedList<QString> &grades, int periodCount, const DemandTable &demand,
                    PatternSets &sets, qint32 occurMin, std::ostream &log) {
  for (const QString &grade : grades) {
    const GradeDemand *gradeDemand = demand.find(grade);
    const std::vector<double> widths =
        gradeDemand != nullptr ? distinctWidths(*gradeDemand) : std::vector<double>();
    for (const PatternCompPattern *set : sets.ofGrade(grade)) {
      SetReport(*set, widths, occurMin, log).run(periodCount);
    }
  }
}

}  // namespace corvane
