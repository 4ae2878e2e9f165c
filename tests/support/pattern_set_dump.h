#pragma once

#include <QLinkedList>
#include <memory>
#include <string>
#include <vector>

#include "core/numbers.h"
#include "core/skip_list_cursor.h"
#include "core/text.h"
#include "generation/pattern_set.h"

namespace corvane::support {

// A pattern of the deckle width, its widths in the order given, its trim what is left.
inline std::unique_ptr<Pattern> makePattern(double deckleWidth, const std::vector<double> &widths) {
  auto pattern = std::make_unique<Pattern>(deckleWidth);
  for (const double width : widths) {
    pattern->widths.append(width);
    pattern->trim -= width;
  }
  return pattern;
}

// Inserts such a pattern into the set, which owns it from then on; null when it is there already.
inline Pattern *addPattern(PatternCompPattern &set, const std::vector<double> &widths) {
  std::unique_ptr<Pattern> pattern = makePattern(set.deckleWidth, widths);
  const bool stored = set.patterns->insert(pattern.get()) == skipList<Pattern>::kStored;
  return stored ? pattern.release() : nullptr;
}

template <typename Number>
std::vector<Number> valuesOf(const PeriodValues<Number> &values) {
  std::vector<Number> all;
  for (qint32 period = 0; period < values.size(); ++period) {
    all.push_back(values.at(period));
  }
  return all;
}

template <typename Numbers>
std::string numbersText(const Numbers &numbers) {
  std::string text;
  for (const auto number : numbers) {
    text += text.empty() ? "" : " ";
    text += general(static_cast<double>(number));
  }
  return text;
}

// "{widths} trim {trim}", then, where there are any, " x [...]", " cost [...]" and " in [...]" with
// one entry a period.
inline std::string dump(const Pattern &pattern) {
  std::string text = numbersText(pattern.widths) + " trim " + general(pattern.trim);
  const auto add = [&text](const char *name, const std::string &numbers) {
    text += numbers.empty() ? "" : name + ("[" + numbers + "]");
  };
  add(" x ", numbersText(valuesOf(pattern.xValues)));
  add(" cost ", numbersText(valuesOf(pattern.reducedCosts)));
  add(" in ", numbersText(valuesOf(pattern.inModel)));
  return text;
}

inline std::string dump(const skipList<Pattern> &patterns) {
  std::string text;
  forEachElement(patterns, [&](const Pattern &pattern) { text += dump(pattern) + "\n"; });
  return text;
}

// The widths of one pattern after the other: "45 45 | 30".
inline std::string widthsOf(const skipList<Pattern> &patterns) {
  std::string text;
  forEachElement(patterns, [&](const Pattern &pattern) {
    text += (text.empty() ? "" : " | ") + numbersText(pattern.widths);
  });
  return text;
}

// "{grade} {deckle width}:" and one line a pattern, in the order of the set.
inline std::string dump(const PatternCompPattern &set) {
  return utf8(set.grade) + " " + general(set.deckleWidth) + ":\n" + dump(*set.patterns);
}

inline std::string dump(const PatternSets &sets) {
  std::string text;
  for (const PatternCompPattern *set : sets.all) {
    text += dump(*set);
  }
  return text;
}

}  // namespace corvane::support
