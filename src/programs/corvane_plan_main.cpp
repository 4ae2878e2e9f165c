#include <algorithm>
#include <filesystem>
#include <iostream>
#include <optional>

#include "core/text.h"
#include "network/warning.h"
#include "plan/mill_folder.h"
#include "plan/plan_run.h"
#include "programs/command_line.h"

namespace {

using namespace corvane;

std::vector<CommandOption> options() {
  return {
      {{"import-file"}, "FILE", "plan this import file; no folder is looked at"},
      {{"o", "output"}, "DIR", "write the plan here; by default to plan/ beside the import file"},
      {{"storage"}, "inf", "what if rolls may stay at the cutters from period to period"},
      {{"delays"}, "by-mill", "what if each mill keeps its own transit time"},
      {{"keep-impossible"}, "", "run patterns that are wider than their deckle too"},
      {{"pool"}, "FOLDER", "offer the patterns of this run of the same mill too; may be repeated"},
      {{"improve"}, "", "price patterns that are not in the file and may make the plan cheaper"},
      {{"whole-reels"}, "", "plan reels in whole numbers"},
      {{"gap"}, "FRACTION", "end at whole reels this close to the bound: 0.01 for 1 %"},
      {{"time-limit"}, "SECONDS", "stop after so much time"},
      {{"write-mps"}, "FILE", "write the linear programme for another solver"},
      {{"timings"}, "", "tell in plan.json how long each step took"},
      {{"q", "quiet"}, "", "print neither the plan nor warnings"},
  };
}

// The word that an option may have; anything else is a fault of usage.
std::optional<bool> isWord(const CommandLine &line, const char *option, const char *word) {
  if (!line.has(option)) {
    return false;
  }
  return line.value(option) == word ? std::optional(true) : std::nullopt;
}

// Backslashes of a name separate folders where there is no file of the literal name.
std::string resolved(std::string path) {
  if (!std::filesystem::exists(path)) {
    std::replace(path.begin(), path.end(), '\\', '/');
  }
  return path;
}

// The import file of a folder, or the file itself.
std::string importFileOf(const std::string &path) {
  return resolved(std::filesystem::is_directory(path) ? plan::importFileOfMill(path, std::cerr)
                                                      : path);
}

int planWith(const CommandLine &line) {
  const std::optional<bool> storage = isWord(line, "storage", "inf");
  const std::optional<bool> delays = isWord(line, "delays", "by-mill");
  if (!storage || !delays) {
    return line.refuse(
        !storage ? "--storage knows the word inf alone" : "--delays knows the word by-mill alone",
        std::cerr);
  }
  plan::PlanRequest request;
  request.problem = {*storage, *delays, line.has("keep-impossible")};
  request.mpsFile = utf8(line.value("write-mps"));
  request.quiet = line.has("quiet");
  request.timings = line.has("timings");
  if (line.has("time-limit")) {
    bool isNumber = false;
    request.timeLimit = line.value("time-limit").toDouble(&isNumber);
    if (!isNumber || !(request.timeLimit > 0.0)) {
      return line.refuse("--time-limit takes seconds above 0", std::cerr);
    }
  }
  request.improve = line.has("improve");
  request.wholeReels = line.has("whole-reels");
  if (line.has("gap")) {
    bool isNumber = false;
    request.gap = line.value("gap").toDouble(&isNumber);
    if (!isNumber || !(request.gap >= 0.0)) {
      return line.refuse("--gap takes a fraction, 0 or more", std::cerr);
    }
  }
  if (line.has("import-file") && !line.arguments().isEmpty()) {
    return line.refuse("either a folder or --import-file", std::cerr);
  }
  const std::string folder = line.arguments().isEmpty() ? "" : utf8(line.arguments().first());
  if (line.has("import-file")) {
    request.importFile = resolved(utf8(line.value("import-file")));
  } else {
    request.mill = plan::parametersOfMill(folder, std::cerr);
    request.importFile = resolved(utf8(request.mill->output));
  }
  for (const QString &pool : line.values("pool")) {
    request.poolFiles.push_back(importFileOf(utf8(pool)));
  }
  request.outputFolder =
      line.has("output")
          ? utf8(line.value("output"))
          : (std::filesystem::path(request.importFile).parent_path() / "plan").string();
  return plan::runPlan(request, std::cout, std::cerr);
}

}  // namespace

int main(int argc, char **argv) {
  CommandLine line(
      {"corvane-plan", "[FOLDER]",
       "Solves the network that corvane wrote in the folder, by default the current one: what "
       "each\n"
       "machine runs and when, so that the least demand stays unmet, at the least cost.",
       1},
      options());
  if (const auto status = line.parse(argc, argv, std::cout, std::cerr)) {
    return *status;
  }
  try {
    return planWith(line);
  } catch (const network::Refused &refused) {
    std::cerr << "corvane-plan: ";
    if (refused.line() != 0) {
      std::cerr << "line " << refused.line() << ": ";
    }
    std::cerr << refused.what() << ".\n";
    return kExitUsage;
  }
}
