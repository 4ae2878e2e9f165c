// corvane-plan as it is called: its options, exit status and files.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "plan/mill_text.h"
#include "support/temporary_folder.h"

namespace corvane::plan {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

constexpr int kNoLimit = -1;
const std::set<std::string> kPlanFiles = {"plan.json",   "runs.csv",  "shipments.csv",
                                          "orders.csv",  "stock.csv", "machines.csv",
                                          "surplus.csv", "totals.csv"};

struct Ended {
  int status = -1;
  std::string out;
  std::string err;
};

// A file by its path, or an empty text.
std::string contentOf(const std::string &path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

// The files of a folder by name.
std::map<std::string, std::string> filesOf(const std::string &folder) {
  std::map<std::string, std::string> files;
  for (const auto &entry : std::filesystem::directory_iterator(folder)) {
    files[entry.path().filename().string()] = contentOf(entry.path().string());
  }
  return files;
}

class PlanProgram : public testing::Test {
 protected:
  using Words = std::vector<std::string>;

  // `folder` is where the program is started.
  Ended run(const char *program, const Words &words, const std::string &folder,
            const std::string &parameterFile = "") const {
    QProcess process;
    process.setWorkingDirectory(QString::fromStdString(folder));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove("ZEM_CVN_PARAM");
    if (!parameterFile.empty()) {
      environment.insert("ZEM_CVN_PARAM", QString::fromStdString(parameterFile));
    }
    process.setProcessEnvironment(environment);
    QStringList arguments;
    for (const std::string &word : words) {
      arguments << QString::fromStdString(word);
    }
    process.start(program, arguments);
    process.waitForFinished(kNoLimit);
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    return {process.exitCode(), process.readAllStandardOutput().toStdString(),
            process.readAllStandardError().toStdString()};
  }

  Ended plan(const Words &words) const { return run(CORVANE_PLAN, words, folder_.path().string()); }

  // Plans a text with options to the folder "plan", and gives its record.
  QJsonObject planOf(const std::string &text, Words words = {}) const {
    words.insert(words.end(), {"--import-file", folder_.write("some.imp", text)});
    const Ended ended = plan(words);
    EXPECT_EQ(ended.status, 0) << ended.err;
    return recordIn(folder_.file("plan"));
  }

  static QJsonObject recordIn(const std::string &folder) {
    return QJsonDocument::fromJson(QByteArray::fromStdString(contentOf(folder + "/plan.json")))
        .object();
  }

  static double total(const QJsonObject &record, const char *name) {
    return record["totals"][name].toDouble();
  }
  static double cost(const QJsonObject &record) {
    return record["totals"]["cost"]["total"].toDouble();
  }

  // The sample small/ in a folder of the name, with the import file of its run.
  std::string sampleRun(const std::string &name) const {
    const std::filesystem::path mill = folder_.path() / name;
    std::filesystem::create_directories(mill);
    std::filesystem::copy(std::string(CORVANE_SOURCE_DIR) + "/samples/small/data", mill / "data");
    EXPECT_EQ(run(CORVANE, {}, mill.string()).status, 0);
    return mill.string();
  }

  support::TemporaryFolder folder_;
};

TEST_F(PlanProgram, HelpAndVersionAreAsked) {
  const Ended help = plan({"--help"});
  EXPECT_EQ(help.status, 0);
  EXPECT_EQ(help.err, "");
  for (const char *option :
       {"--import-file FILE", "-o, --output DIR", "--storage inf", "--delays by-mill",
        "--keep-impossible", "--pool FOLDER", "--improve", "--whole-reels", "--gap FRACTION",
        "--time-limit SECONDS", "--write-mps FILE", "--timings", "-q, --quiet", "--help",
        "--version"}) {
    EXPECT_THAT(help.out, HasSubstr(option));
  }
  const Ended version = plan({"--version"});
  EXPECT_EQ(version.status, 0);
  EXPECT_THAT(version.out, StartsWith("corvane-plan "));
  EXPECT_EQ(version.err, "");
}

TEST_F(PlanProgram, WrongUsageIsStatusTwo) {
  const std::string good = folder_.write("good.imp", importText(smallMill()));
  const std::string bad = folder_.write("bad.imp", "nothing\n");
  const std::vector<std::pair<Words, std::string>> wrong = {
      {{"--loud"}, "Unknown option 'loud'"},
      {{"a", "b"}, "Unexpected argument 'b'"},
      {{"--import-file", good, "--storage", "lots"}, "--storage knows the word inf alone"},
      {{"--import-file", good, "--delays", "arc"}, "--delays knows the word by-mill alone"},
      {{"--import-file", good, "--time-limit", "0"}, "--time-limit takes seconds above 0"},
      {{"--import-file", good, "--time-limit", "soon"}, "--time-limit takes seconds above 0"},
      {{"--import-file", good, "--time-limit", "nan"}, "--time-limit takes seconds above 0"},
      {{"--import-file", good, "--gap", "-0.1"}, "--gap takes a fraction, 0 or more"},
      {{"--import-file", good, "--gap", "small"}, "--gap takes a fraction, 0 or more"},
      {{"--import-file", good, "."}, "either a folder or --import-file"},
      {{"--import-file"}, "import-file"},
      {{}, "the parameter file"},
      {{"nowhere"}, "the parameter file nowhere/"},
      {{"--import-file", "none.imp"}, "the import file none.imp cannot be opened"},
      {{"--import-file", "."}, "the import file . cannot be opened"},
      {{"--import-file", good, "--pool", "none"}, "the import file none cannot be opened"},
      {{"--import-file", good, "--pool", bad}, "line 1: the line is none of an import file (in "}};
  for (const auto &[words, message] : wrong) {
    SCOPED_TRACE(message);
    const Ended ended = plan(words);
    EXPECT_EQ(ended.status, 2);
    EXPECT_THAT(ended.err, StartsWith("corvane-plan: "));
    EXPECT_THAT(ended.err, HasSubstr(message));
    EXPECT_EQ(ended.out, "");
    EXPECT_FALSE(std::filesystem::exists(folder_.path() / "plan"));
  }
}

TEST_F(PlanProgram, AFileThatCannotBePlannedIsStatusTwoWithItsLine) {
  const std::string text = importText(smallMill());
  const std::string half = text.substr(0, text.find("addarc"));
  const auto lines = [](const std::string &part) {
    return std::to_string(std::count(part.begin(), part.end(), '\n'));
  };
  const std::vector<std::pair<std::string, std::string>> files = {
      {"", "the file is empty"},
      {half, "line " + lines(half) + ": the file has no end line"},
      {half + "add", "the last line has no line break: the file is cut"},
      {half + text, "a second root"},
      {text + text, "two runs"}};
  for (const auto &[file, message] : files) {
    SCOPED_TRACE(message);
    const Ended ended = plan({"--import-file", folder_.write("bad.imp", file)});
    EXPECT_EQ(ended.status, 2);
    EXPECT_THAT(ended.err, StartsWith("corvane-plan: "));
    EXPECT_THAT(ended.err, HasSubstr(message));
    EXPECT_EQ(ended.out, "");
    EXPECT_FALSE(std::filesystem::exists(folder_.path() / "plan"));
  }
}

TEST_F(PlanProgram, WithoutAPlanTheStatusIsOne) {
  const std::string good = folder_.write("good.imp", importText(smallMill()));
  EXPECT_EQ(plan({"--import-file", good, "-o", good + "/plan"}).status, 1);
  EXPECT_EQ(plan({"--import-file", good, "--write-mps", good + "/x.mps"}).status, 1);
  const Ended late = plan({"--import-file", good, "--whole-reels", "--time-limit", "1e-9"});
  EXPECT_EQ(late.status, 1);
  EXPECT_THAT(late.err, HasSubstr("within the time given"));
  EXPECT_EQ(late.out, "");
}

TEST_F(PlanProgram, TheFolderItIsStartedInIsPlanned) {
  const std::string mill = sampleRun("my mill");
  const Ended here = run(CORVANE_PLAN, {}, mill);
  EXPECT_EQ(here.status, 0) << here.err;
  EXPECT_THAT(here.out, StartsWith("Plan of data/CV.imp: 2 periods\n"));
  EXPECT_THAT(here.out, HasSubstr("  Written to data/plan\n"));
  const std::map<std::string, std::string> files = filesOf(mill + "/data/plan");
  for (const std::string &name : kPlanFiles) {
    EXPECT_THAT(files.at(name), Not(IsEmpty())) << name;
  }
  EXPECT_EQ(files.size(), kPlanFiles.size());
  EXPECT_EQ(plan({"my mill", "-o", "there"}).status, 0);
  EXPECT_EQ(filesOf(folder_.file("there")), files);
  EXPECT_EQ(plan({"--import-file", "my mill/data/CV.imp", "-o", "alone"}).status, 0);
  EXPECT_EQ(filesOf(folder_.file("alone")).at("runs.csv"), files.at("runs.csv"));
}

TEST_F(PlanProgram, TheParameterFileIsFoundAsTheRunFindsIt) {
  const std::string mill = sampleRun("mill");
  std::filesystem::rename(mill + "/data/CV.imp", mill + "/other name.imp");
  std::ofstream(mill + "/own.data") << "output=other name.imp\n\n";
  const Ended ended = run(CORVANE_PLAN, {}, mill, "own.data");
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_THAT(ended.out, StartsWith("Plan of other name.imp: 2 periods\n"));
  EXPECT_EQ(filesOf(mill + "/plan").size(), kPlanFiles.size());
}

TEST_F(PlanProgram, QuietSaysNothing) {
  TestMill mill = smallMill();
  mill.orders[0].customer = "Nobody";  // which is a warning
  const std::string file = folder_.write("a.imp", importText(mill));
  EXPECT_THAT(plan({"--import-file", file}).err, HasSubstr("Warning: line "));
  const Ended quiet = plan({"--import-file", file, "--quiet"});
  EXPECT_EQ(quiet.status, 0);
  EXPECT_EQ(quiet.out + quiet.err, "");
}

// 21 rolls take 10.5 reels of two, or 11: one roll of 50 inches is left over, at 2 an inch.
TEST_F(PlanProgram, WholeReelsAreWhole) {
  TestMill mill = smallMill();
  mill.orders[0].rolls = 21;
  EXPECT_NEAR(cost(planOf(importText(mill))), 10.5 * 10 + 21 * 5, 1e-6);
  const QJsonObject whole = planOf(importText(mill), {"--whole-reels"});
  EXPECT_EQ(total(whole, "reels"), 11);
  EXPECT_NEAR(cost(whole), 11 * 10 + 21 * 5 + 50 * 2, 1e-6);
  EXPECT_NEAR(whole["solver"]["gap_to_lp"].toDouble(), 315.0 / 210 - 1, 1e-9);
  mill.batch = true;
  EXPECT_EQ(total(planOf(importText(mill)), "reels"), 11);
}

// As above, once the pattern of two rolls is found: with the model's own, 21 reels.
TEST_F(PlanProgram, BetterPatternsRunInWholeReels) {
  TestMill mill = smallMill();
  mill.orders[0].rolls = 21;
  mill.cutters[0].patterns = {{50}, {30, 30}};  // a file alone has patterns of at most two rolls
  const std::string text = importText(mill);
  EXPECT_EQ(total(planOf(text, {"--whole-reels"}), "reels"), 21);
  const QJsonObject whole = planOf(text, {"--improve", "--whole-reels"});
  EXPECT_EQ(total(whole, "reels"), 11);
  EXPECT_NEAR(cost(whole), 11 * 10 + 21 * 5 + 50 * 2, 1e-6);
}

// The first plan is within any gap of a million percent, so nothing is looked for.
TEST_F(PlanProgram, AGapAndATimeEndTheSearchForWholeReels) {
  TestMill mill = smallMill();
  mill.orders[0].rolls = 21;
  const QJsonObject rough =
      planOf(importText(mill), {"--whole-reels", "--gap", "10000", "--time-limit", "600"});
  EXPECT_EQ(rough["solver"]["way"].toString(), "dive");
}

// 3.5 reels are all that the machine can make: with whole reels the seventh roll has no reel,
// though half a day is left.
TEST_F(PlanProgram, WhatWholeReelsCannotDeliverIsNamed) {
  TestMill mill = smallMill();
  mill.days = 1;
  mill.cutters[0].capacity = 3.5;
  mill.orders[0].rolls = 7;
  EXPECT_EQ(total(planOf(importText(mill)), "unmet_rolls"), 0);
  const QJsonObject whole = planOf(importText(mill), {"--whole-reels"});
  EXPECT_EQ(total(whole, "unmet_rolls"), 1);
  EXPECT_EQ(whole["orders"][0]["reason"].toString(), "whole-reels");
  EXPECT_THAT(contentOf(folder_.file("plan/orders.csv")), HasSubstr("no further whole reel fits"));
}

// As in the tests of small networks: 140 rolls a week, 280 ordered for the second.
TEST_F(PlanProgram, StockIsAWhatIf) {
  TestMill mill = smallMill();
  mill.periods = {"1", "2"};
  mill.cutters[0].patterns = {{50, 50}};
  mill.orders = {{"G", "A", 50.0, 1, 280}};
  EXPECT_NEAR(total(planOf(importText(mill)), "unmet_rolls"), 140, 1e-6);
  const QJsonObject stocked = planOf(importText(mill), {"--storage", "inf"});
  EXPECT_NEAR(total(stocked, "unmet_rolls"), 0, 1e-6);
  EXPECT_EQ(stocked["options"]["storage"].toString(), "inf");
  EXPECT_THAT(contentOf(folder_.file("plan/stock.csv")), HasSubstr("G_C_50.000,50,1,140\r\n"));
}

// The line of the second mill holds for both: nothing arrives in the first period.
TEST_F(PlanProgram, DelaysByMillAreAWhatIf) {
  TestMill mill = smallMill();
  mill.periods = {"1", "2"};
  mill.cutters.push_back({"South", "D", "G", 100.0, 10.0, 2.0, {{50, 50}}});
  mill.orders = {{"G", "A", 50.0, 0, 5}};
  mill.rates = {{"North", "A", "Rail", 1.0, 0.0}, {"South", "A", "Rail", 1.0, 1.0}};
  EXPECT_EQ(total(planOf(importText(mill)), "unmet_rolls"), 5);
  EXPECT_EQ(total(planOf(importText(mill), {"--delays", "by-mill"}), "unmet_rolls"), 0);
}

// Alone 20 reels of one roll, 50 inches of trim each; other runs cut two, and 60 beside 40.
TEST_F(PlanProgram, PatternsOfSeveralRunsArePooled) {
  TestMill mill = smallMill();
  mill.orders.push_back({"G", "A", 60.0, 0, 4});
  mill.cutters[0].patterns = {{50}, {60}};
  const std::string alone = importText(mill);
  mill.cutters[0].patterns = {{50, 50}, {60}};
  const std::string second = folder_.write("second.imp", importText(mill));
  mill.cutters[0].patterns = {{60}, {50}, {33, 33, 33}};
  mill.orders.push_back({"G", "A", 33.0, 0, 0});
  const std::string third = folder_.write("third.imp", importText(mill));
  EXPECT_NEAR(total(planOf(alone), "trim_inches"), 20 * 50 + 4 * 40, 1e-6);
  const QJsonObject pooled = planOf(alone, {"--pool", second, "--pool", third});
  EXPECT_NEAR(total(pooled, "trim_inches"), 4 * 40, 1e-6);
  EXPECT_EQ(pooled["solver"]["pooled_patterns"].toInt(), 1);
  const QJsonObject warning = pooled["warnings"][0].toObject();
  EXPECT_EQ(warning["kind"].toString(), "pool-foreign");
  EXPECT_THAT(warning["text"].toString().toStdString(), HasSubstr("1 patterns of " + third));
}

TEST_F(PlanProgram, FoldersOfOtherRunsArePooled) {
  const std::string mill = sampleRun("mill");
  const std::string other = sampleRun("other");
  EXPECT_EQ(plan({"mill", "--pool", "other", "--pool", "mill", "-o", "pooled", "-q"}).status, 0);
  const QJsonObject pooled = recordIn(folder_.file("pooled"));
  EXPECT_EQ(pooled["solver"]["pooled_patterns"].toInt(-1), 0);
}

TEST_F(PlanProgram, ImprovedPatternsAreWrittenAsAModelThatCostsTheSame) {
  sampleRun("mill");
  const Ended ended = plan({"mill", "--improve", "-o", "better"});
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_THAT(ended.out, HasSubstr("  Improved   "));
  EXPECT_THAT(ended.out, HasSubstr("the model with these patterns is in better/CV-improved.imp"));
  const QJsonObject better = recordIn(folder_.file("better"));
  EXPECT_EQ(better["solver"]["improve_complete"].toInt(), 1);
  EXPECT_EQ(plan({"--import-file", "better/CV-improved.imp", "-o", "again", "-q"}).status, 0);
  const QJsonObject again = recordIn(folder_.file("again"));
  EXPECT_NEAR(total(again, "unmet_rolls"), total(better, "unmet_rolls"), 1e-6);
  EXPECT_NEAR(cost(again), cost(better), 1e-6 * cost(better));
  const Ended alone = plan({"--import-file", "mill/data/CV.imp", "--improve", "-o", "alone"});
  EXPECT_THAT(alone.out, HasSubstr("no improved model"));
  EXPECT_FALSE(std::filesystem::exists(folder_.path() / "alone/CV-improved.imp"));
}

TEST_F(PlanProgram, TheModelIsWrittenForOtherSolvers) {
  planOf(importText(smallMill()), {"--write-mps", folder_.file("lp.mps")});
  EXPECT_THAT(contentOf(folder_.file("lp.mps")), HasSubstr("reels_0_0"));
  EXPECT_THAT(contentOf(folder_.file("lp.mps")), Not(HasSubstr(" UI BOUND reels_0_0 ")));
  planOf(importText(smallMill()), {"--whole-reels", "--write-mps", folder_.file("mip.mps")});
  EXPECT_THAT(contentOf(folder_.file("mip.mps")), HasSubstr(" UI BOUND reels_0_0 "));
  EXPECT_THAT(contentOf(folder_.file("mip.mps")), Not(HasSubstr(" UI BOUND ship_0_0 ")));
}

// Blanks, quotes, commas and letters of all kinds, in names and in paths.
TEST_F(PlanProgram, NamesOfAnyKindGoThrough) {
  TestMill mill = smallMill();
  const std::string customer = "K\u00e4se \"A\" & S\u00f6hne, \u7d19";
  mill.periods = {"week 1"};
  mill.cutters[0].name = "C \"1\"";
  mill.orders[0].customer = customer;
  mill.rates[0] = {"North", customer, "Truck <x> 1", 5.0, 0.0};
  std::filesystem::create_directories(folder_.path() / "M\u00fchle 'Nord'");
  const std::string file = folder_.write("M\u00fchle 'Nord'/a b.imp", importText(mill));
  const Ended ended = plan({"--import-file", file, "-o", "der Plan\u00df"});
  EXPECT_EQ(ended.status, 0) << ended.err;
  const QJsonObject record = recordIn(folder_.file("der Plan\u00df"));
  EXPECT_EQ(total(record, "delivered_rolls"), 20);
  EXPECT_EQ(record["orders"][0]["order"].toString().toStdString(), "G_" + customer + "_50.000");
  EXPECT_EQ(record["shipments"][0]["mode"].toString(), "Truck <x> 1");
  EXPECT_THAT(contentOf(folder_.file("der Plan\u00df/orders.csv")),
              HasSubstr("\"G_K\u00e4se \"\"A\"\" & S\u00f6hne, \u7d19_50.000\""));
  EXPECT_THAT(contentOf(folder_.file("der Plan\u00df/machines.csv")),
              HasSubstr("\"M_C \"\"1\"\"\",week 1,1,7\r\n"));
}

TEST_F(PlanProgram, TheSameInputGivesTheSameBytes) {
  const std::string mill = sampleRun("mill");
  for (const char *folder : {"once", "again"}) {
    for (const Words &options : {Words{"--write-mps", "lp.mps"}, Words{"--improve"},
                                 Words{"--whole-reels", "--storage", "inf"}}) {
      Words words = {"mill", "-q", "-o", std::string(folder) + options.front()};
      words.insert(words.end(), options.begin(), options.end());
      EXPECT_EQ(plan(words).status, 0);
      if (options.front() == "--write-mps") {
        std::filesystem::rename(folder_.path() / "lp.mps",
                                folder_.path() / (std::string(folder) + options.front() + "/mps"));
      }
    }
  }
  for (const char *option : {"--write-mps", "--improve", "--whole-reels"}) {
    EXPECT_EQ(filesOf(folder_.file(std::string("once") + option)),
              filesOf(folder_.file(std::string("again") + option)))
        << option;
  }
}

}  // namespace
}  // namespace corvane::plan
