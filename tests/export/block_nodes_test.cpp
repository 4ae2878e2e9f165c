#include "export/block_nodes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "support/model_fixture.h"

namespace corvane {
namespace {

using support::Mill;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class BlockNodes : public support::ModelTest {
 protected:
  BlockNodes() { settings_.delay = false; }

  std::string blocks(Mill &mill) {
    const ModelData data(mill.data(), sets_, settings_);
    return write(data, [this](const ModelData &model, ImportFile &file) {
      totalDemand_ = writeBlocks(model, file, log_);
    });
  }

  static std::string block(const std::string &name, int x, int y) {
    return "blockset " + name + "\naddnode <type> \"Block\" <name> " + name +
           " <capMan> False <openAtStart> True <shutdownBenefit> 0 <startupCost> 0 <x> " +
           std::to_string(x) + " <y> " + std::to_string(y) +
           " <fixedCost> 0 <operational> Ignore <capManFixed> False <singlesource> False "
           "<sourcingChange> True <node> \"None\"\n";
  }

  double totalDemand_ = 0;
  std::ostringstream log_;
};

constexpr char kCutter[] = "North,W1,Fine,100,1,2.5,1\n";

TEST_F(BlockNodes, OfAKeyInTwoPeriodsAreOneNodeWhoseSecondLineHasNoCoordinates) {
  Mill mill(kCutter, "1,Fine,30.5,7,Acme\n2,Fine,30.5,9,Acme\n", "Acme,North,Rail,40,1\n");
  const std::string freight =
      "addarc <commodity> \"DemandWidth30.5\" <from> \"Fine_W1_30.500\" <to> "
      "\"Fine_Acme_30.500\" <flow> 0 <fixed> False <opportunity> 0 <min> 0 <max> +infinity "
      "<period> ";
  EXPECT_EQ(blocks(mill),
            "addnode <type> \"StorageDemand\" <name> \"Fine_Acme_30.500\" <x> 910 <y> 0 "
            "<undercost> 50000 <storagemax> 0 <demandamount> 7 <period> \"1\"\n"
            "addattach <node> \"Fine_Acme_30.500\" <commodity> \"DemandWidth30.5\" <in> True\n"
            "addnodetoset \"Fine_Acme\" \"Fine_Acme_30.500\"\n" +
                freight + "\"1\" <cost> 1.525\n" + freight + "\"2\" <cost> 1.525\n" +
                "addnode <type> \"StorageDemand\" <name> \"Fine_Acme_30.500\" <undercost> 50000 "
                "<storagemax> 0 <demandamount> 9 <period> \"2\"\n"
                "addnode <type> \"StorageDemand\" <name> \"Fine_Acme_30.500\" <undercost> 50000 "
                "<storagemax> 0 <period> \"1\"\n"
                "addnode <type> \"StorageDemand\" <name> \"Fine_Acme_30.500\" <undercost> 50000 "
                "<storagemax> 0 <period> \"2\"\n" +
                block("\"Fine_Acme\"", 910, 0));
  EXPECT_EQ(log_.str(), "");
}

TEST_F(BlockNodes, OfTwoCustomersAreTwoSetsAndTwoBlocksAscending) {
  Mill mill(kCutter, "1,Fine,30,7,Brown\n1,Fine,30,9,Acme\n");
  EXPECT_THAT(blocks(mill),
              testing::EndsWith(block("\"Fine_Acme\"", 910, 0) + block("\"Fine_Brown\"", 910, 20)));
}

TEST_F(BlockNodes, OfOneCustomerWithTwoWidthsShareASet) {
  Mill mill(kCutter, "1,Fine,30,7,Acme\n1,Fine,40,9,Acme\n");
  const std::string text = blocks(mill);
  EXPECT_THAT(text, HasSubstr("addnodetoset \"Fine_Acme\" \"Fine_Acme_30.000\"\n"));
  EXPECT_THAT(text, HasSubstr("addnodetoset \"Fine_Acme\" \"Fine_Acme_40.000\"\n"));
  EXPECT_EQ(text.find("blockset"), text.rfind("blockset"));
}

TEST_F(BlockNodes, StandFurtherRightWithBatchAndWithDelay) {
  Mill mill(kCutter, "1,Fine,30,7,Acme\n");
  settings_.batch = true;
  EXPECT_THAT(blocks(mill), HasSubstr("\"Fine_Acme_30.000\" <x> 1200 <y> 0 "));
  settings_.delay = true;
  const std::string both = blocks(mill);
  EXPECT_THAT(both, HasSubstr("\"Fine_Acme_30.000\" <x> 1490 <y> 0 "));
  EXPECT_THAT(both, HasSubstr(block("\"Fine_Acme\"", 1490, 0)));
  settings_.batch = false;
  EXPECT_THAT(blocks(mill), HasSubstr("\"Fine_Acme_30.000\" <x> 1200 <y> 0 "));
}

TEST_F(BlockNodes, CountTheDemandOfEveryOrderNewOrNot) {
  Mill mill(kCutter, "1,Fine,30.5,7,Acme\n2,Fine,30.5,9,Acme\n1,Fine,10,1,Brown\n");
  blocks(mill);
  EXPECT_EQ(totalDemand_, 16 * 30.5 + 10);
}

TEST_F(BlockNodes, CountDemandBeyond32Bits) {
  Mill mill(kCutter, "1,Fine,30,2147483647,Acme\n2,Fine,30,2147483647,Acme\n");
  blocks(mill);
  EXPECT_EQ(totalDemand_, 2 * 30 * 2147483647.0);
}

TEST_F(BlockNodes, ShipFromEveryCutterOfTheGradeInListOrderAndLogEachMissingRate) {
  Mill mill(
      "South,W2,Fine,100,1,1,1\nNorth,W1,Fine,100,1,1,1\nNorth,W1,Board,100,1,1,1\n"
      "West,W3,Fine,100,1,1,1\n",
      "1,Fine,30,7,Acme\n2,Fine,30,7,Acme\n", "Acme,South,Rail,40,1\n");
  EXPECT_THAT(blocks(mill), HasSubstr("<from> \"Fine_W2_30.000\" <to> \"Fine_Acme_30.000\""));
  EXPECT_EQ(log_.str(),
            "No freight rates for: Acme - North.\nNo freight rates for: Acme - West.\n");
}

// Two widths that print alike in a name are one node.
TEST_F(BlockNodes, OfWidthsThatAgreeInThreeDecimalsAreOneNode) {
  Mill mill(kCutter, "1,Fine,30.0001,7,Acme\n1,Fine,30.0002,9,Acme\n");
  const std::string text = blocks(mill);
  EXPECT_THAT(text, HasSubstr("<demandamount> 7 "));
  EXPECT_THAT(text, HasSubstr("\"Fine_Acme_30.000\" <undercost> 50000 <storagemax> 0 "
                              "<demandamount> 9 "));
}

TEST_F(BlockNodes, OfNoOrdersAreNone) {
  Mill mill(kCutter, "");
  EXPECT_EQ(blocks(mill), "");
  EXPECT_EQ(totalDemand_, 0);
}

// The row of an order block is that of the call, which is 0 during the orders' own pass.
TEST_F(BlockNodes, OfAnOrderStandInTheGivenBlockRow) {
  Mill mill(kCutter, "1,Fine,30,7,Acme\n");
  const ModelData data(mill.data(), sets_, settings_);
  StrComp order;
  NameSet nodes(order);
  NameSet groups(order);
  Order key;
  key.grade = "Fine";
  key.customerName = "Acme";
  key.width = 30;
  key.quantity = 2;
  key.period = "1";
  const auto writeOrder = [&](bool isNew) {
    return write(data, [&](const ModelData &, ImportFile &file) {
      EXPECT_EQ(writeOrderStorage(data, file, key, nodes, groups, 3), isNew);
    });
  };
  EXPECT_THAT(writeOrder(true), HasSubstr("<x> 910 <y> 60 "));
  EXPECT_THAT(writeOrder(false), Not(HasSubstr("<x>")));
}

// A blank and an exclamation mark order before the closing quote.
TEST(NameSet, OrdersNamesWithTheirQuotesAndRefusesAnEqualOne) {
  StrComp order;
  NameSet set(order);
  EXPECT_TRUE(set.insert("\"Fine_B\""));
  EXPECT_TRUE(set.insert("\"Fine_A B\""));
  EXPECT_TRUE(set.insert("\"Fine_A!\""));
  EXPECT_TRUE(set.insert("\"Fine_A\""));
  EXPECT_FALSE(set.insert("\"Fine_A\""));
  std::vector<QString> names;
  forEachElement(set.names(), [&](const QString &name) { names.push_back(name); });
  EXPECT_THAT(names, ElementsAre("\"Fine_A B\"", "\"Fine_A!\"", "\"Fine_A\"", "\"Fine_B\""));
}

}  // namespace
}  // namespace corvane
