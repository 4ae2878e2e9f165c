// Orders that meet in one demand of pattern generation, or in one order of the model.

#include <algorithm>
#include <limits>
#include <map>
#include <span>
#include <tuple>

#include "checks/mill_checks.h"
#include "checks/shown_text.h"
#include "core/numbers.h"
#include "planning/demand_matcher.h"

namespace corvane::checks {

namespace {

// An order among those of its grade, period and width.
struct OrderPlace {
  quint64 gradePeriod;
  quint64 widthCustomer;
  quint32 row;
};

// Orders of one grade, period and width that make more than one demand.
struct Several {
  quint32 line = 0;  // the first that makes a second demand
  qint64 widths = 0;
  double inches = 0;                               // of those widths
  double seenInches = 0;                           // of their first demands
  std::vector<std::pair<quint32, quint32>> swaps;  // lines: the first of them and the largest
};

class DemandChecks {
 public:
  explicit DemandChecks(const MillView &view) : view_(view) {}

  void run() {
    std::vector<OrderPlace> places = sortedPlaces();
    for (auto begin = places.begin(); begin != places.end();) {
      const auto end = std::find_if(begin, places.end(), [&](const OrderPlace &place) {
        return place.gradePeriod != begin->gradePeriod ||
               place.widthCustomer >> 32U != begin->widthCustomer >> 32U;
      });
      if (end - begin > 1) {
        takeGroup({begin, end});
      }
      begin = end;
    }
    std::vector<std::pair<TextId, const Several *>> byLine;
    for (const auto &[grade, several] : several_) {
      byLine.emplace_back(grade, &several);
    }
    std::sort(byLine.begin(), byLine.end(),
              [](const auto &a, const auto &b) { return a.second->line < b.second->line; });
    for (const auto &[grade, several] : byLine) {
      reportSeveral(grade, *several);
    }
  }

 private:
  std::vector<OrderPlace> sortedPlaces() const {
    std::vector<OrderPlace> places;
    places.reserve(view_.mill.orders.size());
    for (std::size_t i = 0; i < view_.mill.orders.size(); ++i) {
      const OrderRow &order = view_.mill.orders[i];
      if (!order.isBroken) {
        places.push_back({pairKey(order.grade, order.period), pairKey(order.width, order.customer),
                          static_cast<quint32>(i)});
      }
    }
    std::sort(places.begin(), places.end(), [](const OrderPlace &a, const OrderPlace &b) {
      return std::tie(a.gradePeriod, a.widthCustomer, a.row) <
             std::tie(b.gradePeriod, b.widthCustomer, b.row);
    });
    return places;
  }

  const OrderRow &orderOf(const OrderPlace &place) const { return view_.mill.orders[place.row]; }

  // The orders of one grade, period and width.
  void takeGroup(std::span<const OrderPlace> group) {
    std::vector<quint32> rows;
    for (auto begin = group.begin(); begin != group.end();) {
      const auto end = std::find_if(begin, group.end(), [&](const OrderPlace &place) {
        return place.widthCustomer != begin->widthCustomer;
      });
      takeCustomer({begin, end}, rows);
      begin = end;
    }
    // Lines that say the same are told apart from customers who want the same width.
    std::sort(rows.begin(), rows.end());
    takeDemands(rows);
  }

  // The orders of one customer among them; adds those that are no repetition to the rows.
  void takeCustomer(std::span<const OrderPlace> orders, std::vector<quint32> &rows) {
    if (orders.size() == 1) {
      rows.push_back(orders.front().row);
      return;
    }
    std::map<qint32, quint32> lineOfQuantity;
    qint64 sum = 0;
    for (const OrderPlace &place : orders) {
      const OrderRow &order = orderOf(place);
      if (sum <= kLargest && sum + order.quantity > kLargest) {
        reportSum(order);
      }
      sum += order.quantity;
      const auto [first, isNew] = lineOfQuantity.try_emplace(order.quantity, order.line);
      if (isNew) {
        rows.push_back(place.row);
      } else {
        reportSame(order, first->second);
      }
    }
  }

