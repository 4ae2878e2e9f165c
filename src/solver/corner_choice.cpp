#include "solver/corner_choice.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <utility>

namespace corvane::lp {

namespace {

// Beside the basis so many columns a row are worth moving to; more cost time and give no better
// plans.
constexpr std::size_t kCandidatesPerRow = 3;

// A column whose reduced cost is at most this share of its cost has none.
constexpr double kNoReducedCost = 1e-10;

// How much of the choice is chance, in solutions that served a roll.
constexpr double kChance = 0.5;

// From 0 to 1, the same for the same numbers. (Steele, Lea and Flood, "Fast splittable pseudorandom
// number generators", OOPSLA 2014.)
double chance(int turn, int column) {
  std::uint64_t bits =
      (static_cast<std::uint64_t>(turn) << 32U) + static_cast<std::uint64_t>(column);
  bits = (bits + 1) * 0x9E3779B97F4A7C15U;
  bits = (bits ^ (bits >> 30U)) * 0xBF58476D1CE4E5B9U;
  bits = (bits ^ (bits >> 27U)) * 0x94D049BB133111EBU;
  return static_cast<double>((bits ^ (bits >> 31U)) >> 11U) * 0x1p-53;
}

// How many columns in earlier solutions served each row, by their cost: patterns of one deckle
// width do not stand in for those of another.
class Services {
 public:
  Services(const ColumnPool &pool, const std::vector<int> &uses, int rows) : pool_(pool) {
    for (int j = 0; j < pool.size(); ++j) {
      const auto column = static_cast<std::size_t>(j);
      std::vector<int> &served = byCost_[pool.cost[column]];
      served.resize(static_cast<std::size_t>(rows), 0);
      for (auto k = begin(column); uses[column] > 0 && k < end(column); ++k) {
        served[static_cast<std::size_t>(pool.row[k])] += uses[column];
      }
    }
  }

  // Of the rows that a column serves, on average over its coefficients.
  double average(int j) const {
    const auto column = static_cast<std::size_t>(j);
    const std::vector<int> &served = byCost_.at(pool_.cost[column]);
    double sum = 0.0;
    double weight = 0.0;
    for (auto k = begin(column); k < end(column); ++k) {
      sum += served[static_cast<std::size_t>(pool_.row[k])] * pool_.value[k];
      weight += pool_.value[k];
    }
    return weight == 0.0 ? 0.0 : sum / weight;
  }

 private:
  std::size_t begin(std::size_t column) const {
    return static_cast<std::size_t>(pool_.start[column]);
  }
  std::size_t end(std::size_t column) const {
    return static_cast<std::size_t>(pool_.start[column + 1]);
  }

  const ColumnPool &pool_;
  std::map<double, std::vector<int>> byCost_;
};

// The columns of the corner's program: those of the basis first, and what each of them costs there.
struct Candidates {
  std::vector<int> columns;
  std::vector<double> costs;
  std::size_t basic = 0;
};

std::vector<char> basicColumns(const LinearProgram &lp, const WorkingLp &working) {
  std::vector<char> isBasic(static_cast<std::size_t>(lp.columns()), 0);
  for (std::size_t at = 0; at < working.columns().size(); ++at) {
    isBasic[static_cast<std::size_t>(working.columns()[at])] =
        working.isBasic(static_cast<int>(at)) ? 1 : 0;
  }
  return isBasic;
}

Candidates candidatesOf(const LinearProgram &lp, const WorkingLp &working,
                        const std::vector<double> &duals, const KnownMatrix &known) {
  const std::vector<char> isBasic = basicColumns(lp, working);
  const Services services(lp.pool(), known.uses, lp.rows());
  std::vector<std::pair<double, int>> basic;
  std::vector<std::pair<double, int>> others;
  for (int j = 0; j < lp.columns(); ++j) {
    const double cost = lp.pool().cost[static_cast<std::size_t>(j)];
    const bool stays = isBasic[static_cast<std::size_t>(j)] != 0;
    if (stays || reducedCost(lp.pool(), j, duals.data()) <= kNoReducedCost * cost) {
      const double wish = services.average(j) + kChance * chance(known.solutions, j);
      (stays ? basic : others).emplace_back(cost * wish, j);
    }
  }
  const std::size_t count =
      std::min(others.size(), kCandidatesPerRow * static_cast<std::size_t>(lp.rows()));
  std::partial_sort(others.begin(), others.begin() + static_cast<std::ptrdiff_t>(count),
                    others.end());
  others.resize(count);
  Candidates result;
  result.basic = basic.size();
  basic.insert(basic.end(), others.begin(), others.end());
  for (const auto &[cost, column] : basic) {
    result.columns.push_back(column);
    result.costs.push_back(cost);
  }
  return result;
}

// Takes over the basis, and lets no row that has a price be served beyond its demand.
void startAt(WorkingLp &corner, const Candidates &candidates, const LinearProgram &lp,
             const WorkingLp &working, const std::vector<double> &duals) {
  for (std::size_t position = 0; position < candidates.columns.size(); ++position) {
    corner.setCost(static_cast<int>(position), candidates.costs[position]);
  }
  for (std::size_t position = 0; position < candidates.basic; ++position) {
    corner.makeBasic(static_cast<int>(position));
  }
  for (int row = 0; row < lp.rows(); ++row) {
    if (!working.rowIsBasic(row)) {
      corner.makeRowNonbasic(row);
    }
    if (duals[static_cast<std::size_t>(row)] > 0.0) {
      corner.forbidExcess(row);
    }
  }
}

}  // namespace

void countUses(KnownMatrix &known, const Activities &activities) {
  for (const auto &[column, x] : activities) {
    ++known.uses[static_cast<std::size_t>(column)];
  }
  ++known.solutions;
}

Activities chooseCorner(const LinearProgram &lp, const WorkingLp &working, const Solution &solution,
                        const KnownMatrix &known) {
  const Candidates candidates = candidatesOf(lp, working, solution.duals, known);
  WorkingLp corner(lp, candidates.columns);
  startAt(corner, candidates, lp, working, solution.duals);
  if (corner.primal() != Status::kOptimal) {
    return solution.activities;
  }
  return corner.activities();
}

}  // namespace corvane::lp
