#include "planning/order_file.h"

#include "core/numbers.h"
#include "planning/planning_files.h"
#include "support/fatal_end.h"

namespace corvane {
namespace {

using support::dumpDemand;
using support::dumpOrders;
using support::dumpTexts;

// One cutter of 100 inches for each of G1, G2 and G3.
class OrderFile : public PlanningFilesTest {
 protected:
  OrderFile() { readMachines("A,1,G1,100,1,1,1\nA,1,G2,100,1,1,1\nA,1,G3,100,1,1,1\n"); }

  static std::string bad(int line) {
    return "Warning: Order number " + std::to_string(line) + " is bad.\n\n";
  }
  static std::string noMachine(int line) {
    return "Warning: No machine can process order number " + std::to_string(line) +
           ". Check grade and demand width.\n";
  }
};

TEST_F(OrderFile, AnOrderALine) {
  readOrders("1,G1,30,10,Acme\n2,G1,40.5,5,Best\n");
  EXPECT_EQ(dumpOrders(data), "G1|1|Acme|30|10\nG1|2|Best|40.5|5\n");
  EXPECT_EQ(dumpDemand(data.demand), "G1|1: 30x10\nG1|2: 40.5x5\n");
  EXPECT_EQ(dumpTexts(data.grades), "G1;");
  EXPECT_EQ(dumpTexts(data.periods), "1;2;");
  EXPECT_EQ(out + errors + log.str(), "");
}

TEST_F(OrderFile, OrdersAreKeptInTheOrderOfTheirKey) {
  readOrders("2,G1,30,1,A\n1,G2,30,2,A\n1,G1,40,3,B\n1,G1,30,4,B\n10,G1,9,5,A\n1,G1,9,6,A\n");
  EXPECT_EQ(dumpOrders(data),
            "G1|1|A|9|6\nG1|1|B|30|4\nG1|1|B|40|3\nG1|10|A|9|5\nG1|2|A|30|1\nG2|1|A|30|2\n");
}

TEST_F(OrderFile, AWidthOfZeroPrintsItsMessageAndThenTheBadOrderWarning) {
  readOrders("1,G1,30,10,Acme\n1,G1,0,10,Acme\n");
  EXPECT_EQ(out, "Width must be > 0.0.\n" + bad(2));
  EXPECT_EQ(log.str(), bad(2));
  EXPECT_EQ(data.orders.count(), 1);
}

TEST_F(OrderFile, AQuantityOfZeroPrintsItsMessageAndThenTheBadOrderWarning) {
  readOrders("1,G1,30,0,Acme\n");
  EXPECT_EQ(out, "Quantity must be > 0.\n" + bad(1));
  EXPECT_EQ(log.str(), bad(1));
  EXPECT_EQ(data.orders.count(), 0);
}

TEST_F(OrderFile, ABadWidthHidesABadQuantity) {
  readOrders("1,G1,-1,0,Acme\n");
  EXPECT_EQ(out, "Width must be > 0.0.\n" + bad(1));
}

TEST_F(OrderFile, ALineWithFourFieldsGivesOnlyTheBadOrderWarning) {
  readOrders("1,G1,30,10\n");
  EXPECT_EQ(out, bad(1));
  EXPECT_EQ(log.str(), bad(1));
}

TEST_F(OrderFile, EveryShorterLineIsBadTooWithoutAnotherMessage) {
  readOrders("1\n1,G1\n1,G1,30\n,,,\n");
  EXPECT_EQ(out, bad(1) + bad(2) + bad(3) + bad(4));
  EXPECT_EQ(data.orders.count(), 0);
}

TEST_F(OrderFile, AShortLineStillHasItsWidthChecked) {
  readOrders("1,G1,wide\n");
  EXPECT_EQ(out, "Width must be > 0.0.\n" + bad(1));
}

TEST_F(OrderFile, AnEmptyFieldMovesTheLaterOnesForward) {
  readOrders("1,,30,10,Acme\n");  // grade 30, width 10, and a quantity that is no number
  EXPECT_EQ(out, "Quantity must be > 0.\n" + bad(1));
}

TEST_F(OrderFile, TwoCommasInARowAreOneSeparator) {
  readOrders(",1,,G1,30,,,10,Acme,\n");
  EXPECT_EQ(dumpOrders(data), "G1|1|Acme|30|10\n");
  EXPECT_EQ(out, "");
}

TEST_F(OrderFile, TextAfterTheFifthFieldIsIgnored) {
  readOrders("1,G1,30,10,Acme,Inc\n");
  EXPECT_EQ(dumpOrders(data), "G1|1|Acme|30|10\n");
  EXPECT_EQ(out, "");
}

TEST_F(OrderFile, AGradeThatNoCutterRunsIsReportedAndDropped) {
  readOrders("1,G1,30,10,Acme\n1,G9,30,10,Acme\n");
  EXPECT_EQ(out, noMachine(2));
  EXPECT_EQ(log.str(), noMachine(2));
  EXPECT_EQ(dumpOrders(data), "G1|1|Acme|30|10\n");
  EXPECT_EQ(dumpTexts(data.grades), "G1;");
}

TEST_F(OrderFile, AnOrderWiderThanEveryCutterOfItsGradeIsReportedWithItsLineNumber) {
  readOrders("\n\n\n\n\n\n1,G1,100.001,10,Acme\n");
  EXPECT_THAT(out, testing::EndsWith("Warning: No machine can process order number 7. Check grade "
                                     "and demand width.\n"));
}

TEST_F(OrderFile, AnOrderExactlyAsWideAsACutterOfItsGradeIsAccepted) {
  readOrders("1,G1,100,10,Acme\n");
  EXPECT_EQ(out, "");
  EXPECT_EQ(data.orders.count(), 1);
}

TEST_F(OrderFile, GradesAreComparedWithTheirCase) {
  readOrders("1,g1,30,10,Acme\n");
  EXPECT_EQ(out, noMachine(1));
}

TEST_F(OrderFile, TwoIdenticalLinesGiveOneOrderOf20AndTheDemandEntries10And20) {
  readOrders("1,G1,30,10,Acme\n1,G1,30,10,Acme\n");
  EXPECT_EQ(dumpOrders(data), "G1|1|Acme|30|20\n");
  EXPECT_EQ(dumpDemand(data.demand), "G1|1: 30x10 30x20\n");
  EXPECT_EQ(out + log.str(), "");
}

TEST_F(OrderFile, AThirdIdenticalLineAppendsTheSumOfAllThree) {
  readOrders("1,G1,30,10,Acme\n1,G1,30,10,Acme\n1,G1,30,10,Acme\n");
  EXPECT_EQ(dumpDemand(data.demand), "G1|1: 30x10 30x20 30x30\n");
}

TEST_F(OrderFile, EqualWidthAndQuantityOfAnotherCustomerAddUpInOneDemandEntry) {
  readOrders("1,G1,30,10,Acme\n1,G1,30,10,Best\n");
  EXPECT_EQ(dumpOrders(data), "G1|1|Acme|30|10\nG1|1|Best|30|10\n");
  EXPECT_EQ(dumpDemand(data.demand), "G1|1: 30x20\n");
}

TEST_F(OrderFile, AnotherQuantityOfTheSameWidthIsADemandEntryOfItsOwn) {
  readOrders("1,G1,30,10,Acme\n1,G1,30,5,Best\n");
  EXPECT_EQ(dumpDemand(data.demand), "G1|1: 30x10 30x5\n");
}

TEST_F(OrderFile, AMergedOrderIsRecordedWithItsSumAndMayMeetAnEntryOfThatSize) {
  // Acme's 10 and 20 merge to 30, which meets Best's entry of 30.
  readOrders("1,G1,30,10,Acme\n1,G1,30,30,Best\n1,G1,30,20,Acme\n");
  EXPECT_EQ(dumpDemand(data.demand), "G1|1: 30x10 30x60\n");
}

TEST_F(OrderFile, TheDemandTableKeepsTheOrderOfFirstAppearance) {
  readOrders("2,G3,30,1,A\n1,G1,30,2,A\n1,G3,50,3,A\n2,G3,20,4,A\n");
  EXPECT_EQ(dumpDemand(data.demand), "G3|2: 30x1 20x4\nG3|1: 50x3\nG1|1: 30x2\n");
}

TEST_F(OrderFile, GradesAreSortedAndPeriodsKeepTheOrderOfAppearance) {
  readOrders("2,G3,30,1,A\n1,G1,30,1,A\n2,G2,30,1,A\n1,G3,30,1,A\n");
  EXPECT_EQ(dumpTexts(data.grades), "G1;G2;G3;");
  EXPECT_EQ(dumpTexts(data.periods), "2;1;");
}

TEST_F(OrderFile, DroppedOrdersLeaveNoGradeAndNoPeriod) {
  readOrders("7,G1,0,1,A\n8,G9,30,1,A\n1,G1,30,1,A\n");
  EXPECT_EQ(dumpTexts(data.grades), "G1;");
  EXPECT_EQ(dumpTexts(data.periods), "1;");
}

TEST_F(OrderFile, AnEmptyLineGivesTheNoMachineWarning) {
  readOrders("1,G1,30,10,Acme\n\n1,G1,40,10,Acme\n");
  EXPECT_EQ(out, noMachine(2));
  EXPECT_EQ(log.str(), noMachine(2));
  EXPECT_EQ(data.orders.count(), 2);
}

TEST_F(OrderFile, ACutterWithAnEmptyGradeMakesAnEmptyLineAnOrder) {
  readMachines("\n");
  readOrders("\n");
  EXPECT_EQ(dumpOrders(data), "|||0|0\n");
  EXPECT_EQ(dumpDemand(data.demand), "|: 0x0\n");
  EXPECT_EQ(out, "");
}

TEST_F(OrderFile, ALastLineWithoutALineBreakIsDiscarded) {
  readOrders("1,G1,30,10,Acme\n1,G1,40,10,Acme");
  EXPECT_EQ(data.orders.count(), 1);
  EXPECT_EQ(out + log.str(), "");
}

TEST_F(OrderFile, TheFieldMessageOfADiscardedLastLineAppearsButNoWarningFollows) {
  readOrders("1,G1,0,10,Acme");
  EXPECT_EQ(out, "Width must be > 0.0.\n");
  EXPECT_EQ(log.str(), "");
  readOrders("1,G1,5,0,Acme");
  EXPECT_EQ(out, "Quantity must be > 0.\n");
  readOrders("1,G1");
  EXPECT_EQ(out, "");
  EXPECT_EQ(log.str(), "");
}

TEST_F(OrderFile, AnEmptyFileLeavesEverythingEmpty) {
  readOrders("");
  EXPECT_EQ(data.orders.count(), 0);
  EXPECT_TRUE(data.grades.isEmpty());
  EXPECT_TRUE(data.periods.isEmpty());
  EXPECT_TRUE(data.demand.grades.isEmpty());
  EXPECT_EQ(out + log.str(), "");
}

TEST_F(OrderFile, EveryLineCountsForTheLineNumberBadOnesToo) {
  readOrders("bad\n\n1,G1,30,10,Acme\nbad\n");
  EXPECT_EQ(out, bad(1) + noMachine(2) + bad(4));
}

TEST_F(OrderFile, OneCarriageReturnBeforeTheLineBreakIsDropped) {
  readOrders("1,G1,30,10,Acme\r\n\r\n");
  EXPECT_EQ(dumpOrders(data), "G1|1|Acme|30|10\n");
  EXPECT_EQ(out, noMachine(2));
}

TEST_F(OrderFile, ANulByteEndsTheLine) {
  readOrders(std::string("1,G1,30,10\0,Acme\n", 17));
  EXPECT_EQ(out, bad(1));
}

std::string lineOfLength(std::size_t length) {
  const std::string head = "1,G1,30,10,";
  return head + std::string(length - head.size(), 'c') + "\n";
}

TEST_F(OrderFile, LinesOf1022And1023CharactersAreRead) {
  readOrders(lineOfLength(1022) + lineOfLength(1023));
  EXPECT_EQ(data.orders.count(), 2);
  EXPECT_EQ(out, "");
}

TEST_F(OrderFile, ALineOf1024CharactersIsABadOrder) {
  readOrders(lineOfLength(1024) + "1,G1,30,10,Acme\n");
  EXPECT_EQ(out, bad(1));
  EXPECT_EQ(log.str(), bad(1));
  EXPECT_EQ(dumpOrders(data), "G1|1|Acme|30|10\n");
}

TEST_F(OrderFile, ALineOfAMillionCharactersIsABadOrder) {
  readOrders("1,G1,30,10,Acme\n" + lineOfLength(1000000) + "bad\n");
  EXPECT_EQ(out, bad(2) + bad(3));
}

TEST_F(OrderFile, ALongLastLineWithoutALineBreakIsDiscardedInSilence) {
  std::string bytes = lineOfLength(2000);
  bytes.pop_back();
  readOrders(bytes);
  EXPECT_EQ(out + log.str(), "");
}

TEST_F(OrderFile, BytesThatAreNotUtf8AreLatin1AndMergeWithTheSameTextInUtf8) {
  readOrders("1,G1,30,10,Caf\xE9\n1,G1,30,5,Caf\xC3\xA9\n");
  EXPECT_EQ(dumpOrders(data), "G1|1|Caf\xC3\xA9|30|15\n");
}

TEST_F(OrderFile, AByteOrderMarkInFrontOfTheFirstPeriodIsDropped) {
  readOrders(
      "\xEF\xBB\xBF"
      "1,G1,30,10,Acme\n1,G1,30,5,Acme\n");
  EXPECT_EQ(dumpTexts(data.periods), "1;");
  EXPECT_EQ(dumpOrders(data), "G1|1|Acme|30|15\n");
}

TEST_F(OrderFile, AByteOrderMarkAnywhereElseIsText) {
  readOrders(
      "1,G1,30,10,Acme\n\xEF\xBB\xBF"
      "1,G1,30,5,Acme\n");
  EXPECT_EQ(dumpTexts(data.periods),
            "1;\xEF\xBB\xBF"
            "1;");
}

TEST_F(OrderFile, QuotesArePartOfTheText) {
  readOrders("1,G1,30,10,\"Acme\"\n");
  EXPECT_EQ(dumpOrders(data), "G1|1|\"Acme\"|30|10\n");
}

struct OutcomeCase {
  const char *field;
  const char *said;  // "" accepted, "W" or "Q" rejected, "M" no machine
  const char *stored;
};

void PrintTo(const OutcomeCase &item, std::ostream *out) {
  *out << item.field;
}

class OrderWidth : public OrderFile, public testing::WithParamInterface<OutcomeCase> {};

TEST_P(OrderWidth, HasItsOutcome) {
  readOrders(std::string("1,G1,") + GetParam().field + ",10,Acme\n");
  const std::string said = GetParam().said;
  EXPECT_EQ(out, said == "W" ? "Width must be > 0.0.\n" + bad(1) : said == "M" ? noMachine(1) : "");
  EXPECT_EQ(dumpOrders(data), GetParam().stored);
}

INSTANTIATE_TEST_SUITE_P(OfAnySpelling, OrderWidth,
                         testing::Values(OutcomeCase{"30in", "", "G1|1|Acme|30|10\n"},
                                         OutcomeCase{" 30 ", "", "G1|1|Acme|30|10\n"},
                                         OutcomeCase{"wide", "W", ""}, OutcomeCase{"nan", "M", ""},
                                         OutcomeCase{"inf", "M", ""}, OutcomeCase{"-inf", "W", ""},
                                         OutcomeCase{"1e308", "M", ""}, OutcomeCase{"-0", "W", ""},
                                         OutcomeCase{"0x10", "", "G1|1|Acme|16|10\n"},
                                         OutcomeCase{"1e-320", "", "G1|1|Acme|9.99989e-321|10\n"},
                                         OutcomeCase{"1e-400", "W", ""},
                                         OutcomeCase{"2147483648", "M", ""}));

class OrderQuantity : public OrderFile, public testing::WithParamInterface<OutcomeCase> {};

TEST_P(OrderQuantity, HasItsOutcome) {
  readOrders(std::string("1,G1,30,") + GetParam().field + ",Acme\n");
  const std::string said = GetParam().said;
  EXPECT_EQ(out, said == "Q" ? "Quantity must be > 0.\n" + bad(1) : "");
  EXPECT_EQ(dumpOrders(data), GetParam().stored);
}

INSTANTIATE_TEST_SUITE_P(
    OfAnySpelling, OrderQuantity,
    testing::Values(OutcomeCase{"10rolls", "", "G1|1|Acme|30|10\n"},
                    OutcomeCase{"10.9", "", "G1|1|Acme|30|10\n"}, OutcomeCase{"ten", "Q", ""},
                    OutcomeCase{"-1", "Q", ""}, OutcomeCase{"-0", "Q", ""},
                    OutcomeCase{"0.9", "Q", ""}, OutcomeCase{"nan", "Q", ""},
                    OutcomeCase{"inf", "Q", ""}, OutcomeCase{"0x10", "Q", ""},
                    OutcomeCase{"1e308", "", "G1|1|Acme|30|1\n"},
                    OutcomeCase{"2147483647", "", "G1|1|Acme|30|2147483647\n"},
                    OutcomeCase{"2147483648", "", "G1|1|Acme|30|2147483647\n"},
                    OutcomeCase{"99999999999999999999", "", "G1|1|Acme|30|2147483647\n"},
                    OutcomeCase{"-99999999999999999999", "Q", ""}));

TEST_F(OrderFile, AWidthInfinitelyWideFitsACutterInfinitelyWide) {
  readMachines("A,1,G8,inf,1,1,1\n");
  readOrders("1,G8,inf,10,Acme\n1,G8,1e308,10,Acme\n1,G8,nan,10,Acme\n");
  EXPECT_EQ(dumpOrders(data), "G8|1|Acme|1e+308|10\nG8|1|Acme|inf|10\n");
  EXPECT_EQ(out, noMachine(3));
}

TEST_F(OrderFile, WidthsThatDifferInTheLastBitAreTwoOrdersAndTwoDemandEntries) {
  readOrders("1,G1,30,10,Acme\n1,G1,30.000000000000004,10,Acme\n");
  EXPECT_EQ(data.orders.count(), 2);
  EXPECT_EQ(dumpDemand(data.demand), "G1|1: 30x10 30x10\n");
}

TEST_F(OrderFile, MergedQuantitiesStayAtTheLargestThirtyTwoBitValue) {
  readOrders("1,G1,30,2147483647,Acme\n1,G1,30,5,Acme\n");
  EXPECT_EQ(dumpOrders(data), "G1|1|Acme|30|2147483647\n");
  // The merged order meets the entry of that very quantity.
  EXPECT_EQ(dumpDemand(data.demand), "G1|1: 30x2147483647\n");
}

TEST_F(OrderFile, DemandSumsStayAtTheLargestThirtyTwoBitValue) {
  readOrders("1,G1,30,1500000000,Acme\n1,G1,30,1500000000,Best\n");
  EXPECT_EQ(dumpDemand(data.demand), "G1|1: 30x2147483647\n");
}

TEST_F(OrderFile, TenThousandPeriodsAreKept) {
  std::string bytes;
  for (int period = 10000; period > 0; --period) {
    bytes += std::to_string(period) + ",G1,30,10,Acme\n";
  }
  readOrders(bytes);
  EXPECT_EQ(data.periods.size(), 10000);
  EXPECT_EQ(data.periods.first(), QString("10000"));
  EXPECT_EQ(data.orders.count(), 10000);
  EXPECT_EQ(data.demand.grades.first().periods.size(), 10000);
}

TEST_F(OrderFile, TheWidestCutterOfTheGradeDecides) {
  readMachines("A,2,G1,120,1,1,1\nA,3,G1,90,1,1,1\n");
  readOrders("1,G1,120,10,Acme\n1,G1,120.5,10,Acme\n1,G2,120,10,Acme\n");
  EXPECT_EQ(dumpOrders(data), "G1|1|Acme|120|10\n");
  EXPECT_EQ(out, noMachine(2) + noMachine(3));
}

TEST_F(OrderFile, OneWidthIsOneHoweverItIsWritten) {
  readOrders("1,G1,30,10,Acme\n1,G1,30.0,10,Acme\n1,G1,3e1,10,Best\n");
  EXPECT_EQ(dumpOrders(data), "G1|1|Acme|30|20\nG1|1|Best|30|10\n");
  EXPECT_EQ(dumpDemand(data.demand), "G1|1: 30x20 30x20\n");
}

TEST_F(OrderFile, OneGradeAndPeriodAreOneHoweverTheyAreWritten) {
  readMachines("A,4,Caf\xC3\xA9,100,1,1,1\n");
  readOrders("1,Caf\xC3\xA9,30,10,Acme\n,1,,Caf\xE9,30,5,Best\n");
  EXPECT_EQ(dumpDemand(data.demand), "Caf\xC3\xA9|1: 30x10 30x5\n");
}

// So few orders of many widths and customers are sorted by comparison.
TEST_F(OrderFile, APeriodOfFewOrdersIsSortedAndMergedAsOneOfMany) {
  std::string many;
  for (int at = 1; at <= 90; ++at) {
    many += "1,G1," + std::to_string(at) + ",10,C" + std::to_string(at) + "\n";
  }
  readOrders(many + "2,G1,50,1,B\n2,G1,40,2,B\n2,G1,50,3,A\n2,G1,50,1,B\n");
  EXPECT_THAT(dumpOrders(data), testing::EndsWith("G1|2|A|50|3\nG1|2|B|40|2\nG1|2|B|50|2\n"));
  EXPECT_THAT(dumpDemand(data.demand), testing::EndsWith("G1|2: 50x1 40x2 50x3 50x2\n"));
}

TEST_F(OrderFile, TheDemandListOfAPeriodHasTheFirstEntryOfEachWidthAndTheWidestFirst) {
  readOrders("1,G1,30,10,A\n1,G1,50,2,A\n1,G1,30,20,B\n2,G1,7,1,A\n1,G1,40,4,A\n1,G1,30,10,C\n");
  EXPECT_EQ(dumpDemand(data.demand), "G1|1: 30x20 50x2 30x20 40x4\nG1|2: 7x1\n");
  const GradeDemand &grade = *data.demand.find("G1");
  std::string list;
  for (const QString period : {"1", "2"}) {
    for (const DemandEntry &entry : demandList(grade.find(period))) {
      list += general(entry.width) + "x" + std::to_string(entry.quantity) + " ";
    }
  }
  EXPECT_EQ(list, "50x2 40x4 30x20 7x1 ");
  EXPECT_THAT(grade.widths, testing::ElementsAre(50, 40, 30, 7));
}

TEST(AcceptField, RejectsAnEmptyFieldWithItsMessage) {
  for (const char *name : {"period", "grade", "width", "quantity", "customer name"}) {
    const support::StreamCapture out(std::cout);
    EXPECT_FALSE(acceptField("", name));
    EXPECT_EQ(out.text(), std::string("Could not set ") + name + " of order.\n");
  }
}

TEST(AcceptField, TakesAnyOtherFieldInSilence) {
  const support::StreamCapture out(std::cout);
  EXPECT_TRUE(acceptField(" ", "grade"));
  EXPECT_EQ(out.text(), "");
}

class ReadOrder : public testing::Test {
 protected:
  OrderLine read(const std::string &line) {
    std::istringstream in(line);
    LineReader reader(in);
    reader.next();
    return readOrder(reader, texts_);
  }
  QString text(TextTable::Id id) const { return texts_.table().text(id); }

