#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace corvane::convert {

enum class Encoding { kUtf8, kUtf16LittleEndian, kUtf16BigEndian, kLatin1 };

// "UTF-8", "UTF-16", "Latin-1": as a person says it.
QString nameOf(Encoding encoding);
// The encoding that a person names, upper or lower case, or nothing.
std::optional<Encoding> encodingNamed(const QString &name);

struct DecodedText {
  QString text;  // without a byte order mark
  Encoding encoding;
};

// The text of a file. A byte order mark decides; without one, bytes that are half zeros are UTF-16,
// what is valid UTF-8 is UTF-8, and anything else Latin-1, where every byte is a character. `told`
// decides instead, where it is given, but for the mark of the same encoding, which goes. Nothing
// when the bytes are not valid in the encoding that was told or found.
std::optional<DecodedText> decode(const QByteArray &bytes, std::optional<Encoding> told);

}  // namespace corvane::convert
