#include "report/make_report.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <fstream>
#include <ostream>

#include "core/files.h"
#include "core/text.h"
#include "record/read_run.h"
#include "record/record_reader.h"
#include "record/record_writer.h"
#include "report/page.h"
#include "report/study_page.h"

namespace corvane::report {

namespace {

namespace fs = std::filesystem;

constexpr int kFailed = 1;

fs::path pathOf(const QString &name) {
  return fs::path(utf8(name));
}

// Something that keeps the report from being made, as a sentence.
struct Fault {
  QString text;
};

QByteArray bytesOf(const QString &name) {
  QFile file(name);
  if (!QFileInfo(name).isFile() || !file.open(QIODevice::ReadOnly)) {
    throw Fault{QStringLiteral("%1 cannot be read.").arg(name)};
  }
  return file.readAll();
}

void write(const QString &name, const QByteArray &bytes) {
  QFile file(name);
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush()) {
    throw Fault{QStringLiteral("%1 cannot be written.").arg(name)};
  }
}

// A run by its folder, its record or a page of it.
record::Record load(const QString &name, const QString &plan, const QString &version) {
  QString fault;
  std::optional<record::Record> record;
  if (QFileInfo(name).isDir()) {
    record = record::readRun({pathOf(name), pathOf(plan)}, version, fault);
  } else {
    const QByteArray bytes = bytesOf(name);
    record = record::fromJson(recordIn(bytes).value_or(bytes), fault);
    fault = QStringLiteral("%1 is no run record and no page with one: %2.").arg(name, fault);
  }
  if (!record) {
    throw Fault{fault};
  }
  return *std::move(record);
}

// Beside the import file of a folder, or beside the record.
QString defaultOutput(const QString &subject) {
  const fs::path beside =
      QFileInfo(subject).isDir() ? record::importFileOf(pathOf(subject)) : pathOf(subject);
  return QString::fromStdString((beside.parent_path() / "report.html").lexically_normal().string());
}

void writeTables(const QString &folder, const std::vector<Table> &tables) {
  if (!QDir().mkpath(folder)) {
    throw Fault{QStringLiteral("The folder %1 cannot be made.").arg(folder)};
  }
  for (const Table &table : tables) {
    const fs::path path = pathOf(folder) / (table.id.toStdString() + ".csv");
    std::ofstream file(path, std::ios::binary);
    writeCsv(table, file);
    file.close();
    if (!file) {
      throw Fault{
          QStringLiteral("%1 cannot be written.").arg(QString::fromStdString(path.string()))};
    }
  }
}

void refuseToOverwrite(const QString &output, const QString &input) {
  if (!output.isEmpty() && !input.isEmpty() && areOneFile(utf8(output), utf8(input))) {
    throw Fault{QStringLiteral("%1 is read, so it cannot be written too.").arg(output)};
  }
}

// The files that are read for a subject: itself, or those of a folder.
QStringList filesOf(const QString &subject, const record::Record &record) {
  if (!QFileInfo(subject).isDir()) {
    return {subject};
  }
  QStringList names;
  for (const record::File &file : record.files) {
    names << QString::fromStdString(pathOfFile(utf8(file.name), pathOf(subject)).string());
  }
  const fs::path beside = record::importFileOf(pathOf(subject)).parent_path();
  return names << QString::fromStdString((beside / "plan" / "plan.json").string());
}

// The file of a study that the subject names or holds; empty where it is none.
QString studyFileOf(const QString &subject) {
  if (!QFileInfo(subject).isDir()) {
    return subject;
  }
  const QString inFolder = QDir(subject).filePath(QStringLiteral("study.json"));
  return QFileInfo(inFolder).isFile() ? inFolder : QString();
}

std::optional<StudyRecord> loadStudy(const QString &subject) {
  const QString file = studyFileOf(subject);
  std::optional<StudyRecord> study;
  if (!file.isEmpty()) {
    study = studyFromJson(bytesOf(file));
  }
  if (study) {
    study->name = QFileInfo(QFileInfo(file).absolutePath()).fileName();
  }
  return study;
}

void makeOfStudy(const StudyRecord &study, const Request &request, const QString &subject,
                 const QString &version, std::ostream &out) {
  if (!request.with.isEmpty() || !request.plan.isEmpty() || !request.record.isEmpty() ||
      request.usedOnly) {
    throw Fault{QStringLiteral("%1 is a study: it has no plan or record of its own, and is "
                               "compared with nothing.")
                    .arg(subject)};
  }
  const QString file = studyFileOf(subject);
  const QString output = request.output.isEmpty()
                             ? QDir(QFileInfo(file).path()).filePath(QStringLiteral("study.html"))
                             : request.output;
  refuseToOverwrite(output, file);
  write(output, studyPage(study, version));
  if (!request.csv.isEmpty()) {
    writeTables(request.csv, studyTables(study));
  }
  out << "Report: " << utf8(output) << std::endl;
}

void makeOfRun(const Request &request, const QString &subject, const QString &version,
               std::ostream &out) {
  const QString output = request.output.isEmpty() ? defaultOutput(subject) : request.output;
  const record::Record record = load(subject, request.plan, version);
  QStringList inputs = filesOf(subject, record) << request.plan;
  std::optional<record::Record> other;
  if (!request.with.isEmpty()) {
    other = load(request.with, QString(), version);
    inputs << filesOf(request.with, *other);
  }
  for (const QString &input : inputs) {
    refuseToOverwrite(output, input);
    refuseToOverwrite(request.record, input);
  }
  if (!request.record.isEmpty() && areOneFile(utf8(request.record), utf8(output))) {
    throw Fault{QStringLiteral("%1 cannot be the page and the record.").arg(output)};
  }
  const PageOptions options{request.usedOnly, other ? &*other : nullptr};
  write(output, page(record, options));
  if (!request.record.isEmpty()) {
    write(request.record, record::toJson(record));
  }
  if (!request.csv.isEmpty()) {
    writeTables(request.csv, allTables(record, options));
  }
  out << "Report: " << utf8(output) << std::endl;
  if (!record.plan) {
    out << "There is no plan yet, so no trim is shown: corvane-plan makes one." << std::endl;
  }
}

void make(const Request &request, const QString &version, std::ostream &out) {
  const QString subject = request.subject.isEmpty() ? QStringLiteral(".") : request.subject;
  if (const std::optional<StudyRecord> study = loadStudy(subject)) {
    makeOfStudy(*study, request, subject, version, out);
  } else {
    makeOfRun(request, subject, version, out);
  }
}

int tell(const Fault &fault, std::ostream &err) {
  err << "corvane-report: " << utf8(fault.text) << std::endl;
  return kFailed;
}

}  // namespace

int makeReport(const Request &request, const QString &version, std::ostream &out,
               std::ostream &err) {
  try {
    make(request, version, out);
    return 0;
  } catch (const Fault &fault) {
    return tell(fault, err);
  }
}

int extractRecord(const QString &page, const QString &file, std::ostream &out, std::ostream &err) {
  try {
    const std::optional<QByteArray> record = recordIn(bytesOf(page));
    if (!record) {
      throw Fault{QStringLiteral("There is no run record in %1.").arg(page)};
    }
    if (!file.isEmpty()) {
      refuseToOverwrite(file, page);
      write(file, *record);
      return 0;
    }
    out.write(record->constData(), record->size()).flush();
    return out ? 0 : kFailed;
  } catch (const Fault &fault) {
    return tell(fault, err);
  }
}

}  // namespace corvane::report
