// Input that the files may hold, though no mill would: each with the outcome of the whole run.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "mill_run.h"

namespace corvane::faults {
namespace {

using namespace std::string_literals;
using testing::HasSubstr;
using testing::Not;

// Of an LP that the default solver library did not load.
const std::string kNotLoaded =
    "Error: No solution to lp, status : 4\nGrade : G\nPeriod : 1\n"
    "Error: Solution not optimal, status : 6";

class BadInput : public testing::Test {
 protected:
  Result run() const { return mill_.run(); }
  Result runOnClp() const { return runChild(mill_.onClp()); }

  // Both solver libraries end the run with these words.
  void expectFatalOnBoth(const std::string &words) const {
    remove(mill_.data("corvane.log"));
    expectFatal(mill_, run(), words);
    remove(mill_.data("corvane.log"));
    expectFatal(mill_, runOnClp(), words);
  }

  // The scripted solver library does not solve an LP with such a number, and CLP does not take it.
  void expectRefusedByBoth(const std::string &wordsOnClp) const {
    remove(mill_.data("corvane.log"));
    expectFatal(mill_, run(), "Error: Solution not optimal.");
    remove(mill_.data("corvane.log"));
    expectFatal(mill_, runOnClp(), wordsOnClp);
  }

  // Both solver libraries take the run to its end.
  void expectWholeRunOnBoth(bool ordinaryData) const {
    expectWholeRun(mill_, run());
    expectGoodImport(mill_, ordinaryData);
    expectWholeRun(mill_, runOnClp());
    expectGoodImport(mill_, ordinaryData);
  }

