#pragma once

#include "checks/mill_index.h"
#include "checks/parameter_checks.h"

namespace corvane::checks {

// What the checks of records look at. They report at the first line that shows the mistake, and say
// nothing of what a broken line, or a file that is none, may have been meant to hold.
struct MillView {
  const MillRecords &mill;
  const MillIndex &index;
  FindingSink &sink;

  const SourceFile &machineFile() const { return *mill.machineFile.file; }
  const SourceFile &orderFile() const { return *mill.orderFile.file; }
  const SourceFile &rateFile() const { return *mill.rateFile.file; }
  bool hasMachines() const { return mill.machineFile.isUsable(); }
  bool hasOrders() const { return mill.orderFile.isUsable(); }
  bool hasRates() const { return mill.rateFile.isUsable(); }
};

// Each REQUIRES the files that it is about to be usable; others may be missing.

void checkMachines(const MillView &view);       // CV301 to CV308
void checkDroppedOrders(const MillView &view);  // CV403, CV404, CV208, CV413, CV308
void checkDemands(const MillView &view);        // CV402, CV407, sums of CV209
void checkWidths(const MillView &view);         // CV212, CV213, CV309, CV412, CV602
void checkPeriods(const MillView &view);        // CV405, CV406, CV408, CV414
void checkLoads(const MillView &view);          // CV409, CV410, CV411
void checkRates(const MillView &view);          // CV501, CV504, CV505, CV506, CV508
void checkWays(const MillView &view);           // CV502, CV503, CV507, CV509
void checkNodeNames(const MillView &view);      // CV601, CV603
void checkNearNames(const MillView &view);      // CV211

}  // namespace corvane::checks
