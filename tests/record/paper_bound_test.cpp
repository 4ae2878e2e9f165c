#include "record/paper_bound.h"

#include <gtest/gtest.h>

#include "record/example_record.h"

namespace corvane::record {
namespace {

// One grade on these deckles, of which these rolls are delivered.
Record Delivered(const std::vector<std::pair<double, double>> &rolls,
                 const std::vector<double> &deckles) {
  Record record;
  record.periods = {QStringLiteral("1")};
  record.plan.emplace();
  for (const double deckle : deckles) {
    record.cutters.push_back({QString(), 0, QStringLiteral("A"), deckle, 1, 0});
  }
  for (const auto &[width, count] : rolls) {
    const int order = static_cast<int>(record.orders.size());
    record.orders.push_back({QString(), QStringLiteral("A"), QString(), width, {count}});
    record.plan->deliveries.push_back({order, 0, count, 0, {}});
  }
  return record;
}

double BoundOf(const Record &record, int mostRolls = 10) {
  const std::vector<PaperBound> bounds = paperBounds(record, mostRolls);
  return bounds.empty() ? 0 : bounds.front().inches;
}

TEST(PaperBound, IsTheSumWhereAllFits) {
  EXPECT_NEAR(BoundOf(Delivered({{50, 10}}, {100})), 500, 1e-3);
}

TEST(PaperBound, CountsTheTrimThatNoPatternAvoids) {
  // Three of 30 to a reel of 100.
  EXPECT_NEAR(BoundOf(Delivered({{30, 9}}, {100})), 300, 1e-3);
  // 60 + 40 leave nothing, the other 40s go two to a reel: 5 + 2.5 reels.
  EXPECT_NEAR(BoundOf(Delivered({{60, 5}, {40, 10}}, {100})), 750, 1e-3);
}

TEST(PaperBound, TakesTheBestDeckle) {
  EXPECT_NEAR(BoundOf(Delivered({{30, 9}}, {100, 91})), 273, 1e-3);
}

TEST(PaperBound, CountsRollsAcross) {
  EXPECT_NEAR(BoundOf(Delivered({{10, 10}}, {100}), 5), 200, 1e-3);
  EXPECT_NEAR(BoundOf(Delivered({{10, 10}}, {100}), 10), 100, 1e-3);
}

TEST(PaperBound, CountsAsManyRollsAsAPatternOfTheRunHas) {
  Record record = Delivered({{10, 10}}, {100});
  record.patterns.push_back({QString(), 0, {{10, 10}}, 0});
  EXPECT_NEAR(BoundOf(record, 5), 100, 1e-3);
}

TEST(PaperBound, TakesARollAsWideAsTheDeckle) {
  EXPECT_NEAR(BoundOf(Delivered({{100, 3}}, {100})), 300, 1e-3);
}

TEST(PaperBound, IsNoneWhereARollFitsNoDeckle) {
  EXPECT_EQ(BoundOf(Delivered({{120, 1}}, {100})), 0);
  EXPECT_EQ(BoundOf(Delivered({}, {100})), 0);
}

TEST(PaperBound, NoPlanUsesLessPaper) {
  const Record record = exampleRecord();
  const std::vector<PaperBound> bounds = paperBounds(record, 10);
  ASSERT_EQ(bounds.size(), 2U);
  EXPECT_LE(bounds[0].inches, 1800);
  EXPECT_LE(bounds[1].inches, 495);
  // 10 rolls of 44 go two to a reel of 90.
  EXPECT_NEAR(bounds[1].inches, 450, 1e-3);
}

}  // namespace
}  // namespace corvane::record
