#include "app/parameter_file.h"

#include <cstdlib>
#include <ostream>

#include "core/line_reader.h"
#include "core/text.h"

namespace corvane {

namespace {

constexpr std::size_t kLongestPath = 511;

void readLine(RunParameters &parameters, char *line, std::ostream &messages) {
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
  if (!setParameter(parameters, key, value, messages)) {
    messages << "Unknown Parameter: " << utf8(key) << " = " << utf8(value) << std::endl;
  }
}

}  // namespace

std::string parameterFileName() {
  const char *chosen = std::getenv("ZEM_CVN_PARAM");
  return chosen != nullptr ? std::string(chosen).substr(0, kLongestPath)
                           : std::string("data\\Parameters.data");
}

bool readParameters(RunParameters &parameters, const std::string &fileName,
                    std::ostream &messages) {
  std::ifstream file;
  return readLines(file, fileName, [&](LineReader &line, LineReader::Status status) {
    if (status == LineReader::Status::kTooLong) {
      messages << tooLongWarning(line.number(), utf8(textFromBytes(fileName))) << std::endl;
    } else if (status == LineReader::Status::kLine) {
      readLine(parameters, line.text(), messages);
    }
  });
}

}  // namespace corvane
