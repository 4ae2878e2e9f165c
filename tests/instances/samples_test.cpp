// The sample mills, run as a planner runs them and with the other settings of the network model.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iomanip>
#include <ostream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "demand_check.h"
#include "import_checker.h"
#include "program_run.h"

namespace corvane {

namespace {

namespace fs = std::filesystem;
using import_checker::ImportOptions;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

const fs::path kRoot = CORVANE_SOURCE_DIR;

struct Setting {
  const char *name;
  const char *lines;  // appended to the sample's parameters
  ImportOptions options;
};

struct Sample {
  const char *mill;
  std::size_t periods;
  Setting setting;
};

void PrintTo(const Sample &sample, std::ostream *out) {
  *out << sample.mill << ' ' << sample.setting.name;
}

const std::vector<Setting> kSettings{
    {"AsShipped", "", {}},
    {"Batch", "batch=True\n", {.batch = true}},
    {"NoDelay", "delay=False\n", {.delay = false}},
    {"BatchNoDelay", "batch=True\ndelay=False\n", {.batch = true, .delay = false}},
    {"PatternsOnly", "patterns only=True\nbatch=True\n", {.batch = true, .patternsOnly = true}},
    {"Barrier", "solver=Barrier\n", {}}};

std::vector<Sample> samples() {
  std::vector<Sample> list;
  for (const Setting &setting : kSettings) {
    list.push_back({"small", 2, setting});
    list.push_back({"three_mills", 6, setting});
  }
  return list;
}

std::string nameOfSample(const testing::TestParamInfo<Sample> &sample) {
  return std::string(sample.param.mill) + "_" + sample.param.setting.name;
}

RunOutcome runSample(const std::string &mill, const Setting &setting, const std::string &folder) {
  const fs::path copy = freshFolder(folder);
  fs::create_directories(copy / "data");
  for (const char *file :
       {"Parameters.data", "machines.data", "orders.data", "freightRates.data"}) {
    fs::copy_file(kRoot / "samples" / mill / "data" / file, copy / "data" / file);
  }
  std::ofstream(copy / "data" / "Parameters.data", std::ios::app) << setting.lines;
  PlanningComparators comparators;
  RunRecord record(comparators);
  return runProgram(copy, record);
}

import_checker::OrderData ordersOf(const std::string &mill) {
  const fs::path data = kRoot / "samples" / mill / "data";
  return {contentOf(data / "machines.data"), contentOf(data / "orders.data")};
}

// The log's total of the ordered inches.
std::string totalLine(double inches) {
  std::ostringstream line;
  line << std::fixed << std::setprecision(4) << "Total demand in inches           : " << inches
       << '\n';
  return line.str();
}

void expectNoWarning(const RunOutcome &outcome) {
  EXPECT_EQ(outcome.output, "");
  EXPECT_THAT(outcome.log, Not(ContainsRegex("Warning|Error|No freight|Timed out|Demand Width")));
  EXPECT_THAT(outcome.log, HasSubstr("**** End Corvane. "));
}

void expectOrderedDemand(const RunOutcome &outcome, const std::string &mill) {
  const import_checker::OrderData orders = ordersOf(mill);
  EXPECT_THAT(outcome.log, HasSubstr(totalLine(import_checker::orderedInches(orders))));
  EXPECT_EQ(import_checker::describe(import_checker::checkDemand(outcome.importFile, orders)), "");
}

class SampleMill : public testing::TestWithParam<Sample> {};

TEST_P(SampleMill, RunsWithoutWarningIntoAModelOfItsOrders) {
  const auto &[mill, periods, setting] = GetParam();
  const RunOutcome outcome = runSample(mill, setting, nameOfSample({GetParam(), 0}));
  expectNoWarning(outcome);
  ImportOptions options = setting.options;
  options.periods = periods;
  options.freightComplete = true;
  EXPECT_EQ(import_checker::describe(import_checker::checkImport(outcome.importFile, options)), "");
  if (options.patternsOnly) {
    EXPECT_THAT(outcome.log, HasSubstr(totalLine(0.0)));
  } else {
    expectOrderedDemand(outcome, mill);
  }
}

INSTANTIATE_TEST_SUITE_P(Samples, SampleMill, testing::ValuesIn(samples()), nameOfSample);

// What the sample's own document says comes of it.
TEST(SampleMills, WithAWinderNarrowerThanARollGetAPatternThatCannotBeCut) {
  const RunOutcome outcome = runSample("two_winders", kSettings[0], "two_winders");
  const std::string told = "Deckle Width: 124.000, Demand Width: 98.500 is in 0 patterns.\n";
  EXPECT_EQ(outcome.output, told + told);
  EXPECT_THAT(outcome.log, HasSubstr("\n" + told + told + "Total demand"));
  expectOrderedDemand(outcome, "two_winders");
  const std::string attached = "addattach <node> \"LB42_Pattern_0_AF2_90\" <commodity> ";
  EXPECT_THAT(outcome.importFile,
              HasSubstr(attached + "\"Deckle90\" <in> True <quantity> -1\n" +  //
                        attached + "\"DemandWidth98.5\" <in> False <quantity> 1\n" + attached +
                        "\"Waste\" <in> False <quantity> 0\n"));
}

TEST(SampleMills, GiveTheSameFileEveryTime) {
  for (const char *mill : {"small", "three_mills", "two_winders"}) {
    const std::string once = runSample(mill, kSettings[0], "once").importFile;
    EXPECT_EQ(once, runSample(mill, kSettings[0], "again").importFile) << mill;
  }
}

std::vector<std::string> linesOf(const std::string &text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) {
    lines.push_back(line);
  }
  return lines;
}

// The document's lines in blocks marked as lines of an import file.
std::vector<std::string> examples() {
  std::vector<std::string> lines;
  bool example = false;
  for (const std::string &line : linesOf(contentOf(kRoot / "docs" / "import-file.md"))) {
    if (line.starts_with("```")) {
      example = line == "```imp";
    } else if (example) {
      lines.push_back(line);
    }
  }
  return lines;
}

// The document says that its examples are lines of these runs.
TEST(SampleDocument, ExamplesAreLinesOfTheSmallSample) {
  if (CORVANE_OTHER_SOLVER != 0) {
    GTEST_SKIP() << "Another solver may give another of several optima.";
  }
  std::set<std::string> written;
  for (const std::size_t setting : {0U, 1U, 2U}) {
    const std::vector<std::string> lines = linesOf(
        runSample("small", kSettings[setting], "document" + std::to_string(setting)).importFile);
    written.insert(lines.begin(), lines.end());
  }
  EXPECT_FALSE(examples().empty());
  for (const std::string &line : examples()) {
    EXPECT_TRUE(written.contains(line)) << line;
  }
}

}  // namespace

}  // namespace corvane
