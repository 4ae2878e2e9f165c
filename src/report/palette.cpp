#include "report/palette.h"

#include <algorithm>
#include <cmath>

namespace corvane::report {

namespace {

constexpr Color kWhite{255, 255, 255};
constexpr double kLeastContrast = 4.5;

double linear(int channel) {
  const double share = channel / 255.0;
  return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

double luminance(const Color &color) {
  return 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue);
}

// Hue in degrees, saturation and lightness 0 to 1.
Color fromHsl(double hue, double saturation, double lightness) {
  const auto channel = [&](double offset) {
    const double k = std::fmod(offset + hue / 30, 12);
    const double wave = std::max(-1.0, std::min({k - 3, 9 - k, 1.0}));
    const double value = lightness - saturation * std::min(lightness, 1 - lightness) * wave;
    return static_cast<int>(std::lround(255 * value));
  };
  return {channel(0), channel(8), channel(4)};
}

// The lightest one of the hue on which white can be read, a little darker in every other round.
Color readable(double hue, double saturation, double step) {
  double lightness = 0.46;
  Color color = fromHsl(hue, saturation, lightness);
  while (contrast(color, kWhite) < kLeastContrast) {
    lightness -= 0.01;
    color = fromHsl(hue, saturation, lightness);
  }
  return fromHsl(hue, saturation, lightness - step);
}

}  // namespace

double contrast(const Color &a, const Color &b) {
  const double first = luminance(a);
  const double second = luminance(b);
  return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

QByteArray toHex(const Color &color) {
  return '#' + QByteArray::number((color.red << 16) + (color.green << 8) + color.blue, 16)
                   .rightJustified(6, '0');
}

std::vector<Color> widthColors(int count) {
  // Steps of the golden angle never meet again; the hues of 20 degrees around red are trim's.
  constexpr double kGoldenAngle = 137.50776;
  constexpr double kRange = 310;
  std::vector<Color> colors;
  for (int i = 0; i < count; ++i) {
    const double turn = std::fmod(184 + i * kGoldenAngle * kRange / 360, kRange);
    colors.push_back(readable(25 + turn, i % 2 == 0 ? 0.5 : 0.34, (i / 5) % 3 * 0.045));
  }
  return colors;
}

}  // namespace corvane::report
