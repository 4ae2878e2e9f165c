#include "export/model_data.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/text.h"
#include "support/mill.h"

namespace corvane {
namespace {

using support::Mill;
using testing::ElementsAre;

class ModelDataOfAMill : public testing::Test {
 protected:
  Mill mill_{"N,W1,Fine,100,1,1,1\nN,W1,Bond,100,1,1,1\nS,W2,Fine,80,1,1,1\n",
             "2,Fine,60,3,Acme\n1,Fine,40,3,Acme\n1,Fine,60,9,Brown\n"};
  PatternSets sets_;
  ExportSettings settings_;
};

TEST_F(ModelDataOfAMill, QuotesThePeriodsInTheirOrder) {
  const ModelData data(mill_.data(), sets_, settings_);
  EXPECT_THAT(data.periods, ElementsAre("\"2\"", "\"1\""));
}

TEST_F(ModelDataOfAMill, FindsTheFirstSetOfGradeAndExactWidth) {
  const PatternCompPattern &first = sets_.add("Fine", 100);
  sets_.add("Fine", 100);
  sets_.add("Bond", 80);
  const ModelData data(mill_.data(), sets_, settings_);
  Cutter cutter;
  cutter.grade = "Fine";
  cutter.width = 100;
  EXPECT_EQ(data.patternSetOf(cutter), &first);
  cutter.width = 100 + 1e-9;
  EXPECT_EQ(data.patternSetOf(cutter), nullptr);
  cutter.width = 80;
  EXPECT_EQ(data.patternSetOf(cutter), nullptr);
}

TEST_F(ModelDataOfAMill, VisitsCuttersOfPlannedGradesOnly) {
  const ModelData data(mill_.data(), sets_, settings_);
  std::vector<std::string> visited;
  forEachPlannedCutter(
      data, [&](const Cutter &cutter) { visited.push_back(utf8(cutter.name + cutter.grade)); });
  EXPECT_THAT(visited, ElementsAre("W1Fine", "W2Fine"));
}

}  // namespace
}  // namespace corvane
