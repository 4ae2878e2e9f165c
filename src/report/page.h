#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

#include "record/record.h"
#include "report/table.h"

namespace corvane::report {

struct PageOptions {
  bool usedOnly = false;                 // leave out the patterns that the plan does not use
  const record::Record *with = nullptr;  // a run to compare with
};

// The page: one HTML file that asks for nothing besides itself. Its content security policy allows
// only its own style and script, by their hashes. The record stands in it as JSON. The same record
// and options give the same bytes.
QByteArray page(const record::Record &record, const PageOptions &options);

// Every table of the page, for CSV files.
std::vector<Table> allTables(const record::Record &record, const PageOptions &options);

// The bytes of the record in a page; empty where there is none.
std::optional<QByteArray> recordIn(const QByteArray &page);

}  // namespace corvane::report
