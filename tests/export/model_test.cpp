#include "export/model.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "support/model_fixture.h"

namespace corvane {
namespace {

using support::Mill;

constexpr char kPlainRoot[] =
    "addroot <CompressBlockNodes> True <batchSizeSolve> False <batchSizeTune> False "
    "<initialSolverAlgorithm> networkDualSolve <BatLP> dualSolve <batchSizePeriods> 1 "
    "<batchTuneStopThreshold> 100 <batchTuneTries> 99999 <batchSizeMode> 0 "
    "<batchSizePeriods> 9999 <batchSizeResolveFrequency> 5\n";
constexpr char kBatchRoot[] =
    "addroot <CompressBlockNodes> True <batchSizeSolve> False <batchSizeTune> True "
    "<initialSolverAlgorithm> networkDualSolve <BatLP> dualSolve <batchSizePeriods> 1 "
    "<batchTuneStopThreshold> 0 <batchTuneTries> 99999 <batchSizeMode> 1 "
    "<batchSizePeriods> 9999 <batchSizeResolveFrequency> 5\n";

class ModelHeader : public support::ModelTest {
 protected:
  std::string root(bool batch, bool patternsOnly) {
    settings_.batch = batch;
    settings_.patternsOnly = patternsOnly;
    Mill mill("", "");
    return write(mill, [](const ModelData &data, ImportFile &file) { writeRoot(data, file); });
  }

  std::string commodities(const std::string &machines, const std::string &orders) {
    Mill mill(machines, orders);
    return write(mill,
                 [](const ModelData &data, ImportFile &file) { writeCommodities(data, file); });
  }

