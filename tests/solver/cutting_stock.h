#pragma once

// Column generation on random mills, as pattern generation does it, reduced to what the solver
// layer sees of it. It records the LPs of a run so that tests and measurements can replay them.

#include <algorithm>
#include <cstdint>
#include <functional>
#include <random>
#include <set>
#include <vector>

#include "solver/callable_library.h"

namespace corvane::lp::testing {

struct MillShape {
  int widths = 20;
  int deckles = 1;
  int periods = 1;
  int maxWidthsInPattern = 5;
  int patternsPerIteration = 100;
  int attempts = 1000;
  double deckleInches = 150.0;
  std::uint32_t seed = 1;
};

// Columns as CPXaddcols takes them.
struct Columns {
  std::vector<double> cost, value, lower, upper;
  std::vector<int> start, row;

  int size() const { return static_cast<int>(cost.size()); }
  int entries() const { return static_cast<int>(row.size()); }

  // rows in ascending order, one mention for each roll of that width
  void append(double columnCost, const std::vector<int> &rows) {
    cost.push_back(columnCost);
    lower.push_back(0.0);
    upper.push_back(1e20);
    start.push_back(entries());
    for (std::size_t k = 0; k < rows.size(); ++k) {
      if (k > 0 && rows[k] == rows[k - 1]) {
        value.back() += 1.0;
      } else {
        row.push_back(rows[k]);
        value.push_back(1.0);
      }
    }
  }

  std::vector<int> counts() const {
    std::vector<int> result;
    for (std::size_t j = 0; j < start.size(); ++j) {
      result.push_back((j + 1 < start.size() ? start[j + 1] : entries()) - start[j]);
    }
    return result;
  }
};

// The LPs of one (grade, period): the seed columns, then one batch for each iteration.
struct MasterRecord {
  std::vector<double> rhs;
  std::vector<Columns> batches;
};

struct MillRecord {
  std::vector<MasterRecord> masters;
  Columns finalColumns;
  std::vector<std::vector<double>> finalRhs;  // one for each period
};

// Handles on one problem of the callable library.
class Problem {
 public:
  explicit Problem(CPXENVptr environment)
      : env_(environment), lp_(CPXcreateprob(environment, nullptr, "selectPatterns")) {}

  int load(const Columns &columns, const std::vector<double> &rhs) {
    const std::vector<char> senses(rhs.size(), 'G');
    rows_ = static_cast<int>(rhs.size());
    columns_ = columns.size();
    return CPXcopylp(env_, lp_, columns.size(), rows_, 1, columns.cost.data(), rhs.data(),
                     senses.data(), columns.start.data(), columns.counts().data(),
                     columns.row.data(), columns.value.data(), columns.lower.data(),
                     columns.upper.data(), nullptr);
  }

  int add(const Columns &columns) {
    columns_ += columns.size();
    return CPXaddcols(env_, lp_, columns.size(), columns.entries(), columns.cost.data(),
                      columns.start.data(), columns.row.data(), columns.value.data(),
                      columns.lower.data(), columns.upper.data(), nullptr);
  }

  // The status, or 0 when the solve failed.
  int solve(bool barrier = false) {
    const int code = barrier ? CPXhybbaropt(env_, lp_, 'p') : CPXprimopt(env_, lp_);
    return code == 0 ? CPXgetstat(env_, lp_) : 0;
  }

  double objective() const {
    double value = 0.0;
    CPXgetobjval(env_, lp_, &value);
    return value;
  }
  std::vector<double> x() const { return read(CPXgetx, columns_); }
  std::vector<double> duals() const { return read(CPXgetpi, rows_); }
  std::vector<double> reducedCosts() const { return read(CPXgetdj, columns_); }

  void free() { CPXfreeprob(env_, &lp_); }

 private:
  template <typename Operation>
  std::vector<double> read(Operation operation, int size) const {
    std::vector<double> values(static_cast<std::size_t>(size));
    operation(env_, lp_, values.data(), 0, size - 1);
    return values;
  }

  CPXENVptr env_;
  CPXLPptr lp_;
  int rows_ = 0;
  int columns_ = 0;
};

class CuttingStock {
 public:
  explicit CuttingStock(const MillShape &shape) : shape_(shape), random_(shape.seed) {
    std::set<double> widths;
    while (static_cast<int>(widths.size()) < shape.widths) {
      widths.insert(120 / 8.0 + between(0, 65 * 8) / 8.0);
    }
    widths_.assign(widths.rbegin(), widths.rend());
    for (int d = 0; d < shape.deckles; ++d) {
      deckles_.push_back(shape.deckleInches + 20.0 * d);
    }
    for (int p = 0; p < shape.periods; ++p) {
      std::vector<double> demand;
      for (int i = 0; i < shape.widths; ++i) {
        demand.push_back(shape.periods > 1 && between(0, 4) == 0 ? 0.0 : between(1, 500));
      }
      demands_.push_back(demand);
    }
    patterns_.resize(deckles_.size());
  }

