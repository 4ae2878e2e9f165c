#include "planning/text_table.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane {
namespace {

using testing::ElementsAre;

TEST(TextTable, TextsAreNumberedInOrderOfFirstAppearance) {
  TextTable table;
  EXPECT_EQ(table.idOf("b"), 0U);
  EXPECT_EQ(table.idOf("a"), 1U);
  EXPECT_EQ(table.idOf("b"), 0U);
  EXPECT_EQ(table.idOf(""), 2U);
  EXPECT_EQ(table.text(0), QString("b"));
  EXPECT_EQ(table.text(1), QString("a"));
  EXPECT_EQ(table.text(2), QString());
}

TEST(TextTable, DifferentBytesThatSpellOneTextHaveOneNumber) {
  TextTable table;
  const TextTable::Id utf8 = table.idOf("\xC3\xA9");
  EXPECT_EQ(table.idOf("\xE9"), utf8);
  EXPECT_EQ(table.idOf("\xE9"), utf8);
}

TEST(TextTable, RanksAreThePlacesInTheOrderOfTheTexts) {
  TextTable table;
  EXPECT_THAT(table.ranks(), ElementsAre());
  table.idOf("b");
  table.idOf("c");
  table.idOf("a");
  table.idOf("B");
  EXPECT_THAT(table.ranks(), ElementsAre(2, 3, 1, 0));
}

}  // namespace
}  // namespace corvane
