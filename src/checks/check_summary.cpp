#include "checks/check_summary.h"

#include <algorithm>
#include <map>
#include <set>

namespace corvane::checks {

namespace {

// Inches of full deckles a day, by grade and machine.
using Speeds = std::map<TextId, std::map<TextId, double>>;

Speeds speedsOf(const MillIndex &index) {
  Speeds speeds;
  for (const auto &[grade, cutters] : index.cutters) {
    for (const CutterRow *cutter : cutters) {
      const double speed = std::max(0.0, cutter->width) * std::max(0.0, cutter->capacity);
      if (index.byGrade.count(grade) > 0 && speed > 0) {
        speeds[grade][cutter->name] += speed;
      }
    }
  }
  return speeds;
}

void addDays(CheckSummary &summary, const MillRecords &mill, const MillIndex &index) {
  const double days = mill.parameters.daysPerPeriod;
  const Speeds speeds = speedsOf(index);
  std::map<TextId, std::vector<double>> needed;
  summary.all.days.assign(index.periods.size(), 0);
  for (const auto &[grade, machines] : speeds) {
    double allSpeed = 0;
    double best = 0;
    for (const auto &[machine, speed] : machines) {
      needed.try_emplace(machine, index.periods.size(), 0.0);
      allSpeed += speed;
      best = std::max(best, speed);
    }
    for (std::size_t period = 0; period < index.periods.size(); ++period) {
      const auto total = index.byGradePeriod.find(pairKey(grade, index.periods[period]));
      if (total == index.byGradePeriod.end()) {
        continue;
      }
      const double inches = total->second.inches;
      summary.all.days[period] += inches / best;
      for (const auto &[machine, speed] : machines) {
        needed[machine][period] += std::max(0.0, inches - days * (allSpeed - speed)) / speed;
      }
    }
  }
  for (auto &[machine, ofPeriods] : needed) {
    summary.machines.push_back({mill.text(machine), std::move(ofPeriods)});
  }
  std::sort(summary.machines.begin(), summary.machines.end(),
            [](const auto &a, const auto &b) { return a.name < b.name; });
}

// Customers with a grade that no mill can bring them.
void addCustomersWithoutWay(CheckSummary &summary, const MillRecords &mill,
                            const MillIndex &index) {
  std::set<std::string> names;
  for (const auto &[key, total] : index.byCustomerGrade) {
    const auto *cutters = index.cuttersOf(static_cast<TextId>(key));
    const auto customer = static_cast<TextId>(key >> 32U);
    const bool isReached = cutters != nullptr &&
                           std::any_of(cutters->begin(), cutters->end(), [&](const auto *cutter) {
                             return index.ratesOf(customer, cutter->location) != nullptr;
                           });
    if (!isReached) {
      names.insert(mill.text(customer));
    }
  }
  summary.customersWithoutWay.assign(names.begin(), names.end());
}

}  // namespace

CheckSummary summarize(const MillRecords &mill, const MillIndex &index) {
  CheckSummary summary;
  for (const FileRecords *records :
       {&mill.parameterFile, &mill.machineFile, &mill.orderFile, &mill.rateFile}) {
    if (records->file != nullptr) {
      summary.files.push_back(
          {records->file->name(), records->scan.lines, records->accepted, records->scan.comments});
    }
  }
  for (const auto &[grade, total] : index.byGrade) {
    summary.grades.push_back(mill.text(grade));
  }
  std::sort(summary.grades.begin(), summary.grades.end());
  for (const TextId period : index.periods) {
    summary.periods.push_back(mill.text(period));
  }
  summary.inches = index.inches;
  summary.availableDays = mill.parameters.daysPerPeriod;
  addDays(summary, mill, index);
  if (mill.rateFile.isUsable()) {
    addCustomersWithoutWay(summary, mill, index);
  }
  return summary;
}

}  // namespace corvane::checks
