#include "import_checker.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "good_files.h"
#include "import_grammar.h"

namespace corvane::import_checker {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

ImportOptions delayRun() {
  return {.periods = 2, .freightComplete = true};
}

ImportOptions batchRun() {
  return {.batch = true, .delay = false, .periods = 2, .freightComplete = true};
}

ImportOptions patternsRun() {
  return {.patternsOnly = true, .periods = 2};
}

std::string complaintsOf(const std::string &text, const ImportOptions &options) {
  return describe(checkImport(text, options));
}

// The text with the first occurrence of `from` replaced; a test that finds nothing to replace
// fails.
std::string with(std::string text, std::string_view from, std::string_view to) {
  const std::size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

// The line, counted from 1, that the first occurrence of a text stands on.
std::size_t lineOf(const std::string &text, std::string_view part) {
  const auto end = text.begin() + static_cast<std::ptrdiff_t>(text.find(part));
  return static_cast<std::size_t>(std::count(text.begin(), end, '\n')) + 1;
}

// The text without the line that the first occurrence of `part` stands on.
std::string without(const std::string &text, std::string_view part) {
  const std::size_t at = text.find(part);
  EXPECT_NE(at, std::string::npos) << part;
  const std::size_t begin = text.rfind('\n', at) + 1;
  return text.substr(0, begin) + text.substr(text.find('\n', at) + 1);
}

// The text with the line that holds `part` written twice.
std::string twice(const std::string &text, std::string_view part) {
  const std::size_t at = text.find(part);
  EXPECT_NE(at, std::string::npos) << part;
  const std::size_t begin = text.rfind('\n', at) + 1;
  const std::string line = text.substr(begin, text.find('\n', at) + 1 - begin);
  return text.substr(0, begin) + line + text.substr(begin);
}

TEST(ImportGrammar, TakesTheValuesOfALine) {
  const auto command = parseCommand(
      "addattach <node> \"G_Pattern_0_C_100\" <commodity> \"DemandWidth62.5\" <in> False "
      "<quantity> 3");
  ASSERT_TRUE(command.has_value());
  EXPECT_EQ(command->family, Family::kPatternYield);
  EXPECT_EQ((*command)["node"], "G_Pattern_0_C_100");
  EXPECT_EQ((*command)["width"], "62.5");
  EXPECT_EQ((*command)["count"], "3");
}

TEST(ImportGrammar, AllowsQuotesAndBracketsInsideAName) {
  const auto command = parseCommand(R"(addnodetoset "G_<x> 5" "G "best"_C_30.000")");
  ASSERT_TRUE(command.has_value());
  EXPECT_EQ((*command)["set"], "G_<x> 5");
  EXPECT_EQ((*command)["node"], "G \"best\"_C_30.000");
}

TEST(ImportGrammar, RefusesWhatTheProgramDoesNotWrite) {
  const std::vector<std::string> lines{
      "",
      "addperiod <name> 1",
      "addperiod <name> \"1\" ",
      " addperiod <name> \"1\"",
      "addperiod  <name> \"1\"",
      "addperiod <Name> \"1\"",
      "addcommodity <name> \"Deckle\"",
      "addcommodity <name> \"Deckle100.0\"",
      "addcommodity <name> \"Deckle100.1234567\"",
      "addcommodity <name> \"Deckle1000000\"",
      "addcommodity <name> \"Deckle0x10\"",
      "addcommodity <name> \"Reel100\"",
      "blockset G",
      R"(blockset "G" <node> "G")",
      R"(addattach <node> "N" <in> True <commodity> "Waste")",
      R"(addattach <node> "N" <commodity> "Waste" <in> true)",
      R"(addattach <node> "N" <commodity> "DemandWidth30" <in> False <quantity> 2.0)",
      R"(addattach <node> "N" <commodity> "DemandWidth30" <in> False <quantity> +2)",
      R"(addattach <node> "N" <commodity> "DemandWidth30" <in> False <quantity> 02)",
      "# End of Corvane import file."};
  for (const std::string &line : lines) {
    EXPECT_FALSE(parseCommand(line).has_value()) << line;
  }
}

struct GoodFile {
  const char *name;
  std::string text;
  ImportOptions options;
};

void PrintTo(const GoodFile &file, std::ostream *out) {
  *out << file.name;
}

class GoodImportFile : public testing::TestWithParam<GoodFile> {};

TEST_P(GoodImportFile, HasNoComplaint) {
  EXPECT_EQ(complaintsOf(GetParam().text, GetParam().options), "");
}

TEST_P(GoodImportFile, NeedsEveryLine) {
  const std::string &file = GetParam().text;
  for (std::size_t begin = 0; begin < file.size(); begin = file.find('\n', begin) + 1) {
    const std::size_t end = file.find('\n', begin) + 1;
    const std::string line = file.substr(begin, end - begin);
    const std::string rest = file.substr(0, begin) + file.substr(end);
    // The attachments of a delay node come again in each period, and the later amount of an order
    // is compared with the orders, not here.
    const bool repeated = rest.find(line) != std::string::npos;
    const bool laterAmount =
        line.find("\"G_A_30.000\" <undercost> 50000 <storagemax> 0 <demandamount>") !=
        std::string::npos;
    if (!repeated && !laterAmount) {
      EXPECT_THAT(checkImport(rest, GetParam().options), Not(IsEmpty())) << line;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Import, GoodImportFile,
                         testing::Values(GoodFile{"Delay", kDelayFile, delayRun()},
                                         GoodFile{"Batch", kBatchFile, batchRun()},
                                         GoodFile{"Patterns", kPatternsFile, patternsRun()}),
                         [](const auto &file) { return std::string(file.param.name); });

TEST(ImportChecker, ComplaintNamesTheLine) {
  const std::string good = kDelayFile;
  const std::string bad = with(good, "<storagemax> 0", "<storagemax> 1");
  const std::vector<Complaint> complaints = checkImport(bad, delayRun());
  ASSERT_FALSE(complaints.empty());
  EXPECT_EQ(complaints.front().line, lineOf(bad, "<storagemax> 1"));
  EXPECT_THAT(complaints.front().text, HasSubstr("no line of the language"));
}

TEST(ImportChecker, ComplainsInTheOrderOfTheLines) {
  std::string bad = with(kDelayFile, "addperiod", "addPeriod");
  bad = with(bad, "<cost> 12.5", "<cost>");
  const std::vector<Complaint> complaints = checkImport(bad, delayRun());
  EXPECT_GE(complaints.size(), 3U);
  EXPECT_TRUE(std::is_sorted(
      complaints.begin(), complaints.end(),
      [](const Complaint &a, const Complaint &b) { return a.line - 1 < b.line - 1; }));
}

TEST(ImportChecker, AnEmptyFileHasNoRootAndNoTrailer) {
  const std::string complaints = complaintsOf("", {});
  EXPECT_THAT(complaints, HasSubstr("no root"));
  EXPECT_THAT(complaints, HasSubstr("no trailer"));
}

// One change to a good file and the complaint that it must bring.
struct Fault {
  const char *name;
  std::string text;
  ImportOptions options;
  const char *complaint;
};

void PrintTo(const Fault &fault, std::ostream *out) {
  *out << fault.name;
}

const std::string file = kDelayFile;
const std::string batch = kBatchFile;
const std::string patterns = kPatternsFile;
const std::string pattern0 = "\"G_Pattern_0_C_100\"";

std::vector<Fault> headerFaults() {
  return {{"RootTwice", twice(file, "addroot"), delayRun(), "below the first line"},
          {"RootOfAnotherRun", file, batchRun(), "root of a run without batch"},
          {"BatchRootInAPlainRun", batch, delayRun(), "root of a run with batch"},
          {"CommodityTwice", twice(file, "\"DemandWidth30\""), delayRun(), "again"},
          {"CommodityMissing", without(file, "\"DemandWidth30\""), delayRun(), "not declared"},
          {"WasteMissing", without(patterns, "addcommodity <name> \"Waste\""), patternsRun(),
           "\"Waste\" is not declared"},
          {"WidthsDescending",
           with(with(file, "\"DemandWidth45\"", "\"DemandWidth30\""), "\"DemandWidth30\"",
                "\"DemandWidth45\""),
           delayRun(), "after a wider one"},
          {"WidthNotFinite",
           with(file, "\"Deckle100\"\n",
                "\"Deckle100\"\naddcommodity <name> "
                "\"Deckleinf\"\n"),
           delayRun(), "not finite"},
          {"PeriodTwice", twice(file, "addperiod <name> \"2\""), delayRun(), "again"},
          {"PeriodUnknown", with(file, "<period> \"2\"", "<period> \"3\""), delayRun(),
           "uses the period \"3\", not declared"},
          {"PeriodCount", file, {.periods = 3}, "2 periods instead of 3"},
          {"TrailerMissing", without(file, "# End"), delayRun(), "no trailer"},
          {"TrailerTwice", twice(file, "# End"), delayRun(), "below the trailer"},
          {"LineBelowTrailer", file + "blockset \"G_A\"\n", delayRun(), "below the trailer"},
          {"LastLineOpen", file.substr(0, file.size() - 1), delayRun(), "no line end"},
          {"SectionsSwapped",
           with(without(file, "\"DemandWidth30\""), "addperiod",
                "addcommodity <name> \"DemandWidth30\"\naddperiod"),
           delayRun(), "after a later section"}};
}

std::vector<Fault> machineFaults() {
  return {
      {"MachineInOnePeriod", without(file, R"("M_C" <period> "2")"), delayRun(),
       "\"M_C\" does not stand in every period"},
      {"MachineWithoutCoordinates", with(file, " <x> 10 <y> 210", ""), delayRun(),
       "has no coordinates"},
      {"MachineAtAnotherX", with(file, "<x> 10 ", "<x> 11 "), delayRun(), "the x 11 instead of 10"},
      {"CoordinatesInALaterPeriod",
       with(file, R"("M_C" <period> "2")", R"("M_C" <x> 10 <y> 210 <period> "2")"), delayRun(),
       "not the first"},
      {"MachineUndeclared", with(file, "addattach <node> \"M_C\"", "addattach <node> \"M_D\""),
       delayRun(), "attaches to \"M_D\""},
      {"ProcessInALaterPeriod", with(file, "<y> 0 <period> \"1\"", "<y> 0 <period> \"2\""),
       delayRun(), "first period"}};
}

std::vector<Fault> patternFaults() {
  return {{"PatternTwice", twice(file, "<name> " + pattern0), delayRun(), "again"},
          {"PatternAtAnotherX", with(file, "<x> 420 ", "<x> 710 "), delayRun(),
           "the x 710 instead of 420"},
          {"PatternWithoutWaste", without(patterns, pattern0 + " <commodity> \"Waste\""),
           patternsRun(), "one deckle, one waste"},
          {"PatternWithoutYield", without(patterns, pattern0 + " <commodity> \"DemandWidth30\""),
           patternsRun(), "and a yield"},
          {"PatternDoesNotAddUp", with(file, "<quantity> 40", "<quantity> 41"), delayRun(),
           "do not add up"},
          {"PatternWithWasteLost", with(file, "<quantity> 40", "<quantity> 0"), delayRun(),
           "do not add up"},
          {"YieldOfNone", with(file, "<quantity> 2", "<quantity> 0"), delayRun(), "below 1"},
          {"DeckleArcOfAnotherCost", with(file, "<cost> 10 ", "<cost> 11 "), delayRun(),
           "the cost 11 instead of 10"},
          {"DeckleArcInOnePeriod",
           without(file, "<to> " + pattern0 +
                             " <flow> 0 <fixed> False <opportunity> 0 <cost> 10 <min> 0 <max> "
                             "+infinity <period> \"2\""),
           delayRun(), "does not stand in every period"}};
}

std::vector<Fault> arcFaults() {
  return {
      {"ArcFromNowhere", with(file, "<from> \"G_C_100\"", "<from> \"G_D_100\""), delayRun(),
       "joins \"G_D_100\""},
      {"ArcOfAnotherCommodity",
       with(file, "addarc <commodity> \"DemandWidth45\"", "addarc <commodity> \"DemandWidth30\""),
       delayRun(), "does not enter"},
      {"ArcBetweenWrongKinds", with(file, "<to> \"G_Waste\"", "<to> \"G_C_30.000\""), delayRun(),
       "no such nodes of fitting kinds"},
      {"YieldArcInALaterPeriod",
       with(file, "<cost> 0 <min> 0 <max> +infinity <period> \"1\"",
            "<cost> 0 <min> 0 <max> +infinity <period> \"2\""),
       delayRun(), "first period"}};
}

std::vector<Fault> storeAndOrderFaults() {
  return {
      {"StoreAttachUndeclared",
       with(file, "<node> \"G_C_45.000\" <commodity>", "<node> \"G_C_46.000\" <commodity>"),
       delayRun(), "attaches to \"G_C_46.000\""},
      {"SetOfUndeclaredNode",
       with(file, R"(addnodetoset "G_C" "G_C_45.000")", R"(addnodetoset "G_C" "G_C_46.000")"),
       delayRun(), "puts \"G_C_46.000\" into a set"},
      {"SetNeverABlock", without(file, "blockset \"G_C\""), delayRun(), "never becomes a block"},
      {"BlockSetOfNothing", with(file, "blockset \"G_C\"", "blockset \"G_D\""), delayRun(),
       "\"G_D\", which is empty"},
      {"BlockMissing", without(file, R"("Block" <name> "G_A")"), delayRun(), "has no block"},
      {"BlockOfNoSet", with(file, R"("Block" <name> "G_A")", R"("Block" <name> "G_B")"), delayRun(),
       "no block set"},
      {"NodeInNoSet", without(file, R"(addnodetoset "G_A" "G_A_45.000")"), delayRun(),
       "is in no set"},
      {"OrderTwice", twice(file, "\"G_A_45.000\" <x>"), delayRun(), "again"},
      {"OrderOfNone", with(file, "<demandamount> 4", "<demandamount> 0"), delayRun(), "below 1"},
      {"OrderWithoutUndercost",
       without(file,
               "\"G_A_30.000\" <undercost> 50000 <storagemax> 0 "
               "<period> \"1\""),
       delayRun(), "no undercost line"},
      {"OrderAtAnotherX", with(file, "<x> 1200 ", "<x> 910 "), delayRun(), "instead of 1200"},
      {"OrderUnreached",
       without(without(batch, R"(<from> "G_C_45.000" <to> "G_A)"),
               R"(<from> "G_C_45.000" <to> "G_A)"),
       batchRun(), "no freight arc reaches"},
      {"WidthYieldedByNoPattern", without(patterns, "\"DemandWidth45\" <in> False"), patternsRun(),
       "no pattern yields \"DemandWidth45\""}};
}

std::vector<Fault> optionFaults() {
  return {
      {"DelayWithoutDelay", file, {.delay = false, .periods = 2}, "run with delay"},
      {"DelayUndeclared", with(file, "<to> \"Rail_G_A_30.000\"", "<to> \"Ship_G_A_30.000\""),
       delayRun(), "\"Ship_G_A_30.000\""},
      {"DelayInOnePeriod", without(file, R"("Rail_G_A_30.000" <periodstodelay> 1 <period> "2")"),
       delayRun(), "does not stand in every period"},
      {"BatchWithoutBatch", batch, {.delay = false, .periods = 2}, "run with batch"},
      {"BatchInOnePeriod", without(batch, "<batchsize> 1 <setup> 0 <period> \"2\""), batchRun(),
       "does not stand in every period"},
      {"BatchArcNotFree",
       with(batch,
            "<to> " + pattern0 +
                " <flow> 0 <fixed> False <opportunity> "
                "0 <cost> 0",
            "<to> " + pattern0 + " <flow> 0 <fixed> False <opportunity> 0 <cost> 10"),
       batchRun(), "instead of 0"},
      {"NetworkInAPatternsRun", file, patternsRun(), "patterns only"}};
}

std::string nameOf(const testing::TestParamInfo<Fault> &fault) {
  return fault.param.name;
}

class ImportFault : public testing::TestWithParam<Fault> {};

TEST_P(ImportFault, IsCaught) {
  EXPECT_THAT(complaintsOf(GetParam().text, GetParam().options), HasSubstr(GetParam().complaint));
}

INSTANTIATE_TEST_SUITE_P(Header, ImportFault, testing::ValuesIn(headerFaults()), nameOf);
INSTANTIATE_TEST_SUITE_P(Machine, ImportFault, testing::ValuesIn(machineFaults()), nameOf);
INSTANTIATE_TEST_SUITE_P(Pattern, ImportFault, testing::ValuesIn(patternFaults()), nameOf);
INSTANTIATE_TEST_SUITE_P(Arc, ImportFault, testing::ValuesIn(arcFaults()), nameOf);
INSTANTIATE_TEST_SUITE_P(StoreOrder, ImportFault, testing::ValuesIn(storeAndOrderFaults()), nameOf);
INSTANTIATE_TEST_SUITE_P(Option, ImportFault, testing::ValuesIn(optionFaults()), nameOf);

TEST(ImportChecker, APatternOfAnotherGradeDoesNotServeAnOrder) {
  std::string text = kDelayFile;
  for (const std::string order : {"\"G_A_30.000\"", "\"G_A\""}) {
    std::size_t at = 0;
    while ((at = text.find(order, at)) != std::string::npos) {
      text.replace(at, 2, "\"H");
    }
  }
  EXPECT_THAT(complaintsOf(text, delayRun()),
              HasSubstr("no pattern of its grade yields \"DemandWidth30\""));
}

TEST(ImportChecker, APatternWithoutWidthsYieldsAnUndeclaredWidth) {
  const std::string empty = with(kPatternsFile,
                                 "\"G_Pattern_0_C_100\" <commodity> \"DemandWidth30\" <in> False "
                                 "<quantity> 2",
                                 "\"G_Pattern_0_C_100\" <commodity> \"DemandWidth0\" <in> False "
                                 "<quantity> 0");
  EXPECT_EQ(complaintsOf(with(empty, "<quantity> 40", "<quantity> 100"), patternsRun()), "");
}

TEST(ImportChecker, APatternMayBeWiderThanItsDeckle) {
  EXPECT_EQ(complaintsOf(with(with(kDelayFile, "<quantity> 2", "<quantity> 4"), "<quantity> 40",
                              "<quantity> 0"),
                         delayRun()),
            "");
}

TEST(ImportChecker, WidthsThatAreWrittenAlikeMayRepeatWhenTheDataAreOdd) {
  ImportOptions odd = delayRun();
  odd.ordinaryData = false;
  const std::string text =
      twice(twice(kDelayFile, "addcommodity <name> \"DemandWidth30\""), "\"Machine\" <name>");
  EXPECT_EQ(complaintsOf(text, odd).find("again"), std::string::npos);
  EXPECT_THAT(complaintsOf(text, delayRun()), HasSubstr("again"));
}

TEST(ImportChecker, ZeroIsOneWidthHoweverItIsWrittenWhenTheDataAreOdd) {
  std::string text = with(kPatternsFile, "\"Deckle100\"", "\"Deckle-0\"");
  for (std::size_t at = 0; (at = text.find("\"Deckle100\"")) != std::string::npos;) {
    text.replace(at, 11, "\"Deckle0\"");
  }
  ImportOptions odd = patternsRun();
  odd.ordinaryData = false;
  EXPECT_EQ(complaintsOf(text, odd), "");
  EXPECT_THAT(complaintsOf(text, patternsRun()), HasSubstr("\"Deckle0\", not declared"));
}

TEST(ImportChecker, AMissingFreightRateIsNoFaultUnlessRatesAreComplete) {
  std::string text = kBatchFile;
  text = without(text, R"(<from> "G_C_45.000" <to> "G_A)");
  text = without(text, R"(<from> "G_C_45.000" <to> "G_A)");
  ImportOptions options = batchRun();
  options.freightComplete = false;
  EXPECT_EQ(complaintsOf(text, options), "");
}

}  // namespace
}  // namespace corvane::import_checker
