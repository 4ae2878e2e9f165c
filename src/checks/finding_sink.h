#pragma once

#include <array>
#include <functional>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "checks/finding.h"

namespace corvane::checks {

// Which findings are shown.
struct Selection {
  std::vector<std::string> select;  // codes or beginnings of codes; empty: all
  std::vector<std::string> ignore;
  Severity level = Severity::kWarning;
  int maximumPerCode = 0;  // 0: no bound
  // Keys of findings that are known, with how often.
  std::unordered_map<std::string, int> known;
};

// How many findings there were.
struct Totals {
  std::array<qint64, 3> bySeverity{};  // at or above the level, by Severity
  qint64 below = 0;                    // below the level
  qint64 known = 0;                    // in the baseline
  std::map<Code, qint64> notShown;     // beyond the bound

  qint64 all() const { return bySeverity[0] + bySeverity[1] + bySeverity[2]; }
};

// Takes the findings as the checks make them, and hands on those that are to be shown.
class FindingSink {
 public:
  using Show = std::function<void(const Finding &)>;
  using Mend = std::function<void(const Finding &)>;

  // show gets what is to be shown; mend, which may be empty, every finding that is selected, known
  // or beyond the bound included.
  FindingSink(Selection selection, Show show, Mend mend);

  // Counts a finding of the code in the file; describe(Finding &) fills in the rest where somebody
  // looks at it: masses of findings that are only counted cost next to nothing.
  template <typename Describe>
  void add(const SourceFile &file, Code code, Describe describe) {
    add(file, code, checkOf(code).severity, describe);
  }
  template <typename Describe>
  void add(const SourceFile &file, Code code, Severity severity, Describe describe) {
    if (!isSelected(code) || justCounts(code, severity)) {
      return;
    }
    Finding finding{code, severity, &file, 0, 0, 0, {}, {}, {}, checkOf(code).fixKind};
    describe(finding);
    take(finding);
  }

  // Whether findings of the code are asked for at all.
  bool isSelected(Code code) const { return selected_.at(static_cast<std::size_t>(code)); }

  const Totals &totals() const { return totals_; }

 private:
  // Counts a finding that nobody needs to see; false for one that somebody does.
  bool justCounts(Code code, Severity severity);
  void take(const Finding &finding);
  void count(Severity severity) { ++totals_.bySeverity.at(static_cast<std::size_t>(severity)); }

  Selection selection_;
  std::vector<bool> selected_;  // by code
  Show show_;
  Mend mend_;
  Totals totals_;
  std::map<Code, int> shown_;
};

}  // namespace corvane::checks
