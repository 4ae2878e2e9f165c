#include "app/run_parameters.h"

#include <gtest/gtest.h>

#include <ostream>
#include <sstream>

namespace corvane {
namespace {

constexpr char kDefaultSummary[] =
    "Parameters:\n"
    "Batch                : False\n"
    "Delay                : True\n"
    "Threshold            : 5\n"
    "Occur Min            : 1\n"
    "Days Per Period      : 7\n"
    "Max Widths In Pattern: 5\n"
    "New Patterns per Iter: 100\n"
    "Width Pick Set Size  : 10%\n"
    "Stop Generating Thres: 1000\n"
    "Order File           : data\\orders.data\n"
    "Machine File         : data\\machines.data\n"
    "Freight Rate File    : data\\freightRates.data\n"
    "Output File          : data\\CV.imp\n"
    "Log File             : data\\corvane.log\n"
    "Solver               : Dual\n"
    "Patterns Only        : False\n"
    "Time Limit           : None\n";

class TheRunParameters : public testing::Test {
 protected:
  // What is said on standard output.
  std::string set(const char *key, const char *value) {
    std::ostringstream messages;
    EXPECT_TRUE(setParameter(parameters_, key, QString::fromUtf8(value), messages)) << key;
    return messages.str();
  }

  std::string summary() const {
    std::ostringstream out;
    printParameters(parameters_, out);
    return out.str();
  }

  // The summary's line of a label, without the label.
  std::string printed(const std::string &label) const {
    const std::string text = summary();
    const std::size_t begin = text.find(label) + label.size();
    return text.substr(begin, text.find('\n', begin) - begin);
  }

