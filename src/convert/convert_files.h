#pragma once

#include <QString>
#include <iosfwd>
#include <map>

#include "convert/column_map.h"

namespace corvane::convert {

// What is to be converted, and where to.
struct Request {
  std::map<QString, QString> tables;  // the file of each table kind, by the kind's name
  ColumnMap map;
  QString folder;      // the mill's folder; the data files go into its folder "data"
  bool force = false;  // whether data files that are there already may be replaced
};

// Converts the tables and writes the data files, all of them or none. Says on `out` what was read,
// how, and where it went, and on `err` each thing that cannot be taken, by file, row and column.
// False when there was any, or a file cannot be read or written.
bool convertFiles(const Request &request, std::ostream &out, std::ostream &err);

}  // namespace corvane::convert