  const QHash<QString, double> widestCutter_ = {{"G1", 100.0}};
  OrderTexts texts_{widestCutter_};
};

TEST_F(ReadOrder, AnEmptyLineHasEmptyTextsAndNoNumbers) {
  const OrderLine order = read("\n");
  EXPECT_TRUE(order.good);
  EXPECT_TRUE(text(order.place->period).isEmpty());
  EXPECT_TRUE(text(order.place->grade).isEmpty());
  EXPECT_TRUE(text(order.customer).isEmpty());
  EXPECT_EQ(order.width->inches, 0);
  EXPECT_EQ(order.quantity, 0);
}

TEST_F(ReadOrder, GivesWhatTheFieldsStandFor) {
  const OrderLine order = read("1,G1,30,10,Acme\n");
  EXPECT_TRUE(order.good);
  EXPECT_EQ(text(order.place->period), QString("1"));
  EXPECT_EQ(text(order.place->grade), QString("G1"));
  EXPECT_EQ(order.width->inches, 30);
  EXPECT_EQ(order.quantity, 10);
  EXPECT_EQ(text(order.customer), QString("Acme"));
}

TEST_F(ReadOrder, AShortLineIsBad) {
  for (const char *line : {",,,\n", "1\n", "1,G1\n", "1,G1,30\n", "1,G1,30,10\n"}) {
    EXPECT_FALSE(read(line).good) << line;
  }
}

TEST_F(ReadOrder, AMachineCanProcessGradesAndWidthsUpToItsOwn) {
  EXPECT_TRUE(machineCanProcess(read("1,G1,100,1,A\n")));
  EXPECT_FALSE(machineCanProcess(read("1,G1,100.5,1,A\n")));
  EXPECT_FALSE(machineCanProcess(read("1,G1,nan,1,A\n")));
  EXPECT_FALSE(machineCanProcess(read("1,G9,1,1,A\n")));
}

TEST(OrderFileDeathTest, AFileThatCannotBeOpenedOrReadEndsTheRun) {
  const support::TemporaryFolder folder;
  PlanningComparators comparators;
  PlanningData data(comparators);
  for (const std::string &name :
       {folder.file("absent"), folder.path().string(), std::string("/proc/self/mem")}) {
    support::expectRunEnds(
        [&](std::ostream &log) {
          std::ifstream file;
          readOrderFile(data, QString::fromStdString(name), file, log);
        },
        "Error: Could not open orders file.");
  }
}

}  // namespace
}  // namespace corvane
