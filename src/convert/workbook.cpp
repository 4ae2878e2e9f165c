#include "convert/workbook.h"

#include <QTemporaryFile>
#include <string>

#include "processes/child_process.h"

namespace corvane::convert {

bool isWorkbook(const QString &fileName) {
  return fileName.endsWith(QLatin1String(".xlsx"), Qt::CaseInsensitive);
}

std::optional<QByteArray> readSheet(const QString &fileName, int sheet) {
  QTemporaryFile table;
  if (!table.open()) {
    return std::nullopt;
  }
  ChildRequest request;
  // A name that begins with a dash is no option.
  const QString path =
      fileName.startsWith(QLatin1Char('-')) ? QLatin1String("./") + fileName : fileName;
  request.words = {"xlsx2csv", "-s", std::to_string(sheet), path.toStdString()};
  request.output = table.fileName().toStdString();
  // What it says of a bad file is its own inside.
  request.error = "/dev/null";
  return runChild(request).isGood() ? std::optional(table.readAll()) : std::nullopt;
}

}  // namespace corvane::convert
