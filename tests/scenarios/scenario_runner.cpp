#include "scenarios/scenario_runner.h"

#include <QProcess>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QString>
#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <stdexcept>

namespace corvane::scenarios {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kShownLines = 4;

std::string ReadFile(const fs::path &path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    throw std::runtime_error("cannot read " + path.string());
  }
  return {std::istreambuf_iterator<char>(in), {}};
}

std::vector<std::string> Lines(const std::string &text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) {
    lines.push_back(line);
  }
  if (!text.empty() && text.back() != '\n') {
    lines.back() += "<no line break>";
  }
  return lines;
}

// All regular files below `root`, by their path from there.
Outcome FilesBelow(const fs::path &root) {
  Outcome files;
  for (const auto &entry : fs::recursive_directory_iterator(root)) {
    if (entry.is_regular_file()) {
      files[entry.path().lexically_relative(root).generic_string()] = ReadFile(entry.path());
    }
  }
  return files;
}

void CopyInput(const fs::path &scenario, const fs::path &work) {
  static const std::set<std::string> kNotInput = {"checker", "env", "expected", "program"};
  fs::remove_all(work);
  fs::create_directories(work);
  for (const auto &entry : fs::directory_iterator(scenario)) {
    const fs::path name = entry.path().filename();
    if (!kNotInput.contains(name.string())) {
      fs::copy(entry.path(), work / name, fs::copy_options::recursive);
    }
  }
}

// The environment of the tests without what steers the program, then the lines of `env`.
QProcessEnvironment EnvironmentOf(const fs::path &scenario) {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  for (const QString &name : environment.keys()) {
    if (name.startsWith("CORVANE_") || name.startsWith("ZEM_")) {
      environment.remove(name);
    }
  }
  if (!fs::exists(scenario / "env")) {
    return environment;
  }
  for (const std::string &line : Lines(ReadFile(scenario / "env"))) {
    const std::size_t equals = line.find('=');
    if (equals == std::string::npos) {
      throw std::runtime_error("no VAR=value in env: " + line);
    }
    environment.insert(QString::fromStdString(line.substr(0, equals)),
                       QString::fromStdString(line.substr(equals + 1)));
  }
  return environment;
}

std::string ExitOf(QProcess &process, int seconds) {
  if (!process.waitForStarted()) {
    throw std::runtime_error("cannot start " + process.program().toStdString());
  }
  if (!process.waitForFinished(seconds * 1000)) {
    process.kill();
    process.waitForFinished();
    return "timeout\n";
  }
  return process.exitStatus() == QProcess::NormalExit ? std::to_string(process.exitCode()) + "\n"
                                                      : "crash\n";
}

// The first line that differs and a few after it, as a diff shows them.
std::string FirstDifference(const std::string &expected, const std::string &actual) {
  const std::vector<std::string> wanted = Lines(expected);
  const std::vector<std::string> given = Lines(actual);
  const auto differing = std::mismatch(wanted.begin(), wanted.end(), given.begin(), given.end());
  const auto first = static_cast<std::size_t>(differing.first - wanted.begin());
  std::string shown;
  const auto show = [&shown, first](const std::vector<std::string> &lines, const char *sign) {
    for (std::size_t at = first; at < std::min(lines.size(), first + kShownLines); ++at) {
      shown += "  " + std::to_string(at + 1) + sign + lines[at] + "\n";
    }
    if (first >= lines.size()) {
      shown += "  " + std::to_string(lines.size() + 1) + sign + "<end>\n";
    }
  };
  show(wanted, " - ");
  show(given, " + ");
  return shown;
}

}  // namespace

std::string MaskTimes(const std::string &text) {
  // Byte by byte: a log may hold anything.
  static const QRegularExpression kTime(
      R"re((^|\n)(\*\*\*\* [^\n]*)\d{4}/\d\d/\d\d \d\d:\d\d:\d\d( \*\*\*\*))re");
  QString masked = QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
  masked.replace(kTime, "\\1\\2YYYY/MM/DD HH:MM:SS\\3");
  return masked.toLatin1().toStdString();
}

Outcome Perform(const Run &run) {
  CopyInput(run.scenario, run.work);
  const Outcome before = FilesBelow(run.work);

  QProcess process;
  process.setProgram(QString::fromStdString(run.program.string()));
  process.setWorkingDirectory(QString::fromStdString(run.work.string()));
  process.setProcessEnvironment(EnvironmentOf(run.scenario));
  process.setStandardInputFile(QProcess::nullDevice());
  process.start();

  Outcome outcome;
  outcome["exit"] = ExitOf(process, run.seconds);
  outcome["stdout"] = process.readAllStandardOutput().toStdString();
  outcome["stderr"] = process.readAllStandardError().toStdString();
  for (const auto &[path, bytes] : FilesBelow(run.work)) {
    const auto old = before.find(path);
    if (old == before.end() || old->second != bytes) {
      outcome[path.starts_with("data/") ? path.substr(5) : path] = MaskTimes(bytes);
    }
  }
  for (const auto &[path, bytes] : before) {
    if (!fs::exists(run.work / path)) {
      throw std::runtime_error("the run removed " + path);
    }
  }
  return outcome;
}

Outcome ReadExpected(const fs::path &scenario) {
  const fs::path folder = scenario / "expected";
  return fs::is_directory(folder) ? FilesBelow(folder) : Outcome();
}

void WriteExpected(const fs::path &scenario, const Outcome &outcome) {
  const fs::path folder = scenario / "expected";
  fs::remove_all(folder);
  for (const auto &[name, bytes] : outcome) {
    fs::create_directories((folder / name).parent_path());
    std::ofstream(folder / name, std::ios::binary) << bytes;
  }
}

std::vector<std::string> Differences(const Outcome &expected, const Outcome &actual) {
  std::vector<std::string> complaints;
  for (const auto &[name, bytes] : expected) {
    const auto found = actual.find(name);
    if (found == actual.end()) {
      complaints.push_back(name + ": expected, but the run did not write it\n");
    } else if (found->second != bytes) {
      complaints.push_back(name + ": differs (- expected, + actual)\n" +
                           FirstDifference(bytes, found->second));
    }
  }
  for (const auto &[name, bytes] : actual) {
    if (!expected.contains(name)) {
      complaints.push_back(name + ": written by the run, but not expected\n" +
                           FirstDifference("", bytes));
    }
  }
  return complaints;
}

}  // namespace corvane::scenarios
