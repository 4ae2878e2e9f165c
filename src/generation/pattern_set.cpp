#include "generation/pattern_set.h"

#include <algorithm>
#include <cmath>
#include <compare>
#include <iterator>
#include <memory>
#include <optional>
#include <utility>

#include "core/skip_list_appender.h"
#include "core/skip_list_cursor.h"

namespace corvane {

namespace {

constexpr int kLevelArgument = 3;

int compareWithTolerance(double a, double b) {
  const double difference = a - b;
  if (difference < -kPatternTolerance) {
    return -1;
  }
  return difference > kPatternTolerance ? 1 : 0;
}

int compareWidthsAndTrim(const Pattern &a, const Pattern &b) {
  if (a.widths.size() != b.widths.size()) {
    return a.widths.size() < b.widths.size() ? -1 : 1;
  }
  auto other = b.widths.cbegin();
  for (const double width : a.widths) {
    if (const int order = compareWithTolerance(width, *other); order != 0) {
      return order;
    }
    ++other;
  }
  return compareWithTolerance(a.trim, b.trim);
}

// Walks from the nearer end: the period in work is the last one.
double entryAt(const QLinkedList<double> &entries, qint32 index) {
  const auto size = static_cast<qint32>(entries.size());
  return index < size / 2 ? *std::next(entries.cbegin(), index)
                          : *std::prev(entries.cend(), size - index);
}

bool isInModel(const Pattern &pattern) {
  return pattern.inModel.contains(1);
}

void deletePatterns(const skipList<Pattern> &set) {
  forEachElement(set, [](Pattern &pattern) { delete &pattern; });
}

// The end of the run of patterns, sorted by reduced cost, each of which ties with the one before.
std::vector<PricedPattern>::iterator endOfTies(std::vector<PricedPattern>::iterator first,
                                               std::vector<PricedPattern>::iterator end) {
  auto last = first;
  while (++first != end && compareWithTolerance(last->reducedCost, first->reducedCost) == 0) {
    last = first;
  }
  return first;
}

// Fills a list by reduced cost, in order. Sorting in plain memory and appending reads next to no
// pattern, where an insertion of each would read many.
class RedCostListFiller {
 public:
  explicit RedCostListFiller(skipList<Pattern> &list) : list_(list) {}

  void fill(std::vector<PricedPattern> &priced, bool isTotallyOrdered) {
    std::sort(priced.begin(), priced.end(), [](const PricedPattern &a, const PricedPattern &b) {
      return std::is_lt(std::strong_order(a.reducedCost, b.reducedCost));
    });
    // What is no number stands at an end.
    const bool areNumbers = !priced.empty() && !std::isnan(priced.front().reducedCost) &&
                            !std::isnan(priced.back().reducedCost);
    for (auto first = priced.begin(); first != priced.end();) {
      const auto end = endOfTies(first, priced.end());
      addTies(first, end, areNumbers, isTotallyOrdered);
      first = end;
    }
  }

 private:
  using Iterator = std::vector<PricedPattern>::iterator;

  // Adds the ties, which order after all patterns of the list but, unless `isBehind`, for reduced
  // costs that are no numbers. Ties stand in the order of their pattern set. Where they span more
  // than the tolerance there is no order that serves every pair; the list's own insertion decides
  // then.
  void addTies(Iterator first, Iterator end, bool isBehind, bool isTotallyOrdered) {
    const bool inOrder = compareWithTolerance(first->reducedCost, std::prev(end)->reducedCost) == 0;
    std::sort(first, end,
              [](const PricedPattern &a, const PricedPattern &b) { return a.place < b.place; });
    for (bool isFirst = true; first != end; ++first, isFirst = false) {
      if (!inOrder) {
        comparing().insert(first->pattern);
      } else if (isBehind && (isFirst || isTotallyOrdered)) {
        vouching().append(first->pattern);
      } else {
        comparing().append(first->pattern);
      }
    }
  }

