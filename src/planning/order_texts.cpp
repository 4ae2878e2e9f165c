#include "planning/order_texts.h"

#include <limits>

#include "core/numbers.h"

namespace corvane {

OrderTexts::Place &OrderTexts::place(std::string_view period, std::string_view grade) {
  // One look-up for both: all that stands between them are delimiters.
  const std::string_view both(
      period.data(), static_cast<std::size_t>(grade.data() + grade.size() - period.data()));
  if (const auto known = places_.find(both); known != places_.end()) {
    return known->second;
  }
  const TextTable::Id gradeText = texts_.idOf(grade);
  const double widest =
      widestCutter_.value(texts_.text(gradeText), std::numeric_limits<double>::quiet_NaN());
  return places_.emplace(both, Place{texts_.idOf(period), gradeText, widest}).first->second;
}

OrderTexts::Width &OrderTexts::width(std::string_view field) {
  const auto known = widths_.find(field);
  return known != widths_.end()
             ? known->second
             : widths_.emplace(field, Width{leadingNumber(field.data())}).first->second;
}

}  // namespace corvane
