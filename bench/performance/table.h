#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace corvane::bench {

// A table of a Markdown document.
class Table {
 public:
  explicit Table(std::vector<std::string> heads) : rows_{std::move(heads)} {}
  void row(std::vector<std::string> cells) { rows_.push_back(std::move(cells)); }
  friend std::ostream &operator<<(std::ostream &out, const Table &table);

 private:
  std::vector<std::vector<std::string>> rows_;
};

}  // namespace corvane::bench
