// Every code: a mistake planted in a clean mill is found at its line and column, and nothing else
// is said that is not true.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "checks/checked_files.h"

namespace corvane::checks {
namespace {

using testing::ElementsAreArray;
using testing::IsEmpty;

// A text of one file that is replaced by another; an empty one stands for the end of the file.
struct Change {
  const char *file;
  std::string from;
  std::string to;
};

struct Planted {
  const char *name;
  std::vector<Change> changes;
  // All that is found, the planted mistake first; more only where it is true as well.
  std::vector<std::string> found;
};

void PrintTo(const Planted &planted, std::ostream *out) {
  *out << planted.name;
}

const std::string kNoBreakSpace = "\xc2\xa0";
const std::string kMark = "\xef\xbb\xbf";

std::string wide(const std::string &text) {
  std::string result = "\xff\xfe";
  for (const char c : text) {
    result += c;
    result += '\0';
  }
  return result;
}

std::string replaced(std::string text, char from, const std::string &to) {
  std::string result;
  for (const char c : text) {
    result += c == from ? to : std::string(1, c);
  }
  return result;
}

std::vector<Planted> allPlanted() {
  const MillTexts clean = cleanMill();
  const std::string first = "1,LB42,44.75,60,Badger Box\n";
  return {
      {"Missing",
       {{"parameters", "# A mill", "order file=nowhere.data"}},
       {"parameters:1:12 CV101"}},
      {"NoLastBreak",
       {{"orders", "64,Clearwater Cartons\n", "64,Clearwater Cartons"}},
       {"orders:6:35 CV102"}},
      {"CarriageReturns",
       {{"orders", clean.orders, replaced(clean.orders, '\n', "\r")}},
       {"orders:1:27 CV103"}},
      {"CarriageReturnsBehindALine",
       {{"orders", clean.orders,
         "1,LB42,44.75,60,Badger Box\r\n1,LB42,36.5,40,Badger Box" + std::string(10, '\r') + "\n"}},
       {"orders:2:26 CV103"}},
      {"ZeroByte", {{"orders", "60,Badger", std::string("60,Bad\0er", 9)}}, {"orders:1:20 CV104"}},
      {"Utf16", {{"orders", clean.orders, wide(clean.orders)}}, {"orders:1:1 CV104"}},
      {"Utf16WithoutMark",
       {{"machines", clean.machines, wide(clean.machines).substr(2)}},
       {"machines:1:1 CV104"}},
      {"Latin1", {{"machines", "BL1", "BL\xfc"}}, {"machines:3:15 CV105"}},
      {"ByteOrderMark", {{"orders", first, kMark + first}}, {"orders:1:1 CV106"}},
      {"LongLine",
       {{"orders", "1,LB42,36.5,40,Badger Box", "1,LB42,36.5,40," + std::string(1100, 'x')}},
       {"orders:2:1024 CV107"}},
      {"EmptyLine", {{"machines", "13.75\n", "13.75\n\n"}}, {"machines:2:1 CV108"}},
      {"LineOfCommas",
       {{"orders", "40,Badger Box\n", "40,Badger Box\n,,,,\n"}},
       {"orders:3:1 CV108"}},
      {"NoBreakSpace",
       {{"orders", "1,LB42,36.5", "1,LB42" + kNoBreakSpace + ",36.5"}},
       {"orders:2:3 CV109"}},
      {"Tab",
       {{"rates", "Badger Box,Alder Falls,Rail,18.5,1", "Badger Box,Alder Falls,Rail\t,18.5,1"}},
       {"rates:1:24 CV109"}},
      {"MarkInside", {{"orders", "1,LB42,36.5", "1," + kMark + "LB42,36.5"}}, {"orders:2:3 CV109"}},
      {"Semicolons",
       {{"orders", clean.orders, replaced(clean.orders, ',', ";")}},
       {"orders:1:2 CV110"}},
      {"SemicolonsAndDecimalCommas",
       {{"orders", clean.orders, replaced(replaced(clean.orders, ',', ";"), '.', ",")}},
       {"orders:1:2 CV110"}},
      {"OneLineOfSemicolons",
       {{"orders", "1,LB42,36.5,40,Badger Box", "1;LB42;36.5;40;Badger Box"}},
       {"orders:2:2 CV110"}},
      {"Header",
       {{"orders", first, "Period,Grade,Width,Quantity,Customer\n" + first}},
       {"orders:1:1 CV111"}},
      {"QuotedCustomer",
       {{"orders", "36.5,40,Badger Box", "36.5,40,\"Badger Box\""}},
       {"orders:2:16 CV112"}},
      {"QuoteInAName",
       {{"orders", "36.5,40,Badger Box", "36.5,40,Badger \"B\" Box"}},
       {"orders:2:16 CV112"}},
      {"QuotedCommaInAName",
       {{"orders", "36.5,40,Badger Box", "36.5,40,\"Badger, Box\""}},
       {"orders:2:16 CV112"}},
      {"AllFieldsQuoted",
       {{"orders", "1,LB42,36.5,40,Badger Box", "\"1\",\"LB42\",\"36.5\",\"40\",\"Badger Box\""}},
       {"orders:2:1 CV112"}},
      {"CarriageReturnInAName",
       {{"orders", "36.5,40,Badger Box", "36.5,40,Badger\rBox"}},
       {"orders:2:16 CV113"}},
      {"NextLine",
       {{"orders", "36.5,40,Badger Box", "36.5,40,Badger\xc2\x85 Box"}},
       {"orders:2:16 CV113"}},
      {"LineSeparator",
       {{"orders", "36.5,40,Badger Box", "36.5,40,Badger\xe2\x80\xa8 Box"}},
       {"orders:2:16 CV113"}},
      {"ParagraphSeparator",
       {{"orders", "36.5,40,Badger Box", "36.5,40,Badger\xe2\x80\xa9 Box"}},
       {"orders:2:16 CV113"}},
      {"Escape", {{"machines", "AF1,CM26", "AF1\x1b,CM26"}}, {"machines:2:13 CV113"}},

      {"DoubledComma",
       {{"machines", "124,46", "124,,46"}, {"machines", ",68.5,13.75\n", ",13.75\n"}},
       {"machines:1:25 CV201"}},
      {"TrailingComma", {{"orders", "40,Badger Box\n", "40,Badger Box,\n"}}, {"orders:2:26 CV201"}},
      {"LeadingComma", {{"orders", "1,LB42,36.5", ",LB42,36.5"}}, {"orders:2:1 CV201"}},
      {"TooFew",
       {{"rates", "Badger Box,Alder Falls,Rail,18.5,1", "Badger Box,Alder Falls,Rail"}},
       {"rates:1:28 CV202"}},
      {"TooMany", {{"orders", "40,Badger Box\n", "40,Badger Box,urgent\n"}}, {"orders:2:27 CV203"}},
      {"DecimalComma", {{"orders", "1,LB42,44.75,60", "1,LB42,44,75,60"}}, {"orders:1:8 CV204"}},
      {"DecimalCommasOfACutter",
       {{"machines", "121.5,52,61,10.5", "121,5,52,61,10.5"}},
       {"machines:2:22 CV204"}},
      {"DecimalCommaOfARate", {{"rates", "Rail,18.5,1", "Rail,18,5,1"}}, {"rates:1:29 CV204"}},
      {"QuotedDecimalComma",
       {{"orders", "1,LB42,44.75,60", "1,LB42,\"44,75\",60"}},
       {"orders:1:8 CV204"}},
      {"ThousandsComma",
       {{"orders", "36.5,40,Badger", "36.5,1,040,Badger"}},
       {"orders:2:13 CV205"}},
      {"ThousandsCommaOfARate",
       {{"rates", "Alder Falls,Truck,24.25,0", "Alder Falls,Truck,1,024.25,0"}},
       {"rates:2:30 CV205"}},
      {"BehindAByteOrderMark",
       {{"orders", first, kMark + "1,LB42,44,75,60,Badger Box\n"}},
       {"orders:1:8 CV204", "orders:1:1 CV106"}},
      {"Apostrophe", {{"orders", "36.5,40,Badger", "36.5,1'040,Badger"}}, {"orders:2:13 CV205"}},
      {"ThousandsPoint",
       {{"orders", "36.5,40,Badger", "36.5,1.040,Badger"}},
       {"orders:2:13 CV205"}},
      {"Unit", {{"machines", "121.5,", "121.5 in,"}}, {"machines:2:22 CV205"}},
      {"NoNumber", {{"orders", "36.5,40,Badger", "36.5,some,Badger"}}, {"orders:2:13 CV206"}},
      {"Hexadecimal", {{"orders", "36.5,40,Badger", "0x1F,40,Badger"}}, {"orders:2:8 CV207"}},
      {"Exponent", {{"orders", "36.5,40,Badger", "36.5,4e1,Badger"}}, {"orders:2:13 CV207"}},
      {"WordForNoNumber", {{"machines", "121.5,", "nan,"}}, {"machines:2:22 CV207"}},
      {"Decimals", {{"orders", "36.5,40,Badger", "36.5,40.9,Badger"}}, {"orders:2:13 CV208"}},
      {"TooLarge",
       {{"orders", "36.5,40,Badger", "36.5,3000000000,Badger"}},
       {"orders:2:13 CV209", "orders:1:3 CV410"}},
      {"SumTooLargeIsToldOnce",
       {{"orders", "1,LB42,36.5,40,Badger Box\n",
         "1,LB42,36.5,2147483647,Badger Box\n1,LB42,36.5,5,Badger Box\n1,LB42,36.5,6,Badger "
         "Box\n"}},
       {"orders:3:13 CV209", "orders:1:3 CV410", "orders:2:13 CV411"}},
      {"SumTooLarge",
       {{"orders", "1,LB42,36.5,40,Badger Box\n",
         "1,LB42,36.5,2147483647,Badger Box\n1,LB42,36.5,5,Badger Box\n"}},
       {"orders:3:13 CV209", "orders:1:3 CV410"}},
      {"TrailingBlank", {{"orders", "1,LB42,36.5", "1,LB42 ,36.5"}}, {"orders:2:3 CV210"}},
      {"LeadingBlank",
       {{"rates", "Badger Box,Alder Falls,Rail", "Badger Box, Alder Falls,Rail"}},
       {"rates:1:12 CV210"}},
      {"NearNames",
       {{"rates", "Clearwater Cartons,Birch Landing,Truck",
         "Clearwater Cartons,Birch landing,Truck"}},
       {"rates:6:20 CV211", "rates:6:20 CV507", "orders:5:17 CV503"}},
      {"NearWidths", {{"orders", "2,LB42,44.75", "2,LB42,44.7501"}}, {"orders:4:8 CV212"}},
      {"NotEighths", {{"orders", "1,LB42,36.5", "1,LB42,36.51"}}, {"orders:2:8 CV213"}},
      {"OtherQuotes",
       {{"orders", "36.5,40,Badger Box", "36.5,40,'Badger Box'"}},
       {"orders:2:16 CV214"}},

      {"SecondCutter",
       {{"machines", "Birch", "Alder Falls,AF1,CM26,120,50,61,10\nBirch"}},
       {"machines:3:13 CV301"}},
      {"CutterAtTwoMillsOnTwoGrades",
       {{"machines", "BL1,LB42", "AF1,BK50"}},
       {"machines:3:15 CV302", "machines:3:19 CV307"}},
      {"CutterAtTwoMills", {{"machines", "BL1", "AF1"}}, {"machines:3:15 CV302"}},
      {"Deckle", {{"machines", "AF1,LB42,124", "AF1,LB42,-124"}}, {"machines:1:22 CV303"}},
      {"Capacity", {{"machines", "126,40", "126,0"}}, {"machines:3:28 CV304"}},
      {"Pounds", {{"machines", "40,69,14", "40,0,14"}}, {"machines:3:31 CV305"}},
      {"WasteCost", {{"machines", "40,69,14", "40,69,0"}}, {"machines:3:34 CV306"}},
      {"NotOrdered",
       {{"machines", "Birch", "Alder Falls,AF1,BK50,120,50,61,10\nBirch"}},
       {"machines:3:17 CV307"}},
      {"Millimetres", {{"machines", "BL1,LB42,126", "BL1,LB42,3200.4"}}, {"machines:3:24 CV308"}},
      {"RollInMillimetres", {{"orders", "1,LB42,36.5", "1,LB42,927.125"}}, {"orders:2:8 CV308"}},
      {"SmallestDeckle", {{"orders", "1,LB42,36.5", "1,LB42,125"}}, {"orders:2:8 CV309"}},

      {"NotPositive", {{"orders", "36.5,40,Badger", "36.5,0,Badger"}}, {"orders:2:13 CV401"}},
      {"WidthNotPositive", {{"orders", "1,LB42,36.5", "1,LB42,-36.5"}}, {"orders:2:8 CV401"}},
      {"SeveralDemands",
       {{"orders", "1,CM26", "1,LB42,44.75,80,Clearwater Cartons\n1,CM26"}},
       {"orders:3:8 CV402"}},
      {"NoCutter", {{"orders", "1,LB42,36.5", "1,LB24,36.5"}}, {"orders:2:3 CV403"}},
      {"TooWide", {{"orders", "1,LB42,36.5", "1,LB42,130"}}, {"orders:2:8 CV403"}},
      {"NoOrders",
       {{"orders", clean.orders, ""}},
       {"orders CV404", "machines:1:17 CV307", "machines:2:17 CV307", "rates:1:1 CV507",
        "rates:4:1 CV507"}},
      {"PeriodOrder",
       {{"orders", first, "3,LB42,44.75,60,Badger Box\n"}},
       {"orders:2:1 CV405", "orders:4:1 CV405", "orders:3:3 CV408"}},
      {"PeriodSpelling", {{"orders", "1,LB42,36.5", "01,LB42,36.5"}}, {"orders:2:1 CV406"}},
      {"SameOrder", {{"orders", "", "1,LB42,36.5,40,Badger Box\n"}}, {"orders:7:1 CV407"}},
      {"PeriodWithoutGrade", {{"orders", "2,CM26,33.75", "2,LB42,33.75"}}, {"orders:3:3 CV408"}},
      {"KnifeLimit",
       {{"orders", "33.75,64", "15.5,64"}, {"orders", "41.125,50", "17,50"}},
       {"orders:6:8 CV409"}},
      {"OverCapacity", {{"orders", "44.75,60", "44.75,2000"}}, {"orders:1:3 CV410"}},
      {"OddQuantity",
       {{"orders", "36.5,40", "36.5,600"},
        {"orders", "",
         "2,LB42,30,60,Badger Box\n2,LB42,31,55,Badger Box\n2,LB42,32,50,Badger Box\n"}},
       {"orders:2:13 CV411"}},
      {"WidthsTooNear", {{"orders", "2,LB42,44.75", "2,LB42,44.750000001"}}, {"orders:4:8 CV412"}},
      {"Swapped", {{"orders", "2,LB42,44.75,24", "2,LB42,24,44.75"}}, {"orders:4:8 CV413"}},
      {"NotSwappedWhereBothHaveDecimals",
       {{"orders", "2,LB42,44.75,24", "2,LB42,24.5,44.75"}},
       {"orders:4:13 CV208"}},
      {"PeriodMissing",
       {{"orders", "", "4,LB42,44.75,10,Badger Box\n4,CM26,33.75,10,Clearwater Cartons\n"}},
       {"orders:7:1 CV414"}},

      {"SecondRate", {{"rates", "", "Badger Box,Alder Falls,Rail,19,1\n"}}, {"rates:7:24 CV501"}},
      {"NoWay", {{"orders", "36.5,40,Badger Box", "36.5,40,Bagder Bxo"}}, {"orders:2:16 CV502"}},
      {"MillWithoutWay",
       {{"rates", "Badger Box,Birch Landing,Truck,26,0\n", ""}},
       {"orders:1:17 CV503"}},
      {"FreeFreight", {{"rates", "Truck,26,0", "Truck,0,0"}}, {"rates:3:32 CV504"}},
      {"NegativeDelay", {{"rates", "Rail,18.5,1", "Rail,18.5,-1"}}, {"rates:1:34 CV505"}},
      {"FractionalDelay", {{"rates", "Rail,18.5,1", "Rail,18.5,0.5"}}, {"rates:1:34 CV505"}},
      {"DelayBeyond", {{"rates", "Rail,18.5,1", "Rail,18.5,2"}}, {"rates:1:34 CV505"}},
      {"SharedDelay",
       {{"rates", "Birch Landing,Truck,26,0", "Birch Landing,Truck,26,1"}},
       {"rates:3:26 CV506"}},
      {"UnknownCustomer",
       {{"rates", "", "Old Carton Works,Alder Falls,Truck,26,0\n"}},
       {"rates:7:1 CV507"}},
      {"UnknownMill",
       {{"rates", "", "Badger Box,Cedar Narrows,Truck,26,0\n"}},
       {"rates:7:12 CV507"}},
      {"CheaperMode",
       {{"parameters", "batch=False", "delay=False"},
        {"rates", "Alder Falls,Truck,24.25", "Alder Falls,Truck,14.25"}},
       {"rates:2:30 CV508"}},
      {"Late",
       {{"rates", "Badger Box,Alder Falls,Truck,24.25,0\n", ""},
        {"rates", "Birch Landing,Truck,26,0", "Birch Landing,Boat,26,1"}},
       {"orders:1:17 CV509"}},

      {"SameNode",
       {{"machines", "", "Alder Falls,B_C,A,120,50,61,10\nAlder Falls,C,A_B,120,50,61,10\n"},
        {"orders", "",
         "1,A,40,10,Badger Box\n2,A,40,10,Badger Box\n1,A_B,40,11,Badger Box\n2,A_B,40,10,Badger "
         "Box\n"}},
       {"machines:5:13 CV601"}},
      {"SameWidthNameInAGrade",
       {{"orders", "1,LB42,36.5", "1,LB42,33.33334"},
        {"orders", "2,LB42,27.25", "2,LB42,33.33331"}},
       {"orders:5:8 CV602", "orders:2:8 CV213"}},
      {"SameWidthName",
       {{"orders", "2,CM26,33.75,64", "2,CM26,33.33331,64"},
        {"orders", "2,LB42,27.25", "2,LB42,33.33334"}},
       {"orders:6:8 CV602", "orders:5:8 CV213"}},
      {"FixedName",
       {{"machines", "", "Alder Falls,AF2,M,120,50,61,10\nAlder Falls,AF2,LB42,120,50,61,10\n"},
        {"orders", "", "1,M,40,10,Badger Box\n2,M,40,10,Badger Box\n"}},
       {"machines:4:13 CV603"}},

      {"UnknownKey", {{"parameters", "batch=False", "bathc=False"}}, {"parameters:2:1 CV701"}},
      {"BlankBehindKey", {{"parameters", "batch=False", "batch =False"}}, {"parameters:2:1 CV701"}},
      {"NotAWord", {{"parameters", "batch=False", "batch=false"}}, {"parameters:2:7 CV702"}},
      {"NotASolver", {{"parameters", "batch=False", "solver=barrier"}}, {"parameters:2:8 CV702"}},
      {"NotANumber",
       {{"parameters", "days per period=7", "days per period=7.0"}},
       {"parameters:3:17 CV703"}},
      {"OutOfRange", {{"parameters", "in pattern=5", "in pattern=50"}}, {"parameters:4:27 CV704"}},
      {"KeyTwice", {{"parameters", "", "batch=False\n"}}, {"parameters:6:1 CV705"}},
      {"NoSeed", {{"parameters", "rand num gen seed=7\n", ""}}, {"parameters CV706"}},
      {"SecondEquals",
       {{"parameters", "batch=False", "output=data/a=b.imp"}},
       {"parameters:2:14 CV707"}},
      {"NoFolder",
       {{"parameters", "batch=False", "log file=logs/a.log"}},
       {"parameters:2:10 CV708"}},
      {"NoTime", {{"parameters", "batch=False", "time limit=0"}}, {"parameters:2:12 CV709"}},
      {"NoEffect", {{"parameters", "batch=False", "threshold=4"}}, {"parameters:2:1 CV710"}},
      {"DualIsSet", {{"parameters", "batch=False", "solver=Dual"}}, {"parameters:2:1 CV710"}},
      {"IndentedComment", {{"parameters", "# A mill", " # A mill"}}, {"parameters:1:1 CV711"}},
      {"IndentedKey", {{"parameters", "batch=False", " batch=False"}}, {"parameters:2:1 CV711"}},
      {"None", {{"parameters", "batch=False", "time limit=None"}}, {"parameters:2:12 CV712"}},
      {"Percent",
       {{"parameters", "batch=False", "width pick set size=25%"}},
       {"parameters:2:21 CV712"}},
      {"PathsMeet",
       {{"parameters", "batch=False", "output=data/orders.data"}},
       {"parameters:2:8 CV713"}},
      {"ValueBlank",
       {{"parameters", "batch=False", "log file=data/a.log "}},
       {"parameters:2:10 CV714"}},
      {"NoValue", {{"parameters", "batch=False", "batch False"}}, {"parameters:2:1 CV715"}},
  };
}

MillTexts plantedMill(const Planted &planted) {
  MillTexts texts = cleanMill();
  for (const Change &change : planted.changes) {
    std::string &text = texts.of(change.file);
    const std::size_t at = change.from.empty() ? text.size() : text.find(change.from);
    if (at == std::string::npos) {
      ADD_FAILURE() << "no text " << change.from;
    } else {
      text.replace(at, change.from.size(), change.to);
    }
  }
  return texts;
}

class EveryCode : public testing::TestWithParam<Planted> {};

TEST_P(EveryCode, IsFoundAtItsPlace) {
  const TextCheck check(plantedMill(GetParam()));
  EXPECT_THAT(check.texts(), testing::UnorderedElementsAreArray(GetParam().found));
}

TEST_P(EveryCode, SaysWhatIsReadAndWhatToWrite) {
  const TextCheck check(plantedMill(GetParam()));
  for (const Found &found : check.found) {
    EXPECT_FALSE(findCheck(found.code)->fix.empty() && found.write.empty()) << found.text();
    EXPECT_NE(found.message, "") << found.text();
  }
}

TEST_P(EveryCode, IsMendedOnlyWhereTheTableSaysSo) {
  const TextCheck check(plantedMill(GetParam()));
  for (const Found &found : check.found) {
    const bool isMended = found.hasEdits && found.fixKind != FixKind::kNone;
    EXPECT_FALSE(isMended && findCheck(found.code)->fixKind == FixKind::kNone) << found.text();
  }
}

INSTANTIATE_TEST_SUITE_P(Planted, EveryCode, testing::ValuesIn(allPlanted()),
                         [](const auto &planted) { return planted.param.name; });

TEST(CleanMill, SaysNothing) {
  EXPECT_THAT(TextCheck(cleanMill()).texts(), IsEmpty());
}

TEST(CleanMill, CarriageReturnsBeforeLineFeedsAreClean) {
  MillTexts texts = cleanMill();
  for (const char *file : {"parameters", "machines", "orders", "rates"}) {
    texts.of(file) = replaced(texts.of(file), '\n', "\r\n");
  }
  EXPECT_THAT(TextCheck(texts).texts(), IsEmpty());
}

// Codes of import files have a test of their own.
TEST(Planted, EveryCodeOfAMillIsPlanted) {
  std::set<std::string> planted;
  for (const Planted &one : allPlanted()) {
    planted.insert(one.found.front().substr(one.found.front().find(' ') + 1));
  }
  for (const Check &check : allChecks()) {
    if (static_cast<int>(check.code) < 800) {
      EXPECT_EQ(planted.count(codeText(check.code)), 1U) << codeText(check.code);
    }
  }
}

// What the table says that --fix mends, it mends in one of the plants at least.
TEST(Planted, WhatTheTableMendsIsMended) {
  std::map<std::string, FixKind> safest;
  for (const Planted &one : allPlanted()) {
    for (const Found &found : TextCheck(plantedMill(one)).found) {
      if (found.hasEdits && found.fixKind != FixKind::kNone) {
        const auto known = safest.try_emplace(found.code, found.fixKind).first;
        known->second = std::min(known->second, found.fixKind);
      }
    }
  }
  for (const Check &check : allChecks()) {
    const auto known = safest.find(codeText(check.code));
    EXPECT_EQ(known != safest.end() ? known->second : FixKind::kNone, check.fixKind)
        << codeText(check.code);
  }
}

TEST(Message, SaysWhatIsReadInstead) {
  MillTexts texts = cleanMill();
  texts.orders.replace(texts.orders.find("44.75"), 5, "44,75");
  const TextCheck check(texts);
  ASSERT_EQ(check.found.size(), 1U);
  EXPECT_EQ(check.found[0].message, "decimal comma: \"44,75\" is read as width 44 and quantity 75");
  EXPECT_EQ(check.found[0].write, "1,LB42,44.75,60,Badger Box");
}

// What a calculation leaves of a width is rounded; what somebody may have meant is not.
TEST(Planted, OnlyAWidthBesideAnEighthIsMendedForSure) {
  const auto kindOf = [](const std::string &width) {
    MillTexts texts = cleanMill();
    texts.orders.replace(texts.orders.find("2,LB42,44.75"), 12, "2,LB42," + width);
    const TextCheck check(texts);
    EXPECT_EQ(check.found.size(), 1U) << width;
    return check.found.empty() ? FixKind::kNone : check.found[0].fixKind;
  };
  EXPECT_EQ(kindOf("44.7500001"), FixKind::kSafe);
  EXPECT_EQ(kindOf("44.750000001"), FixKind::kSafe);
  EXPECT_EQ(kindOf("44.753"), FixKind::kUnsafe);
}

TEST(Message, SaysWhatAThousandsCommaDoes) {
  MillTexts texts = cleanMill();
  texts.rates.replace(texts.rates.find("24.25"), 5, "1,024.25");
  const TextCheck check(texts);
  ASSERT_EQ(check.found.size(), 1U);
  EXPECT_THAT(check.found[0].message,
              testing::HasSubstr("\"1,024.25\" is read as rate 1 and delay 024.25"));
  EXPECT_EQ(check.found[0].write, "Badger Box,Alder Falls,Truck,1024.25,0");
}

TEST(Message, NamesTheNearestName) {
  MillTexts texts = cleanMill();
  texts.orders.replace(texts.orders.find("LB42"), 4, "LB24");
  const TextCheck check(texts);
  ASSERT_EQ(check.found.size(), 1U);
  EXPECT_THAT(check.found[0].message, testing::HasSubstr("the nearest grade is \"LB42\""));
  EXPECT_EQ(check.found[0].write, "LB42");
}

}  // namespace
}  // namespace corvane::checks
