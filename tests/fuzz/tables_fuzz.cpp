// Input: a map, a line "%%", and the bytes of a table. Whatever they hold, a table of any kind
// becomes either problems and no data, or lines that the planner's readers split into as many
// fields as the data file has, none of them too long.

#include <QList>

#include "check.h"
#include "convert/conversion.h"
#include "core/line_reader.h"
#include "target.h"

using namespace corvane;

namespace {

using corvane::fuzz::require;

void requireWholeLines(const QByteArray &data, std::size_t fieldCount) {
  QList<QByteArray> lines = data.split('\n');
  require(lines.back().isEmpty(), "a line break behind the last line");
  lines.removeLast();
  for (QByteArray &line : lines) {
    require(line.size() <= static_cast<qsizetype>(LineReader::kMaxLength), "a line that is read");
    require(!line.contains('\0') && !line.contains('\r'), "no control characters");
    FieldSplitter fields(line.data(), ',');
    std::size_t count = 0;
    while (fields.next()) {
      ++count;
    }
    require(count == fieldCount, "a line with every field");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  std::string_view table = corvane::fuzz::textOf(data, size);
  const std::string_view map = corvane::fuzz::takePart(table);
  convert::ColumnMap rules =
      convert::readMap(QString::fromUtf8(map.data(), static_cast<qsizetype>(map.size()))).map;
  const QByteArray bytes(table.data(), static_cast<qsizetype>(table.size()));
  for (const convert::TableKind &kind : convert::tableKinds()) {
    const convert::Conversion made =
        convert::convertTable(bytes, kind, rules[QLatin1String(kind.name)]);
    require(made.problems.empty() != made.data.isEmpty(), "problems or data");
    if (made.problems.empty()) {
      requireWholeLines(made.data, kind.fields.size());
    }
  }
  return 0;
}
