#include "convert/conversion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane::convert {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

Conversion convertOrders(const QByteArray &text, const char *map = "") {
  const MapReading reading = readMap(QStringLiteral("[orders]\n") + QString::fromUtf8(map));
  EXPECT_TRUE(reading.faults.isEmpty()) << reading.faults.join("; ").toStdString();
  const auto rules = reading.map.find("orders");
  return convertTable(text, tableKinds()[1],
                      rules == reading.map.end() ? TableRules() : rules->second);
}

// "line:column: text" of the problems.
std::vector<std::string> problemsOf(const Conversion &conversion) {
  std::vector<std::string> problems;
  for (const Problem &problem : conversion.problems) {
    problems.push_back(std::to_string(problem.line) + ":" + std::to_string(problem.column) + ": " +
                       problem.text.toStdString());
  }
  return problems;
}

const QByteArray kHeader = "Week,Grade,Width,Rolls,Customer\n";

TEST(ConvertTable, WritesTheFieldsInTheOrderOfTheDataFile) {
  const Conversion conversion =
      convertOrders("Customer;Rolls;Grade;Week;Width\nBadger Box;60;LB42;1;44,75\n");
  EXPECT_THAT(problemsOf(conversion), ElementsAre());
  EXPECT_EQ(conversion.data, "1,LB42,44.75,60,Badger Box\n");
  EXPECT_THAT(conversion.notes.join(", ").toStdString(), "delimiter semicolon, decimal comma");
}

TEST(ConvertTable, SortsOrdersByPeriodAndKeepsTheRestAsItWas) {
  const Conversion conversion =
      convertOrders(kHeader + "10,G,30,1,A\n9,G,20,1,B\n10,G,10,1,C\n9,G,5,1,D\n");
  EXPECT_EQ(conversion.data, "9,G,20,1,B\n9,G,5,1,D\n10,G,30,1,A\n10,G,10,1,C\n");
}

TEST(ConvertTable, ConvertsUnitsToAThousandthOfAnInch) {
  const Conversion conversion =
      convertOrders("Week,Grade,Width (mm),Rolls,Customer\n1,G,1136.65,60,A\n1,G,1000,60,A\n");
  EXPECT_EQ(conversion.data, "1,G,44.75,60,A\n1,G,39.37,60,A\n");
}

TEST(ConvertTable, RoundsWhereTheMapSaysSo) {
  const Conversion conversion = convertOrders("Week,Grade,Width,Rolls,Customer\n1,G,1000,60,A\n",
                                              "width.unit = mm\nwidth.round = 0.125\n");
  EXPECT_EQ(conversion.data, "1,G,39.375,60,A\n");
}

TEST(ConvertTable, TakesConstantsAndColumnNumbers) {
  const Conversion conversion = convertOrders(
      "LB42|44,75|60|Badger\n",
      "header = no\ndelimiter = bar\nperiod.constant = 3\ngrade = #1\nwidth = #2\nquantity = #3\n"
      "customer = #4\n");
  EXPECT_THAT(problemsOf(conversion), ElementsAre());
  EXPECT_EQ(conversion.data, "3,LB42,44.75,60,Badger\n");
}

TEST(ConvertTable, FindsAHeaderBelowATitle) {
  const Conversion conversion =
      convertOrders("Orders of week 12\n\nWeek,Grade,Width,Rolls,Customer\n1,G,30,60,A\n");
  EXPECT_EQ(conversion.data, "1,G,30,60,A\n");
  EXPECT_TRUE(conversion.notes.contains("header in line 3"));
}

