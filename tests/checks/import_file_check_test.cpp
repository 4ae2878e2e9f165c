#include "checks/import_file_check.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "checks/checked_files.h"
#include "import_checker/good_files.h"

namespace corvane::checks {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The mill of the good file: width, quantity and period of each order are those that it demands.
MillTexts millOfTheFile() {
  return {"rand num gen seed=7\n", "Mill,C,G,100,46,2.5,12.5\n",
          "1,G,30,5,A\n1,G,45,4,A\n2,G,30,6,A\n", "A,Mill,Truck,40,0\n"};
}

struct Result {
  std::vector<std::string> places;  // "3:7 CV803"
  std::vector<std::string> messages;
  Totals totals;
};

Result check(const std::string &text, const MillTexts &mill, int maximumPerCode = 0) {
  const TextCheck data(mill);
  const SourceFile file("CV.imp", text);
  Result result;
  Selection selection;
  selection.maximumPerCode = maximumPerCode;
  FindingSink sink(selection,
                   [&](const Finding &finding) {
                     const std::string place = finding.line == 0
                                                   ? "whole file"
                                                   : std::to_string(finding.line) + ":" +
                                                         std::to_string(columnOf(finding));
                     result.places.push_back(place + " " + codeText(finding.code));
                     result.messages.push_back(messageOf(finding));
                   },
                   {});
  checkImportFile(file, &data.mill.records, sink);
  result.totals = sink.totals();
  return result;
}

std::vector<std::string> found(const std::string &text) {
  return check(text, millOfTheFile()).places;
}

// The good file with a text replaced where it stands first.
class Changed {
 public:
  Changed &with(const std::string &from, const std::string &to) {
    const std::size_t at = text_.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    text_.replace(at, from.size(), to);
    return *this;
  }
  const std::string &text() const { return text_; }

  // "3:7" of where a text stands first.
  std::string placeOf(const std::string &part) const {
    const std::size_t at = text_.find(part);
    EXPECT_NE(at, std::string::npos) << part;
    const auto end = text_.begin() + static_cast<std::ptrdiff_t>(at);
    const std::size_t begin = at == 0 ? 0 : text_.rfind('\n', at - 1) + 1;
    return std::to_string(1 + std::count(text_.begin(), end, '\n')) + ":" +
           std::to_string(1 + at - begin);
  }

