#include "convert/column_map.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane::convert {
namespace {

const TableKind &orders() {
  return tableKinds()[1];
}

int columnOf(const ResolvedColumns &resolved, std::size_t field) {
  return resolved.sources[field].column;
}

TEST(Units, ConvertToInchesPoundsAndTheirPrices) {
  EXPECT_DOUBLE_EQ(unitNamed(Dimension::kLength, "MM")->factor * 1136.65, 44.75);
  EXPECT_DOUBLE_EQ(unitNamed(Dimension::kLength, "cm")->factor * 254, 100);
  // A roll of 100 kg a metre of width weighs 5.6 pounds an inch.
  EXPECT_NEAR(unitNamed(Dimension::kWeightPerLength, "kg/m")->factor * 100, 5.59974, 1e-5);
  // A metric ton has 2204.6 pounds: the price of 2000 is less.
  EXPECT_NEAR(unitNamed(Dimension::kRate, "t")->factor * 100, 90.7185, 1e-4);
  EXPECT_NEAR(unitNamed(Dimension::kCostPerLength, "/cm")->factor * 1, 2.54, 1e-12);
  EXPECT_FALSE(unitNamed(Dimension::kLength, "kg"));
  EXPECT_FALSE(unitNamed(Dimension::kText, "mm"));
}

TEST(ResolveColumns, FindsKnownNamesInAnyOrderAndSpelling) {
  const auto resolved =
      resolveColumns(orders(), {}, {"Customer Name", "QTY", "roll_width", "Grade", "Week"});
  EXPECT_TRUE(resolved.faults.isEmpty()) << resolved.faults.join("; ").toStdString();
  EXPECT_EQ(columnOf(resolved, 0), 4);
  EXPECT_EQ(columnOf(resolved, 2), 2);
  EXPECT_EQ(columnOf(resolved, 4), 0);
}

TEST(ResolveColumns, ReadsAUnitBehindAName) {
  const auto resolved =
      resolveColumns(orders(), {}, {"Week", "Grade", "Width [mm]", "Rolls", "Customer"});
  ASSERT_TRUE(resolved.faults.isEmpty());
  EXPECT_FALSE(resolved.sources[2].unit.isOwn);
}

TEST(ResolveColumns, SaysWhichFieldIsMissingOrDoubtful) {
  const auto resolved = resolveColumns(orders(), {}, {"Week", "Day", "Grade", "Width", "Rolls"});
  EXPECT_THAT(resolved.faults.join("\n").toStdString(),
              testing::AllOf(testing::HasSubstr("period: it could be \"Week\" or \"Day\""),
                             testing::HasSubstr("customer: no column")));
}

TEST(ReadMap, SetsColumnsUnitsConstantsAndTheTable) {
  const MapReading reading = readMap(QStringLiteral(
      "# a comment\n[orders]\nwidth = Breite\nwidth.unit = cm\nwidth.round = 0.125\n"
      "period.constant = 7\nquantity = #2\ndelimiter = tab\ndecimal=comma\nencoding = latin-1\n"
      "sheet = 3\n"));
  ASSERT_TRUE(reading.faults.isEmpty()) << reading.faults.join("; ").toStdString();
  const TableRules &rules = reading.map.at("orders");
  EXPECT_EQ(rules.delimiter, QLatin1Char('\t'));
  EXPECT_EQ(rules.decimal, DecimalSign::kComma);
  EXPECT_EQ(rules.encoding, Encoding::kLatin1);
  EXPECT_EQ(rules.sheet, 3);
  const auto resolved =
      resolveColumns(orders(), rules, {"Sorte", "Rollen", "breite", "Grade", "Customer"});
  ASSERT_TRUE(resolved.faults.isEmpty()) << resolved.faults.join("; ").toStdString();
  EXPECT_EQ(columnOf(resolved, 0), -1);
  EXPECT_EQ(resolved.sources[0].constant, QStringLiteral("7"));
  EXPECT_EQ(columnOf(resolved, 2), 2);
  EXPECT_EQ(resolved.sources[2].roundTo, 0.125);
  EXPECT_EQ(columnOf(resolved, 3), 1);
}

TEST(ReadMap, NamesTheLineOfEveryFault) {
  const MapReading reading = readMap(QStringLiteral(
      "width = x\n[order]\n[orders]\nbreadth = x\nwidth.unit = kg\nwidth.round = 0\nwidth.is = x\n"
      "delimiter = ,\ndecimal = .\nheader = maybe\nsheet = 0\nencoding = EBCDIC\nnothing\n"));
  QStringList lines;
  for (const QString &fault : reading.faults) {
    lines << fault.section(':', 0, 0);
  }
  EXPECT_EQ(lines.join(","), QStringLiteral("line 1,line 2,line 4,line 5,line 6,line 7,line 8,line "
                                            "9,line 10,line 11,line 12,line 13"));
}

TEST(MapTemplate, IsReadWithoutAFaultWhenItsLinesAreTaken) {
  QString taken;
  for (const QString &line : mapTemplate().split('\n')) {
    const bool isSetting = line.startsWith('#') && !line.startsWith("# ");
    taken += (isSetting ? line.mid(1) : line) + "\n";
  }
  const MapReading reading = readMap(taken.replace("\n\n[", "\n["));
  EXPECT_TRUE(reading.faults.isEmpty()) << reading.faults.join("\n").toStdString();
  EXPECT_EQ(reading.map.at("machines").fields.size(), 7U);
}

}  // namespace
}  // namespace corvane::convert
