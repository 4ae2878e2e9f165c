#include "plan/linear_solver.h"

// CLP's headers do not keep to our warnings.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wall"
#pragma GCC diagnostic ignored "-Wextra"
#pragma GCC diagnostic ignored "-Wpedantic"
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wsign-conversion"
#pragma GCC diagnostic ignored "-Wold-style-cast"
#pragma GCC diagnostic ignored "-Wshadow"
#pragma GCC diagnostic ignored "-Wunused-parameter"
#include <ClpSimplex.hpp>
#include <ClpSolve.hpp>
#include <CoinError.hpp>
#include <CoinPackedMatrix.hpp>
#include <CoinTime.hpp>
#pragma GCC diagnostic pop

#include <algorithm>
#include <cmath>

namespace corvane::plan {

namespace {

// Beside the solver's tolerance.
constexpr double kPolished = 0.01;

// CLP's own infinity is the largest double.
double bound(double value) {
  return std::isinf(value) ? std::copysign(COIN_DBL_MAX, value) : value;
}

std::vector<double> bounds(const std::vector<double> &values) {
  std::vector<double> result(values.size());
  std::transform(values.begin(), values.end(), result.begin(), bound);
  return result;
}

std::vector<double> copy(const double *values, int count) {
  return values == nullptr ? std::vector<double>(static_cast<std::size_t>(count))
                           : std::vector<double>(values, values + count);
}

Place placeOf(ClpSimplex::Status status) {
  return status == ClpSimplex::basic          ? Place::kBasic
         : status == ClpSimplex::atUpperBound ? Place::kHigh
                                              : Place::kLow;
}

ClpSimplex::Status statusOf(Place place) {
  return place == Place::kBasic  ? ClpSimplex::basic
         : place == Place::kHigh ? ClpSimplex::atUpperBound
                                 : ClpSimplex::atLowerBound;
}

// CLP is not asked where there is nothing to decide.
LinearSolution nothingToSolve(const ClpSimplex &simplex) {
  LinearSolution solution;
  const bool feasible = std::all_of(simplex.rowLower(), simplex.rowLower() + simplex.numberRows(),
                                    [](double low) { return low <= 0.0; });
  solution.status = feasible ? Status::kOptimal : Status::kInfeasible;
  solution.dual.resize(static_cast<std::size_t>(simplex.numberRows()));
  return solution;
}

}  // namespace

struct LinearSolver::Clp {
  ClpSimplex simplex;
  bool solved = false;

  bool isTimeLeft() const {
    return simplex.maximumSeconds() < 0.0 || CoinCpuTime() < simplex.maximumSeconds();
  }

  void solveFromScratch(Method method) {
    ClpSolve options;
    options.setPresolveType(ClpSolve::presolveOn);
    options.setSolveType(method == Method::kDual     ? ClpSolve::useDual
                         : method == Method::kPrimal ? ClpSolve::usePrimal
                                                     : ClpSolve::useBarrier);
    simplex.initialSolve(options);
  }

  LinearSolution solution(Method method) {
    solved = true;
    LinearSolution solution;
    const int status = simplex.status();
    solution.status = status == 0   ? Status::kOptimal
                      : status == 1 ? Status::kInfeasible
                      : status == 2 ? Status::kUnbounded
                                    : Status::kStopped;
    solution.objective = simplex.objectiveValue();
    solution.primal = copy(simplex.primalColumnSolution(), simplex.numberColumns());
    solution.dual = copy(simplex.dualRowSolution(), simplex.numberRows());
    solution.reducedCost = copy(simplex.dualColumnSolution(), simplex.numberColumns());
    solution.iterations = simplex.numberIterations();
    solution.method = method;
    return solution;
  }

