#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace corvane::convert {

// True for the name of a workbook, which is not a text but a packed one: "orders.xlsx".
bool isWorkbook(const QString &fileName);

// One sheet of a workbook, counted from 1, as a table in UTF-8 with commas, by the program
// xlsx2csv. Nothing when that program is not installed or does not like the file; it says why on
// standard error.
std::optional<QByteArray> readSheet(const QString &fileName, int sheet);

}  // namespace corvane::convert
