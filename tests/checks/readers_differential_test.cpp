// What the checker takes for accepted is what the program's readers store, value for value, on
// random and damaged files.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <random>
#include <sstream>
#include <tuple>

#include "app/parameter_file.h"
#include "checks/checked_files.h"
#include "core/numbers.h"
#include "core/skip_list_cursor.h"
#include "core/text.h"
#include "planning/freight_rate_file.h"
#include "planning/machine_file.h"
#include "planning/order_file.h"
#include "support/stream_capture.h"

namespace corvane::checks {
namespace {

using Random = std::mt19937;

std::size_t below(Random &random, std::size_t bound) {
  return std::uniform_int_distribution<std::size_t>(0, bound - 1)(random);
}

const std::string &oneOf(Random &random, const std::vector<std::string> &texts) {
  return texts[below(random, texts.size())];
}

// Pieces that files with mistakes are made of.
const std::vector<std::string> kNames = {"LB42",
                                         "LB42 ",
                                         "CM26",
                                         "A",
                                         "\"A\"",
                                         "M\xfcller",
                                         "M\xc3\xbcller",
                                         "\xef\xbb\xbf"
                                         "A",
                                         "Badger Box",
                                         "AF1",
                                         "1",
                                         "2",
                                         "01",
                                         " 1"};
const std::vector<std::string> kNumbers = {
    "44.75", "36.5", "124", "0",     "-3",    "60",          "60.9",       "1e3", "0x1F",  "nan",
    "inf",   "abc",  " 30", "30 in", "1'060", "99999999999", "2147483647", "",    "1.5.2", "+7"};
const std::vector<std::string> kBreaks = {
    "\n", "\n", "\n", "\n", "\n", "\r\n", "\r", "\n\n", ",\n", "", std::string("\0\n", 2)};

std::string lineOf(Random &random, const std::string &shape) {
  std::string line;
  for (const char kind : shape) {
    line += line.empty() ? "" : below(random, 12) == 0 ? ",," : below(random, 20) == 0 ? ";" : ",";
    line += kind == 'n' ? oneOf(random, kNames) : oneOf(random, kNumbers);
    if (below(random, 25) == 0) {
      return line;
    }
  }
  return line;
}

std::string fileOf(Random &random, const std::string &shape) {
  std::string text = below(random, 8) == 0 ? "\xef\xbb\xbf" : "";
  for (std::size_t lines = below(random, 7); lines > 0; --lines) {
    text += below(random, 40) == 0 ? std::string(1024 + below(random, 3) - 1, 'x')
                                   : lineOf(random, shape);
    text += oneOf(random, kBreaks);
  }
  for (std::size_t damage = below(random, 3); damage > 0 && !text.empty(); --damage) {
    text[below(random, text.size())] = static_cast<char>(below(random, 256));
  }
  return text;
}

std::string parametersOf(Random &random) {
  static const std::vector<std::string> kKeys = {"batch",
                                                 "delay",
                                                 "occur min",
                                                 "days per period",
                                                 "threshold",
                                                 "time limit",
                                                 "solver",
                                                 "width pick set size",
                                                 "rand num gen seed",
                                                 "maximum widths in pattern",
                                                 "patterns only",
                                                 "batch ",
                                                 "Batch",
                                                 "#batch",
                                                 "new patterns per iteration"};
  static const std::vector<std::string> kValues = {
      "True", "False",   "true",   "5",  "7.0", "None", "25%", "-1",          "0",
      "Dual", "Barrier", "200000", " 6", "nan", "",     "3=4", "99999999999", "1e2"};
  std::string text;
  for (std::size_t lines = below(random, 8); lines > 0; --lines) {
    text += oneOf(random, kKeys) + "=" + oneOf(random, kValues) + oneOf(random, kBreaks);
  }
  return text;
}

// Numbers that are not numbers are equal here.
std::string numberText(double number) {
  return QByteArray::number(number, 'g', 17).toStdString();
}

using Lines = std::vector<std::string>;

std::string joined(const std::vector<std::string> &parts) {
  std::string line;
  for (const std::string &part : parts) {
    line += part + "|";
  }
  return line;
}

// What the readers store.
class Stored {
 public:
  explicit Stored(const MillTexts &texts) {
    const support::TemporaryFolder folder;
    const support::StreamCapture out(std::cout);
    const support::StreamCapture errors(std::cerr);
    std::ostringstream log;
    std::ifstream machines;
    std::ifstream orders;
    std::ifstream rates;
    const auto path = [&](const char *name, const std::string &bytes) {
      return QString::fromStdString(folder.write(name, bytes));
    };
    readParameters(parameters, folder.write("parameters", texts.parameters), log);
    readMachineFile(data, path("machines", texts.machines), machines, log);
    readOrderFile(data, path("orders", texts.orders), orders, log);
    readFreightRateFile(data, path("rates", texts.rates), rates, log);
  }

