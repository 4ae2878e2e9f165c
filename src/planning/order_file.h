#pragma once

#include <QString>
#include <fstream>
#include <iosfwd>
#include <string_view>

#include "core/line_reader.h"
#include "core/text_table.h"
#include "planning/planning_data.h"

// The order file: one order a line, "period,grade,width,quantity,customer name". Runs of commas
// count as one; there is no header and no comment.

// Opens the file on the unopened stream, fills the orders, the demand table, the grades and the
// periods, and closes it. REQUIRES the cutters. A file that cannot be opened ends the run. Bad
// orders and orders that no cutter can make are reported with their line number on standard output
// and in the log, and dropped; orders with one key are merged into one. Linear cost.
void readOrderFile(PlanningData &data, const QString &fileName, std::ifstream &file,
                   std::ostream &log);

// The numbers of an order's texts in the text table of its file.
struct OrderTexts {
  TextTable::Id grade = 0;
  TextTable::Id period = 0;
  TextTable::Id customerName = 0;
};

// Reads the line that the reader stands on into the order and marks it good or bad. Bad widths and
// quantities get a message on standard output; a line with fewer than five fields is bad in
// silence. An empty line leaves the order as constructed.
void readOrder(LineReader &line, TextTable &texts, Order &order, OrderTexts &orderTexts);

// Guards against an empty field: false, with a message on standard output and the order marked bad.
bool acceptField(std::string_view field, const char *name, Order &order);

// Whether some cutter of the order's grade is at least as wide as the order.
bool machineCanProcess(const PlanningData &data, const Order &order);
