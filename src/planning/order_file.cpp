#include "planning/order_file.h"

#include <algorithm>
#include <iostream>
#include <memory>
#include <optional>
#include <tuple>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "core/exchange_sort.h"
#include "core/fatal.h"
#include "core/files.h"
#include "core/messages.h"
#include "core/numbers.h"
#include "core/text.h"
#include "planning/demand_recorder.h"

namespace {

struct OrderKey {
  OrderTexts texts;
  double width;

  bool operator==(const OrderKey &other) const {
    return texts.grade == other.texts.grade && texts.period == other.texts.period &&
           texts.customerName == other.texts.customerName && width == other.width;
  }
};

struct OrderKeyHash {
  std::size_t operator()(const OrderKey &key) const {
    constexpr std::size_t kGoldenRatio = 0x9E3779B97F4A7C15U;
    std::size_t hash = std::hash<double>()(key.width);
    for (const TextTable::Id id : {key.texts.grade, key.texts.period, key.texts.customerName}) {
      hash = (hash ^ id) * kGoldenRatio;
      hash ^= hash >> 32U;
    }
    return hash;
  }
};

using Field = std::optional<std::string_view>;

bool rejectOrder(const char *message, Order &order) {
  std::cout << message << std::endl;
  order.good = 0;
  return false;
}

bool setWidth(const Field &field, Order &order) {
  if (!field) {
    return true;
  }
  order.width = leadingNumber(field->data());
  return order.width <= 0.0 ? rejectOrder("Width must be > 0.0.", order)
                            : acceptField(*field, "width", order);
}

bool setQuantity(const Field &field, Order &order) {
  if (!field) {
    return true;
  }
  order.quantity = leadingInteger(field->data());
  return order.quantity < 1 ? rejectOrder("Quantity must be > 0.", order)
                            : acceptField(*field, "quantity", order);
}

// Collects the orders of a file. Orders are looked up by the numbers of their texts and enter the
// order list in one pass at the end, already sorted: the list holds what insertion one by one would
// give.
class OrderCollector {
 public:
  explicit OrderCollector(PlanningData &data) : data_(data), demand_(data.demand) {}

  TextTable &texts() { return texts_; }

  void store(std::unique_ptr<Order> order, const OrderTexts &orderTexts) {
    const Order &stored = merged(std::move(order), orderTexts);
    demand_.record(texts_, orderTexts.grade, orderTexts.period, stored.width, stored.quantity);
    if (grades_.insert(orderTexts.grade).second) {
      data_.grades.append(stored.grade);
    }
    if (periods_.insert(orderTexts.period).second) {
      data_.periods.append(stored.period);
    }
  }

  void finish() {
    sortGrades();
    fillOrderList();
  }

 private:
  struct CollectedOrder {
    OrderTexts texts;
    std::unique_ptr<Order> order;
  };

  // The order, or the one with its key that now carries both quantities.
  const Order &merged(std::unique_ptr<Order> order, const OrderTexts &orderTexts) {
    Order *&stored = byKey_[{orderTexts, order->width}];
    if (stored == nullptr) {
      stored = order.get();
      collected_.push_back({orderTexts, std::move(order)});
    } else {
      stored->quantity = saturatedSum(stored->quantity, order->quantity);
    }
    return *stored;
  }

  void sortGrades() {
    sortDistinct(data_.grades);
    for (QString &grade : data_.grades) {
      data_.names.append(&grade);
    }
  }

  void fillOrderList() {
    const std::vector<quint32> ranks = texts_.ranks();
    const auto key = [&ranks](const CollectedOrder &item) {
      return std::make_tuple(ranks[item.texts.grade], ranks[item.texts.period],
                             ranks[item.texts.customerName], item.order->width);
    };
    std::sort(collected_.begin(), collected_.end(),
              [&key](const CollectedOrder &a, const CollectedOrder &b) { return key(a) < key(b); });
    for (CollectedOrder &item : collected_) {
      data_.orders.append(item.order.get());
      (void)item.order.release();
    }
  }

  PlanningData &data_;
  DemandRecorder demand_;
  TextTable texts_;
  std::unordered_map<OrderKey, Order *, OrderKeyHash> byKey_;
  std::vector<CollectedOrder> collected_;
  std::unordered_set<TextTable::Id> grades_;
  std::unordered_set<TextTable::Id> periods_;
};

// The text ends with a line end of its own, so that an empty line follows.
void warnBadOrder(std::ostream &log, qint64 lineNumber) {
  tell(std::cout, log, "Warning: Order number " + std::to_string(lineNumber) + " is bad.\n");
}

void warnNoMachine(std::ostream &log, qint64 lineNumber) {
  tell(std::cout, log,
       "Warning: No machine can process order number " + std::to_string(lineNumber) +
           ". Check grade and demand width.");
}

}  // namespace

bool acceptField(std::string_view field, const char *name, Order &order) {
  if (!field.empty()) {
    return true;
  }
  std::cout << "Could not set " << name << " of order." << std::endl;
  order.good = 0;
  return false;
}

bool machineCanProcess(const PlanningData &data, const Order &order) {
  const auto widest = data.widestCutter.constFind(order.grade);
  return widest != data.widestCutter.constEnd() && *widest >= order.width;
}

void readOrder(LineReader &line, TextTable &texts, Order &order, OrderTexts &orderTexts) {
  // Texts that the line does not supply are empty.
  const TextTable::Id none = texts.idOf("");
  orderTexts = {none, none, none};
  if (*line.text() == '\0') {
    return;
  }
  FieldSplitter fields(line.text(), ',');
  bool missing = false;
  const auto setText = [&](const char *name, TextTable::Id &id, QString &text) {
    const auto field = fields.next();
    missing = !field;
    if (missing) {
      return true;
    }
    id = texts.idOf(*field);
    text = texts.text(id);
    return acceptField(*field, name, order);
  };
  const bool accepted = setText("period", orderTexts.period, order.period) &&
                        setText("grade", orderTexts.grade, order.grade) &&
                        setWidth(fields.next(), order) && setQuantity(fields.next(), order) &&
                        setText("customer name", orderTexts.customerName, order.customerName);
  // A missing field leaves the last one missing too, and only that one counts.
  if (accepted && missing) {
    order.good = 0;
  }
}

void readOrderFile(PlanningData &data, const QString &fileName, std::ifstream &file,
                   std::ostream &log) {
  if (!openForReading(file, utf8(fileName))) {
    endRun(log, "Error: Could not open orders file.");
  }
  LineReader reader(file);
  OrderCollector orders(data);
  LineReader::Status status;
  do {
    status = reader.next();
    auto order = std::make_unique<Order>();
    OrderTexts orderTexts;
    readOrder(reader, orders.texts(), *order, orderTexts);
    if (status == LineReader::Status::kEnd) {
      break;
    }
    if (status == LineReader::Status::kTooLong || order->good == 0) {
      warnBadOrder(log, reader.number());
    } else if (!machineCanProcess(data, *order)) {
      warnNoMachine(log, reader.number());
    } else {
      orders.store(std::move(order), orderTexts);
    }
  } while (status != LineReader::Status::kEnd);
  orders.finish();
  file.close();
}