  // Runs the whole generation through the linked solver library.
  MillRecord run() {
    CPXENVptr env = CPXopenCPLEXruntime(nullptr, 0, nullptr);
    MillRecord record;
    for (const std::vector<double> &demand : demands_) {
      record.masters.push_back(generate(env, demand));
    }
    CPXcloseCPLEX(&env);
    for (std::size_t d = 0; d < deckles_.size(); ++d) {
      for (const std::vector<int> &pattern : patterns_[d]) {
        record.finalColumns.append(deckles_[d], pattern);
      }
    }
    record.finalRhs = demands_;
    return record;
  }

 private:
  int between(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }

  MasterRecord generate(CPXENVptr env, const std::vector<double> &demand) {
    MasterRecord record;
    Columns seeds;
    std::vector<double> rhs;
    rows_.clear();
    for (int i = 0; i < shape_.widths; ++i) {
      if (demand[static_cast<std::size_t>(i)] > 0.0) {
        seeds.append(deckles_[0], {static_cast<int>(rows_.size())});
        patterns_[0].insert({i});
        rows_.push_back(i);
        rhs.push_back(demand[static_cast<std::size_t>(i)]);
      }
    }
    Problem problem(env);
    problem.load(seeds, rhs);
    record.rhs = rhs;
    record.batches.push_back(seeds);
    while (problem.solve() == 1) {
      Columns batch = price(problem.duals());
      if (batch.size() == 0) {
        break;
      }
      problem.add(batch);
      record.batches.push_back(std::move(batch));
    }
    return record;
  }

  // Random patterns of negative reduced cost, widths of high dual per inch first.
  Columns price(const std::vector<double> &duals) {
    std::vector<int> order(rows_.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
      order[i] = static_cast<int>(i);
    }
    const auto ratio = [&](int i) { return duals[at(i)] / widths_[at(rows_[at(i)])]; };
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) { return ratio(a) > ratio(b); });
    const int rows = static_cast<int>(rows_.size());
    const int pick = std::max(rows / 10, std::min(15, rows));
    Columns batch;
    for (std::size_t d = 0; d < deckles_.size(); ++d) {
      std::vector<int> pattern;
      for (int n = 0; n < shape_.patternsPerIteration; ++n) {
        if (!find(deckles_[d], duals, order, pick, pattern)) {
          break;
        }
        std::vector<int> widths;
        for (const int row : pattern) {
          widths.push_back(rows_[at(row)]);
        }
        if (patterns_[d].insert(widths).second) {
          batch.append(deckles_[d], pattern);
        }
      }
    }
    return batch;
  }

  bool find(double deckle, const std::vector<double> &duals, const std::vector<int> &order,
            int pick, std::vector<int> &pattern) {
    for (int attempt = 0; attempt < shape_.attempts; ++attempt) {
      pattern.clear();
      double room = deckle;
      double reduced = deckle;
      while (static_cast<int>(pattern.size()) < shape_.maxWidthsInPattern && room > 0.0) {
        state_ = (205 * state_ + 29573) % 139968;
        int row = order[static_cast<std::uint32_t>(pick) * state_ / 139968];
        if (width(row) > room) {
          row = bestFitting(room, duals, order);
        }
        if (row < 0) {
          break;
        }
        pattern.push_back(row);
        room -= width(row);
        reduced -= duals[at(row)];
      }
      if (reduced <= -1e-8) {
        std::sort(pattern.begin(), pattern.end());
        return true;
      }
    }
    return false;
  }

  int bestFitting(double room, const std::vector<double> &duals, const std::vector<int> &order) {
    int choice = -1;
    double best = 0.0;
    for (const int row : order) {
      if (width(row) <= room && duals[at(row)] >= best) {
        best = duals[at(row)];
        choice = row;
      }
    }
    return choice;
  }

  double width(int row) const { return widths_[at(rows_[at(row)])]; }
  static std::size_t at(int index) { return static_cast<std::size_t>(index); }

  MillShape shape_;
  std::mt19937 random_;
  std::uint32_t state_ = 42;
  std::vector<double> widths_;   // descending
  std::vector<double> deckles_;  // ascending
  std::vector<std::vector<double>> demands_;
  std::vector<std::set<std::vector<int>>> patterns_;  // by deckle
  std::vector<int> rows_;                             // the width of each row of the present LP
};

}  // namespace corvane::lp::testing
