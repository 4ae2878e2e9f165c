#pragma once

#include <array>
#include <string_view>

namespace corvane {

// A finite number in the fewest digits that read back to it, with a decimal point whatever the
// locale; minus zero is 0. Small and large ones have an exponent.
class NumberText {
 public:
  explicit NumberText(double number);

  std::string_view view() const { return {text_.data(), length_}; }

 private:
  // The longest is -2.2250738585072014e-308.
  std::array<char, 32> text_{};
  std::size_t length_ = 0;
};

}  // namespace corvane
