// check_import: reads an import file back and prints what is wrong with it.
// Exit status: 0 fine, 1 complaints, 2 wrong usage or a file that cannot be read.

#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "demand_check.h"
#include "import_checker.h"

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

// Empty when the arguments are wrong.
std::optional<Arguments> readArguments(const std::vector<std::string> &words) {
  Arguments arguments;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string &word = words[i];
    const bool valued = word == "--periods" || word == "--machines" || word == "--orders";
    if (valued && i + 1 == words.size()) {
      return std::nullopt;
    }
    if (word == "--batch") {
      arguments.options.batch = true;
    } else if (word == "--no-delay") {
      arguments.options.delay = false;
    } else if (word == "--patterns-only") {
      arguments.options.patternsOnly = true;
    } else if (word == "--odd-data") {
      arguments.options.ordinaryData = false;
    } else if (word == "--freight-complete") {
      arguments.options.freightComplete = true;
    } else if (word == "--periods") {
      arguments.options.periods = countOf(words[++i]);
    } else if (word == "--machines") {
      arguments.machines = words[++i];
    } else if (word == "--orders") {
      arguments.orders = words[++i];
    } else if (word.starts_with("--") || !arguments.file.empty()) {
      return std::nullopt;
    } else {
      arguments.file = word;
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
