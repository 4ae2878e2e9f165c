#include "convert/units.h"

#include <gtest/gtest.h>

namespace corvane::convert {
namespace {

struct Case {
  Dimension dimension;
  const char *name;
  double inProgram;  // what 1 of it is in the program's own unit

  friend void PrintTo(const Case &unit, std::ostream *out) { *out << unit.name; }
};

class Units : public testing::TestWithParam<Case> {};

TEST_P(Units, AreWhatTheyAreInTheProgramsOwn) {
  const auto unit = unitNamed(GetParam().dimension, QString::fromUtf8(GetParam().name));
  ASSERT_TRUE(unit);
  EXPECT_NEAR(unit->factor, GetParam().inProgram, 1e-6 * GetParam().inProgram);
  EXPECT_EQ(unit->isOwn, GetParam().inProgram == 1);
}

constexpr Dimension kLength = Dimension::kLength;
constexpr Dimension kWeight = Dimension::kWeightPerLength;
constexpr Dimension kCost = Dimension::kCostPerLength;
constexpr Dimension kRate = Dimension::kRate;

// From the tables of weights and measures, not from the factors of the program.
INSTANTIATE_TEST_SUITE_P(
    All, Units,
    testing::Values(Case{kLength, "in", 1}, Case{kLength, "Inches", 1}, Case{kLength, "ft", 12},
                    Case{kLength, "mm", 0.03937008}, Case{kLength, "cm", 0.3937008},
                    Case{kLength, "m", 39.37008}, Case{kWeight, "lb/in", 1},
                    Case{kWeight, "kg", 2.2046226}, Case{kWeight, "kg/in", 2.2046226},
                    Case{kWeight, "kg/mm", 55.997415}, Case{kWeight, "kg/cm", 5.5997415},
                    Case{kWeight, "kg/m", 0.055997415}, Case{kCost, "/in", 1},
                    Case{kCost, "mm", 25.4}, Case{kCost, "/cm", 2.54}, Case{kCost, "m", 0.0254},
                    Case{kRate, "2000 lb", 1}, Case{kRate, "/lb", 2000}, Case{kRate, "cwt", 20},
                    Case{kRate, "kg", 907.18474}, Case{kRate, "100kg", 9.0718474},
                    Case{kRate, "t", 0.90718474}));

TEST(UnitNamed, KnowsNoOthers) {
  EXPECT_FALSE(unitNamed(Dimension::kLength, QStringLiteral("kg")));
  EXPECT_FALSE(unitNamed(Dimension::kRate, QStringLiteral("in")));
  EXPECT_FALSE(unitNamed(Dimension::kLength, QString()));
}

}  // namespace
}  // namespace corvane::convert
