#include "core/line_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>

#include "support/temporary_folder.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Status = LineReader::Status;

std::string nameOf(Status status) {
  return status == Status::kLine ? "line" : status == Status::kTooLong ? "too long" : "end";
}

// "{status}({text})" for every line up to the end.
std::vector<std::string> read(std::istream &in) {
  LineReader reader(in);
  std::vector<std::string> lines;
  Status status;
  do {
    status = reader.next();
    lines.push_back(nameOf(status) + "(" + reader.text() + ")");
    EXPECT_EQ(reader.number(), static_cast<qint64>(lines.size()));
  } while (status != Status::kEnd);
  return lines;
}

std::vector<std::string> read(const std::string &bytes) {
  std::istringstream in(bytes);
  return read(in);
}

std::string xs(std::size_t count) {
  return std::string(count, 'x');
}

TEST(LineReader, EveryLineThatEndsWithALineBreakCounts) {
  EXPECT_THAT(read("a\nbc\n"), ElementsAre("line(a)", "line(bc)", "end()"));
}

TEST(LineReader, ALastLineWithoutALineBreakComesWithTheEnd) {
  EXPECT_THAT(read("a\nbc"), ElementsAre("line(a)", "end(bc)"));
  EXPECT_THAT(read("bc"), ElementsAre("end(bc)"));
}

TEST(LineReader, AnEmptyFileIsAtItsEnd) {
  EXPECT_THAT(read(""), ElementsAre("end()"));
}

TEST(LineReader, EmptyLinesAreLines) {
  EXPECT_THAT(read("\n\na\n"), ElementsAre("line()", "line()", "line(a)", "end()"));
}

TEST(LineReader, OneCarriageReturnRightBeforeTheLineBreakIsDropped) {
  EXPECT_THAT(read("a\r\n\r\nb\r\r\nc\rd\n"),
              ElementsAre("line(a)", "line()", "line(b\r)", "line(c\rd)", "end()"));
}

TEST(LineReader, ACarriageReturnBeforeTheEndOfTheFileStays) {
  EXPECT_THAT(read("a\r"), ElementsAre("end(a\r)"));
}

TEST(LineReader, ANulByteEndsTheTextOfItsLine) {
  EXPECT_THAT(read(std::string("ab\0cd\nef\n", 9)), ElementsAre("line(ab)", "line(ef)", "end()"));
  EXPECT_THAT(read(std::string("\0cd\r\n", 5)), ElementsAre("line()", "end()"));
  EXPECT_THAT(read(std::string("ab\0cd", 5)), ElementsAre("end(ab)"));
}

TEST(LineReader, ALineOf1022CharactersIsALine) {
  EXPECT_THAT(read(xs(1022) + "\na\n"), ElementsAre("line(" + xs(1022) + ")", "line(a)", "end()"));
}

TEST(LineReader, ALineOf1023CharactersIsALine) {
  EXPECT_THAT(read(xs(1023) + "\na\n"), ElementsAre("line(" + xs(1023) + ")", "line(a)", "end()"));
  EXPECT_THAT(read(xs(1023) + "\r\na\n"),
              ElementsAre("line(" + xs(1023) + ")", "line(a)", "end()"));
}

TEST(LineReader, ALineOf1024CharactersIsTooLongAndSkipped) {
  EXPECT_THAT(read(xs(1024) + "\na\n"), ElementsAre("too long()", "line(a)", "end()"));
  EXPECT_THAT(read(xs(1024) + "\r\na\n"), ElementsAre("too long()", "line(a)", "end()"));
  EXPECT_THAT(read(xs(1025) + "\na\n"), ElementsAre("too long()", "line(a)", "end()"));
  EXPECT_THAT(read(xs(1026) + "\na\n"), ElementsAre("too long()", "line(a)", "end()"));
}

TEST(LineReader, ALineOfAMillionCharactersIsTooLongAndSkipped) {
  EXPECT_THAT(read("a\n" + xs(1000000) + "\nb\n"),
              ElementsAre("line(a)", "too long()", "line(b)", "end()"));
}

TEST(LineReader, BytesBehindANulByteCountForTheLength) {
  EXPECT_THAT(read("a" + std::string(1023, '\0') + "\nb\n"),
              ElementsAre("too long()", "line(b)", "end()"));
}

TEST(LineReader, ALongLineWithoutALineBreakIsTheEndAndLeavesNoText) {
  EXPECT_THAT(read(xs(1023)), ElementsAre("end(" + xs(1023) + ")"));
  EXPECT_THAT(read(xs(1024)), ElementsAre("end()"));
  EXPECT_THAT(read(xs(1025)), ElementsAre("end()"));
  EXPECT_THAT(read(xs(1000000)), ElementsAre("end()"));
}

