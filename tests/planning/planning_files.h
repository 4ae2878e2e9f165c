#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

#include "planning/freight_rate_file.h"
#include "planning/machine_file.h"
#include "planning/order_file.h"
#include "planning/planning_data.h"
#include "support/planning_dump.h"
#include "support/stream_capture.h"
#include "support/temporary_folder.h"

namespace corvane {

// Feeds the readers with file texts and keeps what they say, apart for each channel.
class PlanningFiles {
 public:
  void readMachines(const std::string &bytes) { read(readMachineFile, bytes); }
  void readOrders(const std::string &bytes) { read(readOrderFile, bytes); }
  void readRates(const std::string &bytes) { read(readFreightRateFile, bytes); }

  PlanningComparators comparators;
  PlanningData data{comparators};
  std::string out;
  std::string errors;
  std::ostringstream log;

  std::string fileName() const { return folder_.file("file"); }

 private:
  using Reader = void (*)(PlanningData &, const QString &, std::ifstream &, std::ostream &);

  void read(Reader reader, const std::string &bytes) {
    const std::string name = folder_.write("file", bytes);
    const support::StreamCapture outCapture(std::cout);
    const support::StreamCapture errorCapture(std::cerr);
    std::ifstream file;
    reader(data, QString::fromStdString(name), file, log);
    EXPECT_FALSE(file.is_open());
    out = outCapture.text();
    errors = errorCapture.text();
  }

  support::TemporaryFolder folder_;
};

class PlanningFilesTest : public testing::Test, protected PlanningFiles {};

}  // namespace corvane
