#include "checks/import_file_check.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

std::vector<std::string> found(const std::string &text, const MillTexts &mill) {
  const TextCheck check(mill);
  const SourceFile file("CV.imp", text);
  std::vector<std::string> codes;
  FindingSink sink(Selection(),
                   [&](const Finding &finding) { codes.push_back(codeText(finding.code)); }, {});
  checkImportFile(file, &check.mill.records, sink);
  return codes;
}

std::string changed(const std::string &from, const std::string &to) {
  std::string text = import_checker::kDelayFile;
  const std::size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  return text.replace(at, from.size(), to);
}

TEST(ImportFile, AWholeFileOfTheOrdersIsClean) {
  EXPECT_THAT(found(import_checker::kDelayFile, millOfTheFile()), IsEmpty());
}

TEST(ImportFile, WithoutItsLastLineItIsCut) {
  EXPECT_THAT(found(changed("# End of Corvane. import file.\n", ""), millOfTheFile()),
              ElementsAre("CV801"));
  EXPECT_THAT(found("", millOfTheFile()), ElementsAre("CV801"));
}

TEST(ImportFile, TwoRunsAreOneTooMany) {
  const std::string text = import_checker::kDelayFile;
  EXPECT_THAT(found(text + text, millOfTheFile()), ElementsAre("CV802"));
}

TEST(ImportFile, ALineThatIsNoCommandIsFound) {
  EXPECT_THAT(found(changed("blockset \"G_C\"", "blockset G_C"), millOfTheFile()),
              ElementsAre("CV803"));
}

TEST(ImportFile, AControlCharacterIsFoundBeforeItActs) {
  EXPECT_THAT(found(changed("\"G_A_30.000\"", "\"G_A\r_30.000\""), millOfTheFile()),
              ElementsAre("CV804"));
  EXPECT_THAT(found(changed("\"G_A_30.000\"", "\"G_A\xe2\x80\xa8_30.000\""), millOfTheFile()),
              ElementsAre("CV804"));
}

TEST(ImportFile, ANameThatIsNotDeclaredIsFound) {
  EXPECT_THAT(found(changed("<to> \"G_C_100\"", "<to> \"G_C_101\""), millOfTheFile()),
              ElementsAre("CV805"));
}

TEST(ImportFile, AnArcToANodeWithoutItsCommodityIsFound) {
  EXPECT_THAT(found(changed("addattach <node> \"G_Waste\" <commodity> \"Waste\" <in> True\n", ""),
                    millOfTheFile()),
              ElementsAre("CV806"));
}

TEST(ImportFile, ADemandThatIsNotThatOfTheOrdersIsFound) {
  EXPECT_THAT(found(changed("<demandamount> 5", "<demandamount> 7"), millOfTheFile()),
              ElementsAre("CV807"));
  MillTexts more = millOfTheFile();
  more.orders += "2,G,45,1,A\n";
  EXPECT_THAT(found(import_checker::kDelayFile, more), ElementsAre("CV807"));
}

}  // namespace
}  // namespace corvane::checks