  RunParameters parameters_;
};

TEST_F(TheRunParameters, StartWithTheirDefaults) {
  EXPECT_EQ(summary(), kDefaultSummary);
  EXPECT_EQ(parameters_.seed, -1);
  EXPECT_EQ(parameters_.timeLimit, -1);
}

TEST_F(TheRunParameters, PrintEverythingThatIsSet) {
  set("batch", "True");
  set("delay", "False");
  set("threshold", "12.5");
  set("occur min", "3");
  set("days per period", "14");
  set("maximum widths in pattern", "7");
  set("new patterns per iteration", "250");
  set("width pick set size", "33.3");
  set("stop generating threshold", "2000");
  set("order file", "Auftr\xC3\xA4ge.data");
  set("machine file", "m");
  set("freight rate file", "f");
  set("output", "o");
  set("log file", "l");
  set("solver", "Barrier");
  set("patterns only", "True");
  set("time limit", "60");
  EXPECT_EQ(summary(),
            "Parameters:\n"
            "Batch                : True\n"
            "Delay                : False\n"
            "Threshold            : 12.5\n"
            "Occur Min            : 3\n"
            "Days Per Period      : 14\n"
            "Max Widths In Pattern: 7\n"
            "New Patterns per Iter: 250\n"
            "Width Pick Set Size  : 33.3%\n"
            "Stop Generating Thres: 2000\n"
            "Order File           : Auftr\xC3\xA4ge.data\n"
            "Machine File         : m\n"
            "Freight Rate File    : f\n"
            "Output File          : o\n"
            "Log File             : l\n"
            "Solver               : Barrier\n"
            "Patterns Only        : True\n"
            "Time Limit           : 60\n");
}

TEST_F(TheRunParameters, TakeTrueAndFalseOnlyForFlagsAndIgnoreTheRestInSilence) {
  struct FlagOf {
    const char *key;
    qint32 RunParameters::*field;
  };
  for (const auto &[key, field] :
       {FlagOf{"batch", &RunParameters::batch}, FlagOf{"delay", &RunParameters::delay},
        FlagOf{"patterns only", &RunParameters::patternsOnly}}) {
    set(key, "True");
    EXPECT_EQ(parameters_.*field, 1);
    for (const char *odd : {"false", "FALSE", "0", " False", "False ", "no"}) {
      EXPECT_EQ(set(key, odd), "");
      EXPECT_EQ(parameters_.*field, 1) << odd;
    }
    set(key, "False");
    EXPECT_EQ(parameters_.*field, 0);
    EXPECT_EQ(set(key, "true"), "");
    EXPECT_EQ(parameters_.*field, 0);
  }
}

TEST_F(TheRunParameters, KeepTheThresholdWithin0And100AndIgnoreTheRestInSilence) {
  EXPECT_EQ(set("threshold", "150"), "");
  EXPECT_EQ(parameters_.threshold, 5.0);
  EXPECT_EQ(set("threshold", "-0.5"), "");
  EXPECT_EQ(parameters_.threshold, 5.0);
  set("threshold", "100");
  EXPECT_EQ(parameters_.threshold, 100.0);
  set("threshold", "100.01");
  EXPECT_EQ(parameters_.threshold, 100.0);
  set("threshold", "0");
  EXPECT_EQ(parameters_.threshold, 0.0);
}

TEST_F(TheRunParameters, StoreZeroForAThresholdThatIsNoNumber) {
  for (const char *odd : {"abc", "nan", "inf", "0x10", "1e99", "5,5", "5 5", ""}) {
    parameters_.threshold = 5;
    EXPECT_EQ(set("threshold", odd), "");
    EXPECT_EQ(parameters_.threshold, 0.0) << odd;
  }
}

TEST_F(TheRunParameters, HoldFloatsInSinglePrecision) {
  set("threshold", "5.1");
  EXPECT_EQ(parameters_.threshold, static_cast<double>(5.1F));
  EXPECT_NE(parameters_.threshold, 5.1);
  set("width pick set size", " 33.3 ");
  EXPECT_EQ(parameters_.widthPickSetSize, static_cast<double>(33.3F));
}

TEST_F(TheRunParameters, StorePositiveIntegersAndIgnoreTheRestInSilence) {
  struct IntegerOf {
    const char *key;
    qint32 RunParameters::*field;
  };
  for (const auto &[key, field] : {IntegerOf{"occur min", &RunParameters::occurMin},
                                   IntegerOf{"days per period", &RunParameters::daysPerPeriod}}) {
    set(key, " +12 ");
    EXPECT_EQ(parameters_.*field, 12);
    for (const char *odd : {"0", "-3", "abc", "3.5", "2147483648", "1e3", "0x10", ""}) {
      EXPECT_EQ(set(key, odd), "");
      EXPECT_EQ(parameters_.*field, 12) << odd;
    }
    set(key, "2147483647");
    EXPECT_EQ(parameters_.*field, 2147483647);
    set(key, "1");
    EXPECT_EQ(parameters_.*field, 1);
  }
}

struct Clamp {
  const char *key;
  qint32 RunParameters::*field;
  qint32 low;
  qint32 high;
  const char *below;
  const char *above;
};

void PrintTo(const Clamp &shown, std::ostream *out) {
  *out << shown.key;
}

class ClampedParameters : public TheRunParameters, public testing::WithParamInterface<Clamp> {
 protected:
  void expect(const QString &value, const std::string &message, qint32 stored) {
    EXPECT_EQ(set(GetParam().key, value.toUtf8().constData()),
              message.empty() ? "" : message + "\n");
    EXPECT_EQ(parameters_.*GetParam().field, stored) << value.toStdString();
  }
};

TEST_P(ClampedParameters, MoveToTheNearerBoundWithAMessage) {
  const Clamp &clamp = GetParam();
  expect(QString::number(clamp.low), "", clamp.low);
  expect(QString::number(clamp.high), "", clamp.high);
  expect(QString::number(clamp.low - 1), clamp.below, clamp.low);
  expect(QString::number(clamp.high + 1), clamp.above, clamp.high);
  expect("-2147483648", clamp.below, clamp.low);
  expect("2147483647", clamp.above, clamp.high);
}

TEST_P(ClampedParameters, TakeWhatIsNoNumberForZero) {
  const Clamp &clamp = GetParam();
  for (const char *odd : {"abc", "99999999999", "12.5", ""}) {
    // Zero is a seed.
    expect(odd, clamp.low > 0 ? clamp.below : "", clamp.low);
  }
}

INSTANTIATE_TEST_SUITE_P(
    All, ClampedParameters,
    testing::Values(Clamp{"maximum widths in pattern", &RunParameters::maximumWidthsInPattern, 5,
                          10, "Maximum widths in pattern cannot be less than 5.",
                          "Maximum widths in pattern cannot be more than 10."},
                    Clamp{"new patterns per iteration", &RunParameters::newPatternsPerIteration, 10,
                          100000, "New patterns per iteration cannot be less than 10.",
                          "New patterns per iteration cannot be greater than 100000."},
                    Clamp{"stop generating threshold", &RunParameters::stopGeneratingThreshold, 100,
                          10000, "Stop Generating Threshold cannot be less than 100.",
                          "Stop Generating Threshold cannot be greater than 10000."},
                    Clamp{"rand num gen seed", &RunParameters::seed, 0, 10000,
                          "Random Number Generator Seed cannot be less than 0.",
                          "Random Number Generator Seed cannot be greater than 10000."}));

TEST_F(TheRunParameters, MoveAPickSetSizeOf0To1PercentWithTwoMessages) {
  const std::string messages =
      "Width Pick Set Size cannot be less than or equal to 0.0%.\n"
      "Setting Width Pick Set Size to 1.0%.\n";
  for (const char *odd : {"0", "-1", "abc", "nan"}) {
    parameters_.widthPickSetSize = 10;
    EXPECT_EQ(set("width pick set size", odd), messages);
    EXPECT_EQ(parameters_.widthPickSetSize, 1.0);
  }
  EXPECT_EQ(printed("Width Pick Set Size  : "), "1%");
}

TEST_F(TheRunParameters, MoveAPickSetSizeAbove100To100PercentWithTwoMessages) {
  EXPECT_EQ(set("width pick set size", "100.5"),
            "Width Pick Set Size cannot be greater than 100.0%.\n"
            "Setting Width Pick Set Size to 100.0%.\n");
  EXPECT_EQ(parameters_.widthPickSetSize, 100.0);
  EXPECT_EQ(set("width pick set size", "100"), "");
  EXPECT_EQ(set("width pick set size", "0.001"), "");
}

TEST_F(TheRunParameters, TakeAnyTimeLimitAndPrintANegativeOneAsNone) {
  EXPECT_EQ(set("time limit", "0"), "");
  EXPECT_EQ(printed("Time Limit           : "), "0");
  EXPECT_EQ(set("time limit", "-5"), "");
  EXPECT_EQ(parameters_.timeLimit, -5);
  EXPECT_EQ(printed("Time Limit           : "), "None");
  EXPECT_EQ(set("time limit", "abc"), "");
  EXPECT_EQ(parameters_.timeLimit, 0);
}

TEST_F(TheRunParameters, RefuseASolverInLowerCaseAndNameItInTheMessage) {
  EXPECT_EQ(set("solver", "barrier"), "Solver barrier invalid, using Dual by default.\n");
  EXPECT_EQ(parameters_.solver, "Dual");
}

TEST_F(TheRunParameters, KeepTheSolverOfBeforeWhenOneIsInvalid) {
  EXPECT_EQ(set("solver", "Barrier"), "");
  EXPECT_EQ(set("solver", "Barrier "), "Solver Barrier  invalid, using Dual by default.\n");
  EXPECT_EQ(parameters_.solver, "Barrier");
  EXPECT_EQ(set("solver", "Dual"), "");
  EXPECT_EQ(parameters_.solver, "Dual");
}

TEST_F(TheRunParameters, KnowTheirKeysExactly) {
  std::ostringstream messages;
  for (const char *key : {"Batch", "batch ", " batch", "seed", "occur  min", ""}) {
    EXPECT_FALSE(setParameter(parameters_, key, "True", messages)) << key;
  }
  EXPECT_EQ(summary(), kDefaultSummary);
}

}  // namespace
}  // namespace corvane
