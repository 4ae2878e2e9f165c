#include "core/text.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(Text, BytesAreUtf8) {
  EXPECT_EQ(textFromBytes("plain"), QStringLiteral("plain"));
  EXPECT_EQ(textFromBytes("\xC3\xA9"), QStringLiteral("\u00e9"));
  EXPECT_EQ(utf8(textFromBytes("\xF0\x9F\x98\x80")), "\xF0\x9F\x98\x80");
  EXPECT_EQ(textFromBytes(""), QString());
}

TEST(Text, BytesThatAreNotUtf8AreLatin1SoThatNoCharacterIsLost) {
  EXPECT_EQ(textFromBytes("caf\xE9"), QStringLiteral("caf\u00e9"));
  EXPECT_EQ(textFromBytes("\xC3"), QStringLiteral("\u00c3"));
  EXPECT_EQ(textFromBytes("\xC0\x80"), QStringLiteral("\u00c0\u0080"));
  EXPECT_EQ(textFromBytes("\xED\xA0\x80"), QStringLiteral("\u00ed\u00a0\u0080"));
  EXPECT_EQ(utf8(textFromBytes("caf\xE9")), "caf\xC3\xA9");
}

TEST(Text, EveryByteAloneIsOneCharacter) {
  for (int byte = 1; byte < 256; ++byte) {
    const char bytes[] = {static_cast<char>(byte)};
    const QString text = textFromBytes({bytes, 1});
    ASSERT_EQ(text.size(), 1) << byte;
    EXPECT_EQ(text[0].unicode(), byte);
  }
}

TEST(Text, AByteOrderMarkIsACharacterLikeAnyOther) {
  EXPECT_EQ(textFromBytes("\xEF\xBB\xBFMill"), QStringLiteral("\ufeffMill"));
  EXPECT_EQ(textFromBytes("\xEF\xBB\xBF\xEF\xBB\xBF"), QStringLiteral("\ufeff\ufeff"));
  EXPECT_EQ(utf8(textFromBytes("a\xEF\xBB\xBF")), "a\xEF\xBB\xBF");
}

}  // namespace
}  // namespace corvane
