#include "network/replaced_values.h"

#include "core/numbers.h"

namespace corvane::network {

void ReplacedValues::add(const char *kind, quint64 subject, const std::string &thing,
                         const Change &change) {
  Entry &entry = entries_[{kind, subject, thing}];
  if (entry.count++ == 0) {
    entry.thing = thing;
    entry.first = change;
  }
  entry.lastLine = change.line;
  entry.lastValue = change.value;
}

std::vector<Warning> ReplacedValues::warnings() const {
  std::vector<Warning> warnings;
  warnings.reserve(entries_.size());
  for (const auto &[key, entry] : entries_) {
    const Change &first = entry.first;
    std::string text = entry.thing + " is " + general(first.value) + " here and was " +
                       general(first.earlierValue) + " in line " +
                       std::to_string(first.earlierLine);
    if (!first.period.empty()) {
      text += " (period " + first.period + ")";
    }
    if (entry.count > 1) {
      text += "; " + std::to_string(entry.count - 1) + " more such lines, the last is line " +
              std::to_string(entry.lastLine) + " with " + general(entry.lastValue);
    }
    warnings.push_back({first.line, std::get<0>(key), text + "; the later line of a period holds"});
  }
  return warnings;
}

}  // namespace corvane::network
