#pragma once

#include <cstddef>
#include <vector>

namespace corvane::plan {

// A width that pricing may cut, inches, what a roll of it is worth, and its index in the caller's
// list.
struct PricedWidth {
  double width;
  double value;
  std::size_t index;
};

// All cuts of at most some rolls, sorted by width: the most that any of them is worth within a
// given width is one look-up. How many rolls depends on how many widths there are: the table has at
// most kMostCuts cuts. A table without widths holds the empty cut alone.
class CutTable {
 public:
  static constexpr std::size_t kMostCuts = 200000;

  // An empty table.
  CutTable() = default;
  // Of at most `limit` rolls each.
  CutTable(const std::vector<PricedWidth> &widths, int limit);

  // The most rolls that a cut of the table may hold; 0 for an empty table.
  int rolls() const { return rolls_; }
  // The best cut within `room`, as a place to ask more about. REQUIRES rolls() > 0 and room >= 0.
  std::size_t bestWithin(double room) const;
  double valueAt(std::size_t place) const { return cuts_[ascending_[place]].value; }
  // The indices of its rolls.
  std::vector<std::size_t> rollsAt(std::size_t place) const;

 private:
  struct Entry {
    double width;
    double value;
    std::size_t last;    // the roll added last, in the order of the widths
    std::size_t parent;  // the cut that it was added to; the empty cut is its own
    std::size_t index;   // the caller's index of that roll
  };

  void addLayer(const std::vector<PricedWidth> &widths, std::size_t from, std::size_t to);
  void keepBestByWidth();

  int rolls_ = 0;
  std::vector<Entry> cuts_;
  std::vector<std::size_t> ascending_;  // the undominated ones, by width and value
};

}  // namespace corvane::plan
