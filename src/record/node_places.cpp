#include "record/node_places.h"

#include <charconv>
#include <istream>
#include <optional>
#include <string>
#include <string_view>

namespace corvane::record {

namespace {

constexpr std::string_view kNode = "addnode <type> \"";
constexpr std::string_view kName = "\" <name> \"";
constexpr std::string_view kX = " <x> ";
constexpr std::string_view kY = " <y> ";

std::optional<int> numberBehind(std::string_view line, std::string_view attribute) {
  const std::size_t at = line.find(attribute);
  if (at == std::string_view::npos) {
    return std::nullopt;
  }
  const char *begin = line.data() + at + attribute.size();
  int number = 0;
  const auto result = std::from_chars(begin, line.data() + line.size(), number);
  return result.ec == std::errc() ? std::optional(number) : std::nullopt;
}

}  // namespace

QHash<QByteArray, QPoint> nodePlaces(std::istream &importFile) {
  QHash<QByteArray, QPoint> places;
  std::string text;
  while (std::getline(importFile, text)) {
    const std::string_view line = text;
    const std::size_t name = line.find(kName);
    if (!line.starts_with(kNode) || name == std::string_view::npos) {
      continue;
    }
    const std::string_view rest = line.substr(name + kName.size());
    // A name may hold anything but a quote.
    const std::size_t end = rest.find('"');
    const std::string_view behind = rest.substr(std::min(end, rest.size()));
    const std::optional<int> x = numberBehind(behind, kX);
    const std::optional<int> y = numberBehind(behind, kY);
    if (x && y) {
      const QByteArray key(rest.data(), static_cast<qsizetype>(end));
      if (!places.contains(key)) {
        places.insert(key, QPoint(*x, *y));
      }
    }
  }
  return places;
}

}  // namespace corvane::record
