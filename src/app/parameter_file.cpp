#include "app/parameter_file.h"

#include <cstdlib>
#include <iostream>

#include "core/fatal.h"
#include "core/files.h"
#include "core/line_reader.h"
#include "core/text.h"

namespace corvane {

namespace {

constexpr std::size_t kLongestPath = 511;

void readLine(RunParameters &parameters, char *line) {
  if (*line == '#') {
    return;
  }
  FieldSplitter fields(line, '=');
  const auto keyField = fields.next();
  const auto valueField = fields.next();
  if (!keyField || !valueField) {
    return;
  }
  const QString key = textFromBytes(*keyField);
  const QString value = textFromBytes(*valueField);
  if (!setParameter(parameters, key, value)) {
    std::cout << "Unknown Parameter: " << utf8(key) << " = " << utf8(value) << std::endl;
  }
}

}  // namespace

std::string parameterFileName() {
  const char *chosen = std::getenv("ZEM_CVN_PARAM");
  return chosen != nullptr ? std::string(chosen).substr(0, kLongestPath)
                           : std::string("data\\Parameters.data");
}

void readParameters(RunParameters &parameters, std::ifstream &file) {
  const std::string name = parameterFileName();
  if (!openForReading(file, name)) {
    endRunOn(std::cout, "Could not open parameter file.");
  }
  LineReader reader(file);
  for (auto status = reader.next(); status != LineReader::Status::kEnd; status = reader.next()) {
    if (status == LineReader::Status::kTooLong) {
      std::cout << tooLongWarning(reader.number(), utf8(textFromBytes(name))) << std::endl;
    } else {
      readLine(parameters, reader.text());
    }
  }
  file.close();
}

}  // namespace corvane