TEST(LineReader, LongLinesInARowAreSkippedOneByOne) {
  EXPECT_THAT(read(xs(2000) + "\n" + xs(3000) + "\nb\n"),
              ElementsAre("too long()", "too long()", "line(b)", "end()"));
}

// Lines of all lengths, so that blocks of the file end at every place in a line.
TEST(LineReader, LinesAreReadAcrossTheBlocksOfTheFile) {
  for (const char *lineEnd : {"\n", "\r\n"}) {
    std::string bytes;
    std::vector<std::string> expected;
    for (std::size_t length = 0; length < 1500; ++length) {
      std::string text = std::to_string(length) + xs(length);
      text.resize(length);
      bytes += text;
      bytes += lineEnd;
      expected.push_back(length <= LineReader::kMaxLength ? "line(" + text + ")" : "too long()");
    }
    bytes += "rest";
    expected.emplace_back("end(rest)");
    for (std::size_t offset = 0; offset < 40; ++offset) {
      std::vector<std::string> all = expected;
      all.insert(all.begin(), "line(" + xs(offset) + ")");
      ASSERT_EQ(read(xs(offset) + "\n" + bytes), all) << offset;
    }
  }
}

// A line break or a carriage return as the first or the last byte of a block.
TEST(LineReader, LineEndsAreFoundAtTheEndsOfABlock) {
  for (std::size_t before = 16000; before < 17000; ++before) {
    std::string bytes;
    for (; bytes.size() + 1000 < before;) {
      bytes += xs(999) + "\n";
    }
    bytes += xs(before - bytes.size() - 1) + "\n";
    ASSERT_EQ(bytes.size(), before);
    const std::vector<std::string> lines = read(bytes + "a\r\n\nb");
    ASSERT_GT(lines.size(), 3U);
    ASSERT_THAT(std::vector<std::string>(lines.end() - 3, lines.end()),
                ElementsAre("line(a)", "line()", "end(b)"))
        << before;
  }
}

// Hands out its bytes in pieces of any size, as a file stream does with those of a block.
class PieceBuffer : public std::streambuf {
 public:
  PieceBuffer(std::string bytes, std::size_t piece) : bytes_(std::move(bytes)), piece_(piece) {}

 protected:
  int_type underflow() override {
    const std::size_t size = std::min(piece_, bytes_.size() - at_);
    char *begin = bytes_.data() + at_;
    setg(begin, begin, begin + size);
    at_ += size;
    return size == 0 ? traits_type::eof() : traits_type::to_int_type(*begin);
  }

 private:
  std::string bytes_;
  std::size_t piece_;
  std::size_t at_ = 0;
};

TEST(LineReader, AStreamMayDeliverItsBytesInPieces) {
  for (const std::size_t piece : {1U, 2U, 3U, 1000U, 1023U, 1024U, 1025U, 1026U, 8191U}) {
    PieceBuffer buffer("a\r\n" + xs(1023) + "\r\n\n" + xs(1024) + "\nb\n" + xs(5000) + "\nrest",
                       piece);
    std::istream in(&buffer);
    EXPECT_THAT(read(in), ElementsAre("line(a)", "line(" + xs(1023) + ")", "line()", "too long()",
                                      "line(b)", "too long()", "end(rest)"))
        << piece;
  }
}

constexpr char kMark[] = "\xEF\xBB\xBF";

TEST(LineReader, AByteOrderMarkAtTheVeryStartIsDropped) {
  EXPECT_THAT(read(kMark + std::string("a\nb\n")), ElementsAre("line(a)", "line(b)", "end()"));
  EXPECT_THAT(read(kMark + std::string("\n")), ElementsAre("line()", "end()"));
  EXPECT_THAT(read(kMark), ElementsAre("end()"));
  EXPECT_THAT(read(kMark + xs(1023) + "\n"), ElementsAre("line(" + xs(1023) + ")", "end()"));
}

TEST(LineReader, AByteOrderMarkAnywhereElseIsText) {
  const std::string mark = kMark;
  EXPECT_THAT(read(mark + mark + "a\n"), ElementsAre("line(" + mark + "a)", "end()"));
  EXPECT_THAT(read("\n" + mark + "a," + mark + "b\n"),
              ElementsAre("line()", "line(" + mark + "a," + mark + "b)", "end()"));
}

TEST(LineReader, APartOfAByteOrderMarkIsText) {
  EXPECT_THAT(read("\xEF\xBB\n"), ElementsAre("line(\xEF\xBB)", "end()"));
  EXPECT_THAT(read("\xEF"), ElementsAre("end(\xEF)"));
}

