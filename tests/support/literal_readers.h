#pragma once

#include <QString>
#include <algorithm>
#include <cstdlib>
#include <limits>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "core/numbers.h"
#include "core/text.h"

// The three readers once more, step by step and with plain scans, for comparison with the fast
// ones. They take the bytes of a file and give dumps as those of planning_dump.h.

namespace corvane::support {

struct LiteralLine {
  std::string text;
  bool tooLong = false;
  bool terminated = true;
};

inline std::vector<LiteralLine> literalLines(const std::string &bytes) {
  std::vector<LiteralLine> lines;
  std::size_t begin = bytes.starts_with("\xEF\xBB\xBF") ? 3 : 0;
  while (begin < bytes.size()) {
    LiteralLine line;
    const std::size_t end = bytes.find('\n', begin);
    line.terminated = end != std::string::npos;
    line.text = bytes.substr(begin, line.terminated ? end - begin : std::string::npos);
    begin = line.terminated ? end + 1 : bytes.size();
    if (line.terminated && !line.text.empty() && line.text.back() == '\r') {
      line.text.pop_back();
    }
    line.tooLong = line.text.size() > 1023;
    line.text = line.tooLong ? "" : line.text.substr(0, line.text.find('\0'));
    lines.push_back(line);
  }
  return lines;
}

inline std::vector<std::string> literalFields(const std::string &line) {
  std::vector<std::string> fields;
  std::string field;
  for (const char c : line + ",") {
    if (c != ',') {
      field += c;
    } else if (!field.empty()) {
      fields.push_back(field);
      field.clear();
    }
  }
  return fields;
}

struct LiteralCutter {
  QString location, name, grade;
  double numbers[4] = {0, 0, 0, 0};
};

struct LiteralOrder {
  QString grade, period, customer;
  double width = 0;
  qint32 quantity = 0;
};

struct LiteralRate {
  QString customer, mill, mode;
  double rate = 0;
  double delay = 0;
};

template <typename Record, typename Key>
std::size_t placeInOrder(const std::vector<Record> &records, const Record &record, Key key,
                         bool &equal) {
  std::size_t place = 0;
  while (place < records.size() && key(records[place]) < key(record)) {
    ++place;
  }
  equal = place < records.size() && !(key(record) < key(records[place]));
  return place;
}

class LiteralPlanning {
 public:
  std::string out;
  std::string errors;
  std::string log;

  void readMachines(const std::string &bytes, const std::string &fileName) {
    long number = 0;
    for (const LiteralLine &line : literalLines(bytes)) {
      ++number;
      if (line.tooLong) {
        warnTooLong(line, number, fileName, errors);
        continue;
      }
      const LiteralCutter cutter = parseCutter(line.text);
      if (line.terminated) {
        storeCutter(cutter);
      }
    }
    for (std::size_t i = 0; i < widths_.size(); ++i) {
      for (std::size_t j = i + 1; j < widths_.size(); ++j) {
        if (widths_[i] > widths_[j]) {
          std::swap(widths_[i], widths_[j]);
        }
      }
    }
  }

  void readOrders(const std::string &bytes) {
    long number = 0;
    for (const LiteralLine &line : literalLines(bytes)) {
      ++number;
      LiteralOrder order;
      const bool good = parseOrder(line.text, order) && !line.tooLong;
      if (!line.terminated) {
        break;
      }
      if (!good) {
        tell("Warning: Order number " + std::to_string(number) + " is bad.\n\n");
      } else if (!canProcess(order)) {
        tell("Warning: No machine can process order number " + std::to_string(number) +
             ". Check grade and demand width.\n");
      } else {
        storeOrder(order);
      }
    }
    for (std::size_t i = 0; i < grades_.size(); ++i) {
      for (std::size_t j = i + 1; j < grades_.size(); ++j) {
        if (grades_[j] < grades_[i]) {
          std::swap(grades_[i], grades_[j]);
        }
      }
    }
  }

  void readRates(const std::string &bytes, const std::string &fileName) {
    long number = 0;
    for (const LiteralLine &line : literalLines(bytes)) {
      ++number;
      if (line.tooLong) {
        warnTooLong(line, number, fileName, out);
      } else if (line.terminated) {
        storeRate(parseRate(line.text));
      }
    }
  }

