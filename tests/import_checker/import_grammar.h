#pragma once

// The lines of an import file, each matched against the template of its family.
//
// A template is the line as the program writes it, with a placeholder where a value of the run
// stands: {name:label} a quoted name, {int:label} a decimal integer, {num:label} a number in
// general notation with 6 significant digits. Everything else must match to the character, so
// attributes that are unknown, missing or in another order do not match.

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace corvane::import_checker {

enum class Family {
  kRoot,
  kBatchRoot,
  kDeckleCommodity,
  kWidthCommodity,
  kWasteCommodity,
  kTimeCommodity,
  kPeriod,
  kMachineFirst,
  kMachineLater,
  kTimeOut,
  kTimeIn,
  kProcess,
  kDeckleCapacity,
  kTimeArc,
  kBatch,
  kDeckleIn,
  kDeckleOut,
  kPatternDeckle,
  kPatternYield,
  kPatternWaste,
  kDeckleArc,
  kStoreFirst,
  kStoreLater,
  kWidthIn,
  kWidthOut,
  kNodeToSet,
  kBlockSet,
  kCutterBlock,
  kWasteDemand,
  kWasteIn,
  kYieldArc,
  kWasteArc,
  kOrderFirst,
  kOrderLater,
  kOrderUndercost,
  kOrderBlock,
  kDelayFirst,
  kDelayLater,
  kFreightArc,
  kTrailer
};

// One line: its family and the text of each placeholder, by label; names without their quotes.
struct Command {
  Family family{};
  std::map<std::string, std::string, std::less<>> fields;

  // The field's text. REQUIRES: the family's template holds the label.
  const std::string &operator[](std::string_view label) const { return fields.find(label)->second; }
};

// Reads one line, given without its line break; empty when it fits no family.
std::optional<Command> parseCommand(std::string_view line);

}  // namespace corvane::import_checker
