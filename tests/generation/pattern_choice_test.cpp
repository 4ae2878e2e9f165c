#include "generation/pattern_choice.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <random>
#include <sstream>

#include "generation/generate_patterns.h"
#include "support/literal_report.h"
#include "support/pattern_set_dump.h"
#include "support/stream_capture.h"

namespace corvane {
namespace {

using support::addPattern;
using support::dump;
using support::LiteralPattern;
using support::StreamCapture;

class PatternChoiceAndReport : public testing::Test {
 protected:
  // A grade with an entry in the demand table; the widths of each period are distinct.
  void addGrade(const QString &grade, const std::vector<std::vector<double>> &widthsOfPeriods) {
    data_.grades.append(grade);
    data_.demand.grades.append(GradeDemand{grade, {}, {}, {}});
    GradeDemand &entry = data_.demand.grades.last();
    data_.demand.byGrade.insert(grade, &entry);
    for (const std::vector<double> &widths : widthsOfPeriods) {
      PeriodDemand period{QString::number(entry.periods.size() + 1), {}, {}};
      for (const double width : widths) {
        period.demands.append(DemandEntry{width, 1});
        period.firstOfWidths.push_back({width, 1});
      }
      std::sort(period.firstOfWidths.begin(), period.firstOfWidths.end(),
                [](const DemandEntry &a, const DemandEntry &b) { return a.width > b.width; });
      entry.periods.append(period);
    }
    entry.gatherWidths();
  }

  // A pattern with one x value a period.
  static Pattern *add(PatternCompPattern &set, const std::vector<double> &widths,
                      PeriodValues<double> xValues) {
    Pattern *pattern = addPattern(set, widths);
    pattern->xValues = std::move(xValues);
    for (qint32 period = 0; period < pattern->xValues.size(); ++period) {
      pattern->inModel.append(0);
    }
    return pattern;
  }

  // What it writes on standard output, which must be what it writes to the log.
  std::string report(int occurMin, int periods = 1) {
    const StreamCapture out(std::cout);
    std::ostringstream log;
    settings_.occurMin = occurMin;
    data_.periods.clear();
    for (int period = 1; period <= periods; ++period) {
      data_.periods.append(QString::number(period));
    }
    chooseAndReportPatterns({data_, settings_, sets_, random_, log, progress_});
    EXPECT_EQ(out.text(), log.str());
    return log.str();
  }

