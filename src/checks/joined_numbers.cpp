#include "checks/joined_numbers.h"

#include "checks/number_form.h"

namespace corvane::checks {

namespace {

// Tries all ways to give the columns one field or, numbers, two; the first way joins as early as it
// can. Seven columns at most, so that there are few.
class Joiner {
 public:
  Joiner(const LineFields &line, Layout layout) : line_(line), layout_(layout) {}

  std::optional<JoinedNumbers> solve() {
    if (line_.count <= LineFields::kMost) {
      tryColumn(0, 0);
    }
    if (ways_ == 0) {
      return std::nullopt;
    }
    return JoinedNumbers{first_, ways_ == 1};
  }

 private:
  void tryColumn(std::size_t column, int field) {
    if (column == layout_.size()) {
      if (field == line_.count && !joins_.empty() && ways_++ == 0) {
        first_ = joins_;
      }
      return;
    }
    const int left = line_.count - field;
    if (left < static_cast<int>(layout_.size() - column)) {
      return;
    }
    const FieldKind kind = layout_[column].kind;
    if (kind != FieldKind::kName && left > 1) {
      tryJoin(column, field, kind);
    }
    if (kind == FieldKind::kName || isPlainNumber(line_[field])) {
      tryColumn(column + 1, field + 1);
    }
  }

  void tryJoin(std::size_t column, int field, FieldKind kind) {
    constexpr std::size_t kGroup = 3;
    std::string_view first = withoutOuterBlanks(line_[field]);
    std::string_view second = withoutOuterBlanks(line_[field + 1]);
    if (first.size() > 1 && first.front() == '"' && second.size() > 1 && second.back() == '"') {
      first.remove_prefix(1);
      second.remove_suffix(1);
    }
    const bool isSigned = !first.empty() && first.front() == '-';
    // Of 1,024.25 the second half has the point.
    const std::string_view whole = second.substr(0, second.find('.'));
    const bool hasPoint = whole.size() < second.size() && kind != FieldKind::kQuantity;
    if (!isDigits(isSigned ? first.substr(1) : first) || !isDigits(hasPoint ? whole : second) ||
        (hasPoint && !isDigits(second.substr(whole.size() + 1)))) {
      return;
    }
    const bool isThousands = hasPoint || kind == FieldKind::kQuantity;
    if (isThousands && (first.size() > kGroup || whole.size() != kGroup)) {
      return;
    }
    joins_.push_back(
        {field, isThousands, std::string(first) + (isThousands ? "" : ".") + std::string(second)});
    tryColumn(column + 1, field + 2);
    joins_.pop_back();
  }

  const LineFields &line_;
  Layout layout_;
  std::vector<JoinedNumbers::Join> joins_;
  std::vector<JoinedNumbers::Join> first_;
  int ways_ = 0;
};

}  // namespace

std::optional<JoinedNumbers> joinNumbers(const LineFields &line, Layout layout) {
  return Joiner(line, layout).solve();
}

}  // namespace corvane::checks
