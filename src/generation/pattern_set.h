#pragma once

#include <QHash>
#include <QLinkedList>
#include <QString>
#include <vector>

#include "core/comparison.h"
#include "core/skip_list.h"
#include "generation/pattern.h"

namespace corvane {

// Doubles that differ by no more than this are equal in pattern comparisons and in the test of a
// reduced cost.
inline constexpr double kPatternTolerance = 1e-8;

// The order of patterns by their reduced cost in one period, most negative first; ties fall back to
// the order of PatternCompPattern.
class PatternCompRedCost : public Comparison<Pattern> {
 public:
  explicit PatternCompRedCost(qint32 thePeriod) : period(thePeriod) {}

  int compare(const Pattern &a, const Pattern &b) const override;

  qint32 period;  // the index into reducedCosts
};

// The set of patterns of one grade and deckle width: its order and its description in one.
//
// The order: fewer widths first, then the widths pairwise, then the trim, numbers with
// kPatternTolerance. It owns the set, the patterns in it, and the lists by reduced cost.
class PatternCompPattern : public Comparison<Pattern> {
 public:
  PatternCompPattern(QString theGrade, double theDeckleWidth);
  PatternCompPattern(const PatternCompPattern &) = delete;
  PatternCompPattern &operator=(const PatternCompPattern &) = delete;
  ~PatternCompPattern() override;

  int compare(const Pattern &a, const Pattern &b) const override;

  // Makes the lists by reduced cost of the first periods, for whoever asks for them: every pattern
  // of the set by the reducedCosts that the final LPs gave it. A run does not ask.
  void makeRedCostSets(qint32 periodCount);
  void dropRedCostSets();

  // One of each a period while the lists are there.
  QLinkedList<skipList<Pattern> *> redCostSets;
  QLinkedList<PatternCompRedCost *> redCostComps;
  double deckleWidth;  // inches
  QString grade;
  skipList<Pattern> *patterns;
};

// All pattern sets of a run, and its counts.
struct PatternSets {
  PatternSets() = default;
  PatternSets(const PatternSets &) = delete;
  PatternSets &operator=(const PatternSets &) = delete;
  ~PatternSets();

  // An empty set for the pair, at the end of the list.
  PatternCompPattern &add(const QString &grade, double deckleWidth);
  // The sets of a grade, in the order of the list.
  const std::vector<PatternCompPattern *> &ofGrade(const QString &grade) const;

  // In order of creation; owned.
  QLinkedList<PatternCompPattern *> all;
  QHash<QString, std::vector<PatternCompPattern *>> byGrade;

  // Every seed of every master LP and every pattern that pricing found and its set took.
  qint32 totalPatterns = 0;
  // Patterns that pricing found and their set held already. A statistic; nothing reads it.
  qint32 duplicates = 0;
};

// Destroys every pattern that is in the model in no period, and the lists by reduced cost, which
// name such patterns.
void prunePatterns(PatternSets &sets);

}  // namespace corvane