  std::string periods(const std::string &orders) {
    Mill mill("N,W,Fine,100,1,1,1\n", orders);
    return write(mill, [](const ModelData &data, ImportFile &file) { writePeriods(data, file); });
  }
};

TEST_F(ModelHeader, RootWithBatchTunesTheBatches) {
  EXPECT_EQ(root(true, false), kBatchRoot);
}

TEST_F(ModelHeader, RootWithBatchAndPatternsOnlyIsTheOtherVariant) {
  EXPECT_EQ(root(true, true), kPlainRoot);
}

TEST_F(ModelHeader, RootWithoutBatchIsTheOtherVariant) {
  EXPECT_EQ(root(false, false), kPlainRoot);
  EXPECT_EQ(root(false, true), kPlainRoot);
}

TEST_F(ModelHeader, CommoditiesAreDecklesAndDemandWidthsAscendingThenWasteAndMachineTime) {
  EXPECT_EQ(commodities("N,W1,Fine,100,1,1,1\nN,W2,Fine,80,1,1,1\nN,W3,Board,101.25,1,1,1\n",
                        "1,Fine,60,3,Acme\n1,Fine,40.5,3,Acme\n1,Board,50,3,Acme\n"),
            "addcommodity <name> \"Deckle80\"\n"
            "addcommodity <name> \"Deckle100\"\n"
            "addcommodity <name> \"Deckle101.25\"\n"
            "addcommodity <name> \"DemandWidth40.5\"\n"
            "addcommodity <name> \"DemandWidth50\"\n"
            "addcommodity <name> \"DemandWidth60\"\n"
            "addcommodity <name> \"Waste\"\n"
            "addcommodity <name> \"Machine_Time\"\n");
}

TEST_F(ModelHeader, AWidthOfThreePeriodEntriesIsOneCommodity) {
  EXPECT_EQ(commodities("N,W,Fine,100,1,1,1\n",
                        "1,Fine,30,1,Acme\n2,Fine,30.0,1,Acme\n3,Fine,30,1,Acme\n"),
            "addcommodity <name> \"Deckle100\"\n"
            "addcommodity <name> \"DemandWidth30\"\n"
            "addcommodity <name> \"Waste\"\n"
            "addcommodity <name> \"Machine_Time\"\n");
}

TEST_F(ModelHeader, AWidthOfTwoGradesIsOneCommodity) {
  EXPECT_EQ(commodities("N,W,Fine,100,1,1,1\nN,W,Board,100,1,1,1\n",
                        "1,Fine,30,1,Acme\n1,Board,30,1,Acme\n"),
            "addcommodity <name> \"Deckle100\"\n"
            "addcommodity <name> \"DemandWidth30\"\n"
            "addcommodity <name> \"Waste\"\n"
            "addcommodity <name> \"Machine_Time\"\n");
}

TEST_F(ModelHeader, WidthsHaveSixDigitsAndAnExponentFromAMillion) {
  EXPECT_EQ(commodities("N,W1,Fine,1234.5678,1,1,1\nN,W2,Fine,1000000,1,1,1\n", ""),
            "addcommodity <name> \"Deckle1234.57\"\n"
            "addcommodity <name> \"Deckle1e+06\"\n"
            "addcommodity <name> \"Waste\"\n"
            "addcommodity <name> \"Machine_Time\"\n");
}

// Distinct by their value, alike in six digits.
TEST_F(ModelHeader, TwoWidthsThatPrintAlikeStandTwice) {
  EXPECT_EQ(commodities("N,W1,Fine,100,1,1,1\n", "1,Fine,30.00001,1,A\n1,Fine,30.00002,1,A\n"),
            "addcommodity <name> \"Deckle100\"\n"
            "addcommodity <name> \"DemandWidth30\"\n"
            "addcommodity <name> \"DemandWidth30\"\n"
            "addcommodity <name> \"Waste\"\n"
            "addcommodity <name> \"Machine_Time\"\n");
}

TEST_F(ModelHeader, WasteAndMachineTimeStandEvenWithoutWidths) {
  EXPECT_EQ(commodities("", ""),
            "addcommodity <name> \"Waste\"\naddcommodity <name> \"Machine_Time\"\n");
}

TEST_F(ModelHeader, PeriodsStandInListOrder) {
  EXPECT_EQ(periods("2,Fine,30,1,Acme\nWeek 1,Fine,30,1,Acme\n2,Fine,40,1,Acme\n"),
            "addperiod <name> \"2\"\naddperiod <name> \"Week 1\"\n");
  EXPECT_EQ(periods(""), "");
}

TEST_F(ModelHeader, TrailerKeepsItsFullStops) {
  Mill mill("", "");
  EXPECT_EQ(write(mill, [](const ModelData &, ImportFile &file) { writeTrailer(file); }),
            "# End of Corvane. import file.\n");
}

// The kinds of lines, the types of nodes apart, by where each stands first.
std::vector<std::string> kindsOfLines(const std::string &model) {
  std::vector<std::string> kinds;
  std::istringstream lines(model);
  for (std::string line; std::getline(lines, line);) {
    const bool isNode = line.starts_with("addnode ");
    std::string kind =
        isNode ? line.substr(0, line.find(" <name>")) : line.substr(0, line.find(' '));
    if (std::find(kinds.begin(), kinds.end(), kind) == kinds.end()) {
      kinds.push_back(std::move(kind));
    }
  }
  return kinds;
}

class WholeModel : public support::ModelTest {
 protected:
  std::vector<std::string> kinds() {
    Mill mill("N,W,Fine,100,1,1,1\n", "1,Fine,30,3,Acme\n", "Acme,N,Road,5,0\n");
    std::ostringstream out;
    std::ostringstream log;
    writeModel(mill.data(), sets_, settings_, out, log);
    return kindsOfLines(out.str());
  }
};

TEST_F(WholeModel, HasEachFamilyInItsPlace) {
  EXPECT_THAT(kinds(),
              testing::ElementsAre(
                  "addroot", "addcommodity", "addperiod", "addnode <type> \"Machine\"", "addattach",
                  "addnode <type> \"Process\"", "addarc", "addnode <type> \"StorageDemand\"",
                  "addnodetoset", "blockset", "addnode <type> \"Block\"",
                  "addnode <type> \"Demand\"", "addnode <type> \"Delay\"", "#"));
}

TEST_F(WholeModel, OfPatternsOnlyHasNeitherMachinesNorStoragesNorOrders) {
  settings_.patternsOnly = true;
  EXPECT_THAT(kinds(), testing::ElementsAre("addroot", "addcommodity", "addperiod", "#"));
}

}  // namespace
}  // namespace corvane