  void takeDemands(const std::vector<quint32> &rows) {
    DemandMatcher matcher;
    std::map<TextId, qint32> sums;
    quint32 second = 0;
    quint32 largest = rows.front();
    qint64 total = 0;
    for (const quint32 row : rows) {
      const OrderRow &order = view_.mill.orders[row];
      qint32 &sum = sums[order.customer];
      sum = saturatedSum(sum, order.quantity);
      matcher.add(row, sum);
      total += order.quantity;
      second = matcher.entries().size() == 2 && second == 0 ? order.line : second;
      largest = order.quantity > view_.mill.orders[largest].quantity ? row : largest;
    }
    if (matcher.entries().size() > 1) {
      note(rows.front(), largest, second, total, matcher.entries().front().quantity);
    }
  }

  void note(quint32 first, quint32 largest, quint32 second, qint64 total, qint32 seen) {
    const OrderRow &order = view_.mill.orders[first];
    Several &several = several_[order.grade];
    if (several.line == 0 || second < several.line) {
      several.line = second;
    }
    const double width = view_.mill.widths[order.width];
    ++several.widths;
    several.inches += static_cast<double>(total) * width;
    several.seenInches += seen * width;
    if (largest != first) {
      several.swaps.emplace_back(order.line, view_.mill.orders[largest].line);
    }
  }

  void swapLines(std::vector<Edit> &edits, quint32 a, quint32 b) const {
    const SourceFile &file = view_.orderFile();
    const auto textOf = [&](quint32 line) { return file.line(line).substr(file.markLength(line)); };
    const auto replace = [&](quint32 line, quint32 by) {
      const std::size_t begin = file.begin(line) + file.markLength(line);
      edits.push_back({begin, begin + textOf(line).size(), std::string(textOf(by))});
    };
    replace(a, b);
    replace(b, a);
  }

  void reportSeveral(TextId grade, const Several &several) {
    view_.sink.add(view_.orderFile(), Code::kSeveralDemands, [&](Finding &finding) {
      placeAt(finding, view_.orderFile(), several.line, kOrderWidth);
      finding.detail =
          view_.mill.quotedName(grade) + " has " + std::to_string(several.widths) +
          (several.widths == 1 ? " such demand" : " such demands, here the first of them") +
          "; of " + general(several.inches) + " inches pattern generation sees " +
          general(several.seenInches);
      finding.write = "the largest of them first";
      for (const auto &[first, largest] : several.swaps) {
        swapLines(finding.edits, first, largest);
      }
    });
  }

  void reportSame(const OrderRow &order, quint32 firstLine) {
    view_.sink.add(view_.orderFile(), Code::kSameOrderTwice, [&](Finding &finding) {
      const SourceFile &file = view_.orderFile();
      placeAt(finding, file, order.line, 0);
      finding.length = file.line(order.line).size() - finding.offset;
      finding.detail = "line " + std::to_string(firstLine) +
                       " says the same; both count, and the sum is a second demand";
      finding.write = "one of them, if the file was pasted twice";
      finding.edits.push_back({file.begin(order.line), file.end(order.line), ""});
    });
  }

  void reportSum(const OrderRow &order) {
    view_.sink.add(view_.orderFile(), Code::kQuantityTooLarge, [&](Finding &finding) {
      placeAt(finding, view_.orderFile(), order.line, kOrderQuantity);
      finding.detail = "with the orders before it that it is merged with, " +
                       std::to_string(kLargest) + " is passed";
    });
  }

  static constexpr qint64 kLargest = std::numeric_limits<qint32>::max();

  const MillView &view_;
  std::map<TextId, Several> several_;
};

}  // namespace

void checkDemands(const MillView &view) {
  DemandChecks(view).run();
}

}  // namespace corvane::checks
