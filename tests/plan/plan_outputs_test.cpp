// What is written of a plan.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "core/numbers.h"
#include "plan/mill_text.h"
#include "plan/plan_json.h"
#include "plan/plan_run.h"
#include "plan/plan_screen.h"
#include "plan/plan_tables.h"
#include "plan/planned.h"

namespace corvane::plan {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

// Two periods, an order that comes too early for its train, a full machine, rolls to spare.
TestMill busyMill() {
  TestMill mill = smallMill();
  mill.periods = {"1", "2"};
  mill.orders = {{"G", "A", 50.0, 0, 6}, {"G", "A", 50.0, 1, 200}, {"G", "B, Ltd", 60.0, 1, 7}};
  mill.rates = {{"North", "A", "Rail", 1.0, 1.0}, {"North", "B, Ltd", "Truck", 2.0, 0.0}};
  return mill;
}

QJsonObject jsonOf(const PlanRecord &record) {
  std::ostringstream out;
  writePlanJson(record, out);
  const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(out.str()));
  EXPECT_TRUE(document.isObject()) << out.str();
  return document.object();
}

std::string tableOf(const PlanRecord &record, const std::string &file) {
  std::ostringstream out;
  for (const PlanTable &table : planTables()) {
    if (table.file == file) {
      table.write(record, out);
    }
  }
  return out.str();
}

std::string screenOf(const PlanRecord &record) {
  std::ostringstream out;
  printPlan(record, "CV.imp", out);
  return out.str();
}

TEST(PlanJson, HasTheFieldsOfItsSchema) {
  const Planned planned(importText(busyMill()));
  const QJsonObject plan = jsonOf(planned.record);
  EXPECT_EQ(plan["schema"].toString(), "corvane-plan/1");
  EXPECT_EQ(plan["periods"].toArray().size(), 2);
  EXPECT_EQ(plan["options"]["storage"].toString(), "file");
  EXPECT_EQ(plan["totals"]["ordered_rolls"].toDouble(), 213);
  EXPECT_NEAR(plan["totals"]["unmet_rolls"].toDouble(), 66, 1e-6);
  EXPECT_EQ(plan["totals"]["unmet_out_of_reach"].toDouble(), 6);
  EXPECT_NEAR(plan["totals"]["surplus_rolls"].toDouble(), 7, 1e-6);
  const QJsonObject cost = plan["totals"]["cost"].toObject();
  EXPECT_NEAR(cost["total"].toDouble(),
              cost["feed"].toDouble() + cost["waste"].toDouble() + cost["freight"].toDouble() +
                  cost["machine_time"].toDouble() + cost["surplus"].toDouble(),
              1e-9);
  EXPECT_TRUE(plan["faults"].toArray().isEmpty());
  EXPECT_FALSE(plan["solver"].toObject().contains("seconds"));
}

TEST(PlanJson, ListsWhatIsDone) {
  const Planned planned(importText(busyMill()));
  const QJsonObject plan = jsonOf(planned.record);
  const QJsonObject machine = plan["machines"][0].toObject();
  EXPECT_EQ(machine["machine"].toString(), "M_C");
  EXPECT_NEAR(machine["used"].toDouble(), 7, 1e-9);
  const QJsonObject run = plan["patterns"][0].toObject();
  EXPECT_EQ(run["pattern"].toString(), "G_Pattern_0_C_100");
  EXPECT_EQ(run["rolls"]["50"].toDouble(), 2);
  EXPECT_NEAR(run["reels"].toDouble(), 70, 1e-9);
  const QJsonObject early = plan["orders"][0].toObject();
  EXPECT_EQ(early["reason"].toString(), "too-early");
  EXPECT_EQ(early["unmet"].toDouble(), 6);
  const QJsonObject short_ = plan["orders"][1].toObject();
  EXPECT_EQ(short_["reason"].toString(), "machine-time");
  EXPECT_EQ(short_["full"][0]["machine"].toString(), "M_C");
  EXPECT_EQ(short_["full"][0]["period"].toString(), "1");
  const QJsonObject met = plan["orders"][2].toObject();
  EXPECT_TRUE(met["reason"].isNull());
  EXPECT_FALSE(met.contains("full"));
  const QJsonObject shipment = plan["shipments"][0].toObject();
  EXPECT_EQ(shipment["mode"].toString(), "Rail");
  EXPECT_EQ(shipment["leaves"].toString(), "1");
  EXPECT_EQ(shipment["arrives"].toString(), "2");
  EXPECT_NEAR(shipment["cost"].toDouble(), 140, 1e-9);
  EXPECT_EQ(plan["surplus"].toArray().size(), 1);
  EXPECT_EQ(plan["modes"].toArray().size(), 2);
}

