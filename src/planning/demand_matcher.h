#pragma once

#include <QtGlobal>
#include <unordered_map>
#include <vector>

namespace corvane {

// Turns the orders of one grade, period and width, as they come in, into demand entries: an order
// adds its quantity to the first entry of just that quantity; without one it gets an entry of its
// own. (A repeated order, whose quantity has grown by the merge, therefore gets a second entry with
// the sum.)
class DemandMatcher {
 public:
  struct Entry {
    quint32 row;  // the order that the entry began with
    qint32 quantity;
  };

  // Logarithmic cost at worst.
  void add(quint32 row, qint32 quantity);

  // In the order in which they began.
  const std::vector<Entry> &entries() const { return entries_; }

  // Forgets the entries.
  void clear();

 private:
  std::vector<Entry> entries_;
  // For a quantity the entries that have it now, by number, the first on top of the heap.
  std::unordered_map<qint32, std::vector<std::size_t>> byQuantity_;
};

}  // namespace corvane
