#pragma once

#include <QString>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

#include "planning/freight_rate_file.h"
#include "planning/machine_file.h"
#include "planning/order_file.h"
#include "planning/planning_data.h"
#include "support/stream_capture.h"
#include "support/temporary_folder.h"

namespace corvane::support {

// The planning data of a mill, read from the texts of its three files by the program's readers.
// What they say is dropped.
class Mill {
 public:
  Mill(const std::string &machines, const std::string &orders, const std::string &rates = "")
      : data_(comparators_) {
    const TemporaryFolder folder;
    const StreamCapture out(std::cout);
    const StreamCapture errors(std::cerr);
    std::ostringstream log;
    std::ifstream machineFile;
    readMachineFile(data_, path(folder, "machines", machines), machineFile, log);
    std::ifstream orderFile;
    readOrderFile(data_, path(folder, "orders", orders), orderFile, log);
    std::ifstream rateFile;
    readFreightRateFile(data_, path(folder, "rates", rates), rateFile, log);
  }

  PlanningData &data() { return data_; }

 private:
  static QString path(const TemporaryFolder &folder, const char *name, const std::string &text) {
    return QString::fromStdString(folder.write(name, text));
  }

  PlanningComparators comparators_;
  PlanningData data_;
};

}  // namespace corvane::support
