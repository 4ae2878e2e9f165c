#include "sweep/whole_file.h"

#include <QFile>
#include <cstdio>

namespace corvane::sweep {

bool writeWhole(const QString &name, const QByteArray &content) {
  const QString part = name + QLatin1String(".part");
  QFile file(part);
  if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.flush()) {
    return false;
  }
  file.close();
  // QFile would not replace a file that is there.
  return std::rename(QFile::encodeName(part).constData(), QFile::encodeName(name).constData()) == 0;
}

QByteArray readWhole(const QString &name) {
  QFile file(name);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace corvane::sweep
