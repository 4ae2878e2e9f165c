#include "planning/order_texts.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace corvane {
namespace {

class OrderTextsTest : public testing::Test {
 protected:
  // Of a line whose first field is the period and whose last one is the grade.
  OrderTexts::Place &place(const std::string &line, std::size_t periodLength,
                           std::size_t gradeLength) {
    const std::string_view view = line;
    return texts_.place(view.substr(0, periodLength), view.substr(view.size() - gradeLength));
  }
  QString text(TextTable::Id id) const { return texts_.table().text(id); }

  const QHash<QString, double> widestCutter_ = {{"G1", 100.5}};
  OrderTexts texts_{widestCutter_};
};

TEST_F(OrderTextsTest, APlaceHasItsTextsAndTheWidestCutterOfItsGrade) {
  const OrderTexts::Place known = place("12,G1", 2, 2);
  EXPECT_EQ(text(known.period), QString("12"));
  EXPECT_EQ(text(known.grade), QString("G1"));
  EXPECT_EQ(known.widestCutter, 100.5);
  EXPECT_EQ(known.number, OrderTexts::kNoNumber);
  EXPECT_TRUE(std::isnan(place("12,G9", 2, 2).widestCutter));
}

TEST_F(OrderTextsTest, APlaceKeepsTheNumberThatItIsGiven) {
  place("12,G1", 2, 2).number = 7;
  EXPECT_EQ(place("13,G1", 2, 2).number, OrderTexts::kNoNumber);
  EXPECT_EQ(place("12,G9", 2, 2).number, OrderTexts::kNoNumber);
  EXPECT_EQ(place("12,G1", 2, 2).number, 7U);
}

TEST_F(OrderTextsTest, ThePlaceOfAnEmptyLineHasNoTexts) {
  const OrderTexts::Place empty = place("", 0, 0);
  EXPECT_TRUE(text(empty.period).isEmpty());
  EXPECT_EQ(empty.period, empty.grade);
}

TEST_F(OrderTextsTest, AWidthIsTheLeadingNumberAndKeepsTheNumberThatItIsGiven) {
  EXPECT_EQ(texts_.width("30in").inches, 30);
  EXPECT_EQ(texts_.width("").inches, 0);
  texts_.width("40").number = 3;
  EXPECT_EQ(texts_.width("30in").number, OrderTexts::kNoNumber);
  EXPECT_EQ(texts_.width("40").number, 3U);
  EXPECT_EQ(texts_.width("40").inches, 40);
}

TEST_F(OrderTextsTest, ACustomerIsAText) {
  const TextTable::Id acme = texts_.customer("Acme");
  EXPECT_EQ(text(acme), QString("Acme"));
  EXPECT_NE(texts_.customer("Best"), acme);
  EXPECT_EQ(texts_.customer("Acme"), acme);
}

}  // namespace
}  // namespace corvane
