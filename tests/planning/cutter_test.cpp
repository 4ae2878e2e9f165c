#include "planning/cutter.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(Cutter, ANewOneHasEmptyTextsAndZeroNumbers) {
  const Cutter cutter;
  EXPECT_TRUE(cutter.location.isEmpty());
  EXPECT_TRUE(cutter.name.isEmpty());
  EXPECT_TRUE(cutter.grade.isEmpty());
  EXPECT_EQ(cutter.width, 0);
  EXPECT_EQ(cutter.capacity, 0);
  EXPECT_EQ(cutter.lbsPerInch, 0);
  EXPECT_EQ(cutter.wasteCost, 0);
}

struct CutterPair {
  Cutter a;
  Cutter b;
  int byKey;
  int byName;
};

TEST(CutterComp, LocationThenNameThenGrade) {
  const CutterPair pairs[] = {
      {{"A", "2", "2"}, {"B", "1", "1"}, -1, -1},
      {{"A", "1", "2"}, {"A", "2", "1"}, -1, -1},
      {{"A", "1", "1"}, {"A", "1", "2"}, -1, 0},
      {{"A", "1", "1"}, {"A", "1", "1"}, 0, 0},
      {{"a", "1", "1"}, {"B", "1", "1"}, 1, 1},
      {{"A", "10", "1"}, {"A", "9", "1"}, -1, -1},
      // The numbers take no part.
      {{"A", "1", "1", 90, 1, 1, 1}, {"A", "1", "1", 80, 2, 2, 2}, 0, 0},
  };
  for (const CutterPair &pair : pairs) {
    EXPECT_EQ(CutterComp().compare(pair.a, pair.b), pair.byKey);
    EXPECT_EQ(CutterComp().compare(pair.b, pair.a), -pair.byKey);
    EXPECT_EQ(CutterCompByName().compare(pair.a, pair.b), pair.byName);
    EXPECT_EQ(CutterCompByName().compare(pair.b, pair.a), -pair.byName);
  }
}

TEST(CutterCompByName, ComparesTheLocationFirstInSpiteOfItsName) {
  EXPECT_EQ(CutterCompByName().compare({"B", "1", ""}, {"A", "2", ""}), 1);
}

}  // namespace
}  // namespace corvane
