#pragma once

#include <map>
#include <string>
#include <vector>

#include "checks/mill_check.h"
#include "support/temporary_folder.h"

namespace corvane::checks {

// The texts of a mill's four files.
struct MillTexts {
  std::string parameters;
  std::string machines;
  std::string orders;
  std::string rates;

  std::string &of(const std::string &file);
};

// A small mill without a mistake, of which every note, too, is silent.
MillTexts cleanMill();

// What was found, as "orders:1:8 CV204"; without line and column where it is about a whole file.
struct Found {
  std::string place;  // "orders:1:8"
  std::string code;
  std::string message;
  std::string write;
  Severity severity = Severity::kNote;
  FixKind fixKind = FixKind::kNone;
  bool hasEdits = false;

  std::string text() const { return place + " " + code; }
};

// Checks texts in memory. The folder of the log and the import file is there.
class TextCheck {
 public:
  explicit TextCheck(const MillTexts &texts);

  std::vector<Found> found;
  CheckedMill mill;

  std::vector<std::string> texts() const;

 private:
  support::TemporaryFolder folder_;
};

}  // namespace corvane::checks
