#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "app/run_parameters.h"
#include "checks/check_table.h"

namespace corvane::checks {

struct ValueFault {
  std::optional<Code> code;
  std::string meant;  // what was meant, as far as can be told
  FixKind fixKind = FixKind::kNone;
};

// What is wrong with a value of the parameter file under a key of the rule.
ValueFault faultOfValue(const ParameterRule &rule, std::string_view value);

}  // namespace corvane::checks