TEST(LineReader, AByteOrderMarkMayComeInPieces) {
  for (const std::size_t piece : {1U, 2U, 3U, 4U}) {
    PieceBuffer buffer(kMark + std::string("a\nb\n"), piece);
    std::istream in(&buffer);
    EXPECT_THAT(read(in), ElementsAre("line(a)", "line(b)", "end()")) << piece;
  }
}

// As a log does that is its own input: each line read would add another.
TEST(LineReader, AFileThatGrowsEndsWhereItEndedAtTheStart) {
  const support::TemporaryFolder folder;
  const std::string name = folder.write("growing", "a\nb\nrest");
  std::ifstream in(name);
  LineReader reader(in);
  std::ofstream(name, std::ios::app) << " and more\nc\n";
  EXPECT_EQ(reader.next(), Status::kLine);
  EXPECT_EQ(reader.next(), Status::kLine);
  EXPECT_EQ(reader.next(), Status::kEnd);
  EXPECT_STREQ(reader.text(), "rest");
  EXPECT_FALSE(reader.failed());
}

TEST(LineReader, TheEndStaysTheEndWithoutText) {
  std::istringstream in("rest");
  LineReader reader(in);
  EXPECT_EQ(reader.next(), Status::kEnd);
  EXPECT_STREQ(reader.text(), "rest");
  EXPECT_EQ(reader.next(), Status::kEnd);
  EXPECT_STREQ(reader.text(), "");
}

// Delivers some bytes and then fails, as a broken device does.
class BrokenBuffer : public std::streambuf {
 public:
  explicit BrokenBuffer(std::string bytes) : bytes_(std::move(bytes)) {
    setg(bytes_.data(), bytes_.data(), bytes_.data() + bytes_.size());
  }

 protected:
  int_type underflow() override { throw std::ios_base::failure("broken"); }

 private:
  std::string bytes_;
};

TEST(LineReader, AReadErrorEndsTheFileAndLeavesNoText) {
  BrokenBuffer buffer("a\nbc");
  std::istream in(&buffer);
  LineReader reader(in);
  EXPECT_EQ(reader.next(), Status::kLine);
  EXPECT_FALSE(reader.failed());
  EXPECT_EQ(reader.next(), Status::kEnd);
  EXPECT_STREQ(reader.text(), "");
  EXPECT_TRUE(reader.failed());
  EXPECT_EQ(reader.next(), Status::kEnd);
}

TEST(LineReader, AReadErrorCostsNoLineBeforeIt) {
  std::string bytes;
  for (int line = 0; line < 20000; ++line) {
    bytes += "a\n";
  }
  BrokenBuffer buffer(bytes + "bc");
  std::istream in(&buffer);
  const std::vector<std::string> lines = read(in);
  EXPECT_EQ(lines.size(), 20001U);
  EXPECT_EQ(lines[19999], "line(a)");
  EXPECT_EQ(lines.back(), "end()");
}

TEST(LineReader, AReadErrorInALongLineEndsTheFile) {
  BrokenBuffer buffer(xs(5000));
  std::istream in(&buffer);
  LineReader reader(in);
  EXPECT_EQ(reader.next(), Status::kEnd);
  EXPECT_STREQ(reader.text(), "");
}

std::vector<std::string> split(std::string line, char delimiter = ',') {
  FieldSplitter fields(line.data(), delimiter);
  std::vector<std::string> all;
  while (const auto field = fields.next()) {
    EXPECT_EQ(field->data()[field->size()], '\0');
    all.emplace_back(*field);
  }
  EXPECT_FALSE(fields.next());
  return all;
}

TEST(FieldSplitter, FieldsStandBetweenDelimiters) {
  EXPECT_THAT(split("a,b c, d "), ElementsAre("a", "b c", " d "));
}

TEST(FieldSplitter, RunsOfDelimitersCountAsOneSoThatNoFieldIsEmpty) {
  EXPECT_THAT(split(",,a,,,b,"), ElementsAre("a", "b"));
  EXPECT_THAT(split(",,,"), IsEmpty());
  EXPECT_THAT(split(""), IsEmpty());
}

TEST(FieldSplitter, QuotesMeanNothing) {
  EXPECT_THAT(split("\"a,b\",c"), ElementsAre("\"a", "b\"", "c"));
}

TEST(FieldSplitter, TakesAnyDelimiter) {
  EXPECT_THAT(split("=key=a,b=rest", '='), ElementsAre("key", "a,b", "rest"));
}

TEST(LineReader, TheWarningOfALongLineNamesLineAndFile) {
  EXPECT_EQ(tooLongWarning(7, "data\\machines.data"),
            "Warning: Line 7 of data\\machines.data is too long.");
}

}  // namespace
}  // namespace corvane
