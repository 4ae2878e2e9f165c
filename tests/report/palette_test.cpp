#include "report/palette.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace corvane::report {
namespace {

TEST(Palette, ContrastIsThatOfTheGuidelines) {
  EXPECT_NEAR(contrast({0, 0, 0}, {255, 255, 255}), 21, 1e-9);
  EXPECT_NEAR(contrast({255, 255, 255}, {255, 255, 255}), 1, 1e-9);
  EXPECT_NEAR(contrast({0x76, 0x76, 0x76}, {255, 255, 255}), 4.54, 0.005);
  EXPECT_NEAR(contrast({255, 255, 255}, {255, 0, 0}), 3.998, 0.005);
}

TEST(Palette, WritesColorsAsHexadecimal) {
  EXPECT_EQ(toHex({0, 10, 255}), "#000aff");
}

TEST(Palette, WhiteTextCanBeReadOnEveryColor) {
  for (const Color &color : widthColors(300)) {
    EXPECT_GE(contrast(color, {255, 255, 255}), 4.5) << toHex(color).toStdString();
  }
}

TEST(Palette, TheColorsDiffer) {
  const std::vector<Color> colors = widthColors(60);
  for (std::size_t i = 0; i < colors.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      const int distance = std::abs(colors[i].red - colors[j].red) +
                           std::abs(colors[i].green - colors[j].green) +
                           std::abs(colors[i].blue - colors[j].blue);
      // Neighbours are told apart at a glance, all others are different.
      EXPECT_GE(distance, i - j == 1 ? 60 : 1) << i << " and " << j;
    }
  }
}

TEST(Palette, NoneIsAsRedAsTrim) {
  for (const Color &color : widthColors(300)) {
    EXPECT_LT(color.red, 2 * std::max(color.green, color.blue) + 40) << toHex(color).toStdString();
  }
}

}  // namespace
}  // namespace corvane::report
