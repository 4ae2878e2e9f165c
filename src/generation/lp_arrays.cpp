#include "generation/lp_arrays.h"

#include <string>

#include "core/fatal.h"

namespace corvane {

namespace {

void require(bool allocated, const char *what, std::ostream &log) {
  if (!allocated) {
    endRun(log, std::string("Error: Could not allocate memory for ") + what + ".");
  }
}

}  // namespace

void LpArrays::allocateObjective(std::size_t columns, double value, std::ostream &log) {
  require(objective.allocate(columns, value), "objective function coefficients", log);
}

void LpArrays::allocateSenses(std::size_t rows, std::ostream &log) {
  require(senses.allocate(rows, 'G'), "senses", log);
}

void LpArrays::allocateMatrix(std::size_t columns, std::size_t nonzeros, std::ostream &log) {
  const bool allocated = starts.allocate(columns, 0) && counts.allocate(columns, 0) &&
                         indices.allocate(nonzeros, 0) && values.allocate(nonzeros, 0.0);
  require(allocated, "constraint matrix", log);
}

void LpArrays::allocateBounds(std::size_t columns, std::ostream &log) {
  require(lower.allocate(columns, 0.0), "lower bounds", log);
  require(upper.allocate(columns, kInfinity), "upper bounds", log);
}

void LpArrays::allocateRightHandSides(std::size_t rows, std::ostream &log) {
  require(rightHandSides.allocate(rows, 0.0), "right hand side", log);
}

}  // namespace corvane
