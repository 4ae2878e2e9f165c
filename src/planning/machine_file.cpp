#include "planning/machine_file.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <memory>
#include <unordered_set>

#include "core/exchange_sort.h"
#include "core/fatal.h"
#include "core/messages.h"
#include "core/numbers.h"
#include "core/skip_list_cursor.h"
#include "core/text.h"

namespace corvane {

namespace {

// Distinct widths in order of appearance. A width that is not a number equals nothing and is always
// taken.
class WidthCollector {
 public:
  explicit WidthCollector(QLinkedList<double> &widths) : widths_(widths) {}

  void add(double width) {
    if (seen_.insert(width).second) {
      widths_.append(width);
    }
  }

 private:
  QLinkedList<double> &widths_;
  std::unordered_set<double> seen_;
};

void sortAscending(QLinkedList<double> &widths) {
  if (std::any_of(widths.cbegin(), widths.cend(), [](double width) { return std::isnan(width); })) {
    exchangeSort(widths, [](double a, double b) { return a > b; });
  } else {
    sortDistinct(widths);
  }
}

void noteWidest(PlanningData &data, const Cutter &cutter) {
  const auto known = data.widestCutter.find(cutter.grade);
  if (known == data.widestCutter.end()) {
    data.widestCutter.insert(cutter.grade, cutter.width);
  } else if (cutter.width > *known || std::isnan(*known)) {
    *known = cutter.width;
  }
}

void storeCutter(PlanningData &data, std::unique_ptr<Cutter> cutter, WidthCollector &widths) {
  const double width = cutter->width;
  if (data.cutters.insert(cutter.get()) == skipList<Cutter>::kStored) {
    noteWidest(data, *cutter.release());
  }
  widths.add(width);
}

// Hands the next field to store(text), or tells that it is missing.
template <typename Store>
void setField(FieldSplitter &fields, const char *name, Store store) {
  if (const auto field = fields.next()) {
    store(*field);
  } else {
    std::cerr << "Could not set " << name << " of cutter." << std::endl;
  }
}

void setText(FieldSplitter &fields, const char *name, QString &target) {
  setField(fields, name, [&](std::string_view field) { target = textFromBytes(field); });
}

void setNumber(FieldSplitter &fields, const char *name, double &target) {
  setField(fields, name, [&](std::string_view field) { target = leadingNumber(field.data()); });
}

}  // namespace

void readCutter(LineReader &line, Cutter &cutter) {
  if (*line.text() == '\0') {
    return;
  }
  FieldSplitter fields(line.text(), ',');
  setText(fields, "Location", cutter.location);
  setText(fields, "Name", cutter.name);
  setText(fields, "Grade", cutter.grade);
  setNumber(fields, "Width", cutter.width);
  setNumber(fields, "Capacity", cutter.capacity);
  setNumber(fields, "Lbs/Inch", cutter.lbsPerInch);
  setNumber(fields, "WasteCost", cutter.wasteCost);
}

void readMachineFile(PlanningData &data, const QString &fileName, std::ifstream &file,
                     std::ostream &log) {
  WidthCollector widths(data.cutterWidths);
  const auto take = [&](LineReader &line, LineReader::Status status) {
    if (status == LineReader::Status::kTooLong) {
      tell(std::cerr, log, tooLongWarning(line.number(), utf8(fileName)));
      return;
    }
    auto cutter = std::make_unique<Cutter>();
    readCutter(line, *cutter);
    if (status == LineReader::Status::kLine) {
      storeCutter(data, std::move(cutter), widths);
    }
  };
  if (!readLines(file, utf8(fileName), take)) {
    endRun(log, "Error: Could not open machine data file.");
  }
  sortAscending(data.cutterWidths);
  data.cuttersByGrade.clear();
  forEachElement(data.cutters, [&](const Cutter &cutter) {
    data.cuttersByGrade[cutter.grade].push_back(&cutter);
  });
}

}  // namespace corvane
