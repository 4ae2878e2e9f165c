// check_import: reads an import file back and prints what is wrong with it.
// Exit status: 0 fine, 1 complaints, 2 wrong usage or a file that cannot be read.

#include <cstdlib>
#include <exception>
#include <fstream>
#include <functional>
#include <iostream>
#include <iterator>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "demand_check.h"
#include "import_checker.h"

using namespace corvane;

namespace {

constexpr const char *kUsage =
    "usage: check_import [--batch] [--no-delay] [--patterns-only] [--periods N] [--odd-data]\n"
    "                    [--freight-complete] [--machines FILE --orders FILE] IMPORT_FILE\n";

struct Arguments {
  import_checker::ImportOptions options;
  std::string machines;
  std::string orders;
  std::string file;
};

std::size_t countOf(const std::string &text) {
  std::size_t used = 0;
  const unsigned long count = std::stoul(text, &used);
  if (used != text.size()) {
    throw std::invalid_argument("not a number: " + text);
  }
  return count;
}

// Takes an option that stands alone; false when the word is none.
bool takeFlag(const std::string &word, import_checker::ImportOptions &options) {
  const std::map<std::string, std::function<void()>> flags{
      {"--batch", [&] { options.batch = true; }},
      {"--no-delay", [&] { options.delay = false; }},
      {"--patterns-only", [&] { options.patternsOnly = true; }},
      {"--odd-data", [&] { options.ordinaryData = false; }},
      {"--freight-complete", [&] { options.freightComplete = true; }}};
  const auto flag = flags.find(word);
  if (flag != flags.end()) {
    flag->second();
  }
  return flag != flags.end();
}

// Takes an option with its value; false when the word is none.
bool takeValue(const std::string &word, const std::string &value, Arguments &arguments) {
  if (word == "--periods") {
    arguments.options.periods = countOf(value);
  } else if (word == "--machines") {
    arguments.machines = value;
  } else if (word == "--orders") {
    arguments.orders = value;
  } else {
    return false;
  }
  return true;
}

// Empty when the arguments are wrong.
std::optional<Arguments> readArguments(const std::vector<std::string> &words) {
  Arguments arguments;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (takeFlag(words[i], arguments.options)) {
      continue;
    }
    if (i + 1 < words.size() && takeValue(words[i], words[i + 1], arguments)) {
      ++i;
    } else if (words[i].starts_with("--") || !arguments.file.empty()) {
      return std::nullopt;
    } else {
      arguments.file = words[i];
    }
  }
  const bool paired = arguments.machines.empty() == arguments.orders.empty();
  return paired && !arguments.file.empty() ? std::optional(arguments) : std::nullopt;
}

std::string contentOf(const std::string &path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) {
    throw std::runtime_error("cannot read " + path);
  }
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

int run(const Arguments &arguments) {
  const std::string text = contentOf(arguments.file);
  std::vector<import_checker::Complaint> complaints =
      import_checker::checkImport(text, arguments.options);
  // A run of patterns only writes no demand.
  if (!arguments.orders.empty() && !arguments.options.patternsOnly) {
    const auto more = import_checker::checkDemand(
        text, {contentOf(arguments.machines), contentOf(arguments.orders)});
    complaints.insert(complaints.end(), more.begin(), more.end());
  }
  std::cout << import_checker::describe(complaints);
  return complaints.empty() ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace

int main(int argc, char **argv) {
  constexpr int kWrongUse = 2;
  try {
    const std::optional<Arguments> arguments =
        readArguments(std::vector<std::string>(argv + 1, argv + argc));
    if (!arguments) {
      std::cerr << kUsage;
      return kWrongUse;
    }
    return run(*arguments);
  } catch (const std::exception &fault) {
    std::cerr << "check_import: " << fault.what() << '\n';
    return kWrongUse;
  }
}
