#include "architecture/source_rules.h"

#include <QRegularExpression>
#include <QString>
#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>

namespace corvane::architecture {
namespace {

namespace fs = std::filesystem;

// Lowest first; a layer may include itself and those before it.
constexpr std::array kLayers = {"core", "planning", "generation", "export", "app"};
// The companions, which no layer knows, each with what it may include beside itself. Programs stand
// on top of everything but the solver.
const std::map<std::string, std::set<std::string>> &Companions() {
  static const std::map<std::string, std::set<std::string>> kCompanions = {
      {"formats", {"core"}},
      {"processes", {}},
      {"network", {"core"}},
      {"plan", {"core", "formats", "network", "planning", "generation", "export", "app"}},
      {"checks", {"core", "formats", "network", "planning", "export", "app"}},
      {"record", {"core", "formats", "network", "planning", "app", "plan", "checks"}},
      {"report", {"core", "formats", "record"}},
      {"convert", {"core", "formats", "planning", "app", "checks", "processes"}},
      {"sweep", {"core", "formats", "app", "processes"}},
      {"programs",
       {"core", "formats", "network", "planning", "generation", "export", "app", "plan", "checks",
        "record", "report", "convert", "sweep"}},
  };
  return kCompanions;
}

constexpr const char *kSolver = "solver";
constexpr const char *kSolverInterface = "solver/callable_library.h";
constexpr const char *kFatal = "core/fatal.cpp";
constexpr const char *kSelfCheck = "solver/callable_library.cpp";

int RankOf(const std::string &layer) {
  const auto *found = std::find(kLayers.begin(), kLayers.end(), layer);
  return found == kLayers.end() ? -1 : static_cast<int>(found - kLayers.begin());
}

std::string LayerOf(const std::string &path) {
  return path.substr(0, path.find('/'));
}

bool IsKnown(const std::string &folder) {
  return folder == kSolver || RankOf(folder) >= 0 || Companions().contains(folder);
}

std::string Complaint(const SourceFile &file, std::size_t line, const std::string &words) {
  return file.path + ":" + std::to_string(line) + ": " + words;
}

// Where an include of ours leads, relative to src/; empty for a header from elsewhere. Quoted
// includes are looked for beside the file first, as the compiler does.
std::string Resolve(const std::string &from, const std::string &name, bool quoted,
                    const std::set<std::string> &known) {
  const std::string beside = (fs::path(from).parent_path() / name).lexically_normal().string();
  if (quoted && known.contains(beside)) {
    return beside;
  }
  const std::string below = fs::path(name).lexically_normal().string();
  return known.contains(below) ? below : std::string();
}

// Why `from` may not include `to`; empty when it may.
std::string Objection(const std::string &from, const std::string &to) {
  const std::string source = LayerOf(from);
  const std::string target = LayerOf(to);
  if (source == target) {
    return "";
  }
  if (source == kSolver) {
    return "the solver layer is a leaf and may not include " + to;
  }
  if (target == kSolver) {
    return source == "generation" && to == kSolverInterface
               ? ""
               : "only generation calls the solver, through " + std::string(kSolverInterface) +
                     ", not " + to;
  }
  if (const auto companion = Companions().find(source); companion != Companions().end()) {
    return companion->second.contains(target) ? "" : source + " does not stand on " + to;
  }
  if (Companions().contains(target)) {
    return source + " knows no companion, and so not " + to;
  }
  return RankOf(target) < RankOf(source) ? "" : source + " lies below " + to;
}

// Skips a quoted literal that starts at `at`; returns the position of its closing quote.
std::size_t EndOfLiteral(const std::string &text, std::size_t at) {
  const char quote = text[at];
  for (++at; at < text.size() && text[at] != quote && text[at] != '\n'; ++at) {
    if (text[at] == '\\') {
      ++at;
    }
  }
  return at;
}

// True for the ' of 1'000: a digit separator opens no literal.
bool IsDigitSeparator(const std::string &text, std::size_t at) {
  return text[at] == '\'' && at > 0 && std::isxdigit(static_cast<unsigned char>(text[at - 1])) != 0;
}

}  // namespace

std::vector<SourceFile> ReadSources(const std::string &source_root) {
  std::vector<SourceFile> files;
  for (const auto &entry : fs::recursive_directory_iterator(source_root)) {
    const std::string extension = entry.path().extension().string();
    if (extension != ".h" && extension != ".cpp") {
      continue;
    }
    std::ifstream in(entry.path(), std::ios::binary);
    files.push_back({fs::relative(entry.path(), source_root).generic_string(),
                     {std::istreambuf_iterator<char>(in), {}}});
  }
  std::sort(files.begin(), files.end(),
            [](const SourceFile &a, const SourceFile &b) { return a.path < b.path; });
  return files;
}

std::string CodeOnly(const std::string &text) {
  std::string code = text;
  const auto blank = [&code](std::size_t begin, std::size_t end) {
    for (std::size_t at = begin; at < std::min(end, code.size()); ++at) {
      code[at] = code[at] == '\n' ? '\n' : ' ';
    }
  };
  for (std::size_t at = 0; at < text.size(); ++at) {
    std::size_t end = at;
    if (text.compare(at, 2, "//") == 0) {
      end = text.find('\n', at);
    } else if (text.compare(at, 2, "/*") == 0) {
      end = text.find("*/", at + 2);
      end = end == std::string::npos ? end : end + 2;
    } else if (text[at] == '"' || (text[at] == '\'' && !IsDigitSeparator(text, at))) {
      end = EndOfLiteral(text, at) + 1;
    } else {
      continue;
    }
    end = std::min(end, text.size());
    blank(at, end);
    at = end - 1;
  }
  return code;
}

std::vector<std::string> IncludeComplaints(const std::vector<SourceFile> &files) {
  static const QRegularExpression kInclude(R"re(^\s*#\s*include\s*(["<])([^">]+)[">])re");
  std::set<std::string> known;
  for (const SourceFile &file : files) {
    known.insert(file.path);
  }
  std::vector<std::string> complaints;
  for (const SourceFile &file : files) {
    if (!IsKnown(LayerOf(file.path))) {
      complaints.push_back(Complaint(file, 1, "lies in no known layer"));
      continue;
    }
    std::istringstream lines(file.text);
    std::string line;
    for (std::size_t number = 1; std::getline(lines, line); ++number) {
      const QRegularExpressionMatch match = kInclude.match(QString::fromStdString(line));
      if (!match.hasMatch()) {
        continue;
      }
      const std::string target =
          Resolve(file.path, match.captured(2).toStdString(), match.captured(1) == "\"", known);
      const std::string objection = target.empty() ? "" : Objection(file.path, target);
      if (!objection.empty()) {
        complaints.push_back(Complaint(file, number, objection));
      }
    }
  }
  return complaints;
}

std::vector<std::string> ExitComplaints(const std::vector<SourceFile> &files) {
  static const QRegularExpression kExit(
      R"re(\b(_exit|_Exit|exit|quick_exit|abort|terminate)\s*\()re");
  std::vector<std::string> complaints;
  for (const SourceFile &file : files) {
    if (file.path == kFatal) {
      continue;
    }
    std::istringstream lines(CodeOnly(file.text));
    std::string line;
    for (std::size_t number = 1; std::getline(lines, line); ++number) {
      const QRegularExpressionMatch match = kExit.match(QString::fromStdString(line));
      if (match.hasMatch() && !(file.path == kSelfCheck && match.captured(1) == "abort")) {
        complaints.push_back(Complaint(
            file, number, match.captured(1).toStdString() + "() outside " + std::string(kFatal)));
      }
    }
  }
  return complaints;
}

}  // namespace corvane::architecture