  SkipListAppender<Pattern> &vouching() {
    return appender_ ? *appender_ : appender_.emplace(list_);
  }
  skipList<Pattern> &comparing() {
    appender_.reset();
    return list_;
  }

  skipList<Pattern> &list_;
  std::optional<SkipListAppender<Pattern>> appender_;
};

void pruneSet(PatternCompPattern &descriptor) {
  skipList<Pattern> *old = descriptor.patterns;
  auto kept = std::make_unique<skipList<Pattern>>(&descriptor, false, kLevelArgument);
  old->rewind();
  while (Pattern *pattern = old->step()) {
    if (!isInModel(*pattern) || kept->insert(pattern) != skipList<Pattern>::kStored) {
      delete pattern;
    }
  }
  delete old;
  descriptor.patterns = kept.release();
}

}  // namespace

int PatternCompRedCost::compare(const Pattern &a, const Pattern &b) const {
  const int order =
      compareWithTolerance(entryAt(a.reducedCosts, period), entryAt(b.reducedCosts, period));
  return order != 0 ? order : compareWidthsAndTrim(a, b);
}

PatternCompPattern::PatternCompPattern(QString theGrade, double theDeckleWidth)
    : deckleWidth(theDeckleWidth),
      grade(std::move(theGrade)),
      patterns(new skipList<Pattern>(this, false, kLevelArgument)) {}

PatternCompPattern::~PatternCompPattern() {
  dropRedCostSets();
  deletePatterns(*patterns);
  delete patterns;
}

int PatternCompPattern::compare(const Pattern &a, const Pattern &b) const {
  return compareWidthsAndTrim(a, b);
}

void PatternCompPattern::addRedCostSet(std::vector<PricedPattern> &priced, bool isTotallyOrdered) {
  auto comparison = std::make_unique<PatternCompRedCost>(static_cast<qint32>(redCostComps.size()));
  auto set = std::make_unique<skipList<Pattern>>(comparison.get(), false, kLevelArgument);
  redCostComps.append(comparison.get());
  (void)comparison.release();
  redCostSets.append(set.get());
  RedCostListFiller(*set.release()).fill(priced, isTotallyOrdered);
}

void PatternCompPattern::dropRedCostSets() {
  while (!redCostSets.isEmpty()) {
    delete redCostSets.takeFirst();
  }
  while (!redCostComps.isEmpty()) {
    delete redCostComps.takeFirst();
  }
}

// Widths further apart than the tolerance compare as they are. The trims of patterns of the same
// widths differ by no more than the rounding of one subtraction a width, in any order of these.
bool ordersTotally(const std::vector<double> &widths, double deckleWidth) {
  constexpr double kRoundsWithinTolerance = 1e6;
  const bool standApart =
      std::adjacent_find(widths.begin(), widths.end(), [](double wider, double narrower) {
        return compareWithTolerance(wider, narrower) == 0;
      }) == widths.end();
  return standApart && std::fabs(deckleWidth) <= kRoundsWithinTolerance;
}

PatternSets::~PatternSets() {
  qDeleteAll(deckleWidths);
}

PatternCompPattern &PatternSets::add(const QString &grade, double deckleWidth) {
  auto set = std::make_unique<PatternCompPattern>(grade, deckleWidth);
  deckleWidths.append(set.get());
  PatternCompPattern &added = *set.release();
  byGrade[grade].push_back(&added);
  return added;
}

const std::vector<PatternCompPattern *> &PatternSets::ofGrade(const QString &grade) const {
  static const std::vector<PatternCompPattern *> none;
  const auto sets = byGrade.constFind(grade);
  return sets != byGrade.constEnd() ? *sets : none;
}

void prunePatterns(PatternSets &sets) {
  for (PatternCompPattern *descriptor : sets.deckleWidths) {
    descriptor->dropRedCostSets();
    pruneSet(*descriptor);
  }
}

}  // namespace corvane
