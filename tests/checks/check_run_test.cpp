// The program as it is called: exit status, formats, selection, baseline and mending.

#include "checks/check_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "checks/checked_files.h"

namespace corvane::checks {
namespace {

using testing::HasSubstr;
using testing::Not;

namespace fs = std::filesystem;

std::string contents(const fs::path &path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

class CheckRun : public testing::Test {
 protected:
  void write(const MillTexts &texts) {
    fs::create_directories(mill() / "data");
    std::ofstream(mill() / "data/Parameters.data", std::ios::binary) << texts.parameters;
    std::ofstream(mill() / "data/machines.data", std::ios::binary) << texts.machines;
    std::ofstream(mill() / "data/orders.data", std::ios::binary) << texts.orders;
    std::ofstream(mill() / "data/freightRates.data", std::ios::binary) << texts.rates;
  }

  // The clean mill with one text of a file replaced.
  void writeChanged(const std::string &file, const std::string &from, const std::string &to) {
    MillTexts texts = cleanMill();
    std::string &text = texts.of(file);
    text.replace(text.find(from), from.size(), to);
    write(texts);
  }

  int run() {
    if (options.argument.empty()) {
      options.argument = mill().string();
    }
    std::ostringstream outStream;
    std::ostringstream errorStream;
    const int status = runCheck(options, outStream, errorStream);
    out = outStream.str();
    errors = errorStream.str();
    return status;
  }

  fs::path mill() const { return folder_.file("mill"); }
  fs::path beside(const std::string &name) const { return folder_.file(name); }

  CheckOptions options;
  std::string out;
  std::string errors;

 private:
  support::TemporaryFolder folder_;
};

TEST_F(CheckRun, ACleanMillIsSaidToBeCleanWithWhatWasRead) {
  write(cleanMill());
  EXPECT_EQ(run(), kExitClean);
  EXPECT_THAT(out, HasSubstr("Nothing found: no errors and no warnings."));
  EXPECT_THAT(out, HasSubstr("CM26, LB42"));
  EXPECT_THAT(out, HasSubstr("Periods, in this order        1, 2\n"));
  EXPECT_THAT(out, HasSubstr("Ordered inches                11397.2500\n"));
  EXPECT_THAT(out, testing::ContainsRegex("orders.data +6 +6 +0\n"));
}

TEST_F(CheckRun, AFindingHasItsLineAndAMark) {
  writeChanged("orders", "44.75", "44,75");
  EXPECT_EQ(run(), kExitFindings);
  EXPECT_THAT(out,
              HasSubstr("orders.data:1:8: error CV204: decimal comma: \"44,75\" is read as width "
                        "44 and quantity 75\n"
                        "    1,LB42,44,75,60,Badger Box\n"
                        "           ^~~~~\n"
                        "    write: 1,LB42,44.75,60,Badger Box\n"));
  EXPECT_THAT(out, HasSubstr("1 error.\n"));
}

TEST_F(CheckRun, GccWritesALineEach) {
  writeChanged("orders", "44.75", "44,75");
  options.format = "gcc";
  EXPECT_EQ(run(), kExitFindings);
  EXPECT_THAT(out,
              HasSubstr("orders.data:1:8: error: decimal comma: \"44,75\" is read as width 44 and "
                        "quantity 75; write 1,LB42,44.75,60,Badger Box [CV204]\n"));
}

TEST_F(CheckRun, JsonIsRead) {
  writeChanged("orders", "44.75", "44,75");
  options.format = "json";
  EXPECT_EQ(run(), kExitFindings);
  const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(out));
  const QJsonArray findings = document["findings"].toArray();
  ASSERT_EQ(findings.size(), 1);
  EXPECT_EQ(findings[0]["code"].toString(), "CV204");
  EXPECT_EQ(findings[0]["line"].toInt(), 1);
  EXPECT_EQ(findings[0]["column"].toInt(), 8);
  EXPECT_EQ(document["counts"]["errors"].toInt(), 1);
  EXPECT_EQ(document["read"]["files"].toArray().size(), 4);
}

TEST_F(CheckRun, TheLevelHidesWhatIsBelow) {
  writeChanged("machines", "40,69,14", "40,69,0");
  options.level = "error";
  EXPECT_EQ(run(), kExitClean);
  EXPECT_THAT(out, HasSubstr("1 below the level"));
  options.level = "warning";
  EXPECT_EQ(run(), kExitFindings);
}

TEST_F(CheckRun, CodesAreSelectedAndIgnoredByTheirBeginnings) {
  writeChanged("machines", "40,69,14", "0,69,0");
  options.select = {"cv304"};
  EXPECT_EQ(run(), kExitFindings);
  EXPECT_THAT(out, HasSubstr("CV304"));
  EXPECT_THAT(out, Not(HasSubstr("CV306")));
  options.select = {"CV2,CV4"};
  EXPECT_EQ(run(), kExitClean);
  options.select = {};
  options.ignore = {"CV3"};
  EXPECT_EQ(run(), kExitClean);
}

TEST_F(CheckRun, WhatCannotBeCheckedIsStatusTwo) {
  write(cleanMill());
  const auto refused = [&](CheckOptions wrong, const std::string &why) {
    options = wrong;
    EXPECT_EQ(run(), kExitNotChecked) << why;
    EXPECT_THAT(errors, HasSubstr(why));
    EXPECT_EQ(out, "");
  };
  CheckOptions wrong;
  wrong.argument = beside("nowhere").string();
  refused(wrong, "could not open the parameter file");
  wrong = {};
  wrong.select = {"CX"};
  refused(wrong, "no code begins with 'CX'");
  wrong = {};
  wrong.format = "html";
  refused(wrong, "the format is");
  wrong = {};
  wrong.level = "all";
  refused(wrong, "the level is");
  wrong = {};
  wrong.maximumPerCode = "some";
  refused(wrong, "--max-per-code");
  wrong = {};
  wrong.baseline = beside("nowhere").string();
  refused(wrong, "could not open");
  wrong = {};
  wrong.unsafeFixes = true;
  refused(wrong, "--unsafe-fixes needs --fix");
  wrong = {};
  wrong.explain = "CV999";
  refused(wrong, "no code 'CV999'");
}

TEST_F(CheckRun, TheOutputIsBounded) {
  MillTexts texts = cleanMill();
  for (int i = 0; i < 30; ++i) {
    texts.orders += "2,LB42,30,wide,Badger Box\n";
  }
  write(texts);
  options.maximumPerCode = "3";
  EXPECT_EQ(run(), kExitFindings);
  EXPECT_THAT(out, HasSubstr("CV206: 27 more of these are not shown"));
  EXPECT_THAT(out, HasSubstr("30 errors."));
}

TEST_F(CheckRun, TheBaselineKeepsQuietOfWhatIsKnownWhereverItStandsNow) {
  writeChanged("orders", "44.75", "44,75");
  options.format = "json";
  run();
  std::ofstream(beside("baseline.json")) << out;
  options.format = "text";
  options.baseline = beside("baseline.json").string();
  EXPECT_EQ(run(), kExitClean);
  EXPECT_THAT(out, HasSubstr("1 known in the baseline"));
  writeChanged("orders", "1,LB42,44.75,60", "1,LB42,50,61,Badger Box\n1,LB42,44,75,60");
  EXPECT_EQ(run(), kExitClean);
  writeChanged("orders", "36.5", "36,5");
  EXPECT_EQ(run(), kExitFindings);
}

TEST_F(CheckRun, MendedCopiesAreCleanAndOriginalsUntouched) {
  MillTexts texts = cleanMill();
  texts.parameters = " # A mill\nbatch =False\nrand num gen seed=7\ndelay=true\n";
  texts.machines.insert(0, "\xef\xbb\xbf");
  texts.machines += "\n";
  texts.orders.replace(texts.orders.find("44.75"), 5, "44,75");
  texts.orders.replace(texts.orders.find("CM26"), 4, "CM26 ");
  texts.orders.pop_back();
  texts.rates.insert(0, "Customer,Mill,Mode,Rate,Delay\n");
  write(texts);
  options.fix = beside("mended").string();
  EXPECT_EQ(run(), kExitFindings);
  EXPECT_EQ(contents(mill() / "data/orders.data"), texts.orders);
  EXPECT_EQ(contents(mill() / "data/Parameters.data"), texts.parameters);
  EXPECT_EQ(contents(beside("mended") / "data/machines.data"), cleanMill().machines);
  EXPECT_EQ(contents(beside("mended") / "data/orders.data"), cleanMill().orders);
  EXPECT_EQ(contents(beside("mended") / "data/freightRates.data"), cleanMill().rates);
  options = {};
  options.argument = beside("mended").string();
  options.level = "info";
  EXPECT_EQ(run(), kExitClean) << out;
}

TEST_F(CheckRun, AMissingLineBreakIsAddedOnce) {
  MillTexts texts = cleanMill();
  texts.orders.pop_back();
  write(texts);
  options.fix = beside("mended").string();
  options.select = {"CV102"};
  EXPECT_EQ(run(), kExitFindings);
  EXPECT_EQ(contents(beside("mended") / "data/orders.data"), cleanMill().orders);
}

TEST_F(CheckRun, MendedCarriageReturnsLeavePairsAsTheyAre) {
  MillTexts texts = cleanMill();
  const std::size_t end = texts.orders.find('\n') + 1;
  texts.orders.insert(end - 1, "\r");
  const std::string first = texts.orders.substr(0, end + 1);
  std::string rest = texts.orders.substr(end + 1);
  std::string onlyReturns = rest;
  std::replace(onlyReturns.begin(), onlyReturns.end(), '\n', '\r');
  texts.orders = first + onlyReturns;
  write(texts);
  options.fix = beside("mended").string();
  EXPECT_EQ(run(), kExitFindings);
  EXPECT_EQ(contents(beside("mended") / "data/orders.data"), first + rest);
}

// A mark that is kept stays in front, whichever line comes to be the first.
TEST_F(CheckRun, MovedLinesLeaveTheByteOrderMarkWhereItIs) {
  const std::string mark = "\xef\xbb\xbf";
  MillTexts texts = cleanMill();
  const std::string first = texts.orders.substr(0, texts.orders.find('\n') + 1);
  texts.orders =
      mark + "2,LB42,30,10,Badger Box\n" + first + "1,LB42,44.75,90,Clearwater Cartons\n";
  write(texts);
  options.fix = beside("mended").string();
  options.ignore = {"CV106"};
  options.unsafeFixes = true;
  EXPECT_EQ(run(), kExitFindings);
  EXPECT_EQ(contents(beside("mended") / "data/orders.data"),
            mark + "1,LB42,44.75,90,Clearwater Cartons\n" + first + "2,LB42,30,10,Badger Box\n");
}

TEST_F(CheckRun, GuessesNeedTheirOwnWord) {
  writeChanged("orders", "LB42", "LB24");
  options.fix = beside("mended").string();
  EXPECT_EQ(run(), kExitFindings);
  EXPECT_THAT(contents(beside("mended") / "data/orders.data"), HasSubstr("LB24"));
  options.unsafeFixes = true;
  EXPECT_EQ(run(), kExitFindings);
  EXPECT_EQ(contents(beside("mended") / "data/orders.data"), cleanMill().orders);
}

TEST_F(CheckRun, ASpreadsheetsFileIsMendedAsAGuess) {
  MillTexts texts = cleanMill();
  for (char &c : texts.orders) {
    c = c == ',' ? ';' : c == '.' ? ',' : c;
  }
  write(texts);
  options.fix = beside("mended").string();
  options.unsafeFixes = true;
  EXPECT_EQ(run(), kExitFindings);
  EXPECT_EQ(contents(beside("mended") / "data/orders.data"), cleanMill().orders);
}

TEST_F(CheckRun, MendingNeverWritesOverAnOriginal) {
  writeChanged("orders", "44.75", "44,75");
  const std::string before = contents(mill() / "data/orders.data");
  options.fix = mill().string();
  EXPECT_EQ(run(), kExitNotChecked);
  EXPECT_THAT(errors, HasSubstr("is one of the files that are checked"));
  EXPECT_EQ(contents(mill() / "data/orders.data"), before);
  fs::create_directory_symlink(mill(), beside("link"));
  options.fix = beside("link").string();
  EXPECT_EQ(run(), kExitNotChecked);
  EXPECT_EQ(contents(mill() / "data/orders.data"), before);
}

TEST_F(CheckRun, TheDataFolderWillDo) {
  write(cleanMill());
  options.argument = (mill() / "data").string();
  EXPECT_EQ(run(), kExitClean) << out << errors;
}

TEST_F(CheckRun, SamplesHaveOnlyWhatTheirReadmesSay) {
  options.argument = CORVANE_SOURCE_DIR "/samples/small";
  EXPECT_EQ(run(), kExitClean) << out;
  options.argument = CORVANE_SOURCE_DIR "/samples/three_mills";
  options.ignore = {"CV402"};
  EXPECT_EQ(run(), kExitClean) << out;
  options.ignore = {};
  run();
  EXPECT_THAT(out, HasSubstr("6 warnings"));
  EXPECT_THAT(out, HasSubstr("Ordered inches                2589934.2500"));
}

// The rules of SARIF that a schema cannot say, and those that this program depends on.
TEST_F(CheckRun, SarifNamesARuleForEachResult) {
  writeChanged("orders", "44.75", "44,75");
  options.format = "sarif";
  EXPECT_EQ(run(), kExitFindings);
  const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(out));
  EXPECT_EQ(document["version"].toString(), "2.1.0");
  const QJsonValue first = document["runs"][0];
  const QJsonArray rules = first["tool"]["driver"]["rules"].toArray();
  EXPECT_EQ(static_cast<std::size_t>(rules.size()), allChecks().size());
  const QJsonValue result = first["results"][0];
  EXPECT_EQ(rules[result["ruleIndex"].toInt()]["id"].toString(), "CV204");
  EXPECT_EQ(result["level"].toString(), "error");
  const QJsonValue region = result["locations"][0]["physicalLocation"]["region"];
  EXPECT_EQ(region["startLine"].toInt(), 1);
  EXPECT_EQ(region["startColumn"].toInt(), 8);
  EXPECT_EQ(region["endColumn"].toInt(), 13);
}

}  // namespace
}  // namespace corvane::checks
