#include "formats/number_text.h"

#include <charconv>

namespace corvane {

NumberText::NumberText(double number) {
  // Adding zero turns minus zero into zero, and nothing else.
  const auto result = std::to_chars(text_.data(), text_.data() + text_.size(), number + 0.0);
  length_ = static_cast<std::size_t>(result.ptr - text_.data());
}

}  // namespace corvane