  Lines cutters() const {
    Lines lines;
    forEachElement(data.cutters, [&](const Cutter &cutter) {
      lines.push_back(joined({utf8(cutter.location), utf8(cutter.name), utf8(cutter.grade),
                              numberText(cutter.width), numberText(cutter.capacity),
                              numberText(cutter.lbsPerInch), numberText(cutter.wasteCost)}));
    });
    return lines;
  }
  Lines orders() const {
    Lines lines;
    forEachElement(data.orders, [&](const Order &order) {
      lines.push_back(joined({utf8(order.grade), utf8(order.period), utf8(order.customerName),
                              numberText(order.width), std::to_string(order.quantity)}));
    });
    return lines;
  }
  Lines rates() const {
    Lines lines;
    forEachElement(data.freightRates, [&](const FreightRate &rate) {
      lines.push_back(joined({utf8(rate.customer), utf8(rate.mill), utf8(rate.mode),
                              numberText(rate.rate), numberText(rate.delay)}));
    });
    return lines;
  }
  Lines periods() const {
    Lines lines;
    for (const QString &period : data.periods) {
      lines.push_back(utf8(period));
    }
    return lines;
  }

  PlanningComparators comparators;
  PlanningData data{comparators};
  RunParameters parameters;
};

Lines cuttersOf(const MillRecords &mill) {
  Lines lines;
  for (const CutterRow &row : mill.cutters) {
    if (row.isStored) {
      lines.push_back(joined({mill.text(row.location), mill.text(row.name), mill.text(row.grade),
                              numberText(row.width), numberText(row.capacity),
                              numberText(row.lbsPerInch), numberText(row.wasteCost)}));
    }
  }
  return lines;
}

Lines ordersOf(const MillRecords &mill) {
  std::map<std::tuple<TextId, TextId, TextId, quint32>, qint32> merged;
  for (const OrderRow &row : mill.orders) {
    qint32 &sum = merged[{row.grade, row.period, row.customer, row.width}];
    sum = saturatedSum(sum, row.quantity);
  }
  Lines lines;
  for (const auto &[key, quantity] : merged) {
    lines.push_back(joined({mill.text(std::get<0>(key)), mill.text(std::get<1>(key)),
                            mill.text(std::get<2>(key)), numberText(mill.widths[std::get<3>(key)]),
                            std::to_string(quantity)}));
  }
  return lines;
}

Lines ratesOf(const MillRecords &mill) {
  Lines lines;
  for (const RateRow &row : mill.rates) {
    if (row.isStored) {
      lines.push_back(joined({mill.text(row.customer), mill.text(row.mill), mill.text(row.mode),
                              numberText(row.rate), numberText(row.delay)}));
    }
  }
  return lines;
}

Lines sorted(Lines lines) {
  std::sort(lines.begin(), lines.end());
  return lines;
}

// Every accepted order in turn mentions its period.
Lines periodsOf(const MillRecords &mill) {
  Lines lines;
  for (const OrderRow &row : mill.orders) {
    const std::string period = mill.text(row.period);
    if (std::find(lines.begin(), lines.end(), period) == lines.end()) {
      lines.push_back(period);
    }
  }
  return lines;
}

std::string summaryOf(const RunParameters &parameters) {
  std::ostringstream out;
  printParameters(parameters, out);
  out << parameters.seed;
  return out.str();
}

MillTexts randomMill(Random &random) {
  MillTexts texts{parametersOf(random), fileOf(random, "nnnxxxx"), fileOf(random, "nnxxn"),
                  fileOf(random, "nnnxx")};
  // Often a cutter that the orders fit, so that some are accepted.
  if (below(random, 4) != 0) {
    texts.machines = "Mill,W1,LB42,100,10,2,1\nMill,W1,A,100,10,2,1\n" + texts.machines;
  }
  return texts;
}

// The file names stay the defaults, since what the parameters would name is not there.
class Differential : public testing::TestWithParam<int> {};

// 4 files a mill.
TEST_P(Differential, AcceptedIsStored) {
  constexpr int kMills = 320;
  Random random(static_cast<unsigned>(GetParam()));
  for (int mill = 0; mill < kMills; ++mill) {
    const MillTexts texts = randomMill(random);
    SCOPED_TRACE("mill " + std::to_string(mill));
    const Stored stored(texts);
    const TextCheck check(texts);
    const MillRecords &records = check.mill.records;
    ASSERT_EQ(sorted(cuttersOf(records)), sorted(stored.cutters()));
    ASSERT_EQ(sorted(ordersOf(records)), sorted(stored.orders()));
    ASSERT_EQ(sorted(ratesOf(records)), sorted(stored.rates()));
    ASSERT_EQ(periodsOf(records), stored.periods());
    ASSERT_EQ(summaryOf(records.parameters), summaryOf(stored.parameters));
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, Differential, testing::Range(1, 9));

}  // namespace
}  // namespace corvane::checks
