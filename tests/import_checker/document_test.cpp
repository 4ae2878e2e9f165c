// The examples in docs/import-file.md are lines of the language, and show all of it.

#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <string>
#include <vector>

#include "import_grammar.h"

namespace corvane::import_checker {
namespace {

// The lines of the blocks that are marked as lines of an import file.
std::vector<std::string> examples() {
  std::ifstream document(CORVANE_SOURCE_DIR "/docs/import-file.md");
  std::vector<std::string> lines;
  bool example = false;
  for (std::string line; std::getline(document, line);) {
    if (line.starts_with("```")) {
      example = line == "```imp";
    } else if (example) {
      lines.push_back(line);
    }
  }
  return lines;
}

TEST(ImportDocument, ShowsEveryFamilyInLinesThatParse) {
  std::set<Family> shown;
  for (const std::string &line : examples()) {
    const auto command = parseCommand(line);
    ASSERT_TRUE(command.has_value()) << line;
    shown.insert(command->family);
  }
  EXPECT_EQ(shown.size(), static_cast<std::size_t>(Family::kTrailer) + 1);
}

}  // namespace
}  // namespace corvane::import_checker
