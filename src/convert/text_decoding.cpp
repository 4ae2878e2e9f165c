#include "convert/text_decoding.h"

#include <QStringDecoder>
#include <array>

namespace corvane::convert {

namespace {

struct EncodingFacts {
  Encoding encoding = Encoding::kUtf8;
  const char *name = "";
  QStringConverter::Encoding converter = QStringConverter::Utf8;
  QByteArrayView mark;
};

constexpr std::array kEncodings = {
    EncodingFacts{Encoding::kUtf8, "UTF-8", QStringConverter::Utf8, "\xEF\xBB\xBF"},
    EncodingFacts{Encoding::kUtf16LittleEndian, "UTF-16", QStringConverter::Utf16LE, "\xFF\xFE"},
    EncodingFacts{Encoding::kUtf16BigEndian, "UTF-16BE", QStringConverter::Utf16BE, "\xFE\xFF"},
    EncodingFacts{Encoding::kLatin1, "Latin-1", QStringConverter::Latin1, {}},
};

const EncodingFacts &factsOf(Encoding encoding) {
  return kEncodings.at(static_cast<std::size_t>(encoding));
}

bool hasMark(const QByteArray &bytes, const EncodingFacts &facts) {
  return !facts.mark.isEmpty() && bytes.startsWith(facts.mark);
}

std::optional<QString> decodeAs(const QByteArray &bytes, const EncodingFacts &facts) {
  const qsizetype skipped = hasMark(bytes, facts) ? facts.mark.size() : 0;
  QStringDecoder decoder(facts.converter, QStringConverter::Flag::Stateless);
  QString text = decoder.decode(QByteArrayView(bytes).sliced(skipped));
  if (decoder.hasError()) {
    return std::nullopt;
  }
  return text;
}

// In UTF-16 text of a table nearly every second byte is zero; which one tells the order.
std::optional<Encoding> utf16WithoutMark(const QByteArray &bytes) {
  qsizetype zeros[2] = {0, 0};
  for (qsizetype i = 0; i < bytes.size(); ++i) {
    zeros[i % 2] += bytes[i] == '\0' ? 1 : 0;
  }
  const qsizetype many = bytes.size() / 4;
  if (bytes.size() % 2 != 0 || zeros[0] + zeros[1] <= many) {
    return std::nullopt;
  }
  return zeros[1] > zeros[0] ? Encoding::kUtf16LittleEndian : Encoding::kUtf16BigEndian;
}

Encoding guess(const QByteArray &bytes) {
  for (const EncodingFacts &facts : kEncodings) {
    if (hasMark(bytes, facts)) {
      return facts.encoding;
    }
  }
  if (const auto wide = utf16WithoutMark(bytes)) {
    return *wide;
  }
  return decodeAs(bytes, factsOf(Encoding::kUtf8)) ? Encoding::kUtf8 : Encoding::kLatin1;
}

}  // namespace

QString nameOf(Encoding encoding) {
  return QLatin1String(factsOf(encoding).name);
}

std::optional<Encoding> encodingNamed(const QString &name) {
  for (const EncodingFacts &facts : kEncodings) {
    if (name.compare(QLatin1String(facts.name), Qt::CaseInsensitive) == 0) {
      return facts.encoding;
    }
  }
  return std::nullopt;
}

std::optional<DecodedText> decode(const QByteArray &bytes, std::optional<Encoding> told) {
  Encoding encoding = told.value_or(guess(bytes));
  // Who says UTF-16 leaves the order of the bytes to the mark.
  if (encoding == Encoding::kUtf16LittleEndian &&
      hasMark(bytes, factsOf(Encoding::kUtf16BigEndian))) {
    encoding = Encoding::kUtf16BigEndian;
  }
  auto text = decodeAs(bytes, factsOf(encoding));
  if (!text) {
    return std::nullopt;
  }
  return DecodedText{std::move(*text), encoding};
}

}  // namespace corvane::convert
