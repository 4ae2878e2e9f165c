#include "planning/freight_rate_file.h"

#include <iostream>
#include <memory>

#include "core/fatal.h"
#include "core/messages.h"
#include "core/numbers.h"
#include "core/text.h"

namespace corvane {

namespace {

void setText(FieldSplitter &fields, QString &target) {
  if (const auto field = fields.next()) {
    target = textFromBytes(*field);
  }
}

void setNumber(FieldSplitter &fields, double &target) {
  if (const auto field = fields.next()) {
    target = leadingNumber(field->data());
  }
}

void storeRate(PlanningData &data, std::unique_ptr<FreightRate> rate) {
  if (data.freightRates.insert(rate.get()) == skipList<FreightRate>::kStored) {
    (void)rate.release();
    return;
  }
  std::cout << "Duplicate Freight Rate: ";
  printFreightRate(std::cout, *rate);
  std::cout << std::endl;
}

}  // namespace

void readFreightRate(LineReader &line, FreightRate &rate) {
  FieldSplitter fields(line.text(), ',');
  setText(fields, rate.customer);
  setText(fields, rate.mill);
  setText(fields, rate.mode);
  setNumber(fields, rate.rate);
  setNumber(fields, rate.delay);
}

void readFreightRateFile(PlanningData &data, const QString &fileName, std::ifstream &file,
                         std::ostream &log) {
  const auto take = [&](LineReader &line, LineReader::Status status) {
    if (status == LineReader::Status::kTooLong) {
      tell(std::cout, log, tooLongWarning(line.number(), utf8(fileName)));
    } else if (status == LineReader::Status::kLine) {
      auto rate = std::make_unique<FreightRate>();
      readFreightRate(line, *rate);
      storeRate(data, std::move(rate));
    }
  };
  if (!readLines(file, utf8(fileName), take)) {
    endRun(log, "Error: Could not open freight rate file.");
  }
}

}  // namespace corvane
