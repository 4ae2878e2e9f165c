#include "checks/mill_records.h"

#include <cmath>
#include <limits>
#include <set>
#include <tuple>
#include <unordered_map>

#include "checks/shown_text.h"
#include "core/numbers.h"
#include "core/text.h"

namespace corvane::checks {

namespace {

TextId textOf(const Record &record, int column, TextId empty) {
  return record.has(column) ? record.facts[static_cast<std::size_t>(column)].text : empty;
}

double numberOf(const Record &record, int column) {
  return record.has(column) ? record.facts[static_cast<std::size_t>(column)].number : 0;
}

// Takes the order lines: which are accepted is what the program's reader decides.
class OrderTaker {
 public:
  OrderTaker(MillRecords &mill, FindingSink &sink)
      : mill_(mill), sink_(sink), empty_(mill.texts.idOf("")) {
    for (const CutterRow &cutter : mill.cutters) {
      if (cutter.isStored) {
        noteWidest(cutter);
      }
    }
  }

  void take(const Record &record) {
    if (record.isTooLong) {
      return;
    }
    if (record.isEmpty) {
      if (widest(empty_) >= 0) {
        accept({record.line, empty_, empty_, empty_, numberOfWidth(0), 0, true});
      }
      return;
    }
    if (record.fields.count < static_cast<int>(kOrderColumns.size())) {
      return;
    }
    const TextId grade = record.facts[kOrderGrade].text;
    const double width = record.facts[kOrderWidth].number;
    const qint32 quantity = leadingInteger(record.fields[kOrderQuantity].data());
    const bool isGood = !(width <= 0) && quantity >= 1;
    const bool isAccepted = isGood && widest(grade) >= width;
    if (isAccepted) {
      accept({record.line, record.facts[kOrderPeriod].text, grade,
              record.facts[kOrderCustomer].text, numberOfWidth(width), quantity,
              record.isBroken || record.badNumbers != 0});
    }
    if (!record.isBroken) {
      look(record, isGood, isAccepted, quantity);
    }
  }

 private:
  static bool isFractional(const Record &record) {
    return record.facts[kOrderQuantity].code == Code::kQuantityDecimals;
  }

  // Reports what can be told of the line alone, and keeps what cannot.
  void look(const Record &record, bool isGood, bool isAccepted, qint32 quantity) {
    const double width = record.facts[kOrderWidth].number;
    if (!record.isBadNumber(kOrderWidth) && width <= 0) {
      reportNotPositive(record, kOrderWidth, "width");
    } else if (!record.isBadNumber(kOrderQuantity) && quantity < 1) {
      reportNotPositive(record, kOrderQuantity, "quantity");
    } else if (!record.isBadNumber(kOrderQuantity) && isTooLarge(record)) {
      sink_.add(*mill_.orderFile.file, Code::kQuantityTooLarge, [&](Finding &finding) {
        placeAt(finding, *mill_.orderFile.file, record.line, kOrderQuantity);
        finding.detail = quotedText(record.fields[kOrderQuantity]) + " is read as 2147483647";
      });
    }
    const bool onlyFractional =
        (record.badNumbers & ~(1U << static_cast<unsigned>(kOrderQuantity))) == 0;
    if ((isGood && !isAccepted && record.badNumbers == 0) ||
        (isFractional(record) && onlyFractional)) {
      mill_.droppedOrders.push_back({record.line, record.facts[kOrderGrade].text, width,
                                     leadingNumber(record.fields[kOrderQuantity].data()),
                                     isAccepted});
    }
  }

  static bool isTooLarge(const Record &record) {
    return leadingNumber(record.fields[kOrderQuantity].data()) >
           double{std::numeric_limits<qint32>::max()};
  }

  void reportNotPositive(const Record &record, int column, const char *name) {
    sink_.add(*mill_.orderFile.file, Code::kOrderNotPositive, [&](Finding &finding) {
      placeAt(finding, *mill_.orderFile.file, record.line, column);
      finding.detail = std::string(name) + " " + quotedText(record.fields[column]) +
                       ", so that the order is dropped";
    });
  }

  void accept(const OrderRow &order) {
    mill_.orders.push_back(order);
    ++mill_.orderFile.accepted;
  }

  // Not a number where no cutter runs the grade.
  double widest(TextId grade) const {
    const auto known = widest_.find(grade);
    return known != widest_.end() ? known->second : std::numeric_limits<double>::quiet_NaN();
  }

  void noteWidest(const CutterRow &cutter) {
    const auto [known, isNew] = widest_.try_emplace(cutter.grade, cutter.width);
    if (!isNew && (cutter.width > known->second || std::isnan(known->second))) {
      known->second = cutter.width;
    }
  }

  quint32 numberOfWidth(double width) {
    const auto [known, isNew] =
        numberOfWidth_.try_emplace(width, static_cast<quint32>(mill_.widths.size()));
    if (isNew) {
      mill_.widths.push_back(width);
    }
    return known->second;
  }

  MillRecords &mill_;
  FindingSink &sink_;
  TextId empty_;
  std::unordered_map<TextId, double> widest_;
  std::unordered_map<double, quint32> numberOfWidth_;
};

}  // namespace

std::string MillRecords::text(TextId id) const {
  return utf8(texts.text(id));
}

std::string MillRecords::quotedName(TextId id) const {
  return quotedText(text(id));
}

void readMachines(MillRecords &mill, FindingSink &sink) {
  const TextId empty = mill.texts.idOf("");
  std::set<std::tuple<TextId, TextId, TextId>> keys;
  const auto take = [&](const Record &record) {
    if (record.isTooLong) {
      return;
    }
    CutterRow row{record.line,
                  textOf(record, kMachineLocation, empty),
                  textOf(record, kMachineName, empty),
                  textOf(record, kMachineGrade, empty),
                  numberOf(record, kMachineWidth),
                  numberOf(record, kMachineCapacity),
                  numberOf(record, kMachinePounds),
                  numberOf(record, kMachineWasteCost),
                  false,
                  record.isBroken,
                  record.badNumbers};
    row.isStored = keys.insert({row.location, row.name, row.grade}).second;
    mill.machineFile.accepted += row.isStored ? 1 : 0;
    mill.cutters.push_back(row);
  };
  mill.machineFile.scan =
      scanRecords(*mill.machineFile.file, kMachineColumns, mill.texts, sink, take);
}

void readOrders(MillRecords &mill, FindingSink &sink) {
  OrderTaker taker(mill, sink);
  mill.orderFile.scan = scanRecords(*mill.orderFile.file, kOrderColumns, mill.texts, sink,
                                    [&](const Record &record) { taker.take(record); });
}

void readRates(MillRecords &mill, FindingSink &sink) {
  const TextId empty = mill.texts.idOf("");
  std::set<std::tuple<TextId, TextId, TextId>> keys;
  const auto take = [&](const Record &record) {
    if (record.isTooLong) {
      return;
    }
    RateRow row{record.line,
                textOf(record, kRateCustomer, empty),
                textOf(record, kRateMill, empty),
                textOf(record, kRateMode, empty),
                numberOf(record, kRateRate),
                numberOf(record, kRateDelay),
                false,
                record.isBroken,
                record.badNumbers};
    row.isStored = keys.insert({row.customer, row.mill, row.mode}).second;
    mill.rateFile.accepted += row.isStored ? 1 : 0;
    mill.rates.push_back(row);
  };
  mill.rateFile.scan = scanRecords(*mill.rateFile.file, kRateColumns, mill.texts, sink, take);
}

}  // namespace corvane::checks
