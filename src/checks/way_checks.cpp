// Which mill reaches which customer.

#include <algorithm>
#include <map>
#include <set>

#include "checks/mill_checks.h"
#include "checks/near_names.h"
#include "checks/shown_text.h"

namespace corvane::checks {

namespace {

class WayChecks {
 public:
  explicit WayChecks(const MillView &view) : view_(view) {
    for (const TextId customer : view.index.ratedCustomers) {
      rated_.push_back(view.mill.texts.text(customer));
    }
    for (const TextId customer : view.index.customers) {
      customers_.push_back(view.mill.texts.text(customer));
    }
    for (const TextId location : view.index.locations) {
      locations_.push_back(view.mill.texts.text(location));
    }
    std::sort(rated_.begin(), rated_.end());
    std::sort(customers_.begin(), customers_.end());
    std::sort(locations_.begin(), locations_.end());
  }

  void run() {
    for (const auto &[key, total] : byFirstLine(view_.index.byCustomerGrade)) {
      checkOrders(static_cast<TextId>(key >> 32U), static_cast<TextId>(key), *total);
    }
    for (const auto &[customer, mills] : unreached_) {
      reportMills(customer, mills);
    }
    checkFirstPeriod();
    checkRateNames();
  }

 private:
  struct Unreached {
    quint32 line = 0;
    std::set<TextId> mills;
    std::set<TextId> grades;
  };

  // The mills that make the grade.
  std::set<TextId> millsOf(TextId grade) const {
    std::set<TextId> mills;
    if (const auto *cutters = view_.index.cuttersOf(grade)) {
      for (const CutterRow *cutter : *cutters) {
        mills.insert(cutter->location);
      }
    }
    return mills;
  }

  bool mayBeRated(TextId customer) const {
    return view_.mill.rateFile.mayHave(view_.mill.text(customer));
  }

  // The orders of one customer for one grade.
  void checkOrders(TextId customer, TextId grade, const OrderTotal &total) {
    const std::set<TextId> mills = millsOf(grade);
    std::set<TextId> unreached;
    for (const TextId mill : mills) {
      if (view_.index.ratesOf(customer, mill) == nullptr) {
        unreached.insert(mill);
      }
    }
    if (unreached.empty() || mayBeRated(customer)) {
      return;
    }
    const bool isRated = view_.index.ratedCustomers.count(customer) > 0;
    if (unreached.size() < mills.size()) {
      Unreached &known = unreached_[customer];
      known.line = known.line == 0 ? total.line : known.line;
      known.mills.insert(unreached.begin(), unreached.end());
      known.grades.insert(grade);
    } else if (isRated || told_.insert(customer).second) {
      reportNoWay(customer, grade, total, isRated);
    }
  }

  void reportNoWay(TextId customer, TextId grade, const OrderTotal &total, bool isRated) {
    view_.sink.add(view_.orderFile(), Code::kNoWay, [&](Finding &finding) {
      placeAt(finding, view_.orderFile(), total.line, kOrderCustomer);
      finding.detail =
          view_.mill.quotedName(customer) +
          (isRated ? " has no rate from a mill that makes " + view_.mill.quotedName(grade)
                   : " has no freight rate at all") +
          ": every roll is short at 50000";
      const auto nearest =
          isRated ? std::nullopt : nearestName(view_.mill.texts.text(customer), rated_);
      if (nearest) {
        const std::string name = nearest->toStdString();
        finding.detail += "; the nearest customer with rates is " + quotedText(name);
        replaceMarked(finding, name);
      } else {
        finding.write = "a rate for " + view_.mill.text(customer);
        finding.fixKind = FixKind::kNone;
      }
    });
  }

  void reportMills(TextId customer, const Unreached &unreached) {
    view_.sink.add(view_.orderFile(), Code::kMillWithoutWay, [&](Finding &finding) {
      placeAt(finding, view_.orderFile(), unreached.line, kOrderCustomer);
      finding.detail = view_.mill.quotedName(customer) + " has no rate from " +
                       listOf(unreached.mills) + ", where " + listOf(unreached.grades) + " is made";
    });
  }

  std::string listOf(const std::set<TextId> &names) const {
    constexpr std::size_t kShown = 4;
    std::string list;
    std::size_t count = 0;
    for (const TextId name : names) {
      if (count++ == kShown) {
        return list + " and " + std::to_string(names.size() - kShown) + " more";
      }
      list += (list.empty() ? "" : ", ") + view_.mill.quotedName(name);
    }
    return list;
  }

