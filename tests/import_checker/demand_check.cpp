#include "demand_check.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <tuple>
#include <utility>

#include "import_grammar.h"

namespace corvane::import_checker {
namespace {

constexpr std::size_t kLongestLine = 1023;

struct Cutter {
  std::string grade;
  double width = 0.0;
};

struct Order {
  std::string period;
  std::string grade;
  double width = 0.0;
  std::int32_t quantity = 0;
  std::string customer;
};

// Grade, period, customer and width: orders with one key are one order.
using OrderKey = std::tuple<std::string, std::string, std::string, double>;
// The name of an order node and a period.
using DemandKey = std::pair<std::string, std::string>;

// The lines that end in a line break, without it and without a carriage return before it. A byte
// order mark before the first one is not part of it.
std::vector<std::string> completeLines(std::string_view text) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (text.starts_with(kByteOrderMark)) {
    text.remove_prefix(kByteOrderMark.size());
  }
  std::vector<std::string> lines;
  for (std::size_t end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end + 1);
    if (line.ends_with('\r')) {
      line.remove_suffix(1);
    }
    lines.emplace_back(line);
  }
  return lines;
}

// The fields of a line; a zero byte ends the line.
std::vector<std::string> fieldsOf(std::string_view line) {
  line = line.substr(0, line.find('\0'));
  std::vector<std::string> fields;
  while (true) {
    const std::size_t begin = line.find_first_not_of(',');
    if (begin == std::string_view::npos) {
      return fields;
    }
    line.remove_prefix(begin);
    const std::size_t end = std::min(line.find(','), line.size());
    fields.emplace_back(line.substr(0, end));
    line.remove_prefix(end);
  }
}

// The bytes that may follow the first one of a UTF-8 sequence, and how many follow.
struct Continuation {
  std::size_t count;
  unsigned low;
  unsigned high;
};

// Well-formed UTF-8 by the table of the Unicode standard; 0 bytes follow where nothing may begin.
Continuation continuationOf(unsigned first) {
  struct Row {
    unsigned last;
    Continuation continuation;
  };
  static constexpr std::array<Row, 10> kTable{{{0xC1, {0, 0, 0}},
                                               {0xDF, {1, 0x80, 0xBF}},
                                               {0xE0, {2, 0xA0, 0xBF}},
                                               {0xEC, {2, 0x80, 0xBF}},
                                               {0xED, {2, 0x80, 0x9F}},
                                               {0xEF, {2, 0x80, 0xBF}},
                                               {0xF0, {3, 0x90, 0xBF}},
                                               {0xF3, {3, 0x80, 0xBF}},
                                               {0xF4, {3, 0x80, 0x8F}},
                                               {0xFF, {0, 0, 0}}}};
  const auto *row = std::find_if(kTable.begin(), kTable.end(),
                                 [first](const Row &candidate) { return first <= candidate.last; });
  return row->continuation;
}

// Length of the well-formed UTF-8 sequence that the text begins with; 0 when there is none.
// REQUIRES: the text is not empty.
std::size_t sequenceLength(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  if (byte(0) < 0x80) {
    return 1;
  }
  Continuation next = continuationOf(byte(0));
  if (next.count == 0 || text.size() <= next.count) {
    return 0;
  }
  for (std::size_t i = 1; i <= next.count; ++i) {
    if (byte(i) < next.low || byte(i) > next.high) {
      return 0;
    }
    next.low = 0x80;
    next.high = 0xBF;
  }
  return next.count + 1;
}

bool isUtf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = sequenceLength(text);
    if (length == 0) {
      return false;
    }
    text.remove_prefix(length);
  }
  return true;
}

// A text field as the import file writes it: UTF-8; bytes that are no UTF-8 stand for Latin-1
// characters.
std::string textField(const std::string &bytes) {
  if (isUtf8(bytes)) {
    return bytes;
  }
  std::string text;
  for (const char c : bytes) {
    const auto code = static_cast<unsigned char>(c);
    if (code < 0x80) {
      text += c;
    } else {
      text += static_cast<char>(0xC0 | (code >> 6));
      text += static_cast<char>(0x80 | (code & 0x3F));
    }
  }
  return text;
}

double realField(const std::string &text) {
  return std::strtod(text.c_str(), nullptr);
}

std::int32_t integerField(const std::string &text) {
  constexpr long long kLow = std::numeric_limits<std::int32_t>::min();
  constexpr long long kHigh = std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(
      std::clamp(std::strtoll(text.c_str(), nullptr, 10), kLow, kHigh));
}