  MillRun mill_;
};

TEST_F(BadInput, TenThousandPeriods) {
  std::string orders;
  for (int period = 1; period <= 10000; ++period) {
    orders += std::to_string(period) + ",G,30,1,Customer\n";
  }
  mill_.write("orders.data", orders);
  mill_.write("Parameters.data", std::string(MillRun::kParameters) + "patterns only=True\n");
  expectWholeRun(mill_, run());
  EXPECT_THAT(mill_.importFile(), HasSubstr("\naddperiod <name> \"10000\"\n"));
}

// No order is narrow enough for such a cutter, so that its grade has no orders at all.
TEST_F(BadInput, AGradeWhoseOnlyCutterHasNoWidthHasNoOrders) {
  for (const char *width : {"0", "-0", "-1", "-1e308", "-inf", "none", "nan"}) {
    SCOPED_TRACE(width);
    mill_.write("machines.data", "Mill,C1,G," + std::string(width) + ",46,68,13\n");
    const Result result = run();
    expectWholeRun(mill_, result);
    EXPECT_EQ(countLines(result.out,
                         "Warning: No machine can process order number 1. Check grade and demand "
                         "width."),
              1);
    EXPECT_THAT(mill_.importFile(), Not(HasSubstr("DemandWidth")));
    EXPECT_THAT(mill_.log(), HasSubstr("Total demand in inches           : 0.0000\n"));
  }
}

// The LP then takes more of what costs less than nothing, without end.
TEST_F(BadInput, ACutterNarrowerThanNothingBesideAnotherEndsTheRun) {
  mill_.write("machines.data", std::string(MillRun::kMachines) + "Mill,C2,G,-1,46,68,13\n");
  expectFatalOnBoth("Error: Solution not optimal.");
}

// A cost below -1e20 is infinite, and the default solver library does not load it.
TEST_F(BadInput, ACutterOfInfinitelyLessThanNothingBesideAnotherEndsTheRun) {
  for (const char *width : {"-1e308", "-inf"}) {
    SCOPED_TRACE(width);
    mill_.write("machines.data",
                std::string(MillRun::kMachines) + "Mill,C2,G," + width + ",46,68,13\n");
    expectFatal(mill_, runOnClp(), kNotLoaded);
  }
}

// The seed patterns are taken for free, and no pattern can be better.
TEST_F(BadInput, ACutterOfNoWidthBesideAnotherGivesSeedPatternsOnly) {
  mill_.write("machines.data", std::string(MillRun::kMachines) + "Mill,C2,G,0,46,68,13\n");
  expectWholeRunOnBoth(false);
}

// What is not finite is no coefficient of an LP.
TEST_F(BadInput, ACutterOfInfiniteWidthEndsTheRun) {
  for (const char *width : {"inf", "1e999", "INFINITY"}) {
    SCOPED_TRACE(width);
    mill_.write("machines.data", "Mill,C1,G," + std::string(width) + ",46,68,13\n");
    expectRefusedByBoth(kNotLoaded);
  }
}

TEST_F(BadInput, ACutterWhoseWidthIsNoNumberBesideAnotherEndsTheRun) {
  mill_.write("machines.data", std::string(MillRun::kMachines) + "Mill,C2,G,nan,46,68,13\n");
  expectRefusedByBoth("Error: Could not add columns to LP.");
}

// Its patterns cost too much to be made.
TEST_F(BadInput, ACutterOfInfiniteWidthBesideAnotherMakesNothing) {
  mill_.write("machines.data", std::string(MillRun::kMachines) + "Mill,C2,G,inf,46,68,13\n");
  for (const Child &child : {mill_.scripted(), mill_.onClp()}) {
    const Result result = runChild(child);
    expectWholeRun(mill_, result);
    EXPECT_EQ(countLines(result.out, "Deckle Width: inf, Demand Width: 45.000 is in 0 patterns."),
              2);
  }
}

TEST_F(BadInput, AVeryWideCutterIsPlanned) {
  for (const char *width : {"1e19", "1e15"}) {
    SCOPED_TRACE(width);
    mill_.write("machines.data", "Mill,C1,G," + std::string(width) + ",46,68,13\n");
    expectWholeRun(mill_, run());
    expectWholeRun(mill_, runOnClp());
  }
}

// 1e20 and beyond is infinite to the default solver library; the scripted one knows no such bound.
TEST_F(BadInput, ACutterAsWideAsADoubleGoesIsPlannedOrRefusedByTheSolver) {
  for (const char *width : {"1e20", "1e100", "1e308", "1.7976931348623157e308"}) {
    SCOPED_TRACE(width);
    mill_.write("machines.data", "Mill,C1,G," + std::string(width) + ",46,68,13\n");
    mill_.write("orders.data", std::string(MillRun::kOrders) + "2,G," + width + ",2,Customer\n");
    expectWholeRun(mill_, run());
    expectGoodImport(mill_, false);
    remove(mill_.data("corvane.log"));
    expectFatal(mill_, runOnClp(), kNotLoaded);
  }
}

// Widths are compared exactly wherever they are keys; the names of their nodes are alike, since
// they show six digits.
TEST_F(BadInput, WidthsThatDifferInTheLastBitAreTwoWidths) {
  mill_.write("machines.data", "Mill,C1,G,100,46,68,13\nMill,C2,G,100.00000000000001,46,68,13\n");
  mill_.write("orders.data", "1,G,30,5,Customer\n1,G,30.000000000000004,4,Customer\n");
  expectWholeRunOnBoth(false);
  EXPECT_EQ(countLines(mill_.importFile(), "addcommodity <name> \"Deckle100\""), 2);
  EXPECT_THAT(mill_.importFile(), HasSubstr("<demandamount> 5 "));
  EXPECT_THAT(mill_.importFile(), HasSubstr("<demandamount> 4 "));
}

// The language of the import file has no way to write one inside a name; it goes out as it is.
TEST_F(BadInput, QuotationMarksInNamesAreWrittenAsTheyAre) {
  mill_.write("orders.data", "\"1\",G,30,5,The \"Box\" Co\n");
  expectWholeRun(mill_, run());
  EXPECT_THAT(mill_.importFile(), HasSubstr("addperiod <name> \"\"1\"\"\n"));
  EXPECT_THAT(mill_.importFile(), HasSubstr("\"G_The \"Box\" Co_30.000\""));
}

TEST_F(BadInput, OddNumbersOfOrders) {
  mill_.write("machines.data", "Mill,C1,G,100,46,68,13\n");
  mill_.write("orders.data",
              "1,G,nan,5,A\n1,G,inf,5,A\n1,G,-0,5,A\n1,G,1e-320,5,A\n1,G,0x10,5,A\n1,G,30,0x10,A\n"
              "1,G,30,2147483647,B\n1,G,30,2147483648,C\n1,G,30,99999999999999999999,D\n");
  const Result result = run();
  expectWholeRun(mill_, result);
  const std::string import = mill_.importFile();
  // Not a number and infinite: no machine. -0, and 0 read from 0x10: bad. The rest is ordered.
  EXPECT_THAT(result.out, HasSubstr("order number 1."));
  EXPECT_THAT(result.out, HasSubstr("order number 2."));
  EXPECT_THAT(result.out, HasSubstr("Warning: Order number 3 is bad."));
  EXPECT_THAT(result.out, HasSubstr("Warning: Order number 6 is bad."));
  EXPECT_THAT(import, HasSubstr("\"DemandWidth16\""));
  EXPECT_THAT(import, HasSubstr("\"DemandWidth9.99989e-321\""));
  for (const char *node : {"G_B_30.000", "G_C_30.000", "G_D_30.000"}) {
    const std::size_t at =
        import.find("addnode <type> \"StorageDemand\" <name> \"" + std::string(node) + "\"");
    ASSERT_NE(at, std::string::npos) << node;
    EXPECT_THAT(import.substr(at, import.find('\n', at) - at),
                HasSubstr("<demandamount> 2147483647 "));
  }
}

TEST_F(BadInput, MergedQuantitiesStayAtTheLargest) {
  mill_.write("orders.data", "1,G,30,2147483647,A\n1,G,30,2147483647,A\n1,G,30,1,A\n");
  expectWholeRunOnBoth(true);
  EXPECT_THAT(mill_.importFile(), HasSubstr("<demandamount> 2147483647 "));
  EXPECT_THAT(mill_.log(), HasSubstr("Total demand in inches           : 64424509410.0000\n"));
}

TEST_F(BadInput, OddNumbersOfFreightRatesAndCuttersAreWrittenAsTheyAre) {
  mill_.write("machines.data", "Mill,C1,G,100,nan,1e308,-inf\n");
  mill_.write("freightRates.data", "Customer,Mill,Rail,1e308,nan\nCustomer,Mill,Truck,-0,1e-320\n");
  expectWholeRun(mill_, run());
  EXPECT_THAT(mill_.importFile(), HasSubstr("<cost> -inf "));
  EXPECT_THAT(mill_.importFile(), HasSubstr("<cost> inf\n"));
  EXPECT_THAT(mill_.importFile(), HasSubstr("<periodstodelay> nan "));
}

// A grade that stands nowhere, and texts that are not UTF-8, end as readable names.
TEST_F(BadInput, BytesThatAreNoText) {
  mill_.write("orders.data", "1,G,30,5,\xff\xfe\n1,G,30,5,\xef\xbb\xbfZ\n1,G,30,5,nul\0byte\n"s);
  mill_.write("machines.data", std::string(MillRun::kMachines) + std::string(1000000, 'x') + "\n");
  expectWholeRunOnBoth(false);
  EXPECT_THAT(mill_.importFile(), HasSubstr("\"G_\xc3\xbf\xc3\xbe_30.000\""));
  EXPECT_THAT(mill_.importFile(), HasSubstr("\"G_nul_30.000\""));
  EXPECT_THAT(mill_.log(), HasSubstr("\nWarning: Line 2 of data\\machines.data is too long.\n"));
}

// Ends of lines as other systems write them.
TEST_F(BadInput, CarriageReturnsChangeNothing) {
  expectWholeRun(mill_, run());
  const std::string plain = mill_.importFile();
  for (const char *name :
       {"Parameters.data", "machines.data", "orders.data", "freightRates.data"}) {
    std::string text = contentOf(mill_.data(name));
    for (std::size_t at = 0; (at = text.find('\n', at)) != std::string::npos; at += 2) {
      text.insert(at, 1, '\r');
    }
    mill_.write(name, text);
  }
  expectWholeRun(mill_, run());
  EXPECT_EQ(mill_.importFile(), plain);
}

// An empty line is an order of nothing, which a cutter without a grade can make.
TEST_F(BadInput, AnOrderOfNothingForACutterOfNothing) {
  mill_.write("machines.data", std::string(MillRun::kMachines) + "\n");
  mill_.write("orders.data", std::string(MillRun::kOrders) + "\n");
  expectWholeRun(mill_, run());
  EXPECT_THAT(mill_.importFile(), HasSubstr("addperiod <name> \"\"\n"));
}

}  // namespace
}  // namespace corvane::faults
