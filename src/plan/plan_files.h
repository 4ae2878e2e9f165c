#pragma once

#include <string>

#include "plan/plan_record.h"

namespace corvane::plan {

// Writes plan.json and the tables into the folder, which is made where it is missing. Each file is
// written beside its place first and moved there when it is whole. Returns the path that cannot be
// written; empty when all are.
std::string writePlanFiles(const PlanRecord &record, const std::string &folder);

}  // namespace corvane::plan
