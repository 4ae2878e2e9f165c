#include "import_checker.h"

#include <algorithm>

#include "import_grammar.h"
#include "import_model.h"

namespace corvane::import_checker {
namespace {

void checkLine(ImportModel &model, std::size_t line, std::string_view text) {
  const std::optional<Command> command = parseCommand(text);
  if (command) {
    model.take(line, *command);
  } else {
    model.complain(line, "is no line of the language: " + std::string(text));
  }
}

void sortByLine(std::vector<Complaint> &complaints) {
  const auto place = [](const Complaint &complaint) { return complaint.line - 1; };
  std::stable_sort(complaints.begin(), complaints.end(),
                   [&](const Complaint &a, const Complaint &b) { return place(a) < place(b); });
}

}  // namespace

std::vector<Complaint> checkImport(std::string_view text, const ImportOptions &options) {
  ImportModel model(options);
  std::size_t line = 0;
  bool ended = false;
  while (!text.empty()) {
    ++line;
    const std::size_t end = text.find('\n');
    const std::string_view content = text.substr(0, end);
    if (ended) {
      model.complain(line, "stands below the trailer");
    }
    ended = ended || content == "# End of Corvane. import file.";
    checkLine(model, line, content);
    if (end == std::string_view::npos) {
      model.complain(line, "has no line end");
      break;
    }
    text.remove_prefix(end + 1);
  }
  model.finish();
  std::vector<Complaint> complaints = model.complaints();
  sortByLine(complaints);
  return complaints;
}

std::string describe(const std::vector<Complaint> &complaints) {
  std::string text;
  for (const Complaint &complaint : complaints) {
    text += complaint.line == 0 ? "whole file: " : "line " + std::to_string(complaint.line) + ": ";
    text += complaint.text + '\n';
  }
  return text;
}

}  // namespace corvane::import_checker
