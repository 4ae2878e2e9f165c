#include "convert/convert_files.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <memory>
#include <ostream>
#include <vector>

#include "convert/conversion.h"
#include "convert/workbook.h"
#include "core/text.h"

namespace corvane::convert {

namespace {

// More than these say nothing new.
constexpr std::size_t kShownProblems = 20;

struct Source {
  const TableKind *kind;
  QString file;
  TableRules rules;
  Conversion conversion;
};

bool fail(std::ostream &err, const QString &file, const QString &why) {
  err << utf8(file) << ": error: " << utf8(why) << std::endl;
  return false;
}

std::optional<QByteArray> readBytes(const Source &source, std::ostream &err) {
  if (isWorkbook(source.file)) {
    auto table = readSheet(source.file, source.rules.sheet);
    if (!table) {
      fail(err, source.file,
           QStringLiteral("sheet %1 cannot be read (by xlsx2csv, which must be installed)")
               .arg(source.rules.sheet));
    }
    return table;
  }
  QFile file(source.file);
  if (!file.open(QIODevice::ReadOnly)) {
    fail(err, source.file, QStringLiteral("cannot be read: ") + file.errorString());
    return std::nullopt;
  }
  return file.readAll();
}

void printProblem(const QString &file, const Problem &problem, std::ostream &err) {
  err << utf8(file);
  if (problem.line > 0) {
    err << ":" << problem.line;
  }
  if (problem.column > 0) {
    err << ":" << problem.column;
  }
  err << ": error: " << utf8(problem.text) << std::endl;
}

void printProblems(const Source &source, std::ostream &err) {
  const std::vector<Problem> &problems = source.conversion.problems;
  for (std::size_t i = 0; i < std::min(problems.size(), kShownProblems); ++i) {
    printProblem(source.file, problems[i], err);
  }
  if (problems.size() > kShownProblems) {
    err << utf8(source.file) << ": and " << problems.size() - kShownProblems << " more"
        << std::endl;
  }
}

std::vector<Source> sourcesOf(const Request &request) {
  std::vector<Source> sources;
  for (const TableKind &kind : tableKinds()) {
    const QString name = QLatin1String(kind.name);
    const auto table = request.tables.find(name);
    if (table != request.tables.end()) {
      const auto rules = request.map.find(name);
      sources.push_back(
          {&kind, table->second, rules == request.map.end() ? TableRules() : rules->second, {}});
    }
  }
  return sources;
}

// False when any of them cannot be taken.
bool convertAll(std::vector<Source> &sources, std::ostream &err) {
  bool good = true;
  for (Source &source : sources) {
    const auto bytes = readBytes(source, err);
    if (bytes) {
      source.conversion = convertTable(*bytes, *source.kind, source.rules);
      printProblems(source, err);
    }
    good = good && bytes && source.conversion.problems.empty();
  }
  return good;
}

QString targetOf(const Request &request, const TableKind &kind) {
  return QDir(request.folder).filePath(QLatin1String("data/") + QLatin1String(kind.fileName));
}

bool mayWrite(const Request &request, const std::vector<Source> &sources, std::ostream &err) {
  bool may = true;
  for (const Source &source : sources) {
    const QString target = targetOf(request, *source.kind);
    if (!request.force && QFile::exists(target)) {
      may = fail(err, target, QStringLiteral("is there already; --force replaces it"));
    }
  }
  return may;
}

// Writes all files beside their places before any of them takes its place.
bool writeAll(const Request &request, const std::vector<Source> &sources, std::ostream &err) {
  const QString folder = QDir(request.folder).filePath(QStringLiteral("data"));
  if (!QDir().mkpath(folder)) {
    return fail(err, folder, QStringLiteral("cannot be made"));
  }
  std::vector<std::unique_ptr<QSaveFile>> files;
  for (const Source &source : sources) {
    auto file = std::make_unique<QSaveFile>(targetOf(request, *source.kind));
    const QByteArray &data = source.conversion.data;
    if (!file->open(QIODevice::WriteOnly) || file->write(data) != data.size()) {
      return fail(err, file->fileName(),
                  QStringLiteral("cannot be written: ") + file->errorString());
    }
    files.push_back(std::move(file));
  }
  for (const auto &file : files) {
    if (!file->commit()) {
      return fail(err, file->fileName(),
                  QStringLiteral("cannot be written: ") + file->errorString());
    }
  }
  return true;
}

void report(const Request &request, const std::vector<Source> &sources, std::ostream &out) {
  for (const Source &source : sources) {
    out << utf8(source.file) << ": " << source.conversion.rows << " rows ("
        << utf8(source.conversion.notes.join(QLatin1String(", "))) << ") -> "
        << utf8(targetOf(request, *source.kind)) << std::endl;
  }
}

}  // namespace

bool convertFiles(const Request &request, std::ostream &out, std::ostream &err) {
  std::vector<Source> sources = sourcesOf(request);
  if (!convertAll(sources, err)) {
    err << "Nothing was written." << std::endl;
    return false;
  }
  if (!mayWrite(request, sources, err) || !writeAll(request, sources, err)) {
    return false;
  }
  report(request, sources, out);
  return true;
}

}  // namespace corvane::convert
