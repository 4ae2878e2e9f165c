#include "import_sections.h"

#include <map>

namespace corvane::import_checker {

bool isCutter(const Command &process) {
  return process["x"] == "180";
}

std::vector<int> sectionsOf(const Command &command) {
  static const std::map<Family, std::vector<int>> kSections{
      {Family::kRoot, {kRootSection}},
      {Family::kBatchRoot, {kRootSection}},
      {Family::kDeckleCommodity, {kDeckleSection}},
      {Family::kWidthCommodity, {kWidthSection}},
      {Family::kWasteCommodity, {kWasteSection}},
      {Family::kTimeCommodity, {kTimeSection}},
      {Family::kPeriod, {kPeriodSection}},
      {Family::kMachineFirst, {kMachineSection}},
      {Family::kMachineLater, {kMachineSection}},
      {Family::kTimeOut, {kMachineSection}},
      {Family::kTimeIn, {kMachineSection}},
      {Family::kDeckleCapacity, {kMachineSection}},
      {Family::kTimeArc, {kMachineSection}},
      {Family::kBatch, {kPatternSection}},
      {Family::kDeckleIn, {kPatternSection}},
      {Family::kDeckleOut, {kPatternSection}},
      {Family::kPatternDeckle, {kPatternSection}},
      {Family::kPatternYield, {kPatternSection}},
      {Family::kPatternWaste, {kPatternSection}},
      {Family::kDeckleArc, {kPatternSection}},
      {Family::kStoreFirst, {kStoreSection}},
      {Family::kStoreLater, {kStoreSection}},
      {Family::kCutterBlock, {kStoreSection}},
      {Family::kWidthIn, {kStoreSection, kOrderSection}},
      {Family::kWidthOut, {kStoreSection, kOrderSection}},
      {Family::kNodeToSet, {kStoreSection, kOrderSection}},
      {Family::kBlockSet, {kStoreSection, kOrderBlockSection}},
      {Family::kWasteDemand, {kWasteDemandSection}},
      {Family::kWasteIn, {kWasteDemandSection}},
      {Family::kYieldArc, {kCutterArcSection}},
      {Family::kWasteArc, {kCutterArcSection}},
      {Family::kOrderFirst, {kOrderSection}},
      {Family::kOrderLater, {kOrderSection}},
      {Family::kDelayFirst, {kOrderSection}},
      {Family::kDelayLater, {kOrderSection}},
      {Family::kFreightArc, {kOrderSection}},
      {Family::kOrderUndercost, {kUndercostSection}},
      {Family::kOrderBlock, {kOrderBlockSection}},
      {Family::kTrailer, {kTrailerSection}}};
  if (command.family == Family::kProcess) {
    return {isCutter(command) ? kMachineSection : kPatternSection};
  }
  return kSections.at(command.family);
}

}  // namespace corvane::import_checker
