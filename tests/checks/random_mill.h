#pragma once

#include <functional>
#include <random>
#include <string>
#include <vector>

#include "checks/checked_files.h"

namespace corvane::checks {

using Random = std::mt19937;
using Row = std::vector<std::string>;

std::size_t below(Random &random, std::size_t bound);

// A mill as rows of fields, so that mistakes can be planted at known places.
struct RandomMill {
  std::vector<Row> machines;
  std::vector<Row> orders;
  std::vector<Row> rates;
  std::vector<std::string> parameters;  // lines
  // What is done to the text of a file at the end, by its name.
  std::function<void(MillTexts &)> damage;

  std::vector<Row> &rowsOf(const std::string &file);
  MillTexts texts() const;
};

// One to three mills, up to three grades, up to six periods, four customers: without a mistake, and
// without anything that is allowed but rarely meant.
RandomMill cleanRandomMill(Random &random);

}  // namespace corvane::checks
