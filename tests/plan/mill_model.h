#pragma once

#include <algorithm>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "plan/improved_model.h"
#include "plan/mill_inputs.h"
#include "support/temporary_folder.h"

namespace corvane::plan {

// A mill given by the texts of its files, and import files of it with patterns of the test's own.
class MillModel {
 public:
  MillModel(const std::string &machines, const std::string &orders, const std::string &rates) {
    parameters_.machineFile = QString::fromStdString(folder_.write("machines", machines));
    parameters_.orderFile = QString::fromStdString(folder_.write("orders", orders));
    parameters_.freightRateFile = QString::fromStdString(folder_.write("rates", rates));
  }

  RunParameters &parameters() { return parameters_; }
  MillInputs inputs() const { return MillInputs(parameters_); }

  std::string importFile(const std::vector<SlitPattern> &patterns) const {
    std::ostringstream out;
    writeImprovedModel(inputs(), patterns, out);
    return out.str();
  }

 private:
  support::TemporaryFolder folder_;
  RunParameters parameters_;
};

// Every pattern of one to `limit` rolls that the deckle holds. REQUIRES widths by size, widest
// first.
inline std::vector<SlitPattern> allPatterns(const QString &grade, double deckle,
                                            const std::vector<double> &widths, int limit) {
  std::vector<SlitPattern> patterns;
  std::vector<double> chosen;
  const std::function<void(std::size_t, double)> extend = [&](std::size_t first, double room) {
    if (!chosen.empty()) {
      patterns.push_back({grade, deckle, chosen});
    }
    for (std::size_t i = first; i < widths.size(); ++i) {
      if (widths[i] <= room && chosen.size() < static_cast<std::size_t>(limit)) {
        chosen.push_back(widths[i]);
        extend(i, room - widths[i]);
        chosen.pop_back();
      }
    }
  };
  extend(0, deckle + 1e-9);
  return patterns;
}

}  // namespace corvane::plan
