#pragma once

#include <iosfwd>
#include <string>

#include "plan/plan_record.h"

namespace corvane::plan {

// The plan in one screen for a planner: delivered of ordered, paper and trim, cost by kind, the
// fullest machines, what is unmet and why, and what else would pay.
void printPlan(const PlanRecord &record, const std::string &file, std::ostream &out);

// The warnings, a few of each kind. A file of many like faults would hide the others.
void printWarnings(const PlanRecord &record, std::ostream &err);

}  // namespace corvane::plan
