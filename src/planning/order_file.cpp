#include "planning/order_file.h"

#include <iostream>
#include <optional>

#include "core/fatal.h"
#include "core/messages.h"
#include "core/numbers.h"
#include "core/text.h"
#include "planning/order_collector.h"

namespace corvane {

namespace {

using Field = std::optional<std::string_view>;

bool reject(const char *message) {
  std::cout << message << std::endl;
  return false;
}

// Each of these tells whether the line is good so far. Behind a missing field every other is
// missing too, so that nothing needs to be said of them.

bool setPlace(const Field &period, const Field &grade, OrderTexts &texts, OrderLine &order) {
  if (!grade) {
    return false;
  }
  order.place = &texts.place(*period, *grade);
  return acceptField(*period, "period") && acceptField(*grade, "grade");
}

bool setWidth(const Field &field, OrderTexts &texts, OrderLine &order) {
  if (!field) {
    return false;
  }
  order.width = &texts.width(*field);
  return order.width->inches <= 0.0 ? reject("Width must be > 0.0.") : acceptField(*field, "width");
}

bool setQuantity(const Field &field, OrderLine &order) {
  if (!field) {
    return false;
  }
  order.quantity = leadingInteger(field->data());
  return order.quantity < 1 ? reject("Quantity must be > 0.") : acceptField(*field, "quantity");
}

bool setCustomer(const Field &field, OrderTexts &texts, OrderLine &order) {
  if (!field) {
    return false;
  }
  order.customer = texts.customer(*field);
  return acceptField(*field, "customer name");
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

bool acceptField(std::string_view field, const char *name) {
  if (!field.empty()) {
    return true;
  }
  std::cout << "Could not set " << name << " of order." << std::endl;
  return false;
}

bool machineCanProcess(const OrderLine &order) {
  return order.place->widestCutter >= order.width->inches;
}

OrderLine readOrder(LineReader &line, OrderTexts &texts) {
  OrderLine order;
  if (*line.text() == '\0') {
    const std::string_view none = line.text();
    order.place = &texts.place(none, none);
    order.width = &texts.width(none);
    order.customer = texts.customer(none);
    return order;
  }
  FieldSplitter fields(line.text(), ',');
  const Field period = fields.next();
  order.good = setPlace(period, fields.next(), texts, order) &&
               setWidth(fields.next(), texts, order) && setQuantity(fields.next(), order) &&
               setCustomer(fields.next(), texts, order);
  return order;
}

void readOrderFile(PlanningData &data, const QString &fileName, std::ifstream &file,
                   std::ostream &log) {
  OrderTexts texts(data.widestCutter);
  OrderCollector orders(texts.table(), data);
  const auto take = [&](LineReader &line, LineReader::Status status) {
    const OrderLine order = readOrder(line, texts);
    if (status == LineReader::Status::kEnd) {
      return;
    }
    if (status == LineReader::Status::kTooLong || !order.good) {
      warnBadOrder(log, line.number());
    } else if (!machineCanProcess(order)) {
      warnNoMachine(log, line.number());
    } else {
      orders.add(*order.place, *order.width, order.customer, order.quantity);
    }
  };
  if (!readLines(file, utf8(fileName), take)) {
    endRun(log, "Error: Could not open orders file.");
  }
  orders.finish();
}

}  // namespace corvane
