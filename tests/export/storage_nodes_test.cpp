#include "export/storage_nodes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/model_fixture.h"

namespace corvane {
namespace {

using support::addPattern;
using support::Mill;
using testing::HasSubstr;
using testing::Not;

class StorageNodes : public support::ModelTest {
 protected:
  std::string storage(Mill &mill) {
    return write(mill,
                 [](const ModelData &data, ImportFile &file) { writeStorageDemand(data, file); });
  }

  // The storage of the first cutter of the grade Fine, in the given row.
  std::string storageOfFine(Mill &mill, quint32 row) {
    return write(mill, [row](const ModelData &data, ImportFile &file) {
      quint32 counted = row;
      writeCutterStorage(data, file, *data.planning.cuttersOf("Fine").front(), counted);
      EXPECT_EQ(counted, row + 1);
    });
  }

  static std::string block(const std::string &name, int x, int y) {
    return "addnode <type> \"Block\" <name> " + name +
           " <capMan> False <openAtStart> True <shutdownBenefit> 0 <startupCost> 0 <x> " +
           std::to_string(x) + " <y> " + std::to_string(y) +
           " <fixedCost> 0 <operational> Ignore <capManFixed> False <singlesource> False "
           "<sourcingChange> True <node> \"None\"";
  }
};

TEST_F(StorageNodes, OfTwoWidthsAndTwoPeriodsAreFourLinesWithCoordinatesOnTheFirstOfEach) {
  Mill mill("N,W1,Fine,100,1,1,1\n", "1,Fine,30,1,Acme\n2,Fine,45,1,Acme\n");
  EXPECT_EQ(storageOfFine(mill, 3),
            "addnode <type> \"StorageDemand\" <name> \"Fine_W1_45.000\" <x> 710 <y> 60 "
            "<storagemax> 0 <period> \"1\"\n"
            "addnode <type> \"StorageDemand\" <name> \"Fine_W1_45.000\" <storagemax> 0 <period> "
            "\"2\"\n"
            "addattach <node> \"Fine_W1_45.000\" <commodity> \"DemandWidth45\" <in> True\n"
            "addattach <node> \"Fine_W1_45.000\" <commodity> \"DemandWidth45\" <in> False\n"
            "addnodetoset \"Fine_W1\" \"Fine_W1_45.000\"\n"
            "addnode <type> \"StorageDemand\" <name> \"Fine_W1_30.000\" <x> 710 <y> 60 "
            "<storagemax> 0 <period> \"1\"\n"
            "addnode <type> \"StorageDemand\" <name> \"Fine_W1_30.000\" <storagemax> 0 <period> "
            "\"2\"\n"
            "addattach <node> \"Fine_W1_30.000\" <commodity> \"DemandWidth30\" <in> True\n"
            "addattach <node> \"Fine_W1_30.000\" <commodity> \"DemandWidth30\" <in> False\n"
            "addnodetoset \"Fine_W1\" \"Fine_W1_30.000\"\n"
            "blockset \"Fine_W1\"\n" +
                block("\"Fine_W1\"", 710, 240) + " <period> \"1\"\n");
}

TEST_F(StorageNodes, StandFurtherRightWithBatch) {
  settings_.batch = true;
  Mill mill("N,W1,Fine,100,1,1,1\n", "1,Fine,30,1,Acme\n");
  const std::string text = storageOfFine(mill, 0);
  EXPECT_THAT(text, HasSubstr("\"Fine_W1_30.000\" <x> 1000 <y> 0 "));
  EXPECT_THAT(text, HasSubstr(block("\"Fine_W1\"", 1000, 0)));
}

TEST_F(StorageNodes, TakeARowForEachPlannedCutterAndThenForEachWasteNode) {
  Mill mill("N,W1,Bond,100,1,1,1\nN,W1,Fine,100,1,1,1\nN,W2,Fine,80,1,1,1\n", "1,Fine,30,1,Acme\n");
  const std::string text = storage(mill);
  EXPECT_THAT(text, HasSubstr("\"Fine_W1_30.000\" <x> 710 <y> 0 "));
  EXPECT_THAT(text, HasSubstr("\"Fine_W2_30.000\" <x> 710 <y> 20 "));
  EXPECT_THAT(text, HasSubstr(block("\"Fine_W2\"", 710, 80)));
  EXPECT_THAT(text, HasSubstr("\"Fine_Waste\" <x> 710 <y> 160 "));
  EXPECT_THAT(text, Not(HasSubstr("Bond")));
}

TEST_F(StorageNodes, ComeBeforeTheWasteNodesAndTheseBeforeTheArcs) {
  addPattern(sets_.add("Fine", 100), {30});
  Mill mill("N,W1,Fine,100,1,1,1\nN,W2,Board,100,1,1,1\n", "1,Fine,30,1,A\n1,Board,40,1,A\n");
  const std::string text = storage(mill);
  const std::size_t lastBlock = text.rfind("\"Block\"");
  EXPECT_LT(lastBlock, text.find("\"Demand\""));
  EXPECT_LT(text.rfind("\"Demand\""), text.find("addarc"));
}

TEST_F(StorageNodes, OfABlockWithoutAPeriodEndWithItsNode) {
  Mill mill("", "");
  EXPECT_EQ(write(mill, [](const ModelData &,
                           ImportFile &file) { writeBlockNode(file, "\"B\"", 910, 40, ""); }),
            block("\"B\"", 910, 40) + "\n");
}

}  // namespace
}  // namespace corvane
