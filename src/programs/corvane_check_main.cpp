// corvane-check: tells of mistakes in the input files before corvane runs.

#include <iostream>

#include "checks/check_run.h"
#include "core/text.h"
#include "programs/command_line.h"

namespace {

std::vector<std::string> texts(const QStringList &values) {
  std::vector<std::string> result;
  for (const QString &value : values) {
    result.push_back(corvane::utf8(value));
  }
  return result;
}

corvane::CommandLine commandLine() {
  return {
      {"corvane-check", "[FOLDER | PARAMETER_FILE]",
       "Looks for mistakes in the parameter, machine, order and freight rate files of a mill and "
       "says what corvane\nwould read instead. FOLDER is the one that corvane is started in.\n"
       "Exit status: 0 nothing found, 1 findings at or above the level, 2 could not check.",
       1},
      {
          {{"format"}, "text|gcc|json|sarif", "how findings are shown (text)"},
          {{"select"}, "CODES", "only these codes; CV2 means all that begin so"},
          {{"ignore"}, "CODES", "none of these codes"},
          {{"level"}, "error|warning|info", "the least severity that is shown (warning)"},
          {{"explain"}, "CODE", "say what a code means"},
          {{"list"}, {}, "list all codes"},
          {{"baseline"}, "FILE", "say nothing of the findings in a file of --format json"},
          {{"fix"}, "DIR", "write corrected copies of the files below a folder"},
          {{"unsafe-fixes"}, {}, "with --fix: guesses too"},
          {{"import-file"}, "FILE", "check an import file of the mill instead"},
          {{"max-per-code"}, "N", "show at most N findings of a code; 0: all (text: 10)"},
      }};
}

}  // namespace

int main(int argc, char **argv) {
  corvane::CommandLine line = commandLine();
  if (const auto status = line.parse(argc, argv, std::cout, std::cerr)) {
    return *status;
  }
  corvane::checks::CheckOptions options;
  options.argument = corvane::utf8(line.arguments().value(0));
  options.select = texts(line.values("select"));
  options.ignore = texts(line.values("ignore"));
  options.explain = corvane::utf8(line.value("explain"));
  options.list = line.has("list");
  options.baseline = corvane::utf8(line.value("baseline"));
  options.fix = corvane::utf8(line.value("fix"));
  options.unsafeFixes = line.has("unsafe-fixes");
  options.importFile = corvane::utf8(line.value("import-file"));
  if (line.has("format")) {
    options.format = corvane::utf8(line.value("format"));
  }
  if (line.has("level")) {
    options.level = corvane::utf8(line.value("level"));
  }
  if (line.has("max-per-code")) {
    options.maximumPerCode = corvane::utf8(line.value("max-per-code"));
  }
  return corvane::checks::runCheck(options, std::cout, std::cerr);
}
