#include "solver/settings.h"

#include <cstdlib>
#include <string_view>

namespace corvane::lp {

namespace {

std::string_view variable(const char *name) {
  const char *value = std::getenv(name);
  return value == nullptr ? std::string_view() : std::string_view(value);
}

}  // namespace

Settings Settings::fromProcessEnvironment() {
  Settings settings;
  const std::string_view plain = variable("CORVANE_LP_PLAIN");
  if (plain == "dual") {
    settings.plain = Plain::kDual;
  } else if (plain == "primal" || plain == "1") {
    settings.plain = Plain::kPrimal;
  }
  settings.check = variable("CORVANE_LP_CHECK") == "1";
  return settings;
}

}  // namespace corvane::lp
