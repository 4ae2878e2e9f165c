#include "planning/order_texts.h"

#include <limits>

#include "core/numbers.h"

namespace corvane {

OrderTexts::Place &OrderTexts::place(std::string_view period, std::string_view grade) {
  // One look-up for both: all that stands between them are delimiters.
  const std::string_view both(
      period.data(), static_cast<std::size_t>(grade.data() + grade.size() - period.data()));
  if (Place *known = places_.find(both)) {
    return *known;
  }
  const TextTable::Id gradeText = texts_.idOf(grade);
  const double widest =
      widestCutter_.value(texts_.text(gradeText), std::numeric_limits<double>::quiet_NaN());
  return places_.add(both, {texts_.idOf(period), gradeText, widest});
}

OrderTexts::Width &OrderTexts::width(std::string_view field) {
  Width *known = widths_.find(field);
  return known != nullptr ? *known : widths_.add(field, {leadingNumber(field.data())});
}

}  // namespace corvane
