#include "planning/freight_rate_file.h"

#include "planning/planning_files.h"
#include "support/fatal_end.h"

namespace corvane {
namespace {

using support::dumpRates;

class FreightRateFile : public PlanningFilesTest {};

TEST_F(FreightRateFile, ARateALineInTheOrderOfTheKey) {
  readRates("Best,North,Rail,12.5,3\nAcme,South,Truck,20,0\nAcme,North,Truck,15,1\n");
  EXPECT_EQ(dumpRates(data),
            "Acme|North|Truck|15|1\nAcme|South|Truck|20|0\nBest|North|Rail|12.5|3\n");
  EXPECT_EQ(out + errors + log.str(), "");
}

TEST_F(FreightRateFile, ADuplicateKeepsTheFirstAndIsPrintedOnStandardOutputOnly) {
  readRates("Acme,North,Rail,12.5,3\nAcme,North,Rail,14,2\n");
  EXPECT_EQ(dumpRates(data), "Acme|North|Rail|12.5|3\n");
  EXPECT_EQ(out,
            "Duplicate Freight Rate: Customer: Acme Mill: North Mode: Rail Rate: 14 Delay: 2\n");
  EXPECT_EQ(errors + log.str(), "");
}

TEST_F(FreightRateFile, AnotherModeIsASecondRate) {
  readRates("Acme,North,Rail,12.5,3\nAcme,North,Truck,14,2\n");
  EXPECT_EQ(data.freightRates.count(), 2);
  EXPECT_EQ(out, "");
}

TEST_F(FreightRateFile, AnEmptyFieldMovesTheLaterOnesForwardAndLeavesTheDelayUnset) {
  readRates("Acme,,Rail,12.5,3\n");
  EXPECT_EQ(dumpRates(data), "Acme|Rail|12.5|3|0\n");
  EXPECT_EQ(out + errors + log.str(), "");
}

TEST_F(FreightRateFile, AnEmptyLineStoresAnEmptyRateAndASecondOneIsADuplicate) {
  readRates("Acme,North,Rail,12.5,3\n\n\n");
  EXPECT_EQ(dumpRates(data), "|||0|0\nAcme|North|Rail|12.5|3\n");
  EXPECT_EQ(out, "Duplicate Freight Rate: Customer:  Mill:  Mode:  Rate: 0 Delay: 0\n");
}

TEST_F(FreightRateFile, AShortLineIsKeptInSilence) {
  readRates("Acme\n,,\nBest,North\nBest,North,Rail\nBest,North,Truck,5\n");
  EXPECT_EQ(dumpRates(data),
            "|||0|0\nAcme|||0|0\nBest|North||0|0\nBest|North|Rail|0|0\nBest|North|Truck|5|0\n");
  EXPECT_EQ(out + errors + log.str(), "");
}

TEST_F(FreightRateFile, FieldsAfterTheFifthAreIgnored) {
  readRates("Acme,North,Rail,12.5,3,more\n");
  EXPECT_EQ(dumpRates(data), "Acme|North|Rail|12.5|3\n");
}

TEST_F(FreightRateFile, ALastLineWithoutALineBreakIsDiscardedEvenADuplicate) {
  readRates("Acme,North,Rail,12.5,3\nAcme,North,Rail,14,2");
  EXPECT_EQ(data.freightRates.count(), 1);
  EXPECT_EQ(out + log.str(), "");
}

TEST_F(FreightRateFile, AnEmptyFileLeavesTheCollectionEmpty) {
  readRates("");
  EXPECT_EQ(data.freightRates.count(), 0);
}

TEST_F(FreightRateFile, TextsAreComparedWithTheirCaseAndBlanks) {
  readRates("Acme,North,Rail,1,1\nacme,North,Rail,1,1\nAcme ,North,Rail,1,1\n");
  EXPECT_EQ(data.freightRates.count(), 3);
}

struct RateNumber {
  const char *text;
  const char *printed;
};

void PrintTo(const RateNumber &shown, std::ostream *out) {
  *out << shown.text;
}

class FreightRateNumber : public FreightRateFile, public testing::WithParamInterface<RateNumber> {};

TEST_P(FreightRateNumber, IsTheLeadingNumberOfItsField) {
  readRates(std::string("A,B,C,") + GetParam().text + "," + GetParam().text + "\n");
  EXPECT_EQ(dumpRates(data),
            std::string("A|B|C|") + GetParam().printed + "|" + GetParam().printed + "\n");
}

INSTANTIATE_TEST_SUITE_P(OfAnySpelling, FreightRateNumber,
                         testing::Values(RateNumber{"12.5usd", "12.5"}, RateNumber{"free", "0"},
                                         RateNumber{"-3", "-3"}, RateNumber{"nan", "nan"},
                                         RateNumber{"inf", "inf"}, RateNumber{"1e308", "1e+308"},
                                         RateNumber{"-0", "-0"}, RateNumber{"0x10", "16"},
                                         RateNumber{"1e-320", "9.99989e-321"},
                                         RateNumber{"2147483648", "2.14748e+09"}));

TEST_F(FreightRateFile, OneCarriageReturnBeforeTheLineBreakIsDropped) {
  readRates("Acme,North\r\n\r\n");
  EXPECT_EQ(dumpRates(data), "|||0|0\nAcme|North||0|0\n");
}

TEST_F(FreightRateFile, ANulByteEndsTheLine) {
  readRates(std::string("Acme,North\0,Rail,1,2\n", 21));
  EXPECT_EQ(dumpRates(data), "Acme|North||0|0\n");
}

std::string rateLineOfLength(std::size_t length) {
  const std::string tail = ",North,Rail,1,2";
  return std::string(length - tail.size(), 'c') + tail + "\n";
}

TEST_F(FreightRateFile, LinesOf1022And1023CharactersAreRead) {
  readRates(rateLineOfLength(1022) + rateLineOfLength(1023));
  EXPECT_EQ(data.freightRates.count(), 2);
  EXPECT_EQ(out, "");
}

TEST_F(FreightRateFile, ALineOf1024CharactersOrAMillionIsSkippedWithAWarning) {
  readRates("A,B,C,1,2\n" + rateLineOfLength(1024) + rateLineOfLength(1000000) + "B,B,C,1,2\n");
  const std::string warnings = "Warning: Line 2 of " + fileName() + " is too long.\n" +
                               "Warning: Line 3 of " + fileName() + " is too long.\n";
  EXPECT_EQ(out, warnings);
  EXPECT_EQ(log.str(), warnings);
  EXPECT_EQ(errors, "");
  EXPECT_EQ(dumpRates(data), "A|B|C|1|2\nB|B|C|1|2\n");
}

TEST_F(FreightRateFile, FieldsThatAreNotUtf8AreLatin1) {
  readRates("Caf\xE9,North,Rail,1,2\nCaf\xC3\xA9,North,Rail,3,4\n");
  EXPECT_EQ(dumpRates(data), "Caf\xC3\xA9|North|Rail|1|2\n");
  EXPECT_EQ(out,
            "Duplicate Freight Rate: Customer: Caf\xC3\xA9 Mill: North Mode: Rail Rate: 3 Delay: "
            "4\n");
}

TEST_F(FreightRateFile, AByteOrderMarkInFrontOfTheFirstCustomerIsDropped) {
  readRates(
      "\xEF\xBB\xBF"
      "Acme,North,Rail,1,2\n");
  EXPECT_EQ(dumpRates(data), "Acme|North|Rail|1|2\n");
}

TEST_F(FreightRateFile, AByteOrderMarkAnywhereElseIsText) {
  readRates("Acme,\xEF\xBB\xBFNorth,Rail,1,2\n");
  EXPECT_EQ(dumpRates(data), "Acme|\xEF\xBB\xBFNorth|Rail|1|2\n");
}

TEST(FreightRateFileDeathTest, AFileThatCannotBeOpenedOrReadEndsTheRun) {
  const support::TemporaryFolder folder;
  PlanningComparators comparators;
  PlanningData data(comparators);
  for (const std::string &name :
       {folder.file("absent"), folder.path().string(), std::string("/proc/self/mem")}) {
    support::expectRunEnds(
        [&](std::ostream &log) {
          std::ifstream file;
          readFreightRateFile(data, QString::fromStdString(name), file, log);
        },
        "Error: Could not open freight rate file.");
  }
}

TEST(ReadFreightRate, ReadsOneLineIntoTheGivenRate) {
  std::istringstream in("Acme,North,Rail,12.5,3\n");
  LineReader reader(in);
  reader.next();
  FreightRate rate;
  readFreightRate(reader, rate);
  EXPECT_EQ(rate.mode, QString("Rail"));
  EXPECT_EQ(rate.delay, 3);
}

}  // namespace
}  // namespace corvane