  // Orders of the first period whose customer is reached, but not in that period.
  void checkFirstPeriod() {
    if (view_.mill.parameters.delay == 0 || view_.index.periods.empty()) {
      return;
    }
    std::set<std::pair<TextId, TextId>> seen;
    const TextId first = view_.index.periods.front();
    for (const OrderRow &order : view_.mill.orders) {
      if (order.isBroken || order.period != first ||
          !seen.insert({order.customer, order.grade}).second) {
        continue;
      }
      const double delay = shortestDelay(order);
      if (delay < 1) {
        continue;
      }
      view_.sink.add(view_.orderFile(), Code::kLateFirstPeriod, [&](Finding &finding) {
        placeAt(finding, view_.orderFile(), order.line, kOrderCustomer);
        finding.detail = view_.mill.quotedName(order.grade) + " reaches " +
                         view_.mill.quotedName(order.customer) + " at the earliest " +
                         std::to_string(static_cast<qint64>(delay)) +
                         (delay < 2 ? " period after period " : " periods after period ") +
                         view_.mill.quotedName(first);
      });
    }
  }

  // The shortest delay on the way to the customer from a mill that makes the grade; -1 where there
  // is no way.
  double shortestDelay(const OrderRow &order) const {
    double shortest = -1;
    for (const TextId mill : millsOf(order.grade)) {
      if (const auto *rates = view_.index.ratesOf(order.customer, mill)) {
        for (const RateRow *rate : *rates) {
          shortest = shortest < 0 ? rate->delay : std::min(shortest, rate->delay);
        }
      }
    }
    return shortest;
  }

  // Customers and mills of rates that nothing else knows, at their first rate.
  void checkRateNames() {
    std::set<TextId> seenCustomers;
    std::set<TextId> seenMills;
    for (const RateRow &rate : view_.mill.rates) {
      if (rate.isBroken) {
        continue;
      }
      const std::string customer = view_.mill.text(rate.customer);
      const std::string mill = view_.mill.text(rate.mill);
      if (view_.index.customers.count(rate.customer) == 0 &&
          seenCustomers.insert(rate.customer).second && !view_.mill.orderFile.mayHave(customer) &&
          !isDropped(rate.customer)) {
        reportUnknown(rate, kRateCustomer, "nobody of the name " + quotedText(customer) + " orders",
                      customers_);
      }
      if (view_.index.locations.count(rate.mill) == 0 && seenMills.insert(rate.mill).second &&
          !view_.mill.machineFile.mayHave(mill)) {
        reportUnknown(rate, kRateMill, "no cutter stands at " + quotedText(mill), locations_);
      }
    }
  }

  // Whether the customer's orders have all been dropped, of which other findings tell.
  bool isDropped(TextId customer) {
    if (!hasDropped_) {
      hasDropped_ = true;
      for (const DroppedOrder &order : view_.mill.droppedOrders) {
        dropped_.insert(std::string(fieldAt(view_.orderFile(), order.line, kOrderCustomer)));
      }
    }
    return dropped_.count(view_.mill.text(customer)) > 0;
  }

  void reportUnknown(const RateRow &rate, int column, const std::string &detail,
                     const std::vector<QString> &known) {
    view_.sink.add(view_.rateFile(), Code::kUnknownParty, [&](Finding &finding) {
      placeAt(finding, view_.rateFile(), rate.line, column);
      finding.detail = detail;
      const TextId text = column == kRateMill ? rate.mill : rate.customer;
      const auto nearest = nearestName(view_.mill.texts.text(text), known);
      if (nearest) {
        finding.detail += "; the nearest name is " + quotedText(nearest->toStdString());
        replaceMarked(finding, nearest->toStdString());
      } else {
        finding.fixKind = FixKind::kNone;
      }
    });
  }

  const MillView &view_;
  std::vector<QString> rated_;
  std::vector<QString> customers_;
  std::vector<QString> locations_;
  std::map<TextId, Unreached> unreached_;
  std::set<TextId> told_;
  bool hasDropped_ = false;
  std::set<std::string> dropped_;
};

}  // namespace

void checkWays(const MillView &view) {
  WayChecks(view).run();
}

}  // namespace corvane::checks
