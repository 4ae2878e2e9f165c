#include "planning/order_file.h"

#include <iostream>
#include <optional>

#include "core/fatal.h"
#include "core/files.h"
#include "core/messages.h"
#include "core/numbers.h"
#include "core/text.h"
#include "planning/order_collector.h"

namespace {

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
  if (*line.text() == '\0') {
    const TextTable::Id none = texts.idOf("");
    orderTexts = {none, none, none};
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
  auto status = LineReader::Status::kEnd;
  do {
    status = reader.next();
    Order order;
    OrderTexts orderTexts;
    readOrder(reader, orders.texts(), order, orderTexts);
    if (status == LineReader::Status::kEnd) {
      break;
    }
    if (status == LineReader::Status::kTooLong || order.good == 0) {
      warnBadOrder(log, reader.number());
    } else if (!machineCanProcess(data, order)) {
      warnNoMachine(log, reader.number());
    } else {
      orders.add(orderTexts.grade, orderTexts.period, orderTexts.customerName, order.width,
                 order.quantity);
    }
  } while (status != LineReader::Status::kEnd);
  orders.finish();
  file.close();
}
