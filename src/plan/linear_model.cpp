#include "plan/linear_model.h"

namespace corvane::plan {

int LinearModel::addRow(double low, double high) {
  rowLower.push_back(low);
  rowUpper.push_back(high);
  return rows() - 1;
}

int LinearModel::addColumn(double columnCost, double low, double high,
                           std::span<const Entry> entries) {
  cost.push_back(columnCost);
  lower.push_back(low);
  upper.push_back(high);
  whole.push_back(0);
  for (const Entry &entry : entries) {
    rowOf.push_back(entry.row);
    value.push_back(entry.value);
  }
  start.push_back(static_cast<int>(rowOf.size()));
  return columns() - 1;
}

}  // namespace corvane::plan
