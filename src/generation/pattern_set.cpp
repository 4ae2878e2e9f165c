#include "generation/pattern_set.h"

#include <memory>
#include <utility>

#include "core/skip_list_cursor.h"

namespace corvane {

namespace {

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

bool isInModel(const Pattern &pattern) {
  return pattern.inModel.contains(1);
}

void deletePatterns(const skipList<Pattern> &set) {
  forEachElement(set, [](Pattern &pattern) { delete &pattern; });
}

void pruneSet(PatternCompPattern &descriptor) {
  skipList<Pattern> *old = descriptor.patterns;
  auto kept = std::make_unique<skipList<Pattern>>(&descriptor, false);
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
  const int order = compareWithTolerance(a.reducedCosts.at(period), b.reducedCosts.at(period));
  return order != 0 ? order : compareWidthsAndTrim(a, b);
}

PatternCompPattern::PatternCompPattern(QString theGrade, double theDeckleWidth)
    : deckleWidth(theDeckleWidth),
      grade(std::move(theGrade)),
      patterns(new skipList<Pattern>(this, false)) {}

PatternCompPattern::~PatternCompPattern() {
  dropRedCostSets();
  deletePatterns(*patterns);
  delete patterns;
}

int PatternCompPattern::compare(const Pattern &a, const Pattern &b) const {
  return compareWidthsAndTrim(a, b);
}

void PatternCompPattern::makeRedCostSets(qint32 periodCount) {
  dropRedCostSets();
  for (qint32 period = 0; period < periodCount; ++period) {
    redCostComps.append(new PatternCompRedCost(period));
    redCostSets.append(new skipList<Pattern>(redCostComps.last(), false));
    forEachElement(*patterns, [this](Pattern &pattern) { redCostSets.last()->insert(&pattern); });
  }
}

void PatternCompPattern::dropRedCostSets() {
  while (!redCostSets.isEmpty()) {
    delete redCostSets.takeFirst();
  }
  while (!redCostComps.isEmpty()) {
    delete redCostComps.takeFirst();
  }
}

PatternSets::~PatternSets() {
  qDeleteAll(all);
}

PatternCompPattern &PatternSets::add(const QString &grade, double deckleWidth) {
  auto set = std::make_unique<PatternCompPattern>(grade, deckleWidth);
  all.append(set.get());
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
  for (PatternCompPattern *descriptor : sets.all) {
    descriptor->dropRedCostSets();
    pruneSet(*descriptor);
  }
}

}  // namespace corvane
