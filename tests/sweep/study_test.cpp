#include "sweep/study.h"

#include <gmock/gmock.h>

#include "study_folder.h"

namespace corvane::sweep {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class ReadStudy : public StudyTest {
 protected:
  StudyReading read(const char *text) { return readStudy(QString::fromUtf8(text), folder_.path()); }
};

TEST_F(ReadStudy, TakesRangesListsPercentagesAndFiles) {
  write("more.data", "x\n");
  const auto [study, faults] = read(
      "# a study\nmill = mill\nseed = 3..5, 9\noccur min = 2, 50\nfreight = -10%, 0 %,+2.5 %\n"
      "order file = as it is, more.data\nplan options = --storage inf\n");
  EXPECT_THAT(faults, ElementsAre());
  EXPECT_EQ(study.mill, path("mill"));
  EXPECT_EQ(study.planOptions, (QStringList{"--storage", "inf"}));
  ASSERT_EQ(study.variations.size(), 4U);
  EXPECT_EQ(study.variations[0].key, QStringLiteral("rand num gen seed"));
  EXPECT_EQ(study.variations[0].values, (QStringList{"3", "4", "5", "9"}));
  EXPECT_EQ(study.variations[2].values, (QStringList{"-10%", "+0%", "+2.5%"}));
  EXPECT_EQ(study.variations[3].values, (QStringList{"as it is", path("more.data")}));
}

TEST_F(ReadStudy, FreightMayCostNothing) {
  const auto [study, faults] = read("freight = -100%\n");
  EXPECT_THAT(faults, ElementsAre());
  EXPECT_EQ(study.variations[0].values, QStringList("-100%"));
}

TEST_F(ReadStudy, TakesTheStudysFolderForTheMill) {
  EXPECT_EQ(read("seed = 1\n").study.mill, folder_.path());
}

TEST_F(ReadStudy, NamesTheLineOfEveryFault) {
  const auto [study, faults] = read(
      "mill = nowhere\nnothing\nocur min = 1\nseed = 1,,2\nseed = 1..\nseed = 9..3\nfreight = x\n"
      "freight = -101%\norder file = none.data\noutput = a\nsolver = Dual, Dual\nbatch = True\n"
      "batch = False\n");
  std::vector<std::string> words;
  for (const QString &fault : faults) {
    words.push_back(fault.toStdString());
  }
  EXPECT_THAT(
      words,
      ElementsAre(HasSubstr("line 1: mill: there is no folder"), HasSubstr("line 2: no \"=\""),
                  "line 3: ocur min: there is no such parameter", HasSubstr("line 4: seed: \"\""),
                  HasSubstr("line 5: seed: \"1..\" is no value"),
                  HasSubstr("line 6: seed: \"9..3\" is no value"),
                  HasSubstr("line 7: freight: \"x\""), HasSubstr("line 8: freight: \"-101%\""),
                  HasSubstr("line 9: order file: there is no file"),
                  HasSubstr("line 10: output: every run has its own"),
                  HasSubstr("line 11: solver: a value stands there twice"),
                  HasSubstr("line 13: batch: this key stands there twice")));
}

}  // namespace
}  // namespace corvane::sweep
