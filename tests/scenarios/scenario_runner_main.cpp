// scenario_runner SCENARIO WORK PROGRAM CHECKER [--approve]
//
// Runs one scenario in the folder WORK and compares; with --approve it writes expected/ anew
// instead. CHECKER, unless empty, reads each import file of a run that ended well, with the options
// that the scenario gives; with the machine and order files, where they have their default names.
// Ends with 0 when all is as expected, 1 when not, 2 when the scenario cannot be run.

#include <QProcess>
#include <QString>
#include <QStringList>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <span>

#include "scenarios/scenario_runner.h"

using namespace corvane;

namespace {

using corvane::scenarios::Outcome;
using corvane::scenarios::Run;

namespace fs = std::filesystem;

QStringList CheckerArguments(const Run &run, const fs::path &importFile) {
  QStringList arguments;
  std::ifstream options(run.scenario / "checker");
  for (std::string option; options >> option;) {
    arguments << QString::fromStdString(option);
  }
  const fs::path machines = run.work / "data" / "machines.data";
  const fs::path orders = run.work / "data" / "orders.data";
  if (fs::exists(machines) && fs::exists(orders)) {
    arguments << "--machines" << QString::fromStdString(machines.string());
    arguments << "--orders" << QString::fromStdString(orders.string());
  }
  return arguments << QString::fromStdString(importFile.string());
}

// What the checker says of the import files that the run made.
std::vector<std::string> CheckImportFiles(const Run &run, const Outcome &outcome,
                                          const std::string &checker) {
  std::vector<std::string> complaints;
  if (checker.empty() || outcome.at("exit") != "0\n") {
    return complaints;
  }
  for (const auto &[name, bytes] : outcome) {
    if (!name.ends_with(".imp")) {
      continue;
    }
    const fs::path inside = run.work / "data" / name;
    const fs::path path = fs::exists(inside) ? inside : run.work / name;
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QString::fromStdString(checker), CheckerArguments(run, path));
    process.waitForFinished();
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
      complaints.push_back(name + ": " + process.readAll().toStdString());
    }
  }
  return complaints;
}

int Main(std::span<char *> arguments) {
  if (arguments.size() < 5) {
    std::cerr << "usage: scenario_runner SCENARIO WORK PROGRAM CHECKER [--approve]\n";
    return 2;
  }
  const Run run{arguments[1], arguments[2], arguments[3]};
  const Outcome outcome = corvane::scenarios::Perform(run);
  std::vector<std::string> complaints = CheckImportFiles(run, outcome, arguments[4]);
  if (arguments.size() > 5 && std::string(arguments[5]) == "--approve") {
    corvane::scenarios::WriteExpected(run.scenario, outcome);
  } else {
    const Outcome expected = corvane::scenarios::ReadExpected(run.scenario);
    const auto differences = corvane::scenarios::Differences(expected, outcome);
    complaints.insert(complaints.end(), differences.begin(), differences.end());
  }
  for (const std::string &complaint : complaints) {
    std::cout << complaint;
  }
  return complaints.empty() ? 0 : 1;
}

}  // namespace

int main(int argc, char **argv) {
  try {
    return Main({argv, static_cast<std::size_t>(argc)});
  } catch (const std::exception &error) {
    std::cerr << "scenario_runner: " << error.what() << "\n";
    return 2;
  }
}
