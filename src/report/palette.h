#pragma once

#include <QByteArray>
#include <vector>

namespace corvane::report {

struct Color {
  int red = 0;  // 0 to 255
  int green = 0;
  int blue = 0;
};

// The contrast ratio of two colors, 1 to 21 (WCAG 2.1, relative luminance of sRGB).
double contrast(const Color &a, const Color &b);

// "#1f6391"
QByteArray toHex(const Color &color);

// So many colors for roll widths, neighbours far apart in hue and none of them as red as trim.
// White text on each has a contrast of at least 4.5.
std::vector<Color> widthColors(int count);

}  // namespace corvane::report
