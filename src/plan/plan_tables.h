#pragma once

#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

#include "plan/plan_record.h"

namespace corvane::plan {

// A table of the plan for a spreadsheet, and the file that it goes to.
struct PlanTable {
  std::string file;
  void (*write)(const PlanRecord &record, std::ostream &out);
};

// All tables: runs, shipments, orders, machines, surplus, stock, totals. Each has one header line.
const std::vector<PlanTable> &planTables();

}  // namespace corvane::plan
