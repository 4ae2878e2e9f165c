#pragma once

// Whether the demanded amounts of an import file are those of the orders.
//
// The order file is read here a second time, by its own rules and without the program: comma
// separated fields, runs of commas as one, the last line without a line end unused, bad lines and
// orders that no cutter of their grade can make left out, equal orders merged.

#include <string>
#include <string_view>
#include <vector>

#include "import_checker.h"

namespace corvane::import_checker {

// The texts of the two data files, bytes as they stand on disk.
struct OrderData {
  std::string machines;
  std::string orders;
};

// Compares the rolls demanded per grade, customer, width and period in the import file with those
// ordered; each difference is one complaint (of no line).
std::vector<Complaint> checkDemand(std::string_view importText, const OrderData &data);

// The inches ordered: quantity times width over all orders that can be made.
double orderedInches(const OrderData &data);

}  // namespace corvane::import_checker
