#include "record/order_demand.h"

#include <fstream>
#include <iostream>
#include <map>
#include <sstream>

#include "core/files.h"
#include "core/skip_list_cursor.h"
#include "core/text.h"
#include "planning/machine_file.h"
#include "planning/order_file.h"
#include "planning/planning_data.h"

namespace corvane::record {

namespace {

// The readers tell of bad lines on both standard streams; here nobody asked for that.
class Quiet {
 public:
  Quiet() : out_(std::cout.rdbuf(nowhere_.rdbuf())), err_(std::cerr.rdbuf(nowhere_.rdbuf())) {}
  Quiet(const Quiet &) = delete;
  Quiet &operator=(const Quiet &) = delete;
  ~Quiet() {
    std::cout.rdbuf(out_);
    std::cerr.rdbuf(err_);
  }

 private:
  std::ostringstream nowhere_;
  std::streambuf *out_;
  std::streambuf *err_;
};

// The name under which the readers find the file from here.
QString nameFromHere(const QString &name, const std::filesystem::path &folder) {
  return QString::fromStdString(pathOfFile(utf8(name), folder).string());
}

bool canBeRead(const QString &name) {
  std::ifstream file;
  return openForReading(file, utf8(name));
}

// Widest first within a grade.
using SeenByWidth = std::map<QString, std::map<double, std::vector<double>, std::greater<>>>;

void addGrade(SeenByWidth &seen, const GradeDemand &grade, const QStringList &periods) {
  for (const PeriodDemand &demand : grade.periods) {
    const qsizetype period = periods.indexOf(demand.period);
    if (period < 0) {
      continue;
    }
    for (const DemandEntry &entry : demand.firstOfWidths) {
      std::vector<double> &rolls = seen[grade.grade][entry.width];
      rolls.resize(static_cast<std::size_t>(periods.size()));
      rolls[static_cast<std::size_t>(period)] = entry.quantity;
    }
  }
}

std::vector<SeenDemand> seenDemand(const PlanningData &data, const QStringList &periods) {
  SeenByWidth byWidth;
  for (const GradeDemand &grade : data.demand.grades) {
    addGrade(byWidth, grade, periods);
  }
  std::vector<SeenDemand> seen;
  for (const auto &[grade, widths] : byWidth) {
    for (const auto &[width, rolls] : widths) {
      seen.push_back({grade, width, rolls});
    }
  }
  return seen;
}

}  // namespace

InputFacts readInputFacts(const RunParameters &parameters, const std::filesystem::path &folder,
                          const QStringList &periods) {
  const QString machines = nameFromHere(parameters.machineFile, folder);
  const QString orders = nameFromHere(parameters.orderFile, folder);
  InputFacts facts;
  if (!canBeRead(machines) || !canBeRead(orders)) {
    return facts;
  }
  const Quiet quiet;
  std::ostringstream log;
  std::ifstream file;
  PlanningComparators comparators;
  PlanningData data(comparators);
  readMachineFile(data, machines, file, log);
  readOrderFile(data, orders, file, log);
  forEachElement(data.cutters, [&](const corvane::Cutter &cutter) {
    facts.cutters.push_back({cutter.location, cutter.name, cutter.grade, cutter.width,
                             cutter.capacity, cutter.wasteCost});
    if (!facts.millOfMachine.contains(cutter.name)) {
      facts.millOfMachine.insert(cutter.name, cutter.location);
    }
  });
  facts.seen = seenDemand(data, periods);
  return facts;
}

}  // namespace corvane::record
