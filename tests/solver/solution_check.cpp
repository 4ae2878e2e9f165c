#include "solver/solution_check.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <sstream>
#include <vector>

namespace corvane::lp::testing {

namespace {

// CLP works to 1e-7; sums of many such terms come out a little above. Beyond a size of 2^20 CLP
// works on scaled numbers, and the tolerance grows with them.
constexpr double kFeasibility = 1e-6;
constexpr double kOrdinarySize = 0x1p20;

double tolerance(double largest) {
  return kFeasibility * std::max(1.0, largest / kOrdinarySize);
}

constexpr double kObjective = 1e-9;
constexpr double kRounding = 1e-14;

class Check {
 public:
  Check(const LinearProgram &lp, const Solution &solution)
      : lp_(lp),
        solution_(solution),
        x_(static_cast<std::size_t>(lp.columns()), 0.0),
        activity_(static_cast<std::size_t>(lp.rows()), 0.0),
        reduced_(static_cast<std::size_t>(lp.columns()), 0.0) {}

  std::string run() {
    if (!shapeIsRight()) {
      return complaint_.str();
    }
    spread();
    rows();
    columns();
    vertex();
    objectives();
    return complaint_.str();
  }

 private:
  bool shapeIsRight() {
    bool fits = solution_.duals.size() == static_cast<std::size_t>(lp_.rows());
    int last = -1;
    for (const auto &[column, value] : solution_.activities) {
      fits = fits && column > last && column < lp_.columns() && std::isfinite(value);
      last = column;
    }
    if (!fits) {
      complain() << "the solution is not one of this program";
    }
    return fits;
  }

  void spread() {
    const ColumnPool &pool = lp_.pool();
    for (const auto &[column, value] : solution_.activities) {
      const auto j = static_cast<std::size_t>(column);
      x_[j] = value;
      for (auto k = static_cast<std::size_t>(pool.start[j]);
           k < static_cast<std::size_t>(pool.start[j + 1]); ++k) {
        activity_[static_cast<std::size_t>(pool.row[k])] += pool.value[k] * value;
      }
    }
    for (int j = 0; j < lp_.columns(); ++j) {
      reduced_[static_cast<std::size_t>(j)] = reducedCost(pool, j, solution_.duals.data());
    }
  }

  // `value` between its bounds, and at that one which a positive or negative price belongs to.
  void within(const char *what, std::size_t index, double value, double lower, double upper,
              double price) {
    const double room = tolerance(lp_.largestDemand());
    if (!(value >= lower - room && value <= upper + room)) {
      complain() << what << ' ' << index << " is " << value << ", outside " << lower << " .. "
                 << upper;
    }
    const double noPrice = tolerance(lp_.largestCost());
    if ((price > noPrice && !(value <= lower + room)) ||
        (price < -noPrice && !(value >= upper - room)) || std::isnan(price)) {
      complain() << what << ' ' << index << " is " << value << " within " << lower << " .. "
                 << upper << " at a price of " << price;
    }
  }

  void rows() {
    for (std::size_t i = 0; i < activity_.size(); ++i) {
      within("row", i, activity_[i], lp_.rowLower()[i], lp_.rowUpper()[i], solution_.duals[i]);
    }
  }

  void columns() {
    for (std::size_t j = 0; j < x_.size(); ++j) {
      within("column", j, x_[j], lp_.pool().lower[j], lp_.pool().upper[j], reduced_[j]);
    }
  }

  void vertex() {
    int between = 0;
    for (std::size_t j = 0; j < x_.size(); ++j) {
      if (x_[j] != 0.0 && x_[j] != lp_.pool().lower[j] && x_[j] != lp_.pool().upper[j]) {
        ++between;
      }
    }
    if (between > lp_.rows()) {
      complain() << between << " columns between their bounds, but only " << lp_.rows() << " rows";
    }
  }

  // The bound that a price belongs to, times that price; the wrong sign of a price without a bound
  // is within tolerance by now, and counts nothing.
  static double boundValue(double price, double lower, double upper) {
    const double bound = price > 0.0 ? lower : upper;
    return price == 0.0 || std::isinf(bound) ? 0.0 : price * bound;
  }

  void objectives() {
    double dual = 0.0;
    double size = 0.0;
    const auto add = [&](double term) {
      dual += term;
      size += std::fabs(term);
    };
    for (std::size_t i = 0; i < activity_.size(); ++i) {
      add(boundValue(solution_.duals[i], lp_.rowLower()[i], lp_.rowUpper()[i]));
    }
    for (std::size_t j = 0; j < x_.size(); ++j) {
      add(boundValue(reduced_[j], lp_.pool().lower[j], lp_.pool().upper[j]));
    }
    double primal = 0.0;
    for (std::size_t j = 0; j < x_.size(); ++j) {
      primal += lp_.pool().cost[j] * x_[j];
      size += std::fabs(lp_.pool().cost[j] * x_[j]);
    }
    // Zero objectives are zero but for rounding.
    const double rounding =
        kRounding * std::max(1.0, lp_.largestCost()) * std::max(1.0, lp_.largestDemand());
    if (!(std::fabs(primal - dual) <= kObjective * size + rounding)) {
      complain() << "objective " << primal << " of the columns, " << dual << " of the rows";
    }
  }

  std::ostringstream &complain() {
    complaint_.precision(17);
    if (complaint_.tellp() > 0) {
      complaint_ << '\n';
    }
    return complaint_;
  }

  const LinearProgram &lp_;
  const Solution &solution_;
  std::vector<double> x_;
  std::vector<double> activity_;
  std::vector<double> reduced_;
  std::ostringstream complaint_;
};

}  // namespace

std::string checkOptimal(const LinearProgram &lp, const Solution &solution) {
  return Check(lp, solution).run();
}

}  // namespace corvane::lp::testing
