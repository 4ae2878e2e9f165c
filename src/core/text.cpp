#include "core/text.h"

#include <QStringDecoder>
#include <QUtf8StringView>

namespace corvane {

QString textFromBytes(std::string_view bytes) {
  const QUtf8StringView view(bytes.data(), static_cast<qsizetype>(bytes.size()));
  if (!view.isValidUtf8()) {
    return QString::fromLatin1(view.data(), view.size());
  }
  // QString::fromUtf8 would drop a byte order mark in front.
  QStringDecoder decode(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
  return decode(QByteArrayView(view.data(), view.size()));
}

std::string utf8(const QString &text) {
  const QByteArray bytes = text.toUtf8();
  return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

}  // namespace corvane
