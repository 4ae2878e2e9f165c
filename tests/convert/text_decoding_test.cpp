#include "convert/text_decoding.h"

#include <gtest/gtest.h>

#include <QStringEncoder>

namespace corvane::convert {
namespace {

const QString kTable = QStringLiteral("Week,M\u00fchle\n1,caf\u00e9 \u20ac\n");

QByteArray encoded(const QString &text, QStringConverter::Encoding encoding, bool withMark) {
  QStringEncoder encoder(
      encoding, withMark ? QStringConverter::Flag::WriteBom : QStringConverter::Flag::Default);
  return encoder.encode(text);
}

TEST(Decode, FindsEveryEncodingByItsMark) {
  using Of = QStringConverter;
  for (const auto &[converter, encoding] :
       {std::pair{Of::Utf8, Encoding::kUtf8}, std::pair{Of::Utf16LE, Encoding::kUtf16LittleEndian},
        std::pair{Of::Utf16BE, Encoding::kUtf16BigEndian}}) {
    const auto decoded = decode(encoded(kTable, converter, true), std::nullopt);
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->text, kTable);
    EXPECT_EQ(decoded->encoding, encoding);
  }
}

TEST(Decode, FindsUtf16WithoutAMark) {
  for (const auto converter : {QStringConverter::Utf16LE, QStringConverter::Utf16BE}) {
    EXPECT_EQ(decode(encoded(kTable, converter, false), std::nullopt)->text, kTable);
  }
}

TEST(Decode, TakesWhatIsNotUtf8AsLatin1) {
  const auto decoded = decode("M\xfcller", std::nullopt);
  EXPECT_EQ(decoded->text, QStringLiteral("M\u00fcller"));
  EXPECT_EQ(decoded->encoding, Encoding::kLatin1);
}

TEST(Decode, DoesWhatItIsTold) {
  EXPECT_EQ(decode("M\xc3\xbcller", Encoding::kLatin1)->text, QStringLiteral("M\u00c3\u00bcller"));
  EXPECT_FALSE(decode("M\xfcller", Encoding::kUtf8));
  const QByteArray big = encoded(kTable, QStringConverter::Utf16BE, true);
  EXPECT_EQ(decode(big, encodingNamed(QStringLiteral("utf-16")))->text, kTable);
}

TEST(Decode, TakesAnEmptyFile) {
  EXPECT_EQ(decode("", std::nullopt)->text, QString());
}

}  // namespace
}  // namespace corvane::convert
