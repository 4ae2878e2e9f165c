#include "core/line_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Status = LineReader::Status;

std::string nameOf(Status status) {
  return status == Status::kLine ? "line" : status == Status::kTooLong ? "too long" : "end";
}

// "{status}({text})" for every line up to the end.
std::vector<std::string> read(const std::string &bytes) {
  std::istringstream in(bytes);
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
  EXPECT_EQ(reader.next(), Status::kEnd);
  EXPECT_STREQ(reader.text(), "");
  EXPECT_EQ(reader.next(), Status::kEnd);
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
