#include "core/text.h"

#include <QUtf8StringView>

namespace corvane {

QString textFromBytes(std::string_view bytes) {
  const QUtf8StringView view(bytes.data(), static_cast<qsizetype>(bytes.size()));
  return view.isValidUtf8() ? QString::fromUtf8(view.data(), view.size())
                            : QString::fromLatin1(bytes.data(), view.size());
}

std::string utf8(const QString &text) {
  const QByteArray bytes = text.toUtf8();
  return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

}  // namespace corvane
