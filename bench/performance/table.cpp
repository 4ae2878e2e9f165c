#include "table.h"

namespace corvane::bench {

std::ostream &operator<<(std::ostream &out, const Table &table) {
  for (std::size_t at = 0; at < table.rows_.size(); ++at) {
    for (const std::string &cell : table.rows_[at]) {
      out << "| " << cell << ' ';
    }
    out << "|\n";
    if (at == 0) {
      for (std::size_t column = 0; column < table.rows_[0].size(); ++column) {
        out << (column == 0 ? "|---" : "|---:");
      }
      out << "|\n";
    }
  }
  return out;
}

}  // namespace corvane::bench
