#include "checks/path_checks.h"

#include <QFileInfo>
#include <array>
#include <optional>
#include <vector>

#include "checks/shown_text.h"
#include "core/files.h"
#include "core/text.h"

namespace corvane::checks {

namespace fs = std::filesystem;

namespace {

QString textOf(const fs::path &path) {
  const std::u8string text = path.u8string();
  return QString::fromUtf8(reinterpret_cast<const char *>(text.data()),
                           static_cast<qsizetype>(text.size()));
}

// Places the finding at the value of the key, or at the file as a whole where a default holds.
void placeAtKey(Finding &finding, const SourceFile &file, const ParameterLines &lines,
                const QString &key) {
  const auto line = lines.constFind(key);
  if (line == lines.constEnd()) {
    return;
  }
  finding.line = *line;
  const std::string_view text = file.line(*line);
  finding.offset = std::min(text.find('=') + 1, text.size());
  finding.length = text.size() - finding.offset;
}

// Why a file could not be written; empty where it can.
std::string whyNotWritable(const fs::path &path) {
  std::error_code error;
  if (fs::is_directory(path, error)) {
    return "it is a folder";
  }
  if (fs::exists(path, error)) {
    return QFileInfo(textOf(path)).isWritable() ? "" : "it may not be written";
  }
  const fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
  if (!fs::is_directory(folder, error)) {
    return "there is no folder " + quotedText(utf8(textOf(folder)));
  }
  return QFileInfo(textOf(folder)).isWritable()
             ? ""
             : "the folder " + quotedText(utf8(textOf(folder))) + " may not be written";
}

bool isSameFile(const fs::path &a, const fs::path &b) {
  std::error_code error;
  if (fs::equivalent(a, b, error)) {
    return true;
  }
  return fs::weakly_canonical(fs::absolute(a, error), error) ==
         fs::weakly_canonical(fs::absolute(b, error), error);
}

struct FileRole {
  QString key;  // empty: the parameter file itself
  std::string what;
  NamedPath path;
};

using FileRoles = std::array<FileRole, 6>;

// The first of the roles before this one whose file is the same.
std::optional<std::size_t> metBefore(const FileRoles &roles, std::size_t role) {
  for (std::size_t before = 0; before < role; ++before) {
    if (isSameFile(roles[role].path.path, roles[before].path.path)) {
      return before;
    }
  }
  return std::nullopt;
}

}  // namespace

NamedPath namedPath(const QString &name, const fs::path &folder) {
  const fs::path path = pathOfFile(utf8(name), folder);
  return {shown(utf8(textOf(path))), path};
}

void checkPaths(const MillRecords &mill, const ParameterLines &lines,
                const NamedPath &parameterFile, const fs::path &folder, FindingSink &sink) {
  const SourceFile &file = *mill.parameterFile.file;
  const RunParameters &parameters = mill.parameters;
  const FileRoles roles = {{
      {{}, "the parameter file", parameterFile},
      {"machine file", "the machine file", namedPath(parameters.machineFile, folder)},
      {"order file", "the order file", namedPath(parameters.orderFile, folder)},
      {"freight rate file", "the freight rate file", namedPath(parameters.freightRateFile, folder)},
      {"log file", "the log file", namedPath(parameters.logFile, folder)},
      {"output", "the import file", namedPath(parameters.output, folder)},
  }};
  constexpr std::size_t kFirstOutput = 4;
  for (std::size_t i = 1; i < roles.size(); ++i) {
    const std::optional<std::size_t> met = metBefore(roles, i);
    const std::string why = i >= kFirstOutput && !met ? whyNotWritable(roles[i].path.path) : "";
    if (!met && why.empty()) {
      continue;
    }
    sink.add(file, met ? Code::kPathsMeet : Code::kNoFolder, [&](Finding &finding) {
      placeAtKey(finding, file, lines, roles[i].key);
      finding.detail = met ? roles[i].what + " and " + roles[*met].what + " are both " +
                                 quotedText(roles[i].path.shown)
                           : roles[i].what + " " + quotedText(roles[i].path.shown) + ": " + why;
    });
  }
}

void reportMissing(const MillRecords &mill, const ParameterLines &lines, const QString &key,
                   const NamedPath &path, FindingSink &sink) {
  const SourceFile &file = *mill.parameterFile.file;
  sink.add(file, Code::kFileMissing, [&](Finding &finding) {
    placeAtKey(finding, file, lines, key);
    std::error_code error;
    const std::string why = fs::is_directory(path.path, error) ? "it is a folder"
                            : fs::exists(path.path, error)     ? "it cannot be read"
                                                               : "there is no such file";
    finding.detail = utf8(key) + " " + quotedText(path.shown) + ": " + why;
    if (finding.line == 0) {
      finding.detail += " (this is the default name)";
    }
  });
}

}  // namespace corvane::checks
