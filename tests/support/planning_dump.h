#pragma once

#include <sstream>
#include <string>

#include "core/numbers.h"
#include "core/skip_list_cursor.h"
#include "core/text.h"
#include "planning/planning_data.h"

namespace corvane::support {

// The collections of the planning data as text, one record a line, fields separated by "|".

inline std::string dumpCutters(const PlanningData &data) {
  std::ostringstream out;
  forEachElement(data.cutters, [&](const Cutter &cutter) {
    out << utf8(cutter.location) << "|" << utf8(cutter.name) << "|" << utf8(cutter.grade) << "|"
        << general(cutter.width) << "|" << general(cutter.capacity) << "|"
        << general(cutter.lbsPerInch) << "|" << general(cutter.wasteCost) << "\n";
  });
  return out.str();
}

// "{width} {width} ..."
inline std::string dumpWidths(const PlanningData &data) {
  std::string text;
  for (const double width : data.cutterWidths) {
    text += text.empty() ? "" : " ";
    text += general(width);
  }
  return text;
}

inline std::string dumpOrders(const PlanningData &data) {
  std::ostringstream out;
  forEachElement(data.orders, [&](const Order &order) {
    out << utf8(order.grade) << "|" << utf8(order.period) << "|" << utf8(order.customerName) << "|"
        << general(order.width) << "|" << order.quantity << "\n";
  });
  return out.str();
}

// One line for each grade and period: "{grade}|{period}: {width}x{quantity} ..."
inline std::string dumpDemand(const DemandTable &table) {
  std::ostringstream out;
  for (const GradeDemand &grade : table.grades) {
    for (const PeriodDemand &period : grade.periods) {
      out << utf8(grade.grade) << "|" << utf8(period.period) << ":";
      for (const DemandEntry &entry : period.demands) {
        out << " " << general(entry.width) << "x" << entry.quantity;
      }
      out << "\n";
    }
  }
  return out.str();
}

inline std::string dumpTexts(const QLinkedList<QString> &texts) {
  std::string all;
  for (const QString &text : texts) {
    all += utf8(text) + ";";
  }
  return all;
}

inline std::string dumpRates(const PlanningData &data) {
  std::ostringstream out;
  forEachElement(data.freightRates, [&](const FreightRate &rate) {
    out << utf8(rate.customer) << "|" << utf8(rate.mill) << "|" << utf8(rate.mode) << "|"
        << general(rate.rate) << "|" << general(rate.delay) << "\n";
  });
  return out.str();
}

}  // namespace corvane::support
