#pragma once

#include <iosfwd>

#include "plan/plan_record.h"

namespace corvane::plan {

inline constexpr const char *kPlanSchema = "corvane-plan/1";

// Writes the record as JSON; docs/plan-json.md describes it field by field.
void writePlanJson(const PlanRecord &record, std::ostream &out);

}  // namespace corvane::plan
