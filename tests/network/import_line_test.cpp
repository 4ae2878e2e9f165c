#include "network/import_line.h"

#include <gtest/gtest.h>

#include <cmath>

namespace corvane::network {
namespace {

TEST(ImportLine, AnArcOfFreightIsTakenApart) {
  const auto line = parseImportLine(
      "addarc <commodity> \"DemandWidth41.125\" <from> \"G_C_41.125\" <to> \"Rail_G_A_41.125\" "
      "<flow> 0 <fixed> False <opportunity> 0 <min> 0 <max> +infinity <period> \"1\" <cost> "
      "23.2048");
  ASSERT_TRUE(line);
  EXPECT_EQ(line->family, Family::kFreightArc);
  EXPECT_EQ(line->commodity, "DemandWidth41.125");
  EXPECT_EQ(line->name, "G_C_41.125");
  EXPECT_EQ(line->other, "Rail_G_A_41.125");
  EXPECT_EQ(line->period, "1");
  EXPECT_EQ(line->value.text, "23.2048");
  EXPECT_EQ(line->value.value, 23.2048);
}

TEST(ImportLine, AnOrderHasItsAmountAndItsPlace) {
  const auto line = parseImportLine(
      "addnode <type> \"StorageDemand\" <name> \"G_A_30.000\" <x> 1200 <y> 0 <undercost> 50000 "
      "<storagemax> 0 <demandamount> 50 <period> \"week 1\"");
  ASSERT_TRUE(line);
  EXPECT_EQ(line->family, Family::kOrderFirst);
  EXPECT_EQ(line->x, "1200");
  EXPECT_EQ(line->value.value, 50);
  EXPECT_EQ(line->undercost.value, 50000);
  EXPECT_EQ(line->storageMax.value, 0);
  EXPECT_EQ(line->period, "week 1");
}

// Blanks, quotes and even what looks like an attribute belong to the name.
TEST(ImportLine, ANameEndsWhereTheNextAttributeFollows) {
  const auto line = parseImportLine(
      "addattach <node> \"G\" <x> \"A \"\"B\" <commodity> \"Waste\" <in> False <quantity> 1.5");
  ASSERT_TRUE(line);
  EXPECT_EQ(line->name, "G\" <x> \"A \"\"B");
  const auto period = parseImportLine(
      "addperiod <name> \"W\xc3\xb6"
      "che \"1\"\"");
  ASSERT_TRUE(period);
  EXPECT_EQ(period->name,
            "W\xc3\xb6"
            "che \"1\"");
  const auto set = parseImportLine("addnodetoset \"G A\" \"G A_30.000\"");
  ASSERT_TRUE(set);
  EXPECT_EQ(set->name, "G A");
  EXPECT_EQ(set->other, "G A_30.000");
}

TEST(ImportLine, AnInfiniteStockIsANumber) {
  const auto line = parseImportLine(
      "addnode <type> \"StorageDemand\" <name> \"S\" <storagemax> +infinity <period> \"1\"");
  ASSERT_TRUE(line);
  EXPECT_TRUE(std::isinf(line->storageMax.value));
}

TEST(ImportLine, AttributesHaveOneOrderAndOneSpelling) {
  const std::string good =
      "addarc <commodity> \"Waste\" <from> \"P\" <to> \"W\" <flow> 0 <fixed> False <opportunity> 0 "
      "<cost> 12.5 <min> 0 <max> +infinity <period> \"1\"";
  ASSERT_TRUE(parseImportLine(good));
  const auto with = [&](const std::string &old, const std::string &now) {
    std::string text = good;
    text.replace(text.find(old), old.size(), now);
    return parseImportLine(text).has_value();
  };
  EXPECT_FALSE(with("<flow> 0", "<flow> 1"));
  EXPECT_FALSE(with("<fixed> False", "<fixed> True"));
  EXPECT_FALSE(with("<min> 0", "<min> 2"));
  EXPECT_FALSE(with("+infinity", "100"));
  EXPECT_FALSE(with("<cost> 12.5", "<cost> 12.5x"));
  EXPECT_FALSE(with("<cost> 12.5", "<cost> "));
  EXPECT_FALSE(with(" <cost>", "  <cost>"));
  EXPECT_FALSE(with("<commodity> \"Waste\"", "<commodity> \"Water\""));
  EXPECT_FALSE(with("<period> \"1\"", "<period> 1"));
  EXPECT_FALSE(with("addarc", "addArc"));
  EXPECT_FALSE(parseImportLine(good + " "));
  EXPECT_FALSE(parseImportLine(good + '\r'));
  EXPECT_FALSE(parseImportLine(""));
}

TEST(ImportLine, AttributesWithoutAnEffectHaveOneValue) {
  EXPECT_TRUE(parseImportLine(
      "addnode <type> \"Batch\" <name> \"B\" <singlePeriodSetups> True <x> 420 <y> 0 <flow> 0 "
      "<fixed> False <minrunlength> 0 <batchsize> 1 <setup> 0 <period> \"1\""));
  EXPECT_FALSE(parseImportLine(
      "addnode <type> \"Batch\" <name> \"B\" <singlePeriodSetups> True <x> 420 <y> 0 <flow> 0 "
      "<fixed> False <minrunlength> 5 <batchsize> 1 <setup> 0 <period> \"1\""));
  EXPECT_FALSE(parseImportLine(
      "addnode <type> \"Demand\" <name> \"W\" <x> 1 <y> 2 <amount> 5 <fixed> False <period> "
      "\"1\""));
}

}  // namespace
}  // namespace corvane::network
