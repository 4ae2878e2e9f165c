#include "planning/machine_file.h"

#include <limits>

#include "planning/planning_files.h"
#include "support/fatal_end.h"

namespace corvane {
namespace {

using support::dumpCutters;
using support::dumpWidths;

class MachineFile : public PlanningFilesTest {};

TEST_F(MachineFile, ACutterALine) {
  readMachines("North,W1,G1,100,24,2.5,0.75\nNorth,W1,G2,90.5,20,3,1\n");
  EXPECT_EQ(dumpCutters(data), "North|W1|G1|100|24|2.5|0.75\nNorth|W1|G2|90.5|20|3|1\n");
  EXPECT_EQ(dumpWidths(data), "90.5 100");
  EXPECT_EQ(out + errors + log.str(), "");
}

TEST_F(MachineFile, CuttersAreKeptInTheOrderOfTheirKey) {
  readMachines("B,1,1,1,1,1,1\nA,2,1,2,1,1,1\nA,1,2,3,1,1,1\nA,1,1,4,1,1,1\n");
  EXPECT_EQ(dumpCutters(data), "A|1|1|4|1|1|1\nA|1|2|3|1|1|1\nA|2|1|2|1|1|1\nB|1|1|1|1|1|1\n");
}

TEST_F(MachineFile, AnEmptyLineYieldsACutterWithEmptyFieldsAndASecondOneIsDropped) {
  readMachines("A,1,G,80,1,1,1\n\nB,1,G,90,1,1,1\n\n");
  EXPECT_EQ(dumpCutters(data), "|||0|0|0|0\nA|1|G|80|1|1|1\nB|1|G|90|1|1|1\n");
  EXPECT_EQ(dumpWidths(data), "0 80 90");
  EXPECT_EQ(out + errors + log.str(), "");
}

TEST_F(MachineFile, ALineUpToTheWidthReportsThreeMissingFieldsAndKeepsTheCutter) {
  readMachines("A,1,G,80\n");
  EXPECT_EQ(dumpCutters(data), "A|1|G|80|0|0|0\n");
  EXPECT_EQ(errors,
            "Could not set Capacity of cutter.\n"
            "Could not set Lbs/Inch of cutter.\n"
            "Could not set WasteCost of cutter.\n");
  EXPECT_EQ(out + log.str(), "");
}

TEST_F(MachineFile, ALineOfCommasReportsEveryFieldAndKeepsTheCutter) {
  readMachines(",,,\n");
  EXPECT_EQ(dumpCutters(data), "|||0|0|0|0\n");
  EXPECT_EQ(errors,
            "Could not set Location of cutter.\nCould not set Name of cutter.\n"
            "Could not set Grade of cutter.\nCould not set Width of cutter.\n"
            "Could not set Capacity of cutter.\nCould not set Lbs/Inch of cutter.\n"
            "Could not set WasteCost of cutter.\n");
}

TEST_F(MachineFile, AnEmptyFieldMovesTheLaterOnesForward) {
  readMachines("A,,G,80,24,2.5,0.75\n");
  EXPECT_EQ(dumpCutters(data), "A|G|80|24|2.5|0.75|0\n");
  EXPECT_EQ(errors, "Could not set WasteCost of cutter.\n");
}

TEST_F(MachineFile, FieldsAfterTheSeventhAreIgnored) {
  readMachines("A,1,G,80,24,2.5,0.75,more,and more\n");
  EXPECT_EQ(dumpCutters(data), "A|1|G|80|24|2.5|0.75\n");
  EXPECT_EQ(errors, "");
}

TEST_F(MachineFile, EqualCuttersOfDifferentWidthsKeepTheFirstCutterAndBothWidths) {
  readMachines("A,1,G,90,1,1,1\nA,1,G,80,2,2,2\n");
  EXPECT_EQ(dumpCutters(data), "A|1|G|90|1|1|1\n");
  EXPECT_EQ(dumpWidths(data), "80 90");
  EXPECT_EQ(out + errors + log.str(), "");
}

TEST_F(MachineFile, Widths90And80And90And100GiveThreeWidthsAscending) {
  readMachines("A,1,G,90,1,1,1\nA,2,G,80,1,1,1\nA,3,G,90,1,1,1\nA,4,G,100,1,1,1\n");
  EXPECT_EQ(dumpWidths(data), "80 90 100");
}

TEST_F(MachineFile, WidthsThatDifferInTheLastBitAreTwo) {
  readMachines("A,1,G,30.000000000000004,1,1,1\nA,2,G,30,1,1,1\n");
  EXPECT_EQ(data.cutterWidths.size(), 2);
  EXPECT_EQ(data.cutterWidths.first(), 30.0);
}

TEST_F(MachineFile, ZeroAndNegativeZeroAreOneWidth) {
  readMachines("A,1,G,0,1,1,1\nA,2,G,-0,1,1,1\n");
  EXPECT_EQ(dumpWidths(data), "0");
}

TEST_F(MachineFile, AnEmptyFileLeavesBothCollectionsEmpty) {
  readMachines("");
  EXPECT_EQ(data.cutters.count(), 0);
  EXPECT_TRUE(data.cutterWidths.isEmpty());
  EXPECT_EQ(out + errors + log.str(), "");
}

TEST_F(MachineFile, ALastLineWithoutALineBreakIsDiscarded) {
  readMachines("A,1,G,90,1,1,1\nB,1,G,80,1,1,1");
  EXPECT_EQ(dumpCutters(data), "A|1|G|90|1|1|1\n");
  EXPECT_EQ(dumpWidths(data), "90");
  EXPECT_EQ(errors, "");
}

TEST_F(MachineFile, TheMessagesOfADiscardedLastLineDoAppear) {
  readMachines("A,1,G,90,1,1,1\nB,1,G,80,1");
  EXPECT_EQ(data.cutters.count(), 1);
  EXPECT_EQ(errors, "Could not set Lbs/Inch of cutter.\nCould not set WasteCost of cutter.\n");
}

TEST_F(MachineFile, ThereIsNoHeaderAndNoComment) {
  readMachines("#A,1,G,90,1,1,1\n");
  EXPECT_EQ(dumpCutters(data), "#A|1|G|90|1|1|1\n");
}

TEST_F(MachineFile, NothingIsTrimmedOrUnquoted) {
  readMachines(" A ,\"1\",G g,  90in,1,1,1\n");
  EXPECT_EQ(dumpCutters(data), " A |\"1\"|G g|90|1|1|1\n");
}

struct WidthNumber {
  const char *text;
  const char *width;
};

void PrintTo(const WidthNumber &shown, std::ostream *out) {
  *out << shown.text;
}

class MachineFileNumber : public MachineFile, public testing::WithParamInterface<WidthNumber> {};

TEST_P(MachineFileNumber, IsTheLeadingNumberOfItsField) {
  readMachines(std::string("A,1,G,") + GetParam().text + ",1,1,1\n");
  EXPECT_EQ(dumpWidths(data), GetParam().width);
  EXPECT_EQ(errors, "");
}

INSTANTIATE_TEST_SUITE_P(OfAnySpelling, MachineFileNumber,
                         testing::Values(WidthNumber{"90", "90"}, WidthNumber{"90.125x", "90.125"},
                                         WidthNumber{"wide", "0"}, WidthNumber{" ", "0"},
                                         WidthNumber{"-5", "-5"}, WidthNumber{"-0", "-0"},
                                         WidthNumber{"nan", "nan"}, WidthNumber{"inf", "inf"},
                                         WidthNumber{"-inf", "-inf"},
                                         WidthNumber{"1e308", "1e+308"},
                                         WidthNumber{"1e309", "inf"}, WidthNumber{"0x10", "16"},
                                         WidthNumber{"1e-320", "9.99989e-321"},
                                         WidthNumber{"2147483648", "2.14748e+09"}));

TEST_F(MachineFile, WidthsThatAreNotNumbersAreAllKeptAndEndTheReadingInNoLoop) {
  readMachines("A,1,G,nan,1,1,1\nA,2,G,90,1,1,1\nA,3,G,nan,1,1,1\nA,4,G,80,1,1,1\n");
  EXPECT_EQ(data.cutters.count(), 4);
  // What is not ordered stays where it is; 90 and 80 change places across it.
  EXPECT_EQ(dumpWidths(data), "nan 80 nan 90");
}

TEST_F(MachineFile, OneCarriageReturnBeforeTheLineBreakIsDropped) {
  readMachines("A,1,G,90,1,1,1\r\n\r\n");
  EXPECT_EQ(dumpCutters(data), "|||0|0|0|0\nA|1|G|90|1|1|1\n");
  EXPECT_EQ(errors, "");
}

TEST_F(MachineFile, ANulByteEndsTheLine) {
  readMachines(std::string("A,1,G,90\0,1,1,1\n", 17));
  EXPECT_EQ(dumpCutters(data), "A|1|G|90|0|0|0\n");
  EXPECT_THAT(errors, testing::StartsWith("Could not set Capacity of cutter.\n"));
}

std::string machineLineOfLength(std::size_t length) {
  const std::string tail = ",1,G,90,1,1,1";
  return std::string(length - tail.size(), 'L') + tail + "\n";
}

TEST_F(MachineFile, LinesOf1022And1023CharactersAreRead) {
  readMachines(machineLineOfLength(1022) + machineLineOfLength(1023));
  EXPECT_EQ(data.cutters.count(), 2);
  EXPECT_EQ(errors, "");
}

TEST_F(MachineFile, ALineOf1024CharactersIsSkippedWithAWarningOnStandardErrorAndInTheLog) {
  readMachines("A,1,G,90,1,1,1\n" + machineLineOfLength(1024) + "B,1,G,80,1,1,1\n");
  const std::string warning = "Warning: Line 2 of " + fileName() + " is too long.\n";
  EXPECT_EQ(errors, warning);
  EXPECT_EQ(log.str(), warning);
  EXPECT_EQ(out, "");
  EXPECT_EQ(dumpCutters(data), "A|1|G|90|1|1|1\nB|1|G|80|1|1|1\n");
  EXPECT_EQ(dumpWidths(data), "80 90");
}

TEST_F(MachineFile, ALineOfAMillionCharactersIsSkippedWithTheWarning) {
  readMachines(machineLineOfLength(1000000) + "B,1,G,80,1,1,1\n");
  EXPECT_EQ(errors, "Warning: Line 1 of " + fileName() + " is too long.\n");
  EXPECT_EQ(data.cutters.count(), 1);
}

TEST_F(MachineFile, ALongLastLineWithoutALineBreakIsDiscardedInSilence) {
  std::string bytes = machineLineOfLength(1024);
  bytes.pop_back();
  readMachines(bytes);
  EXPECT_EQ(data.cutters.count(), 0);
  EXPECT_EQ(out + errors + log.str(), "");
}

TEST_F(MachineFile, AFieldThatIsNotUtf8IsLatin1) {
  readMachines(
      "Qu\xE9"
      "bec,\xC3\x89,G,90,1,1,1\n");
  EXPECT_EQ(dumpCutters(data),
            "Qu\xC3\xA9"
            "bec|\xC3\x89|G|90|1|1|1\n");
}

TEST_F(MachineFile, AByteOrderMarkInFrontOfTheFirstLocationIsDropped) {
  readMachines(
      "\xEF\xBB\xBF"
      "A,1,G,90,1,1,1\n");
  EXPECT_EQ(dumpCutters(data), "A|1|G|90|1|1|1\n");
}

TEST_F(MachineFile, AByteOrderMarkAnywhereElseIsText) {
  readMachines(
      "A,\xEF\xBB\xBF"
      "1,G,90,1,1,1\n\xEF\xBB\xBF"
      "A,1,G,90,1,1,1\n");
  EXPECT_EQ(dumpCutters(data),
            "A|\xEF\xBB\xBF"
            "1|G|90|1|1|1\n\xEF\xBB\xBF"
            "A|1|G|90|1|1|1\n");
}

TEST_F(MachineFile, TheWidestCutterOfAGradeIsKnown) {
  readMachines("A,1,G,90,1,1,1\nA,2,G,100,1,1,1\nA,3,G,95,1,1,1\nA,1,H,10,1,1,1\n");
  EXPECT_EQ(data.widestCutter.value("G"), 100);
  EXPECT_EQ(data.widestCutter.value("H"), 10);
  EXPECT_EQ(data.widestCutter.size(), 2);
}

TEST_F(MachineFile, ADroppedDuplicateMakesItsGradeNoWider) {
  readMachines("A,1,G,90,1,1,1\nA,1,G,100,1,1,1\n");
  EXPECT_EQ(data.widestCutter.value("G"), 90);
}

TEST_F(MachineFile, AWidthThatIsNotANumberNeverStandsInForAWiderCutter) {
  readMachines("A,1,G,nan,1,1,1\nA,2,G,90,1,1,1\nA,3,G,nan,1,1,1\n");
  EXPECT_EQ(data.widestCutter.value("G"), 90);
}

TEST(MachineFileDeathTest, AFileThatCannotBeOpenedOrReadEndsTheRun) {
  const support::TemporaryFolder folder;
  PlanningComparators comparators;
  PlanningData data(comparators);
  for (const std::string &name :
       {folder.file("absent"), folder.path().string(), std::string("/proc/self/mem")}) {
    support::expectRunEnds(
        [&](std::ostream &log) {
          std::ifstream file;
          readMachineFile(data, QString::fromStdString(name), file, log);
        },
        "Error: Could not open machine data file.");
  }
}

TEST(ReadCutter, ReadsOneLineIntoTheGivenCutter) {
  std::istringstream in("A,1,G,90,1,2,3\n\n");
  LineReader reader(in);
  Cutter cutter;
  reader.next();
  readCutter(reader, cutter);
  EXPECT_EQ(cutter.location, QString("A"));
  EXPECT_EQ(cutter.wasteCost, 3);
  // An empty line leaves the cutter as it is.
  reader.next();
  readCutter(reader, cutter);
  EXPECT_EQ(cutter.location, QString("A"));
}

}  // namespace
}  // namespace corvane
