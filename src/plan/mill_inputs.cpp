#include "plan/mill_inputs.h"

#include <fstream>
#include <iostream>
#include <sstream>
#include <utility>

#include "planning/freight_rate_file.h"
#include "planning/machine_file.h"
#include "planning/order_file.h"

namespace corvane::plan {

namespace {

// What is written to standard output meanwhile goes to standard error, where warnings belong.
class OutputToErrors {
 public:
  OutputToErrors() : buffer_(std::cout.rdbuf(std::cerr.rdbuf())) {}
  OutputToErrors(const OutputToErrors &) = delete;
  OutputToErrors &operator=(const OutputToErrors &) = delete;
  ~OutputToErrors() { std::cout.rdbuf(buffer_); }

 private:
  std::streambuf *buffer_;
};

}  // namespace

MillInputs::MillInputs(RunParameters parameters)
    : parameters_(std::move(parameters)), planning_(comparators_) {
  const OutputToErrors redirection;
  std::ostringstream log;
  std::ifstream machines;
  std::ifstream orders;
  std::ifstream rates;
  readMachineFile(planning_, parameters_.machineFile, machines, log);
  readOrderFile(planning_, parameters_.orderFile, orders, log);
  readFreightRateFile(planning_, parameters_.freightRateFile, rates, log);
}

}  // namespace corvane::plan
