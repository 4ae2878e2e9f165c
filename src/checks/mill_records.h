#pragma once

#include <string>
#include <vector>

#include "app/run_parameters.h"
#include "checks/record_scanner.h"

namespace corvane::checks {

using TextId = TextTable::Id;

// The records of the three data files as the program stores them. Broken: the line is not what was
// meant; a finding says so, and the checks of records say nothing of it.

struct CutterRow {
  quint32 line;
  TextId location;
  TextId name;
  TextId grade;
  double width;
  double capacity;
  double lbsPerInch;
  double wasteCost;
  bool isStored;  // false: location, name and grade were there already
  bool isBroken;
  unsigned badNumbers;  // columns, as bits
};

// An order that is accepted.
struct OrderRow {
  quint32 line;
  TextId period;
  TextId grade;
  TextId customer;
  quint32 width;  // the place in MillRecords::widths
  qint32 quantity;
  bool isBroken;
};

struct RateRow {
  quint32 line;
  TextId customer;
  TextId mill;
  TextId mode;
  double rate;
  double delay;
  bool isStored;  // false: customer, mill and mode were there already
  bool isBroken;
  unsigned badNumbers;
};

// A whole order line that some check has to look at once all orders are known.
struct DroppedOrder {
  quint32 line;
  TextId grade;
  double width;
  double quantity;  // with its decimals
  bool isAccepted;  // though its quantity has decimals
};

// What was read of one file. Without a file there is nothing of it, and a finding says why.
struct FileRecords {
  const SourceFile *file = nullptr;
  ScanResult scan;
  quint32 accepted = 0;

  // Whether the file is what was meant as a whole, so that what is missing in it is missing.
  bool isUsable() const { return file != nullptr && scan.isUsable; }
  bool mayHave(const std::string &name) const { return scan.namesInBrokenLines.contains(name); }
};

struct MillRecords {
  TextTable texts;
  RunParameters parameters;
  FileRecords parameterFile;
  FileRecords machineFile;
  FileRecords orderFile;
  FileRecords rateFile;
  std::vector<CutterRow> cutters;
  std::vector<OrderRow> orders;
  std::vector<double> widths;  // distinct, inches
  std::vector<DroppedOrder> droppedOrders;
  std::vector<RateRow> rates;

  // "LB42", in UTF-8.
  std::string text(TextId id) const;
  // The same as a message quotes it.
  std::string quotedName(TextId id) const;
};

// Each reads its file, which is there, into the records by the rules of the program's reader, and
// reports what is wrong with its lines and fields. The machine file goes before the order file.
void readMachines(MillRecords &mill, FindingSink &sink);
void readOrders(MillRecords &mill, FindingSink &sink);
void readRates(MillRecords &mill, FindingSink &sink);

}  // namespace corvane::checks