TEST(PlanJson, TheSameTextGivesTheSameBytes) {
  const std::string text = importText(busyMill());
  std::ostringstream first;
  std::ostringstream second;
  writePlanJson(Planned(text).record, first);
  writePlanJson(Planned(text).record, second);
  EXPECT_EQ(first.str(), second.str());
}

TEST(PlanTables, HoldARowForEachThing) {
  const Planned planned(importText(busyMill()));
  EXPECT_THAT(tableOf(planned.record, "runs.csv"),
              HasSubstr("1,M_C,G_C_100,G,100,G_Pattern_0_C_100,2 x 50,70,0\r\n"));
  EXPECT_THAT(tableOf(planned.record, "shipments.csv"),
              HasSubstr("1,2,Rail,G_C_50.000,G_A_50.000,50,140,140\r\n"));
  EXPECT_THAT(
      tableOf(planned.record, "orders.csv"),
      HasSubstr("G_A_50.000,G_A,50,2,200,140,60,the machines that could make it in time are "
                "full: M_C in 1\r\n"));
  EXPECT_THAT(tableOf(planned.record, "orders.csv"), HasSubstr("\"G_B, Ltd_60.000\""));
  EXPECT_THAT(tableOf(planned.record, "machines.csv"), HasSubstr("M_C,1,7,7\r\n"));
  EXPECT_THAT(tableOf(planned.record, "surplus.csv"), HasSubstr("G_C_30.000,30,2,7,420\r\n"));
  EXPECT_THAT(tableOf(planned.record, "totals.csv"), HasSubstr("ordered,rolls,213\r\n"));
  const Planned stocked(importText(busyMill()), {.freeStock = true});
  EXPECT_THAT(tableOf(stocked.record, "stock.csv"), HasSubstr("store,width,period,rolls\r\n"));
}

TEST(PlanScreen, SaysWhatAPlannerWantsToKnow) {
  const Planned planned(importText(busyMill()));
  const std::string screen = screenOf(planned.record);
  EXPECT_THAT(screen, HasSubstr("Plan of CV.imp: 2 periods"));
  EXPECT_THAT(screen, HasSubstr("147 of 213 rolls (69.0 %)"));
  EXPECT_THAT(screen, HasSubstr("7 rolls that nobody ordered"));
  EXPECT_THAT(screen, HasSubstr("M_C 100 % in 1"));
  EXPECT_THAT(screen, HasSubstr("6 rolls: every shipment would have to leave before"));
  EXPECT_THAT(screen, HasSubstr("60 of G_A_50.000 in 2: M_C in 1"));
}

TEST(PlanScreen, OfManyLikeWarningsAFewAreShown) {
  TestMill mill = smallMill();
  for (int order = 0; order < 8; ++order) {
    mill.orders.push_back({"G", "Nobody" + std::to_string(order), 50.0, 0, 1});
  }
  const Planned planned(importText(mill));
  std::ostringstream err;
  printWarnings(planned.record, err);
  EXPECT_THAT(err.str(), HasSubstr("1 rolls of \"G_Nobody2_50.000\" in period 1 can never"));
  EXPECT_THAT(err.str(), Not(HasSubstr("Nobody3")));
  EXPECT_THAT(err.str(), HasSubstr("5 more of the kind out-of-reach"));
}

