#pragma once

#include <QLinkedList>
#include <vector>

namespace corvane {

// A pattern's widths as nonzeros of its column.

struct TallyEntry {
  double width;
  qint32 count;
};

// Each distinct width (exact equality) with its multiplicity, widest first. Emptied first.
void tallyWidths(const QLinkedList<double> &widths, std::vector<TallyEntry> &tally);

// The position of the width among the rows, which are distinct and descending; logarithmic.
// REQUIRES that it is there: every width of a pattern comes from the rows.
int rowOf(double width, const std::vector<double> &rowWidths);

}  // namespace corvane