  // The most by which a column misses its bounds or a row its own.
  double violation() const {
    double most = 0.0;
    const auto note = [&most](double value, double low, double high) {
      most = std::max({most, low - value, value - high});
    };
    for (int column = 0; column < simplex.numberColumns(); ++column) {
      note(simplex.primalColumnSolution()[column], simplex.columnLower()[column],
           simplex.columnUpper()[column]);
    }
    for (int row = 0; row < simplex.numberRows(); ++row) {
      note(simplex.primalRowSolution()[row], simplex.rowLower()[row], simplex.rowUpper()[row]);
    }
    return most;
  }
};

LinearSolver::LinearSolver(const LinearModel &model) : clp_(std::make_unique<Clp>()) {
  ClpSimplex &simplex = clp_->simplex;
  simplex.setLogLevel(0);
  const std::vector<double> lower = bounds(model.lower);
  const std::vector<double> upper = bounds(model.upper);
  const std::vector<double> rowLower = bounds(model.rowLower);
  const std::vector<double> rowUpper = bounds(model.rowUpper);
  simplex.loadProblem(model.columns(), model.rows(), model.start.data(), model.rowOf.data(),
                      model.value.data(), lower.data(), upper.data(), model.cost.data(),
                      rowLower.data(), rowUpper.data());
}

LinearSolver::~LinearSolver() = default;

void LinearSolver::setCost(int column, double cost) {
  clp_->simplex.setObjectiveCoefficient(column, cost);
}

void LinearSolver::setColumnBounds(int column, double low, double high) {
  clp_->simplex.setColumnBounds(column, bound(low), bound(high));
}

void LinearSolver::setRowBounds(int row, double low, double high) {
  clp_->simplex.setRowBounds(row, bound(low), bound(high));
}

int LinearSolver::addRow(double low, double high, std::span<const int> columns,
                         std::span<const double> values) {
  clp_->simplex.addRow(static_cast<int>(columns.size()), columns.data(), values.data(), bound(low),
                       bound(high));
  return clp_->simplex.numberRows() - 1;
}

void LinearSolver::addColumns(const LinearModel &model, int first) {
  const auto from = static_cast<std::size_t>(first);
  std::vector<double> lower = bounds(model.lower);
  std::vector<double> upper = bounds(model.upper);
  const std::vector<int> starts(model.start.begin() + first, model.start.end());
  std::vector<int> relative(starts.size());
  std::transform(starts.begin(), starts.end(), relative.begin(),
                 [&](int start) { return start - starts.front(); });
  clp_->simplex.addColumns(
      model.columns() - first, lower.data() + from, upper.data() + from, model.cost.data() + from,
      relative.data(), model.rowOf.data() + starts.front(), model.value.data() + starts.front());
}

Basis LinearSolver::basis() const {
  const ClpSimplex &simplex = clp_->simplex;
  Basis basis;
  for (int column = 0; column < simplex.numberColumns(); ++column) {
    basis.columns.push_back(placeOf(simplex.getColumnStatus(column)));
  }
  for (int row = 0; row < simplex.numberRows(); ++row) {
    basis.rows.push_back(placeOf(simplex.getRowStatus(row)));
  }
  return basis;
}

void LinearSolver::setBasis(const Basis &basis) {
  ClpSimplex &simplex = clp_->simplex;
  simplex.createStatus();
  for (int column = 0; column < simplex.numberColumns(); ++column) {
    const auto at = static_cast<std::size_t>(column);
    simplex.setColumnStatus(
        column, at < basis.columns.size() ? statusOf(basis.columns[at]) : ClpSimplex::atLowerBound);
  }
  for (int row = 0; row < simplex.numberRows(); ++row) {
    simplex.setRowStatus(row, statusOf(basis.rows[static_cast<std::size_t>(row)]));
  }
  clp_->solved = true;
}

void LinearSolver::setTimeLimit(double seconds) {
  clp_->simplex.setMaximumSeconds(seconds > 0.0 ? seconds : -1.0);
}

LinearSolution LinearSolver::solve(Method method) {
  ClpSimplex &simplex = clp_->simplex;
  if (simplex.numberColumns() == 0) {
    return nothingToSolve(simplex);
  }
  if (clp_->solved && method == Method::kDual) {
    simplex.dual();
  } else if (clp_->solved && method == Method::kPrimal) {
    simplex.primal();
  } else {
    clp_->solveFromScratch(method);
  }
  return clp_->solution(method);
}

LinearSolution LinearSolver::solve(Method method, int pivotsARow) {
  ClpSimplex &simplex = clp_->simplex;
  const int most = simplex.maximumIterations();
  simplex.setMaximumIterations(pivotsARow * simplex.numberRows());
  LinearSolution solution = solve(method);
  simplex.setMaximumIterations(most);
  return solution;
}

LinearSolution LinearSolver::solveAfresh(int dualPivotsARow) {
  ClpSimplex &simplex = clp_->simplex;
  if (simplex.numberColumns() == 0) {
    return nothingToSolve(simplex);
  }
  const int most = simplex.maximumIterations();
  simplex.setMaximumIterations(dualPivotsARow * simplex.numberRows());
  clp_->solveFromScratch(Method::kDual);
  simplex.setMaximumIterations(most);
  constexpr int kStopped = 3;
  if (simplex.status() != kStopped || !clp_->isTimeLeft()) {
    return clp_->solution(Method::kDual);
  }
  clp_->solveFromScratch(Method::kBarrier);
  return clp_->solution(Method::kBarrier);
}

LinearSolution LinearSolver::polish(const LinearSolution &solution) {
  ClpSimplex &simplex = clp_->simplex;
  const double tolerance = simplex.primalTolerance();
  if (simplex.numberColumns() == 0 || clp_->violation() <= kPolished * tolerance) {
    return solution;
  }
  simplex.setPrimalTolerance(kPolished * tolerance);
  LinearSolution polished = solve(Method::kPrimal);
  simplex.setPrimalTolerance(tolerance);
  return polished.status == Status::kOptimal ? polished : solution;
}

bool LinearSolver::writeMps(const std::string &path, const std::vector<std::string> &columnNames,
                            const std::vector<int> &whole) {
  ClpSimplex &simplex = clp_->simplex;
  std::vector<std::string> rowNames;
  rowNames.reserve(static_cast<std::size_t>(simplex.numberRows()));
  for (int row = 0; row < simplex.numberRows(); ++row) {
    rowNames.push_back("row_" + std::to_string(row));
  }
  simplex.copyNames(rowNames, columnNames);
  for (const int column : whole) {
    simplex.setInteger(column);
  }
  constexpr int kAllDigits = 1;
  bool written = false;
  try {
    written = simplex.writeMps(path.c_str(), kAllDigits) == 0;
  } catch (const CoinError &) {
    // It cannot be opened.
  }
  for (const int column : whole) {
    simplex.setContinuous(column);
  }
  return written;
}

}  // namespace corvane::plan