  PlanningComparators comparators_;
  PlanningData data_{comparators_};
  GenerationSettings settings_;
  PatternSets sets_;
  PatternRandom random_;
  ProgressLine progress_;
};

TEST_F(PatternChoiceAndReport, TakesThePatternsWithAPositiveActivity) {
  addGrade("Fine", {{45, 30}});
  PatternCompPattern &set = sets_.add("Fine", 100);
  add(set, {45, 45}, {0.001});
  add(set, {30, 30}, {2});
  add(set, {45, 30}, {0});
  add(set, {30, 30, 30}, {-1});
  EXPECT_EQ(report(1), "");
  EXPECT_EQ(dump(set),
            "Fine 100:\n"
            "30 30 trim 40 x [2] in [1]\n"
            "45 30 trim 25 x [0] in [0]\n"
            "45 45 trim 10 x [0.001] in [1]\n"
            "30 30 30 trim 10 x [-1] in [0]\n");
}

TEST_F(PatternChoiceAndReport, ByDefaultOnlyTellsWidthsThatNoPatternHolds) {
  addGrade("Fine", {{45, 30, 12.5}});
  PatternCompPattern &set = sets_.add("Fine", 100);
  add(set, {45, 45}, {1});
  add(set, {30, 30}, {0});
  EXPECT_EQ(report(1), "Deckle Width: 100.000, Demand Width: 12.500 is in 0 patterns.\n");
}

TEST_F(PatternChoiceAndReport, APatternThatHoldsAWidthThreeTimesCountsOnce) {
  addGrade("Fine", {{30}});
  add(sets_.add("Fine", 100), {30, 30, 30}, {1});
  EXPECT_EQ(report(2), "Deckle Width: 100.000, Demand Width: 30.000 is in 1 patterns.\n");
}

TEST_F(PatternChoiceAndReport, AWidthOfTwoPeriodEntriesStandsOnceInTheList) {
  addGrade("Fine", {{30, 45}, {30}});
  sets_.add("Fine", 100);
  EXPECT_EQ(report(1),
            "Deckle Width: 100.000, Demand Width: 45.000 is in 0 patterns.\n"
            "Deckle Width: 100.000, Demand Width: 30.000 is in 0 patterns.\n");
}

TEST_F(PatternChoiceAndReport, OfASetWithoutPatternsTellsEveryWidthInEveryPeriod) {
  addGrade("Fine", {{30, 45}});
  sets_.add("Fine", 62.5);
  const std::string period =
      "Deckle Width: 62.500, Demand Width: 45.000 is in 0 patterns.\n"
      "Deckle Width: 62.500, Demand Width: 30.000 is in 0 patterns.\n";
  EXPECT_EQ(report(3, 2), period + period);
}

TEST_F(PatternChoiceAndReport, TopsUpInTheOrderOfTheSetAndStopsAtOccurMin) {
  addGrade("Fine", {{30}});
  PatternCompPattern &set = sets_.add("Fine", 100);
  Pattern *first = add(set, {30}, {0});
  Pattern *second = add(set, {30, 30}, {0});
  Pattern *third = add(set, {30, 30, 30}, {0});
  EXPECT_EQ(report(2), "");
  EXPECT_EQ(first->inModel.at(0), 1);
  EXPECT_EQ(second->inModel.at(0), 1);
  EXPECT_EQ(third->inModel.at(0), 0);
}

TEST_F(PatternChoiceAndReport, ATopUpCountsForAllWidthsOfThePattern) {
  addGrade("Fine", {{45, 30}});
  PatternCompPattern &set = sets_.add("Fine", 100);
  Pattern *narrow = add(set, {30}, {0});
  Pattern *mixed = add(set, {45, 30}, {0});
  // 45 is looked at first and takes the mixed pattern, which serves 30 too.
  EXPECT_EQ(report(1), "");
  EXPECT_EQ(mixed->inModel.at(0), 1);
  EXPECT_EQ(narrow->inModel.at(0), 0);
}

TEST_F(PatternChoiceAndReport, AToppedUpPatternIsNotTakenTwice) {
  addGrade("Fine", {{45, 30}});
  add(sets_.add("Fine", 100), {45, 30}, {0});
  EXPECT_EQ(report(2),
            "Deckle Width: 100.000, Demand Width: 45.000 is in 1 patterns.\n"
            "Deckle Width: 100.000, Demand Width: 30.000 is in 1 patterns.\n");
}

TEST_F(PatternChoiceAndReport, CountsEveryPeriodAnew) {
  addGrade("Fine", {{45}});
  PatternCompPattern &set = sets_.add("Fine", 100);
  Pattern *single = add(set, {45}, {0, 3, 0});
  Pattern *pair = add(set, {45, 45}, {3, 0, 0});
  EXPECT_EQ(report(1, 3), "");
  EXPECT_EQ(dump(*single), "45 trim 55 x [0 3 0] in [0 1 1]");
  EXPECT_EQ(dump(*pair), "45 45 trim 10 x [3 0 0] in [1 0 0]");
}

TEST_F(PatternChoiceAndReport, LooksAtEachSetByItself) {
  addGrade("Fine", {{45}});
  add(sets_.add("Fine", 100), {45}, {1});
  sets_.add("Fine", 80);
  EXPECT_EQ(report(1), "Deckle Width: 80.000, Demand Width: 45.000 is in 0 patterns.\n");
}

TEST_F(PatternChoiceAndReport, ReportsGradeByGradeInTheOrderOfTheGradesAndThenOfTheSets) {
  addGrade("Board", {{20}});
  addGrade("Fine", {{45}});
  sets_.add("Fine", 100);
  sets_.add("Board", 120);
  sets_.add("Fine", 80);
  EXPECT_EQ(report(1),
            "Deckle Width: 120.000, Demand Width: 20.000 is in 0 patterns.\n"
            "Deckle Width: 100.000, Demand Width: 45.000 is in 0 patterns.\n"
            "Deckle Width: 80.000, Demand Width: 45.000 is in 0 patterns.\n");
}

TEST_F(PatternChoiceAndReport, OfAGradeWithoutAnEntryHasNoDemandWidthsButMarksPatterns) {
  data_.grades.append("Fine");
  const Pattern *pattern = add(sets_.add("Fine", 100), {45}, {1});
  EXPECT_EQ(report(5), "");
  EXPECT_EQ(pattern->inModel.at(0), 1);
}

TEST_F(PatternChoiceAndReport, ComparesWidthsWithoutATolerance) {
  addGrade("Fine", {{std::nextafter(30.0, 31.0)}});
  const Pattern *pattern = add(sets_.add("Fine", 100), {30}, {0});
  EXPECT_EQ(report(1), "Deckle Width: 100.000, Demand Width: 30.000 is in 0 patterns.\n");
  EXPECT_EQ(pattern->inModel.at(0), 0);
}

// The comparison of neighbours starts against 0.0, so that a leading width of 0 never counts.
TEST_F(PatternChoiceAndReport, AWidthOfZeroAtTheStartDoesNotCountButMayBeToppedUp) {
  addGrade("Fine", {{0.0}});
  PatternCompPattern &set = sets_.add("Fine", 100);
  const Pattern *one = add(set, {0.0}, {0});
  const Pattern *two = add(set, {0.0, 0.0}, {0});
  EXPECT_EQ(report(1), "Deckle Width: 100.000, Demand Width: 0.000 is in 0 patterns.\n");
  EXPECT_EQ(one->inModel.at(0), 1);
  EXPECT_EQ(two->inModel.at(0), 1);
}

// Random sets beside the plain reference.
class PatternChoiceBesideTheReference : public PatternChoiceAndReport {
 protected:
  double width() {
    const double widths[] = {0.0, 10, 12.5, 20, 30, std::nextafter(30.0, 31.0), 45, 60};
    return widths[generator_() % 8];
  }

