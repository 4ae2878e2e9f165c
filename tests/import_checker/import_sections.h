#pragma once

// The sections of an import file, numbered in their order.

#include <vector>

#include "import_grammar.h"

namespace corvane::import_checker {

constexpr int kRootSection = 1;
constexpr int kDeckleSection = 2;
constexpr int kWidthSection = 3;
constexpr int kWasteSection = 4;
constexpr int kTimeSection = 5;
constexpr int kPeriodSection = 6;
constexpr int kMachineSection = 7;
constexpr int kPatternSection = 8;
constexpr int kStoreSection = 9;
constexpr int kWasteDemandSection = 10;
constexpr int kCutterArcSection = 11;
constexpr int kOrderSection = 12;
constexpr int kUndercostSection = 13;
constexpr int kOrderBlockSection = 14;
constexpr int kTrailerSection = 15;

// A cutter and a pattern are processes both; their columns tell them apart.
// REQUIRES: the command is of Family::kProcess.
bool isCutter(const Command &process);

// The sections that a line may stand in, ascending: one, or two for the lines that stores and
// orders share.
std::vector<int> sectionsOf(const Command &command);

}  // namespace corvane::import_checker
