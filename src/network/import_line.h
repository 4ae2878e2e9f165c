#pragma once

#include <optional>
#include <string_view>

namespace corvane::network {

// The lines of an import file; docs/import-file.md has the grammar and an example of each.
enum class Family {
  kRoot,
  kBatchRoot,
  kDeckleCommodity,
  kWidthCommodity,
  kWasteCommodity,
  kTimeCommodity,
  kPeriod,
  kMachineFirst,  // the first line of a node, with its place in the drawing
  kMachineLater,  // the same node in a further period
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

// A number as it stands in the line, and its value; "+infinity" is infinite, and so may be what the
// data of a mill made of it ("inf", "nan").
struct Number {
  std::string_view text;
  double value = 0.0;
};

// One line, taken apart. The texts point into the line; names are without their quotes. What a
// family does not have is empty.
struct ImportLine {
  Family family{};
  std::string_view name;       // node, commodity, period or set; of an arc the node it leaves
  std::string_view other;      // the node an arc leads to, or that a set takes in
  std::string_view commodity;  // of attachments and arcs
  std::string_view period;
  std::string_view x;
  std::string_view y;
  // Days, capacity, rolls, inches, demanded amount, periods to delay, or the cost of an arc.
  Number value;
  Number cost;  // of a machine's day
  Number storageMax;
  Number undercost;
};

// Takes the text of a line apart, given without its line break. Attributes must be those of the
// family in their order, with single blanks; empty when the line fits no family, and stop is then
// the place, in bytes, up to which it does.
//
// A name ends at the first quote that the text of the next attribute follows, so it may hold quotes
// and blanks of its own. Where a value has but one meaning (`<min> 0` of an arc) no other is taken.
std::optional<ImportLine> parseImportLine(std::string_view text, std::size_t *stop = nullptr);

}  // namespace corvane::network
