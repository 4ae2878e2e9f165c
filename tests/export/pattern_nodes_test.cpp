#include "export/pattern_nodes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/model_fixture.h"

namespace corvane {
namespace {

using support::addPattern;
using support::Mill;
using testing::HasSubstr;
using testing::Not;

class PatternNodes : public support::ModelTest {
 protected:
  std::string patterns(Mill &mill) {
    return write(mill,
                 [](const ModelData &data, ImportFile &file) { writePatternNodes(data, file); });
  }

  // One cutter Fine W1 of width 100, and the periods that have orders.
  std::string patternsOver(int periods) {
    std::string orders;
    for (int period = 1; period <= periods; ++period) {
      orders += std::to_string(period) + ",Fine,30,1,Acme\n";
    }
    Mill mill("N,W1,Fine,100,1,1,1\n", orders);
    return patterns(mill);
  }
};

TEST_F(PatternNodes, OfAPatternAreItsProcessDeckleYieldsWasteAndArcs) {
  addPattern(sets_.add("Fine", 100), {30, 30, 25.5});
  EXPECT_EQ(patternsOver(2),
            "addnode <type> \"Process\" <name> \"Fine_Pattern_0_W1_100\" <x> 420 <y> 0 <period> "
            "\"1\"\n"
            "addattach <node> \"Fine_Pattern_0_W1_100\" <commodity> \"Deckle100\" <in> True "
            "<quantity> -1\n"
            "addattach <node> \"Fine_Pattern_0_W1_100\" <commodity> \"DemandWidth30\" <in> False "
            "<quantity> 2\n"
            "addattach <node> \"Fine_Pattern_0_W1_100\" <commodity> \"DemandWidth25.5\" <in> "
            "False <quantity> 1\n"
            "addattach <node> \"Fine_Pattern_0_W1_100\" <commodity> \"Waste\" <in> False "
            "<quantity> 14.5\n"
            "addarc <commodity> \"Deckle100\" <from> \"Fine_W1_100\" <to> "
            "\"Fine_Pattern_0_W1_100\" <flow> 0 <fixed> False <opportunity> 0 <cost> 10 <min> 0 "
            "<max> +infinity <period> \"1\"\n"
            "addarc <commodity> \"Deckle100\" <from> \"Fine_W1_100\" <to> "
            "\"Fine_Pattern_0_W1_100\" <flow> 0 <fixed> False <opportunity> 0 <cost> 10 <min> 0 "
            "<max> +infinity <period> \"2\"\n");
}

TEST_F(PatternNodes, OfAPatternOf30And30And45YieldTwiceThe30AndOnceThe45) {
  addPattern(sets_.add("Fine", 120), {30, 30, 45});
  Mill mill("N,W1,Fine,120,1,1,1\n", "1,Fine,30,1,Acme\n");
  const std::string text = patterns(mill);
  EXPECT_THAT(text, HasSubstr("\"DemandWidth30\" <in> False <quantity> 2\n"
                              "addattach <node> \"Fine_Pattern_0_W1_120\" <commodity> "
                              "\"DemandWidth45\" <in> False <quantity> 1\n"));
}

TEST_F(PatternNodes, WriteOneYieldForEachRunOfEqualNeighbours) {
  addPattern(sets_.add("Fine", 100), {30, 20, 30});
  const std::string yield = "addattach <node> \"Fine_Pattern_0_W1_100\" <commodity> ";
  EXPECT_THAT(patternsOver(1), HasSubstr(yield + "\"DemandWidth30\" <in> False <quantity> 1\n" +
                                         yield + "\"DemandWidth20\" <in> False <quantity> 1\n" +
                                         yield + "\"DemandWidth30\" <in> False <quantity> 1\n"));
}

TEST_F(PatternNodes, OfAPatternWithoutWidthsYieldNoneOfWidthZero) {
  addPattern(sets_.add("Fine", 100), {});
  settings_.patternsOnly = true;
  EXPECT_EQ(patternsOver(1),
            "addnode <type> \"Process\" <name> \"Fine_Pattern_0_W1_100\" <x> 420 <y> 0 <period> "
            "\"1\"\n"
            "addattach <node> \"Fine_Pattern_0_W1_100\" <commodity> \"Deckle100\" <in> True "
            "<quantity> -1\n"
            "addattach <node> \"Fine_Pattern_0_W1_100\" <commodity> \"DemandWidth0\" <in> False "
            "<quantity> 0\n"
            "addattach <node> \"Fine_Pattern_0_W1_100\" <commodity> \"Waste\" <in> False "
            "<quantity> 100\n");
}

// The run starts at width 0, so that no line stands for it before the first other width.
TEST_F(PatternNodes, PassOverAWidthOfZeroBeforeAnotherWidth) {
  addPattern(sets_.add("Fine", 100), {0, 0, 30});
  EXPECT_THAT(patternsOver(1), Not(HasSubstr("\"DemandWidth0\"")));
}

TEST_F(PatternNodes, CountTheWidthsOfZeroThatStandAlone) {
  addPattern(sets_.add("Fine", 100), {0, 0});
  EXPECT_THAT(patternsOver(1), HasSubstr("\"DemandWidth0\" <in> False <quantity> 2\n"));
}

TEST_F(PatternNodes, WriteAWasteBelowTheToleranceAsZero) {
  Pattern *pattern = addPattern(sets_.add("Fine", 100), {30});
  pattern->trim = 5e-9;
  EXPECT_THAT(patternsOver(1), HasSubstr("\"Waste\" <in> False <quantity> 0\n"));
  pattern->trim = -12;
  EXPECT_THAT(patternsOver(1), HasSubstr("\"Waste\" <in> False <quantity> 0\n"));
  pattern->trim = 1e-8;
  EXPECT_THAT(patternsOver(1), HasSubstr("\"Waste\" <in> False <quantity> 1e-08\n"));
}

TEST_F(PatternNodes, WithPatternsOnlyHaveNeitherBatchNodesNorArcs) {
  addPattern(sets_.add("Fine", 100), {30, 30});
  settings_.batch = true;
  settings_.patternsOnly = true;
  EXPECT_EQ(patternsOver(2),
            "addnode <type> \"Process\" <name> \"Fine_Pattern_0_W1_100\" <x> 420 <y> 0 <period> "
            "\"1\"\n"
            "addattach <node> \"Fine_Pattern_0_W1_100\" <commodity> \"Deckle100\" <in> True "
            "<quantity> -1\n"
            "addattach <node> \"Fine_Pattern_0_W1_100\" <commodity> \"DemandWidth30\" <in> False "
            "<quantity> 2\n"
            "addattach <node> \"Fine_Pattern_0_W1_100\" <commodity> \"Waste\" <in> False "
            "<quantity> 40\n");
}

TEST_F(PatternNodes, WithBatchHaveABatchNodeInEveryPeriodAndOneArcFromIt) {
  addPattern(sets_.add("Fine", 100), {30, 30});
  settings_.batch = true;
  const auto batchNode = [](const std::string &period) {
    return "addnode <type> \"Batch\" <name> \"Fine_Batch_0_W1_100\" <singlePeriodSetups> True <x> "
           "420 <y> 0 <flow> 0 <fixed> False <minrunlength> 0 <batchsize> 1 <setup> 0 <period> \"" +
           period + "\"\n";
  };
  const auto arc = [](const std::string &period) {
    return "addarc <commodity> \"Deckle100\" <from> \"Fine_W1_100\" <to> \"Fine_Batch_0_W1_100\" "
           "<flow> 0 <fixed> False <opportunity> 0 <cost> 10 <min> 0 <max> +infinity <period> \"" +
           period + "\"\n";
  };
  EXPECT_EQ(patternsOver(3),
            batchNode("1") + batchNode("2") + batchNode("3") +
                "addattach <node> \"Fine_Batch_0_W1_100\" <commodity> \"Deckle100\" <in> True\n"
                "addattach <node> \"Fine_Batch_0_W1_100\" <commodity> \"Deckle100\" <in> False\n"
                "addnode <type> \"Process\" <name> \"Fine_Pattern_0_W1_100\" <x> 710 <y> 0 "
                "<period> \"1\"\n"
                "addattach <node> \"Fine_Pattern_0_W1_100\" <commodity> \"Deckle100\" <in> True "
                "<quantity> -1\n"
                "addattach <node> \"Fine_Pattern_0_W1_100\" <commodity> \"DemandWidth30\" <in> "
                "False <quantity> 2\n"
                "addattach <node> \"Fine_Pattern_0_W1_100\" <commodity> \"Waste\" <in> False "
                "<quantity> 40\n" +
                arc("1") + arc("2") + arc("3") +
                "addarc <commodity> \"Deckle100\" <from> \"Fine_Batch_0_W1_100\" <to> "
                "\"Fine_Pattern_0_W1_100\" <flow> 0 <fixed> False <opportunity> 0 <cost> 0 <min> "
                "0 <max> +infinity <period> \"1\"\n");
}

TEST_F(PatternNodes, OfTwoCuttersOfOneSetStandUnderTheNameOfEach) {
  PatternCompPattern &set = sets_.add("Fine", 100);
  addPattern(set, {30});
  addPattern(set, {30, 30});
  Mill mill("N,W1,Fine,100,1,1,1\nN,W2,Fine,100,1,1,1\n", "1,Fine,30,1,Acme\n");
  const std::string text = patterns(mill);
  // The index starts anew for each cutter, the row goes on.
  EXPECT_THAT(text, HasSubstr("<name> \"Fine_Pattern_0_W1_100\" <x> 420 <y> 0 "));
  EXPECT_THAT(text, HasSubstr("<name> \"Fine_Pattern_1_W1_100\" <x> 420 <y> 20 "));
  EXPECT_THAT(text, HasSubstr("<name> \"Fine_Pattern_0_W2_100\" <x> 420 <y> 40 "));
  EXPECT_THAT(text, HasSubstr("<name> \"Fine_Pattern_1_W2_100\" <x> 420 <y> 60 "));
}

TEST_F(PatternNodes, OfACutterOfAnUnplannedGradeAreNotWritten) {
  addPattern(sets_.add("Fine", 100), {30});
  EXPECT_EQ(patternsOver(0), "");
}

TEST_F(PatternNodes, OfACutterWithoutASetAreNotWritten) {
  addPattern(sets_.add("Fine", 99), {30});
  EXPECT_EQ(patternsOver(1), "");
}

}  // namespace
}  // namespace corvane
