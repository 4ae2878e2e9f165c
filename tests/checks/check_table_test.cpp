#include "checks/check_table.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace corvane::checks {
namespace {

using testing::HasSubstr;

std::string textOfFile(const std::string &path) {
  std::ifstream file(path);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

TEST(CheckTable, EveryCheckSaysEverything) {
  for (const Check &check : allChecks()) {
    for (const std::string_view text : {check.title, check.why, check.example, check.fix}) {
      EXPECT_FALSE(text.empty()) << codeText(check.code);
    }
    EXPECT_EQ(&checkOf(check.code), &check);
    EXPECT_EQ(findCheck(codeText(check.code)), &check);
  }
}

TEST(CheckTable, ACodeIsFoundInAnyCase) {
  ASSERT_NE(findCheck("cv204"), nullptr);
  EXPECT_EQ(findCheck("cv204")->code, Code::kDecimalComma);
  EXPECT_EQ(findCheck("CV999"), nullptr);
  EXPECT_EQ(findCheck(""), nullptr);
}

TEST(CheckTable, AnExplanationHasAllOfARow) {
  for (const Check &check : allChecks()) {
    const std::string text = explanation(check);
    for (const std::string_view part : {check.title, check.why, check.example, check.fix}) {
      EXPECT_THAT(text, HasSubstr(std::string(part)));
    }
    EXPECT_THAT(text, HasSubstr(std::string(severityWord(check.severity))));
  }
}

TEST(CheckTable, TheListHasALineForEachCheck) {
  for (const Check &check : allChecks()) {
    EXPECT_THAT(checkList(), HasSubstr(codeText(check.code) + "  "));
  }
}

// With CORVANE_WRITE_DOCUMENTS set, the page is written anew.
TEST(CheckTable, ThePageIsThatOfTheTable) {
  const std::string page = CORVANE_SOURCE_DIR "/docs/checks.md";
  if (std::getenv("CORVANE_WRITE_DOCUMENTS") != nullptr) {
    std::ofstream(page) << checkDocument();
  }
  EXPECT_EQ(textOfFile(page), checkDocument())
      << "CORVANE_WRITE_DOCUMENTS=1 checks_tests writes the page anew";
}

}  // namespace
}  // namespace corvane::checks
