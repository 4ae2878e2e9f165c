#include "checks/number_form.h"

#include <gtest/gtest.h>

#include "checks/near_names.h"
#include "checks/shown_text.h"

namespace corvane::checks {
namespace {

struct Look {
  std::string field;
  int code;  // 0: nothing wrong
  std::string meant;
};

void PrintTo(const Look &look, std::ostream *out) {
  *out << look.field;
}

int codeOf(const NumberForm &form) {
  return form.code ? static_cast<int>(*form.code) : 0;
}

class Numbers : public testing::TestWithParam<Look> {};

TEST_P(Numbers, AreSeenAsTheyAreRead) {
  const NumberForm form = formOfNumber(GetParam().field);
  EXPECT_EQ(codeOf(form), GetParam().code);
  EXPECT_EQ(form.meant, GetParam().meant);
}

INSTANTIATE_TEST_SUITE_P(
    Forms, Numbers,
    testing::Values(Look{"44.75", 0, ""}, Look{" 30", 0, ""}, Look{"30 ", 0, ""}, Look{"-3", 0, ""},
                    Look{".5", 0, ""}, Look{"5.", 0, ""}, Look{"30 in", 205, "30"},
                    Look{"1'060", 205, "1060"}, Look{"1 060", 205, "1060"},
                    Look{"1\xc2\xa0"
                         "060",
                         205, "1060"},
                    Look{"1'060.5", 205, "1060.5"}, Look{"1234'567", 205, "1234"},
                    Look{"1'06", 205, "1"}, Look{"1.5.2", 205, "1.5"},
                    Look{"\xc2\xa0"
                         "30",
                         206, "30"},
                    Look{"$18.5", 206, "18.5"}, Look{"wide", 206, ""}, Look{"-", 206, ""},
                    Look{"0x1F", 207, "31"}, Look{"1e3", 207, "1000"}, Look{"nan", 207, ""},
                    Look{"-Infinity", 207, ""}, Look{"1e", 205, "1"}));

class Quantities : public testing::TestWithParam<Look> {};

TEST_P(Quantities, AreSeenAsTheyAreRead) {
  const NumberForm form = formOfQuantity(GetParam().field);
  EXPECT_EQ(codeOf(form), GetParam().code);
  EXPECT_EQ(form.meant, GetParam().meant);
}

INSTANTIATE_TEST_SUITE_P(Forms, Quantities,
                         testing::Values(Look{"60", 0, ""}, Look{"60.0", 0, ""},
                                         Look{"60.9", 208, "61"}, Look{"1.060", 205, "1060"},
                                         Look{"1.060.000", 205, "1060000"},
                                         Look{"39.375", 208, "39"}, Look{"1.125", 205, "1125"},
                                         Look{"12.34", 208, "12"}, Look{".5", 208, "1"}));

TEST(NearNames, FindsTheNearest) {
  const std::vector<QString> known = {"Badger Box", "Clearwater Cartons", "LB42"};
  EXPECT_EQ(nearestName("Badger box", known), QString("Badger Box"));
  EXPECT_EQ(nearestName("Bagder Bxo", known), QString("Badger Box"));
  EXPECT_EQ(nearestName("LB24", known), QString("LB42"));
  EXPECT_FALSE(nearestName("Kestrel", known).has_value());
  EXPECT_FALSE(nearestName("Badger Box", {"Badger Box"}).has_value());
}

TEST(NearNames, DistanceCountsEdits) {
  EXPECT_EQ(editDistance("kitten", "sitting", 9), 3);
  EXPECT_EQ(editDistance("ab", "ba", 9), 1);
  EXPECT_EQ(editDistance("", "abc", 9), 3);
  EXPECT_EQ(editDistance("abcdef", "ghijkl", 2), 3);
}

TEST(NearNames, OneLetterThatIsNoDigitAndNoWordOfItsOwn) {
  EXPECT_TRUE(differByOneLetter("Badger Box", "Badger Bax"));
  EXPECT_TRUE(differByOneLetter("Badger Box", "Badger Boxx"));
  EXPECT_FALSE(differByOneLetter("Plant 1", "Plant 2"));
  EXPECT_FALSE(differByOneLetter("Mill A", "Mill B"));
  EXPECT_FALSE(differByOneLetter("AF1", "BF1"));
}

TEST(ShownText, ShowsWhatCannotBeSeen) {
  EXPECT_EQ(shown("a\x1b[31m\r"), "a\xe2\x90\x9b[31m\xe2\x90\x8d");
  EXPECT_EQ(shown("LB42\xc2\xa0"), "LB42\xe2\x8d\xbd");
  EXPECT_EQ(shown("a\xe2\x80\xa8"), "a\xef\xbf\xbd");
  EXPECT_EQ(shown("M\xfcller"), "M\xc3\xbcller");
}

TEST(ShownText, MarksCharactersNotBytes) {
  const MarkedLine marked = markedLine("M\xc3\xbcller,44,75", 8, 5);
  EXPECT_EQ(marked.text, "M\xc3\xbcller,44,75");
  EXPECT_EQ(marked.mark, "       ^~~~~");
}

TEST(ShownText, ShowsALongLineAroundTheMark) {
  const std::string line = std::string(500, 'a') + "X" + std::string(500, 'b');
  const MarkedLine marked = markedLine(line, 500, 1);
  EXPECT_LT(marked.text.size(), 120U);
  EXPECT_EQ(isUtf8(marked.text), true);
  EXPECT_EQ(marked.mark, std::string(41, ' ') + "^");
}

}  // namespace
}  // namespace corvane::checks
