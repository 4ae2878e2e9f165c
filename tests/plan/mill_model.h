#pragma once

#include <algorithm>
#include <functional>
#include <random>
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

// Two mills, two periods, random widths and demands; machines that may be short of time.
class RandomMill {
 public:
  explicit RandomMill(unsigned seed) : random_(seed) {
    for (int i = 0; i < 2 + below(3); ++i) {
      const double width = 15 + below(400) / 8.0;
      if (std::find(widths_.begin(), widths_.end(), width) == widths_.end()) {
        widths_.push_back(width);
      }
    }
    std::sort(widths_.rbegin(), widths_.rend());
    deckle_ = widths_.front() + below(800) / 8.0;
  }

  const std::vector<double> &widths() const { return widths_; }
  double deckle() const { return deckle_; }

  MillModel model() {
    const std::string deckle = text(deckle_);
    // One after the other: a compiler may take arguments in any order.
    const std::string ordered = orders();
    const std::string first = std::to_string(1 + below(12));
    const std::string second = std::to_string(1 + below(12));
    return MillModel(
        "M1,W1,G," + deckle + "," + first + ",2,1.5\nM2,W2,G," + deckle + "," + second + ",2,2.5\n",
        ordered, "A,M1,Road,50,0\nA,M2,Rail,90,1\nB,M1,Road,80,0\nB,M2,Road,30,0\n");
  }

 private:
  int below(int bound) { return static_cast<int>(random_() % static_cast<unsigned>(bound)); }

  static std::string text(double number) {
    std::ostringstream out;
    out << number;
    return out.str();
  }

  std::string orders() {
    std::string lines;
    for (const double width : widths_) {
      for (const char *customer : {"A", "B"}) {
        const int period = 1 + below(2);
        const int rolls = 1 + below(60);
        lines += std::to_string(period) + ",G," + text(width) + ',' + std::to_string(rolls) + ',' +
                 customer + '\n';
      }
    }
    return lines;
  }

  std::mt19937 random_;
  std::vector<double> widths_;
  double deckle_ = 0;
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
