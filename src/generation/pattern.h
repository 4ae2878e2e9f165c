#pragma once

#include <QLinkedList>
#include <cstddef>

#include "generation/period_values.h"

namespace corvane {

// One way of slitting one deckle width of one grade into order widths.
//
// Patterns are made with new and released with delete, which take the "Pattern" pool while pooled
// allocation is on and the plain heap otherwise. The set that holds a pattern owns it.
struct Pattern {
  explicit Pattern(double initialTrim) : trim(initialTrim) {}
  Pattern(const Pattern &) = delete;
  Pattern &operator=(const Pattern &) = delete;
  ~Pattern() = default;

  static void *operator new(std::size_t size);
  static void operator delete(void *block) noexcept;

  // The widths cut, one entry a knife slot, inches; descending once the pattern is complete.
  QLinkedList<double> widths;
  // Deckle width less the sum of the widths, inches.
  double trim;
  // One entry a period, appended by the final LPs: the activity of the pattern in the period's LP,
  // its reduced cost there, and 1 where the pattern is taken into the model, else 0.
  PeriodValues<double> xValues;
  PeriodValues<double> reducedCosts;
  PeriodValues<qint32> inModel;
};

// Creates the registry of pools and in it the pool "Pattern". Called once, at start-up.
void createPatternPool();

// Exchanges the widths into descending order, so that patterns of the same widths compare equal.
void sortWidthsDescending(Pattern &pattern);

}  // namespace corvane
