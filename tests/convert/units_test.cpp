#include "convert/units.h"

#include <gtest/gtest.h>

namespace corvane::convert {
namespace {

struct UnitCase {
  Dimension dimension;
  const char *name;
  double inProgram;  // what 1 of it is in the program's own unit

  friend void PrintTo(const UnitCase &unit, std::ostream *out) { *out << unit.name; }
};

class Units : public testing::TestWithParam<UnitCase> {};

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
    testing::Values(UnitCase{kLength, "in", 1}, UnitCase{kLength, "Inches", 1},
                    UnitCase{kLength, "ft", 12}, UnitCase{kLength, "mm", 0.03937008},
                    UnitCase{kLength, "cm", 0.3937008}, UnitCase{kLength, "m", 39.37008},
                    UnitCase{kWeight, "lb/in", 1}, UnitCase{kWeight, "kg", 2.2046226},
                    UnitCase{kWeight, "kg/in", 2.2046226}, UnitCase{kWeight, "kg/mm", 55.997415},
                    UnitCase{kWeight, "kg/cm", 5.5997415}, UnitCase{kWeight, "kg/m", 0.055997415},
                    UnitCase{kCost, "/in", 1}, UnitCase{kCost, "mm", 25.4},
                    UnitCase{kCost, "/cm", 2.54}, UnitCase{kCost, "m", 0.0254},
                    UnitCase{kRate, "2000 lb", 1}, UnitCase{kRate, "/lb", 2000},
                    UnitCase{kRate, "cwt", 20}, UnitCase{kRate, "kg", 907.18474},
                    UnitCase{kRate, "100kg", 9.0718474}, UnitCase{kRate, "t", 0.90718474}));

TEST(UnitNamed, KnowsNoOthers) {
  EXPECT_FALSE(unitNamed(Dimension::kLength, QStringLiteral("kg")));
  EXPECT_FALSE(unitNamed(Dimension::kRate, QStringLiteral("in")));
  EXPECT_FALSE(unitNamed(Dimension::kLength, QString()));
}

}  // namespace
}  // namespace corvane::convert
