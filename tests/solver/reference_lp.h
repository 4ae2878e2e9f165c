#pragma once

// The reference for small LPs: every vertex of the feasible set, by plain enumeration of the
// choices of as many tight constraints as there are columns. No simplex, no tolerance games: it
// serves data of small whole numbers and few columns only.

#include <cmath>
#include <optional>
#include <vector>

#include "solver/test_lp.h"

namespace corvane::lp::testing {

struct ReferenceAnswer {
  int status = 3;  // as the callable library counts
  double objective = 0.0;
};

class ReferenceLp {
 public:
  // Every lower bound of a column must be finite, which gives a feasible set a vertex.
  explicit ReferenceLp(const TestLp &lp) : lp_(lp), n_(static_cast<std::size_t>(lp.columns())) {
    for (std::size_t i = 0; i < lp.rhs.size(); ++i) {
      if (lp.senses[i] != 'L') {
        halfSpaces_.push_back({lp.matrix[i], lp.rhs[i]});
      }
      if (lp.senses[i] != 'G') {
        halfSpaces_.push_back({negated(lp.matrix[i]), -lp.rhs[i]});
      }
    }
    for (std::size_t j = 0; j < n_; ++j) {
      std::vector<double> unit(n_, 0.0);
      unit[j] = 1.0;
      halfSpaces_.push_back({unit, lp.lower[j]});
      halfSpaces_.push_back({negated(unit), -std::min(lp.upper[j], kBox)});
    }
  }

  // Within a box far outside all true vertices the set is bounded; an optimum that only the box
  // stops is unbounded without it.
  ReferenceAnswer solve() {
    chosen_.clear();
    choose(0);
    ReferenceAnswer answer;
    if (!bestInBox_) {
      return answer;
    }
    const double slack = 1e-6 * std::max(1.0, std::fabs(*bestInBox_));
    answer.status = !bestInside_ || *bestInBox_ < *bestInside_ - slack ? 2 : 1;
    answer.objective = lp_.objectiveSense * *bestInBox_;
    return answer;
  }

 private:
  static constexpr double kBox = 1e6;
  static constexpr double kTolerance = 1e-7;

  // normal . x >= bound
  struct HalfSpace {
    std::vector<double> normal;
    double bound;
  };

  static std::vector<double> negated(std::vector<double> values) {
    for (double &value : values) {
      value = -value;
    }
    return values;
  }

  void choose(std::size_t from) {
    if (chosen_.size() == n_) {
      if (const auto x = meetingPoint()) {
        weigh(*x);
      }
      return;
    }
    for (std::size_t k = from; k < halfSpaces_.size(); ++k) {
      chosen_.push_back(k);
      choose(k + 1);
      chosen_.pop_back();
    }
  }

  // Gauss with row exchange on the chosen constraints; nothing when they are dependent.
  std::optional<std::vector<double>> meetingPoint() const {
    std::vector<std::vector<double>> m;
    for (const std::size_t k : chosen_) {
      m.push_back(halfSpaces_[k].normal);
      m.back().push_back(halfSpaces_[k].bound);
    }
    for (std::size_t c = 0; c < n_; ++c) {
      std::size_t pivot = c;
      for (std::size_t r = c + 1; r < n_; ++r) {
        pivot = std::fabs(m[r][c]) > std::fabs(m[pivot][c]) ? r : pivot;
      }
      if (std::fabs(m[pivot][c]) < 1e-9) {
        return std::nullopt;
      }
      std::swap(m[c], m[pivot]);
      for (std::size_t r = 0; r < n_; ++r) {
        const double factor = r == c ? 0.0 : m[r][c] / m[c][c];
        for (std::size_t k = c; factor != 0.0 && k <= n_; ++k) {
          m[r][k] -= factor * m[c][k];
        }
      }
    }
    std::vector<double> x;
    for (std::size_t c = 0; c < n_; ++c) {
      x.push_back(m[c][n_] / m[c][c]);
    }
    return x;
  }

  void weigh(const std::vector<double> &x) {
    for (const HalfSpace &halfSpace : halfSpaces_) {
      double sum = 0.0;
      double size = std::fabs(halfSpace.bound);
      for (std::size_t j = 0; j < n_; ++j) {
        sum += halfSpace.normal[j] * x[j];
        size += std::fabs(halfSpace.normal[j] * x[j]);
      }
      if (sum < halfSpace.bound - kTolerance * std::max(1.0, size * 1e-3)) {
        return;
      }
    }
    double objective = 0.0;
    bool inBox = true;
    for (std::size_t j = 0; j < n_; ++j) {
      objective += lp_.objectiveSense * lp_.cost[j] * x[j];
      inBox = inBox && std::fabs(x[j]) < kBox / 10;
    }
    keepLower(bestInBox_, objective);
    if (inBox) {
      keepLower(bestInside_, objective);
    }
  }

  static void keepLower(std::optional<double> &best, double value) {
    best = best ? std::min(*best, value) : value;
  }

  const TestLp &lp_;
  std::size_t n_;
  std::vector<HalfSpace> halfSpaces_;
  std::vector<std::size_t> chosen_;
  std::optional<double> bestInBox_;   // over all vertices, those of the box among them
  std::optional<double> bestInside_;  // over those that the box has no part in
};

}  // namespace corvane::lp::testing
