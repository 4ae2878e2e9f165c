#pragma once

#include <QString>
#include <fstream>
#include <iosfwd>
#include <string_view>

#include "core/line_reader.h"
#include "planning/order_texts.h"
#include "planning/planning_data.h"

namespace corvane {

// The order file: one order a line, "period,grade,width,quantity,customer name". Runs of commas
// count as one; there is no header and no comment.

// Opens the file on the unopened stream, fills the orders, the demand table, the grades and the
// periods, and closes it. REQUIRES the cutters. A file that cannot be opened, or not
// be read to its end, ends the run. Bad orders and orders that no cutter can make are reported with
// their line number on standard output and in the log, and dropped; orders with one key are merged
// into one. Nearly linear cost.
void readOrderFile(PlanningData &data, const QString &fileName, std::ifstream &file,
                   std::ostream &log);

// A line of the file. The pointers are set in a good one, and valid as long as the texts.
struct OrderLine {
  bool good = true;
  OrderTexts::Place *place = nullptr;
  OrderTexts::Width *width = nullptr;
  qint32 quantity = 0;
  TextTable::Id customer = 0;
};

// Reads the line that the reader stands on and tells whether it is good. Bad widths and quantities
// get a message on standard output; a line with fewer than five fields is bad in silence. An empty
// line is good: its texts are empty, its numbers 0.
OrderLine readOrder(LineReader &line, OrderTexts &texts);

// Guards against an empty field: false, with a message on standard output.
bool acceptField(std::string_view field, const char *name);

// Whether some cutter of the line's grade is at least as wide as its width. REQUIRES a good line.
bool machineCanProcess(const OrderLine &order);

}  // namespace corvane