class PlanRunTest : public testing::Test {
 protected:
  std::string file(const std::string &text) {
    const std::string path = folder_.filePath("CV.imp").toStdString();
    std::ofstream(path, std::ios::binary) << text;
    return path;
  }
  std::string path(const char *name) const { return folder_.filePath(name).toStdString(); }
  static std::string contentOf(const std::string &path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
  }
  int run(const PlanRequest &request) {
    out_.str("");
    err_.str("");
    return runPlan(request, out_, err_);
  }

  QTemporaryDir folder_;
  std::ostringstream out_;
  std::ostringstream err_;
};

TEST_F(PlanRunTest, WritesAllFilesAndShowsThePlan) {
  PlanRequest request;
  request.importFile = file(importText(busyMill()));
  request.outputFolder = path("a/plan");
  EXPECT_EQ(run(request), 0);
  EXPECT_THAT(out_.str(), HasSubstr("Delivered"));
  EXPECT_THAT(err_.str(), HasSubstr("Warning: line "));
  for (const char *name : {"plan.json", "runs.csv", "shipments.csv", "orders.csv", "machines.csv",
                           "surplus.csv", "stock.csv", "totals.csv"}) {
    EXPECT_THAT(contentOf(request.outputFolder + '/' + name), Not(IsEmpty())) << name;
  }
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(request.outputFolder), {}), 8);
}

TEST_F(PlanRunTest, QuietIsQuiet) {
  PlanRequest request;
  request.importFile = file(importText(busyMill()));
  request.outputFolder = path("plan");
  request.quiet = true;
  EXPECT_EQ(run(request), 0);
  EXPECT_EQ(out_.str() + err_.str(), "");
}

// Rolls of 20 widths from patterns of one width each; patterns of several save a third.
TestMill wideMill(int days) {
  TestMill mill = smallMill();
  mill.days = days;
  mill.cutters[0].patterns.clear();
  mill.orders.clear();
  for (int i = 0; i < 20; ++i) {
    const double width = 26 + 1.9 * i;
    mill.orders.push_back({"G", "A", width, 0, 10 + 3 * (i % 7)});
    mill.cutters[0].patterns.push_back({width});
  }
  mill.cutters[0].patterns.push_back({26, 26, 26});
  return mill;
}

class ImproveRun : public PlanRunTest {
 protected:
  // A clock that goes on by a minute with every look at it.
  QJsonObject improve(const TestMill &mill, double timeLimit) {
    PlanRequest request;
    request.importFile = file(importText(mill));
    request.outputFolder = path("plan");
    request.improve = true;
    request.timeLimit = timeLimit;
    request.clock = [minute = 0]() mutable { return 60.0 * minute++; };
    EXPECT_EQ(run(request), 0) << err_.str();
    return QJsonDocument::fromJson(
               QByteArray::fromStdString(contentOf(request.outputFolder + "/plan.json")))
        .object();
  }
  static double cost(const QJsonObject &plan) { return plan["totals"]["cost"]["total"].toDouble(); }
};

TEST_F(ImproveRun, EndsWithACertificate) {
  const QJsonObject plan = improve(wideMill(42), 1e5);
  EXPECT_EQ(plan["solver"]["improve_complete"].toInt(), 1);
  EXPECT_EQ(plan["solver"]["improve_rolls_in_pattern"].toInt(), 3);
  EXPECT_NEAR(plan["solver"]["improve_cost_bound"].toDouble(), cost(plan), 1e-6 * cost(plan));
  EXPECT_NEAR(plan["solver"]["improve_cost"].toDouble(), cost(plan), 1e-6 * cost(plan));
  EXPECT_LT(cost(plan), 0.7 * plan["solver"]["improve_first_cost"].toDouble());
  EXPECT_EQ(plan["solver"]["improve_unmet"].toDouble(), 0.0);
  EXPECT_THAT(out_.str(), HasSubstr("; no pattern of at most 3 rolls on these deckles can make the "
                                    "plan cheaper\n"));
  EXPECT_THAT(out_.str(), HasSubstr(" rounds: cost "));
}

