// The examples in docs/import-file.md are lines of the language, and show all of it.

#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <string>

#include "import_grammar.h"

namespace import_checker {
namespace {

TEST(ImportDocument, ShowsEveryFamilyInLinesThatParse) {
  std::ifstream document(CORVANE_SOURCE_DIR "/docs/import-file.md");
  ASSERT_TRUE(document);
  std::set<Family> shown;
  bool example = false;
  for (std::string line; std::getline(document, line);) {
    if (line.starts_with("```")) {
      example = line == "```imp";
    } else if (example) {
      const auto command = parseCommand(line);
      ASSERT_TRUE(command.has_value()) << line;
      shown.insert(command->family);
    }
  }
  for (int family = 0; family <= static_cast<int>(Family::kTrailer); ++family) {
    EXPECT_TRUE(shown.contains(static_cast<Family>(family))) << family;
  }
}

}  // namespace
}  // namespace import_checker
