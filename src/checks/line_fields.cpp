#include "checks/line_fields.h"

#include <cstring>

#include "core/line_reader.h"

namespace corvane::checks {

LineFields splitLine(char *line) {
  LineFields result;
  const std::size_t length = std::strlen(line);
  std::size_t taken = 0;
  FieldSplitter splitter(line, ',');
  while (const auto field = splitter.next()) {
    if (result.count < LineFields::kMost) {
      result.fields[static_cast<std::size_t>(result.count)] = *field;
    }
    ++result.count;
    taken += field->size() + 1;
  }
  result.hasCommaRun = length > 0 && taken != length + 1;
  return result;
}

}  // namespace corvane::checks
