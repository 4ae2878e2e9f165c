#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace corvane::checks {

inline constexpr int kExitClean = 0;
inline constexpr int kExitFindings = 1;
inline constexpr int kExitNotChecked = 2;

// What corvane-check is asked for, as its options say it.
struct CheckOptions {
  std::string argument;  // a folder or a parameter file; empty: as the program would find it
  std::string format = "text";
  std::vector<std::string> select;  // codes or beginnings of codes
  std::vector<std::string> ignore;
  std::string level = "warning";
  std::string explain;  // a code
  bool list = false;
  std::string baseline;  // a file of the JSON format
  std::string fix;       // a folder
  bool unsafeFixes = false;
  std::optional<std::string> maximumPerCode;
  std::string importFile;
};

// Does what is asked for: findings go to out, what keeps the check from running to err. Returns the
// exit status.
int runCheck(const CheckOptions &options, std::ostream &out, std::ostream &err);

}  // namespace corvane::checks
