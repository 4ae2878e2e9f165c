#include "app/run_files.h"

#include <algorithm>
#include <iostream>
#include <vector>

#include "app/parameter_file.h"
#include "core/fatal.h"
#include "core/files.h"
#include "core/text.h"

namespace corvane {

namespace {

std::vector<std::string> inputNames(const RunParameters &parameters) {
  return {parameterFileName(), utf8(parameters.machineFile), utf8(parameters.orderFile),
          utf8(parameters.freightRateFile)};
}

bool isOneOf(const std::string &name, const std::vector<std::string> &others) {
  return std::any_of(others.begin(), others.end(),
                     [&](const std::string &other) { return areOneFile(name, other); });
}

[[noreturn]] void endWithoutImportFile(const std::string &name) {
  endRunOn(std::cerr, "Could not open import file: " + name);
}

}  // namespace

void openLog(const RunParameters &parameters, std::ofstream &log) {
  const std::string name = utf8(parameters.logFile);
  std::vector<std::string> others = inputNames(parameters);
  others.push_back(utf8(parameters.output));
  if (isOneOf(name, others) || !openForWriting(log, name, std::ios::app)) {
    endRunOn(std::cerr, "Could not open log file: " + name);
  }
}

ImportFileOfRun::ImportFileOfRun(const RunParameters &parameters) : name_(utf8(parameters.output)) {
  if (isOneOf(name_, inputNames(parameters)) || !lock_.acquire(name_)) {
    endWithoutImportFile(name_);
  }
}

std::ofstream ImportFileOfRun::open() const {
  std::ofstream file;
  if (!openForWriting(file, name_, std::ios::trunc)) {
    endWithoutImportFile(name_);
  }
  return file;
}

}  // namespace corvane