TEST_F(ImproveRun, TellsTheBoundAndTheGapWhereTimeEndsIt) {
  const QJsonObject whole = improve(wideMill(20), 0);
  const double best = cost(whole);
  const int rounds = whole["solver"]["improve_rounds"].toInt() - 1;
  ASSERT_GT(rounds, 1);
  const QJsonObject plan = improve(wideMill(20), 60 * rounds - 1);
  const QJsonObject solver = plan["solver"].toObject();
  EXPECT_EQ(solver["improve_complete"].toInt(-1), 0);
  EXPECT_EQ(solver["improve_rounds"].toInt(), rounds);
  const double bound = solver["improve_cost_bound"].toDouble();
  EXPECT_LE(bound, best);
  EXPECT_GT(bound, 0.0);
  EXPECT_GE(cost(plan), best);
  EXPECT_NEAR(solver["improve_cost"].toDouble(), cost(plan), 1e-6 * cost(plan));
  EXPECT_THAT(
      out_.str(),
      HasSubstr(", ended by time; no patterns of at most 3 rolls can bring it below " +
                fixed(bound, 0) + ", " + general(100 * (1 - bound / cost(plan))) + " % less\n"));
}

// The bound of an early round may be below 0, which no plan costs.
TEST_F(ImproveRun, TellsNoBoundBelowNothing) {
  const QJsonObject plan = improve(wideMill(42), 1);
  ASSERT_LT(plan["solver"]["improve_cost_bound"].toDouble(), 0.0);
  EXPECT_THAT(out_.str(), HasSubstr(" can bring it below 0, 100 % less\n"));
}

TEST_F(ImproveRun, TellsOfRollsThatStayUnmet) {
  const QJsonObject whole = improve(wideMill(7), 0);
  EXPECT_EQ(whole["solver"]["improve_complete"].toInt(), 1);
  const double least = whole["totals"]["unmet_rolls"].toDouble();
  EXPECT_GT(least, 1.0);
  EXPECT_NEAR(whole["solver"]["improve_unmet_bound"].toDouble(), least, 1e-6);
  const double first = whole["solver"]["improve_first_unmet"].toDouble();
  EXPECT_GT(first, least + 1);
  EXPECT_THAT(out_.str(), HasSubstr(" rounds: rolls unmet " + fixed(first, 1) + " to " +
                                    fixed(least, 1) + ", cost "));
  const QJsonObject plan = improve(wideMill(7), 59);
  const double bound = plan["solver"]["improve_unmet_bound"].toDouble();
  EXPECT_LE(bound, least + 1e-6);
  EXPECT_GT(bound, 0.0);
  EXPECT_THAT(out_.str(), HasSubstr("can leave fewer than " + fixed(bound, 1) +
                                    " rolls unmet, nor bring the cost below "));
}

TEST_F(PlanRunTest, AFolderThatCannotBeMadeIsSaid) {
  PlanRequest request;
  request.importFile = file(importText(smallMill()));
  request.outputFolder = request.importFile + "/plan";
  EXPECT_EQ(run(request), 1);
  EXPECT_THAT(err_.str(), HasSubstr("cannot be written"));
}

TEST_F(PlanRunTest, AFileThatCannotBePlannedLeavesNothing) {
  PlanRequest request;
  request.importFile = file(importText(smallMill()) + "more\n");
  request.outputFolder = path("plan");
  EXPECT_THROW(run(request), network::Refused);
  EXPECT_FALSE(std::filesystem::exists(request.outputFolder));
}

TEST_F(PlanRunTest, TheLinearProgrammeGoesToAFile) {
  PlanRequest request;
  request.importFile = file(importText(smallMill()));
  request.outputFolder = path("plan");
  request.mpsFile = path("plan.mps");
  EXPECT_EQ(run(request), 0);
  EXPECT_THAT(contentOf(request.mpsFile), HasSubstr("reels_0_0"));
  request.mpsFile = path("none/plan.mps");
  EXPECT_EQ(run(request), 1);
}

TEST_F(PlanRunTest, PatternsOnlyHasNothingToPlan) {
  std::string text = importText(smallMill());
  std::string kept;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    if (line.find("addarc") != 0) {
      kept += line + '\n';
    }
  }
  PlanRequest request;
  request.importFile = file(kept);
  request.outputFolder = path("plan");
  EXPECT_THROW(run(request), network::Refused);
}

}  // namespace
}  // namespace corvane::plan
