#include "core/text_file.h"

#include "core/files.h"

namespace corvane {

bool readLines(std::ifstream &file, const std::string &name, const TakeLine &take) {
  if (!openForReading(file, name)) {
    return false;
  }
  LineReader reader(file);
  auto status = LineReader::Status::kLine;
  while (status != LineReader::Status::kEnd) {
    status = reader.next();
    if (!reader.failed()) {
      take(reader, status);
    }
  }
  file.close();
  return !reader.failed();
}

}  // namespace corvane