TEST(ConvertTable, NamesRowAndColumnOfWhatItCannotTake) {
  const Conversion conversion = convertOrders(
      kHeader +
      "1,G,30 in,60,A\n1,G,30,60.5,A\n1,,30,60,A\n1,G,30,60,\"Badger, Box\"\n1,G,0,60,A\n"
      "1,G,30,0,A\n1,G,30,3000000000,A\n1,G,30\n1,G,30,60,\"the \"\"B\"\"\"\n1,G,30,60,\"a\nb\"\n");
  EXPECT_THAT(problemsOf(conversion),
              ElementsAre(HasSubstr("2:3: width \"30 in\" is not a number"),
                          HasSubstr("3:4: quantity \"60.5\" is not a whole number"),
                          HasSubstr("4:2: grade is empty"),
                          HasSubstr("5:5: customer \"Badger, Box\" holds a comma"),
                          HasSubstr("6:3: width \"0\" is not above 0"),
                          HasSubstr("7:4: quantity \"0\" is not between 1 and 2147483647"),
                          HasSubstr("8:4: quantity \"3000000000\" is not between"),
                          HasSubstr("9:4: quantity is empty"), HasSubstr("9:5: customer is empty"),
                          HasSubstr("10:5: customer \"the \"B\"\" holds a double quote"),
                          HasSubstr("11:5: customer \"a\nb\" holds a line end")));
  EXPECT_EQ(conversion.data, "");
}

TEST(ConvertTable, RefusesARowThatTheProgramWouldSkip) {
  const QByteArray name(1100, 'x');
  EXPECT_THAT(problemsOf(convertOrders(kHeader + "1,G,30,60," + name + "\n")),
              ElementsAre(HasSubstr("2:0: the row has more than 1023 bytes")));
  const QByteArray fits(1023 - 11, 'x');
  EXPECT_THAT(problemsOf(convertOrders(kHeader + "1,G,30,60,x" + fits + "\n")), ElementsAre());
}

TEST(ConvertTable, DoesNotGuessADecimalSign) {
  EXPECT_THAT(problemsOf(convertOrders("Week;Grade;Width;Rolls;Customer\n1;G;30;1,200;A\n")),
              ElementsAre(HasSubstr("2:4: \"1,200\" can have a decimal point or comma")));
  EXPECT_EQ(
      convertOrders("Week;Grade;Width;Rolls;Customer\n1;G;30;1,200;A\n", "decimal = point\n").data,
      "1,G,30,1200,A\n");
  EXPECT_THAT(
      problemsOf(convertOrders("Week;Grade;Width;Rolls;Customer\n1;G;30,5;60;A\n1;G;30.5;60;A\n")),
      ElementsAre(HasSubstr("3:3: \"30.5\" needs a decimal point"),
                  HasSubstr("2:3: \"30,5\" needs a decimal comma")));
}

TEST(ConvertTable, SaysWhatColumnsThereAreWhenOneIsMissing) {
  EXPECT_THAT(problemsOf(convertOrders("Week;Sorte;Width;Rolls;Customer\n1;G;30;60;A\n")),
              ElementsAre(HasSubstr("1:0: no column for grade"),
                          HasSubstr("1:0: the columns are: Week | Sorte | Width")));
}

TEST(ConvertTable, RefusesWhatHoldsNothing) {
  EXPECT_THAT(problemsOf(convertOrders("")), ElementsAre(HasSubstr("the table is empty")));
  EXPECT_THAT(problemsOf(convertOrders(kHeader)),
              ElementsAre(HasSubstr("no row below the header")));
}

TEST(ConvertTable, MakesPlainBlanksOfOthers) {
  EXPECT_EQ(convertOrders(kHeader + "1,\u00a0G\u00a0,30,60,Badger\u00a0Box\n").data,
            "1,G,30,60,Badger Box\n");
}

TEST(ConvertTable, RefusesInvisibleCharacters) {
  EXPECT_THAT(
      problemsOf(convertOrders(kHeader + "1,G,30,60,Bad\u200bger\n")),
      ElementsAre(HasSubstr("2:5: customer \"Bad\u200bger\" holds an invisible character")));
}

}  // namespace
}  // namespace corvane::convert
