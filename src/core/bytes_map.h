#pragma once

#include <QtGlobal>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane {

// Keeps a value for each of many byte strings, for look-ups of which nearly all find theirs.
//
// A hash table with open addressing: D. E. Knuth, "The Art of Computer Programming", vol. 3,
// section 6.4, algorithm L. A look-up reads a cell and the string that the cell names, where the
// standard library's table divides and follows a chain of nodes. At most half of the cells are
// taken.
template <typename Value>
class BytesMap {
 public:
  // The value of the bytes, or null. Valid until the next call of add().
  Value *find(std::string_view bytes) {
    const quint32 hash = hashOf(bytes);
    for (std::size_t at = home(hash, cells_); cells_[at].entry != kFree; at = next(at, cells_)) {
      if (cells_[at].hash == hash && entries_[cells_[at].entry].bytes == bytes) {
        return &entries_[cells_[at].entry].value;
      }
    }
    return nullptr;
  }

  // Adds the bytes, REQUIRED to be unknown, and gives their value, valid until the next call.
  // Throws std::bad_alloc, with nothing changed.
  Value &add(std::string_view bytes, Value value) {
    if (2 * (entries_.size() + 1) > cells_.size()) {
      grow();
    }
    entries_.push_back({std::string(bytes), std::move(value)});
    take(cells_, {hashOf(bytes), static_cast<quint32>(entries_.size() - 1)});
    return entries_.back().value;
  }

 private:
  struct Cell {
    quint32 hash = 0;
    quint32 entry = kFree;  // its number
  };
  struct Entry {
    std::string bytes;
    Value value;
  };
  using Cells = std::vector<Cell>;

  static constexpr quint32 kFree = ~quint32{0};
  // A power of 2, so that a mask takes the place of a division.
  static constexpr std::size_t kFirstCells = 16;

  static quint32 hashOf(std::string_view bytes) {
    return static_cast<quint32>(std::hash<std::string_view>()(bytes));
  }

  static std::size_t home(quint32 hash, const Cells &cells) { return hash & (cells.size() - 1); }
  static std::size_t next(std::size_t at, const Cells &cells) {
    return (at + 1) & (cells.size() - 1);
  }

  // Puts the cell into the first free place.
  static void take(Cells &cells, const Cell &cell) {
    std::size_t at = home(cell.hash, cells);
    while (cells[at].entry != kFree) {
      at = next(at, cells);
    }
    cells[at] = cell;
  }

  void grow() {
    Cells larger(2 * cells_.size());
    for (const Cell &cell : cells_) {
      if (cell.entry != kFree) {
        take(larger, cell);
      }
    }
    cells_.swap(larger);
  }

  Cells cells_ = Cells(kFirstCells);
  std::vector<Entry> entries_;
};

}  // namespace corvane