 private:
  std::string text_ = import_checker::kDelayFile;
};

Changed changed(const std::string &from, const std::string &to) {
  return Changed().with(from, to);
}

TEST(ImportFile, AWholeFileOfTheOrdersIsClean) {
  EXPECT_THAT(found(import_checker::kDelayFile), IsEmpty());
}

TEST(ImportFile, WithoutItsLastLineItIsCut) {
  EXPECT_THAT(found(changed("# End of Corvane. import file.\n", "").text()),
              ElementsAre("102:1 CV801"));
  EXPECT_THAT(found(""), ElementsAre("whole file CV801"));
}

TEST(ImportFile, CutWithinALineItIsToldOnce) {
  EXPECT_THAT(found(changed("import file.\n", "import file.").text()), ElementsAre("103:1 CV801"));
  EXPECT_THAT(found(changed("import file.\n", "import").text()), ElementsAre("103:1 CV801"));
  EXPECT_THAT(found("addroot"), ElementsAre("1:1 CV801"));
}

TEST(ImportFile, TwoRunsAreOneTooMany) {
  const std::string text = import_checker::kDelayFile;
  EXPECT_THAT(found(text + text), ElementsAre("104:1 CV802"));
}

TEST(ImportFile, ACutRunBeforeAnotherIsToldAtTheRootOfTheOther) {
  const std::string text = import_checker::kDelayFile;
  const std::string cut = changed("# End of Corvane. import file.\n", "").text();
  EXPECT_THAT(found(cut + text), ElementsAre("103:1 CV802"));
  EXPECT_THAT(found(cut + cut), ElementsAre("103:1 CV802", "204:1 CV801"));
  EXPECT_THAT(found(text + cut), ElementsAre("104:1 CV802", "205:1 CV801"));
}

TEST(ImportFile, ALineThatIsNoCommandIsFoundWhereItGoesWrong) {
  const Changed set = changed("blockset \"G_C\"", "blockset G_C");
  EXPECT_THAT(found(set.text()), ElementsAre(set.placeOf("blockset G_C") + " CV803"));
  const Changed number = changed("<max> 7", "<max> 7,5");
  EXPECT_THAT(found(number.text()), ElementsAre(number.placeOf("7,5") + " CV803"));
  const Changed end = changed("<in> True", "<in>");
  EXPECT_THAT(check(end.text(), millOfTheFile()).messages,
              ElementsAre("line that is no command: no command goes on with \"<in>\"",
                          testing::HasSubstr("takes no")));
}

TEST(ImportFile, AControlCharacterIsFoundAtItsPlace) {
  for (const std::string odd : {"\r", "\x1b", "\xc2\x85", "\xe2\x80\xa8", "\xe2\x80\xa9"}) {
    const Changed name = changed("addnodetoset \"G_A\"", "addnodetoset \"G" + odd + "_A\"");
    const Result result = check(name.text(), millOfTheFile());
    EXPECT_THAT(result.places, ElementsAre(name.placeOf(odd) + " CV804"));
  }
}

TEST(ImportFile, LinesEndWithALineFeedOnly) {
  const Changed line = changed("blockset \"G_C\"\n", "blockset \"G_C\"\r\n");
  EXPECT_THAT(found(line.text()), ElementsAre(line.placeOf("blockset") + " CV804"));
}

TEST(ImportFile, ANameThatIsNotDeclaredIsFound) {
  const Changed node = changed("<to> \"G_C_100\"", "<to> \"G_C_101\"");
  EXPECT_THAT(found(node.text()), ElementsAre(node.placeOf("G_C_101") + " CV805"));
  const Changed commodity = changed("\"Deckle100\" <in> True", "\"Deckle10\" <in> True");
  EXPECT_THAT(found(commodity.text()),
              testing::Contains(commodity.placeOf("Deckle10\" <in>") + " CV805"));
  const Changed period =
      changed("<periodstodelay> 1 <period> \"1\"", "<periodstodelay> 1 <period> \"9\"");
  EXPECT_THAT(found(period.text()), ElementsAre(period.placeOf("9\"") + " CV805"));
  const Changed set = changed("blockset \"G_A\"", "blockset \"G_B\"");
  EXPECT_THAT(found(set.text()), ElementsAre(set.placeOf("G_B") + " CV805"));
}

TEST(ImportFile, AnArcToANodeWithoutItsCommodityIsFoundInEveryLine) {
  const Changed waste =
      changed("addattach <node> \"G_Waste\" <commodity> \"Waste\" <in> True\n", "");
  const std::vector<std::string> places = found(waste.text());
  EXPECT_THAT(places, testing::SizeIs(4));
  EXPECT_THAT(places, testing::Each(testing::EndsWith(" CV806")));
  EXPECT_EQ(places[0], waste.placeOf("G_Waste\" <flow>") + " CV806");
}

TEST(ImportFile, ADemandThatIsNotThatOfTheOrdersIsFound) {
  const Changed demand = changed("<demandamount> 5", "<demandamount> 7");
  const Result result = check(demand.text(), millOfTheFile());
  EXPECT_THAT(result.places, ElementsAre(testing::EndsWith(":1 CV807")));
  EXPECT_THAT(result.messages[0],
              testing::HasSubstr("7 here, 5 in the orders of \"G_A_30.000\" in period \"1\""));
  MillTexts more = millOfTheFile();
  more.orders += "2,G,45,1,A\n";
  EXPECT_THAT(check(import_checker::kDelayFile, more).places, ElementsAre("whole file CV807"));
}

TEST(ImportFile, ACommandThatMakesNoSenseIsFound) {
  const Changed negative = changed("<demandamount> 5", "<demandamount> -5");
  EXPECT_THAT(found(negative.text()),
              ElementsAre(negative.placeOf("-5") + " CV808", "whole file CV807"));
  const Changed type = changed("\"Demand\" <name> \"G_Waste\"", "\"Demand\" <name> \"M_C\"");
  EXPECT_THAT(found(type.text()), testing::Contains(type.placeOf("M_C\" <x> 710") + " CV808"));
  const Changed twice = changed("addperiod <name> \"2\"", "addperiod <name> \"1\"");
  EXPECT_THAT(found(twice.text()), testing::Contains("8:19 CV808"));
}

TEST(ImportFile, ReadingGoesOnBehindABadLine) {
  Changed many;
  many.with("blockset \"G_C\"", "blockset G_C")
      .with("<to> \"G_C_100\"", "<to> \"G_C_101\"")
      .with("<demandamount> 6", "<demandamount> 8")
      .with("<periodstodelay> 1", "<periodstodelay> nan");
  EXPECT_THAT(
      found(many.text()),
      ElementsAre(many.placeOf("G_C_101") + " CV805", many.placeOf("blockset G_C") + " CV803",
                  many.placeOf("nan") + " CV808", testing::EndsWith(":1 CV807")));
}

TEST(ImportFile, ARootThatIsNoneIsOneMistake) {
  EXPECT_THAT(found(changed("addroot", "adroot").text()), ElementsAre("1:1 CV803"));
  const std::string text = import_checker::kDelayFile;
  EXPECT_THAT(found(text.substr(text.find('\n') + 1)), ElementsAre("1:1 CV808"));
}

TEST(ImportFile, TheFindingsOfACodeAreBounded) {
  std::string text;
  for (const char c : std::string(import_checker::kDelayFile)) {
    text += c == '\n' ? "\r\n" : std::string(1, c);
  }
  const Result result = check(text, millOfTheFile(), 3);
  EXPECT_THAT(result.places, ElementsAre("1:1 CV804", "2:1 CV804", "3:1 CV804"));
  EXPECT_EQ(result.totals.all(), 103);
}

}  // namespace
}  // namespace corvane::checks
