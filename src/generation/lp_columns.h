#pragma once

#include <QLinkedList>
#include <iosfwd>
#include <new>
#include <vector>

namespace corvane {

// Ends the run with "Error: Could not allocate memory for {what}."
[[noreturn]] void endRunWithoutMemoryFor(const char *what, std::ostream &log);

// Runs a step that takes memory; where it cannot be had, that ends the run so.
template <typename Step>
void takeMemory(const char *what, std::ostream &log, Step step) {
  try {
    step();
  } catch (const std::bad_alloc &) {
    endRunWithoutMemoryFor(what, log);
  }
}

struct TallyEntry {
  double width;
  qint32 count;
};

// Each distinct width (exact equality) with its multiplicity, widest first. Emptied first.
void tallyWidths(const QLinkedList<double> &widths, std::vector<TallyEntry> &tally);

// The position of the width among the rows of an LP, which are distinct and descending;
// logarithmic. REQUIRES that it is there: every width of a pattern comes from the rows.
int rowOf(double width, const std::vector<double> &rowWidths);

// What a message calls the parts of the columns.
struct LpColumnNames {
  const char *objective;
  const char *matrix;
  const char *lower;
  const char *upper;
};

// Columns of an LP as the solver takes them, one a pattern, from 0 to infinity. Memory is taken as
// columns arrive, or ahead; what cannot be had ends the run.
class LpColumns {
 public:
  static constexpr double kInfinity = 1e20;
  static constexpr LpColumnNames kOfWholeLp = {"objective function coefficients",
                                               "constraint matrix", "lower bounds", "upper bounds"};
  static constexpr LpColumnNames kAdditional = {
      "additional objective function coefficients", "additions to the constraint matrix",
      "additions to the lower bounds", "additions to the upper bounds"};

  LpColumns(const LpColumnNames &names, std::ostream &log) : names_(names), log_(log) {}

  // Memory for so many columns.
  void reserveObjective(std::size_t columns);
  void reserveMatrix(std::size_t columns, std::size_t nonzeros);
  void reserveBounds(std::size_t columns);

  // Appends the column of a pattern: cost in inches, rows distinct and descending.
  void append(double cost, const QLinkedList<double> &widths, const std::vector<double> &rowWidths);

  int count() const { return static_cast<int>(objective.size()); }
  int nonzeros() const { return static_cast<int>(values.size()); }

  std::vector<double> objective;
  std::vector<int> starts;
  std::vector<int> counts;
  std::vector<int> indices;
  std::vector<double> values;
  std::vector<double> lower;
  std::vector<double> upper;

 private:
  LpColumnNames names_;
  std::ostream &log_;
  std::vector<TallyEntry> tally_;
};

// One whole LP as the solver takes it: minimise, rows >= right-hand side.
struct LpProblem {
  static constexpr int kMinimise = 1;

  // Takes the memory of every part in turn; what cannot be had ends the run with words of its own.
  // There are no columns yet, and all right-hand sides are 0.
  LpProblem(std::size_t rows, std::size_t columnCount, std::size_t nonzeros, std::ostream &log);

  int rows() const { return static_cast<int>(senses.size()); }

  LpColumns columns;
  std::vector<char> senses;
  std::vector<double> rightHandSides;
};

}  // namespace corvane