  std::string dumpCutters() const {
    std::string text;
    for (const LiteralCutter &cutter : cutters_) {
      text += utf8(cutter.location) + "|" + utf8(cutter.name) + "|" + utf8(cutter.grade);
      for (const double value : cutter.numbers) {
        text += "|";
        text += general(value);
      }
      text += "\n";
    }
    return text;
  }
  std::string dumpWidths() const {
    std::string text;
    for (const double width : widths_) {
      text += text.empty() ? "" : " ";
      text += general(width);
    }
    return text;
  }
  std::string dumpOrders() const {
    std::string text;
    for (const LiteralOrder &order : orders_) {
      text += utf8(order.grade) + "|" + utf8(order.period) + "|" + utf8(order.customer) + "|" +
              general(order.width) + "|" + std::to_string(order.quantity) + "\n";
    }
    return text;
  }
  std::string dumpDemand() const {
    std::string text;
    for (const auto &grade : demand_) {
      for (const auto &period : grade.second) {
        text += utf8(grade.first) + "|" + utf8(period.first) + ":";
        for (const auto &entry : period.second) {
          text += " ";
          text += general(entry.first) + "x" + std::to_string(entry.second);
        }
        text += "\n";
      }
    }
    return text;
  }
  std::string dumpRates() const {
    std::string text;
    for (const LiteralRate &rate : rates_) {
      text += utf8(rate.customer) + "|" + utf8(rate.mill) + "|" + utf8(rate.mode) + "|" +
              general(rate.rate) + "|" + general(rate.delay) + "\n";
    }
    return text;
  }
  std::string dumpGrades() const { return dumpTexts(grades_); }
  std::string dumpPeriods() const { return dumpTexts(periods_); }

 private:
  using Entries = std::vector<std::pair<double, qint32>>;
  using Periods = std::vector<std::pair<QString, Entries>>;

  void tell(const std::string &text) {
    out += text;
    log += text;
  }
  void warnTooLong(const LiteralLine &line, long number, const std::string &fileName,
                   std::string &channel) {
    if (line.terminated) {
      const std::string text =
          "Warning: Line " + std::to_string(number) + " of " + fileName + " is too long.\n";
      channel += text;
      log += text;
    }
  }
  static std::string dumpTexts(const std::vector<QString> &texts) {
    std::string all;
    for (const QString &text : texts) {
      all += utf8(text) + ";";
    }
    return all;
  }

  LiteralCutter parseCutter(const std::string &line) {
    LiteralCutter cutter;
    if (line.empty()) {
      return cutter;
    }
    static const char *const kNames[] = {"Location", "Name",     "Grade",    "Width",
                                         "Capacity", "Lbs/Inch", "WasteCost"};
    const std::vector<std::string> fields = literalFields(line);
    for (std::size_t at = fields.size(); at < 7; ++at) {
      errors += "Could not set " + std::string(kNames[at]) + " of cutter.\n";
    }
    QString *const texts[] = {&cutter.location, &cutter.name, &cutter.grade};
    for (std::size_t at = 0; at < std::min<std::size_t>(fields.size(), 7); ++at) {
      if (at < 3) {
        *texts[at] = textFromBytes(fields[at]);
      } else {
        cutter.numbers[at - 3] = std::atof(fields[at].c_str());
      }
    }
    return cutter;
  }
  void storeCutter(const LiteralCutter &cutter) {
    bool equal = false;
    const std::size_t place = placeInOrder(
        cutters_, cutter,
        [](const LiteralCutter &one) { return std::tie(one.location, one.name, one.grade); },
        equal);
    if (!equal) {
      cutters_.insert(cutters_.begin() + static_cast<std::ptrdiff_t>(place), cutter);
    }
    addIfAbsent(widths_, cutter.numbers[0]);
  }

