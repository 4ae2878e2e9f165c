#include <algorithm>
#include <map>

#include "checks/mill_checks.h"
#include "checks/shown_text.h"
#include "core/numbers.h"

namespace corvane::checks {

namespace {

// What the cutters of a grade make of full deckles in a period, inches.
double inchesAPeriod(const MillView &view, TextId grade) {
  double inches = 0;
  if (const auto *cutters = view.index.cuttersOf(grade)) {
    for (const CutterRow *cutter : *cutters) {
      inches += std::max(0.0, cutter->width) * std::max(0.0, cutter->capacity);
    }
  }
  return inches * view.mill.parameters.daysPerPeriod;
}

void checkCapacity(const MillView &view, TextId grade, TextId period, const OrderTotal &total) {
  const double most = inchesAPeriod(view, grade);
  if (total.inches <= most || most == 0) {
    return;
  }
  view.sink.add(view.orderFile(), Code::kOverCapacity, [&](Finding &finding) {
    placeAt(finding, view.orderFile(), total.line, kOrderGrade);
    finding.detail = fixed(total.inches, 0) + " inches of " + view.mill.quotedName(grade) +
                     " in period " + view.mill.quotedName(period) + "; without any trim " +
                     fixed(most, 0) + " can be made in " +
                     std::to_string(view.mill.parameters.daysPerPeriod) + " days";
  });
}

// Every pattern has at most K rolls, which are as wide as the mean at the mean: where K of those do
// not fill the smallest deckle, there is trim whatever the patterns are.
void checkKnives(const MillView &view, TextId grade, const OrderTotal &total) {
  constexpr double kMuchTrim = 0.03;
  const double deckle = view.index.smallest(grade);
  const int limit = view.mill.parameters.maximumWidthsInPattern;
  const double mean = total.inches / static_cast<double>(std::max<qint64>(1, total.rolls));
  const double filled = limit * mean;
  if (deckle == 0 || filled >= (1 - kMuchTrim) * deckle) {
    return;
  }
  const auto narrowest = std::min_element(
      view.index.gradeWidths.begin(), view.index.gradeWidths.end(),
      [grade](const GradeWidth &a, const GradeWidth &b) {
        return std::pair(a.grade != grade, a.inches) < std::pair(b.grade != grade, b.inches);
      });
  view.sink.add(view.orderFile(), Code::kKnifeLimit, [&](Finding &finding) {
    placeAt(finding, view.orderFile(), narrowest->total.line, kOrderWidth);
    finding.detail = "rolls of " + view.mill.quotedName(grade) + " are " + fixed(mean, 1) +
                     " inches at the mean, and " + std::to_string(limit) + " of them fill " +
                     fixed(filled, 1) + " of a deckle of " + general(deckle);
    constexpr int kMost = 10;
    // Bounded first: what is read as infinite has no integer.
    const int needed = static_cast<int>(std::min<double>(kMost, deckle / mean));
    finding.write = limit < kMost
                        ? "maximum widths in pattern=" + std::to_string(std::max(needed, limit + 1))
                        : "nothing: 10 is the most there is";
    finding.fixKind = FixKind::kNone;
  });
}

struct Ordered {
  qint32 quantity;
  quint32 line;
};

// A quantity that is many times those of nearly all other orders of the customer.
void checkQuantities(const MillView &view, TextId customer, std::vector<Ordered> &orders) {
  constexpr std::size_t kEnough = 5;
  constexpr qint64 kFarAbove = 8;
  if (orders.size() < kEnough) {
    return;
  }
  const auto usual = orders.begin() + static_cast<std::ptrdiff_t>(orders.size() * 3 / 4);
  std::nth_element(orders.begin(), usual, orders.end(),
                   [](const Ordered &a, const Ordered &b) { return a.quantity < b.quantity; });
  const qint64 bound = kFarAbove * usual->quantity;
  const qint32 quantity = usual->quantity;
  for (const Ordered &order : orders) {
    if (order.quantity < bound) {
      continue;
    }
    view.sink.add(view.orderFile(), Code::kOddQuantity, [&](Finding &finding) {
      placeAt(finding, view.orderFile(), order.line, kOrderQuantity);
      finding.detail = std::to_string(order.quantity) + " rolls; three of four orders of " +
                       view.mill.quotedName(customer) + " are of at most " +
                       std::to_string(quantity);
    });
  }
}

}  // namespace

void checkLoads(const MillView &view) {
  for (const auto &[key, total] : byFirstLine(view.index.byGradePeriod)) {
    checkCapacity(view, static_cast<TextId>(key >> 32U), static_cast<TextId>(key), *total);
  }
  for (const auto &[grade, total] : byFirstLine(view.index.byGrade)) {
    checkKnives(view, grade, *total);
  }
  std::map<TextId, std::vector<Ordered>> byCustomer;
  for (const OrderRow &order : view.mill.orders) {
    if (!order.isBroken) {
      byCustomer[order.customer].push_back({order.quantity, order.line});
    }
  }
  for (auto &[customer, orders] : byCustomer) {
    checkQuantities(view, customer, orders);
  }
}

}  // namespace corvane::checks