// The first cutter of each location, name and grade; a field that is missing is empty or 0.
std::vector<Cutter> readCutters(std::string_view text) {
  std::vector<Cutter> cutters;
  std::set<std::tuple<std::string, std::string, std::string>> keys;
  for (const std::string &line : completeLines(text)) {
    if (line.size() > kLongestLine) {
      continue;
    }
    std::vector<std::string> fields = fieldsOf(line);
    fields.resize(std::max<std::size_t>(fields.size(), 4));
    const std::string grade = textField(fields[2]);
    if (keys.insert({textField(fields[0]), textField(fields[1]), grade}).second) {
      cutters.push_back({grade, realField(fields[3])});
    }
  }
  return cutters;
}

std::optional<Order> readOrder(const std::string &line) {
  if (line.size() > kLongestLine) {
    return std::nullopt;
  }
  if (line.empty() || line.front() == '\0') {
    return Order{};
  }
  const std::vector<std::string> fields = fieldsOf(line);
  if (fields.size() < 5) {
    return std::nullopt;
  }
  Order order{textField(fields[0]), textField(fields[1]), realField(fields[2]),
              integerField(fields[3]), textField(fields[4])};
  if (order.width <= 0.0 || order.quantity < 1) {
    return std::nullopt;
  }
  return order;
}

bool canBeMade(const Order &order, const std::vector<Cutter> &cutters) {
  return std::any_of(cutters.begin(), cutters.end(), [&](const Cutter &cutter) {
    return cutter.grade == order.grade && cutter.width >= order.width;
  });
}

std::int64_t capped(std::int64_t quantity) {
  return std::min<std::int64_t>(quantity, std::numeric_limits<std::int32_t>::max());
}

std::map<OrderKey, std::int64_t> readOrders(const OrderData &data) {
  const std::vector<Cutter> cutters = readCutters(data.machines);
  std::map<OrderKey, std::int64_t> orders;
  for (const std::string &line : completeLines(data.orders)) {
    const std::optional<Order> order = readOrder(line);
    if (order && canBeMade(*order, cutters)) {
      std::int64_t &quantity = orders[{order->grade, order->period, order->customer, order->width}];
      quantity = capped(quantity + order->quantity);
    }
  }
  return orders;
}

std::string threeDecimals(double value) {
  std::array<char, 400> text{};
  std::snprintf(text.data(), text.size(), "%.3f", value);
  return text.data();
}

// Different orders may share a node name (widths that differ beyond three decimals); their
// quantities are summed, as the file's amounts are.
std::map<DemandKey, std::int64_t> orderedByNode(const OrderData &data) {
  std::map<DemandKey, std::int64_t> demand;
  for (const auto &[key, quantity] : readOrders(data)) {
    const auto &[grade, period, customer, width] = key;
    std::string node = grade;
    node.append("_").append(customer).append("_").append(threeDecimals(width));
    demand[{node, period}] += quantity;
  }
  return demand;
}

std::map<DemandKey, std::int64_t> demandedByNode(std::string_view importText) {
  std::map<DemandKey, std::int64_t> demand;
  for (const std::string &line : completeLines(importText)) {
    const std::optional<Command> command = parseCommand(line);
    if (command &&
        (command->family == Family::kOrderFirst || command->family == Family::kOrderLater)) {
      demand[{(*command)["node"], (*command)["period"]}] +=
          std::strtoll((*command)["amount"].c_str(), nullptr, 10);
    }
  }
  return demand;
}

std::int64_t amountOf(const std::map<DemandKey, std::int64_t> &demand, const DemandKey &key) {
  const auto found = demand.find(key);
  return found == demand.end() ? 0 : found->second;
}

}  // namespace

std::vector<Complaint> checkDemand(std::string_view importText, const OrderData &data) {
  const std::map<DemandKey, std::int64_t> ordered = orderedByNode(data);
  const std::map<DemandKey, std::int64_t> demanded = demandedByNode(importText);
  std::set<DemandKey> keys;
  for (const auto &entry : ordered) {
    keys.insert(entry.first);
  }
  for (const auto &entry : demanded) {
    keys.insert(entry.first);
  }
  std::vector<Complaint> complaints;
  for (const DemandKey &key : keys) {
    const std::int64_t wanted = amountOf(ordered, key);
    const std::int64_t found = amountOf(demanded, key);
    if (wanted != found) {
      complaints.push_back({0, "\"" + key.first + "\" in period \"" + key.second + "\": ordered " +
                                   std::to_string(wanted) + ", demanded " + std::to_string(found)});
    }
  }
  return complaints;
}

double orderedInches(const OrderData &data) {
  double inches = 0.0;
  for (const auto &[key, quantity] : readOrders(data)) {
    inches += static_cast<double>(quantity) * std::get<3>(key);
  }
  return inches;
}

}  // namespace corvane::import_checker