  bool parseOrder(const std::string &line, LiteralOrder &order) {
    if (line.empty()) {
      return true;
    }
    const std::vector<std::string> fields = literalFields(line);
    if (!fields.empty()) {
      order.period = textFromBytes(fields[0]);
    }
    if (fields.size() > 1) {
      order.grade = textFromBytes(fields[1]);
    }
    if (fields.size() > 2) {
      order.width = std::atof(fields[2].c_str());
      if (order.width <= 0.0) {
        out += "Width must be > 0.0.\n";
        return false;
      }
    }
    if (fields.size() > 3) {
      const long long quantity = std::atoll(fields[3].c_str());
      constexpr long long kMost = std::numeric_limits<qint32>::max();
      order.quantity = static_cast<qint32>(std::clamp<long long>(quantity, -kMost, kMost));
      if (order.quantity < 1) {
        out += "Quantity must be > 0.\n";
        return false;
      }
    }
    if (fields.size() > 4) {
      order.customer = textFromBytes(fields[4]);
    }
    return fields.size() > 4;
  }
  bool canProcess(const LiteralOrder &order) const {
    return std::any_of(cutters_.begin(), cutters_.end(), [&](const LiteralCutter &cutter) {
      return cutter.grade == order.grade && cutter.numbers[0] >= order.width;
    });
  }
  void storeOrder(LiteralOrder order) {
    bool equal = false;
    const std::size_t place = placeInOrder(
        orders_, order,
        [](const LiteralOrder &one) {
          return std::tie(one.grade, one.period, one.customer, one.width);
        },
        equal);
    if (equal) {
      order.quantity = sum(orders_[place].quantity, order.quantity);
      orders_[place].quantity = order.quantity;
    } else {
      orders_.insert(orders_.begin() + static_cast<std::ptrdiff_t>(place), order);
    }
    recordDemand(order);
    addIfAbsent(grades_, order.grade);
    addIfAbsent(periods_, order.period);
  }
  void recordDemand(const LiteralOrder &order) {
    Entries &entries = entryOf(entryOf(demand_, order.grade), order.period);
    for (auto &entry : entries) {
      if (entry.first == order.width && entry.second == order.quantity) {
        entry.second = sum(entry.second, order.quantity);
        return;
      }
    }
    entries.emplace_back(order.width, order.quantity);
  }

  static LiteralRate parseRate(const std::string &line) {
    LiteralRate rate;
    const std::vector<std::string> fields = literalFields(line);
    QString *const texts[] = {&rate.customer, &rate.mill, &rate.mode};
    double *const numbers[] = {&rate.rate, &rate.delay};
    for (std::size_t at = 0; at < std::min<std::size_t>(fields.size(), 5); ++at) {
      if (at < 3) {
        *texts[at] = textFromBytes(fields[at]);
      } else {
        *numbers[at - 3] = std::atof(fields[at].c_str());
      }
    }
    return rate;
  }
  void storeRate(const LiteralRate &rate) {
    bool equal = false;
    const std::size_t place = placeInOrder(
        rates_, rate,
        [](const LiteralRate &one) { return std::tie(one.customer, one.mill, one.mode); }, equal);
    if (equal) {
      out += "Duplicate Freight Rate: Customer: " + utf8(rate.customer) +
             " Mill: " + utf8(rate.mill) + " Mode: " + utf8(rate.mode) +
             " Rate: " + general(rate.rate) + " Delay: " + general(rate.delay) + "\n";
    } else {
      rates_.insert(rates_.begin() + static_cast<std::ptrdiff_t>(place), rate);
    }
  }

  static qint32 sum(qint32 a, qint32 b) {
    const long long exact = static_cast<long long>(a) + b;
    return static_cast<qint32>(std::min<long long>(exact, std::numeric_limits<qint32>::max()));
  }
  template <typename Value>
  static void addIfAbsent(std::vector<Value> &values, const Value &value) {
    if (std::find(values.begin(), values.end(), value) == values.end()) {
      values.push_back(value);
    }
  }
  template <typename Value>
  static Value &entryOf(std::vector<std::pair<QString, Value>> &entries, const QString &name) {
    for (auto &entry : entries) {
      if (entry.first == name) {
        return entry.second;
      }
    }
    entries.emplace_back(name, Value());
    return entries.back().second;
  }

  std::vector<LiteralCutter> cutters_;
  std::vector<double> widths_;
  std::vector<LiteralOrder> orders_;
  std::vector<std::pair<QString, Periods>> demand_;
  std::vector<QString> grades_;
  std::vector<QString> periods_;
  std::vector<LiteralRate> rates_;
};

}  // namespace corvane::support
