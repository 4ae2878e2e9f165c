#pragma once

#include <string>

namespace corvane::plan {

// Numbers as planners read them.

// Digits in groups of three: "2,387,415".
std::string grouped(double value, int decimals = 0);

// Rolls and reels: whole where they are, but for the last digits of a sum, else with one decimal.
std::string count(double value);

// "69.0 %" of the whole; of nothing all.
std::string percent(double part, double whole, int decimals = 1);

}  // namespace corvane::plan
