#pragma once

#include <QString>
#include <iosfwd>

namespace corvane::report {

// What is asked for, as the command line has it; empty texts stand for what was not given.
struct Request {
  QString subject;  // a run's folder, a record or a page; empty: the present folder
  QString output;   // empty: report.html beside the import file, or beside the record
  QString plan;     // of a folder
  QString with;     // a run's folder, a record or a page
  QString record;   // where to write the record
  QString csv;      // the folder for the tables
  bool usedOnly = false;
};

// Makes the page and what else is asked for, and says on `out` where it is; faults go to `err`.
// Returns the exit status: 0, or 1 where something cannot be read or written.
int makeReport(const Request &request, const QString &version, std::ostream &out,
               std::ostream &err);

// Writes the record that is in the page to the file, or to `out` where none is named.
int extractRecord(const QString &page, const QString &file, std::ostream &out, std::ostream &err);

}  // namespace corvane::report
