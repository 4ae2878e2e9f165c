#include "export/import_file.h"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>
#include <streambuf>

namespace corvane {
namespace {

std::string lineOf(const auto &...parts) {
  std::ostringstream out;
  ImportFile file(out);
  file.line(parts...);
  return out.str();
}

TEST(ImportFile, WritesTextsAndIntegersPlainly) {
  EXPECT_EQ(lineOf("a ", std::string("b "), -7, " ", 4294967295U), "a b -7 4294967295\n");
}

TEST(ImportFile, WritesNumbersWithSixSignificantDigitsAndNoTrailingZeros) {
  EXPECT_EQ(lineOf(100.0), "100\n");
  EXPECT_EQ(lineOf(62.5), "62.5\n");
  EXPECT_EQ(lineOf(101.25), "101.25\n");
  EXPECT_EQ(lineOf(1234.5678), "1234.57\n");
  EXPECT_EQ(lineOf(999999.4), "999999\n");
  EXPECT_EQ(lineOf(1000000.0), "1e+06\n");
  EXPECT_EQ(lineOf(0.00001), "1e-05\n");
  EXPECT_EQ(lineOf(-0.0), "-0\n");
  EXPECT_EQ(lineOf(std::numeric_limits<double>::infinity()), "inf\n");
}

TEST(ImportFile, StartsEveryLineAnew) {
  std::ostringstream out;
  ImportFile file(out);
  file.line("first ", 1);
  file.line();
  file.line("second");
  EXPECT_EQ(out.str(), "first 1\n\nsecond\n");
}

// Counts what a stream is asked for.
class CountingBuffer : public std::streambuf {
 public:
  int writes = 0;
  int flushes = 0;

 protected:
  std::streamsize xsputn(const char * /*text*/, std::streamsize count) override {
    ++writes;
    return count;
  }
  int_type overflow(int_type character) override {
    ++writes;
    return character;
  }
  int sync() override {
    ++flushes;
    return 0;
  }
};

TEST(ImportFile, WritesEachLineInOnePieceAndFlushesIt) {
  CountingBuffer buffer;
  std::ostream out(&buffer);
  ImportFile file(out);
  file.line("addnode ", 1, " ", 2.5);
  EXPECT_EQ(buffer.writes, 1);
  EXPECT_EQ(buffer.flushes, 1);
  file.line("addnode");
  EXPECT_EQ(buffer.writes, 2);
  EXPECT_EQ(buffer.flushes, 2);
}

TEST(ImportFile, TakesNothingMoreAfterAWriteFault) {
  std::ostringstream out;
  ImportFile file(out);
  file.line("first");
  out.setstate(std::ios::badbit);
  file.line("second");
  EXPECT_EQ(out.str(), "first\n");
}

}  // namespace
}  // namespace corvane