  std::vector<double> distinctDemandWidths() {
    std::vector<double> widths;
    for (std::size_t n = generator_() % 7; n > 0; --n) {
      const double chosen = width();
      if (std::find(widths.begin(), widths.end(), chosen) == widths.end()) {
        widths.push_back(chosen);
      }
    }
    std::sort(widths.rbegin(), widths.rend());
    return widths;
  }

  void addRandomPattern(PatternCompPattern &set, std::size_t periods) {
    std::vector<double> widths(generator_() % 6);
    std::generate(widths.begin(), widths.end(), [this] { return width(); });
    // Nearly always descending; neighbours matter where they are not.
    if (generator_() % 8 != 0) {
      std::sort(widths.rbegin(), widths.rend());
    }
    Pattern *pattern = addPattern(set, widths);
    for (std::size_t period = 0; pattern != nullptr && period < periods; ++period) {
      pattern->xValues.append(generator_() % 4 == 0 ? 0.25 : 0.0);
      pattern->inModel.append(0);
    }
  }

  static std::vector<LiteralPattern> copyOf(const PatternCompPattern &set) {
    std::vector<LiteralPattern> patterns;
    forEachElement(*set.patterns, [&](const Pattern &pattern) {
      patterns.push_back({{pattern.widths.cbegin(), pattern.widths.cend()},
                          support::valuesOf(pattern.xValues),
                          support::valuesOf(pattern.inModel)});
    });
    return patterns;
  }

  void round(int number) {
    const QString grade = QString::number(number);
    data_.grades.clear();
    const std::vector<double> widths = distinctDemandWidths();
    addGrade(grade, {widths});
    PatternCompPattern &set = sets_.add(grade, 100);
    const std::size_t periods = 1 + generator_() % 4;
    for (std::size_t n = generator_() % 25; n > 0; --n) {
      addRandomPattern(set, periods);
    }
    std::vector<LiteralPattern> reference = copyOf(set);
    const int occurMin = 1 + static_cast<int>(generator_() % 5);
    ASSERT_EQ(report(occurMin, static_cast<int>(periods)),
              support::literalReport(reference, 100, widths, periods, occurMin));
    const std::vector<LiteralPattern> actual = copyOf(set);
    for (std::size_t at = 0; at < reference.size(); ++at) {
      ASSERT_EQ(actual[at].inModel, reference[at].inModel);
    }
  }

  std::mt19937 generator_{47};
};

TEST_F(PatternChoiceBesideTheReference, MarksTheSamePatternsAndWritesTheSameLines) {
  for (int number = 0; number < 4000; ++number) {
    ASSERT_NO_FATAL_FAILURE(round(number)) << "round " << number;
  }
}

}  // namespace
}  // namespace corvane
