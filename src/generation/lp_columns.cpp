#include "generation/lp_columns.h"

#include <algorithm>
#include <functional>
#include <string>

#include "core/exchange_sort.h"
#include "core/fatal.h"

namespace corvane {

void endRunWithoutMemoryFor(const char *what, std::ostream &log) {
  endRun(log, std::string("Error: Could not allocate memory for ") + what + ".");
}

void tallyWidths(const QLinkedList<double> &widths, std::vector<TallyEntry> &tally) {
  tally.clear();
  for (const double width : widths) {
    const auto known = std::find_if(tally.begin(), tally.end(), [width](const TallyEntry &entry) {
      return entry.width == width;
    });
    if (known != tally.end()) {
      ++known->count;
    } else {
      tally.push_back({width, 1});
    }
  }
  exchangeSort(tally, [](const TallyEntry &a, const TallyEntry &b) { return b.width > a.width; });
}

int rowOf(double width, const std::vector<double> &rowWidths) {
  const auto row = std::lower_bound(rowWidths.begin(), rowWidths.end(), width, std::greater<>());
  return static_cast<int>(row - rowWidths.begin());
}

void LpColumns::reserveObjective(std::size_t columns) {
  takeMemory(names_.objective, log_, [&] { objective.reserve(columns); });
}

void LpColumns::reserveMatrix(std::size_t columns, std::size_t nonzeros) {
  takeMemory(names_.matrix, log_, [&] {
    starts.reserve(columns);
    counts.reserve(columns);
    indices.reserve(nonzeros);
    values.reserve(nonzeros);
  });
}

void LpColumns::reserveBounds(std::size_t columns) {
  takeMemory(names_.lower, log_, [&] { lower.reserve(columns); });
  takeMemory(names_.upper, log_, [&] { upper.reserve(columns); });
}

void LpColumns::append(double cost, const QLinkedList<double> &widths,
                       const std::vector<double> &rowWidths) {
  tallyWidths(widths, tally_);
  takeMemory(names_.objective, log_, [&] { objective.push_back(cost); });
  takeMemory(names_.matrix, log_, [&] {
    starts.push_back(nonzeros());
    counts.push_back(static_cast<int>(tally_.size()));
    for (const TallyEntry &entry : tally_) {
      indices.push_back(rowOf(entry.width, rowWidths));
      values.push_back(static_cast<double>(entry.count));
    }
  });
  takeMemory(names_.lower, log_, [&] { lower.push_back(0.0); });
  takeMemory(names_.upper, log_, [&] { upper.push_back(kInfinity); });
}

LpProblem::LpProblem(std::size_t rows, std::size_t columnCount, std::size_t nonzeros,
                     std::ostream &log)
    : columns(LpColumns::kOfWholeLp, log) {
  columns.reserveObjective(columnCount);
  takeMemory("senses", log, [&] { senses.assign(rows, 'G'); });
  columns.reserveMatrix(columnCount, nonzeros);
  columns.reserveBounds(columnCount);
  takeMemory("right hand side", log, [&] { rightHandSides.assign(rows, 0.0); });
}

}  // namespace corvane
