#include "export/waste_nodes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "export/storage_nodes.h"
#include "support/model_fixture.h"

namespace corvane {
namespace {

using support::addPattern;
using support::Mill;
using testing::HasSubstr;
using testing::Not;

class WasteNodes : public support::ModelTest {
 protected:
  std::string wasteOf(const QString &grade, quint32 &row) {
    Mill mill("N,W1,Fine,100,1,1,0.25\n", "1,Fine,30,1,Acme\n2,Fine,30,1,Acme\n");
    return write(mill, [&](const ModelData &data, ImportFile &file) {
      writeWasteDemandNode(data, file, grade, row);
    });
  }

  // The arcs of the cutter Fine W1 over some periods.
  std::string arcsOver(int periods) {
    std::string orders;
    for (int period = 1; period <= periods; ++period) {
      orders += std::to_string(period) + ",Fine,30,1,Acme\n";
    }
    Mill mill("N,W1,Fine,100,1,1,0.25\n", orders);
    return write(mill, [](const ModelData &data, ImportFile &file) {
      writeCutterArcs(data, file, *data.planning.cuttersOf("Fine").front());
    });
  }
};

TEST_F(WasteNodes, StandInTheFirstPeriodAndTakeAStorageRow) {
  quint32 row = 3;
  EXPECT_EQ(wasteOf("Fine", row),
            "addnode <type> \"Demand\" <name> \"Fine_Waste\" <x> 710 <y> 240 <amount> 0 <fixed> "
            "False <period> \"1\"\n"
            "addattach <node> \"Fine_Waste\" <commodity> \"Waste\" <in> True\n");
  EXPECT_EQ(row, 4U);
}

TEST_F(WasteNodes, StandFurtherRightWithBatch) {
  settings_.batch = true;
  quint32 row = 0;
  EXPECT_THAT(wasteOf("Fine", row), HasSubstr("<x> 1000 <y> 0 "));
}

TEST_F(WasteNodes, OfTwoGradesStandInTheTwoRowsAfterTheStorageNodes) {
  Mill mill("N,W1,Fine,100,1,1,1\nN,W2,Board,100,1,1,1\nN,W3,Fine,100,1,1,1\n",
            "1,Fine,30,1,A\n1,Board,40,1,A\n");
  const std::string text =
      write(mill, [](const ModelData &data, ImportFile &file) { writeStorageDemand(data, file); });
  EXPECT_THAT(text, HasSubstr("\"Board_Waste\" <x> 710 <y> 240 "));
  EXPECT_THAT(text, HasSubstr("\"Fine_Waste\" <x> 710 <y> 320 "));
}

TEST_F(WasteNodes, OfAPatternOf30And30And45HaveTwoWidthArcsAndAWasteArcInEveryPeriod) {
  addPattern(sets_.add("Fine", 100), {30, 30, 45});
  const auto wasteArc = [](const std::string &period) {
    return "addarc <commodity> \"Waste\" <from> \"Fine_Pattern_0_W1_100\" <to> \"Fine_Waste\" "
           "<flow> 0 <fixed> False <opportunity> 0 <cost> 0.25 <min> 0 <max> +infinity <period> "
           "\"" +
           period + "\"\n";
  };
  EXPECT_EQ(arcsOver(3),
            "addarc <commodity> \"DemandWidth30\" <from> \"Fine_Pattern_0_W1_100\" <to> "
            "\"Fine_W1_30.000\" <flow> 0 <fixed> False <opportunity> 0 <cost> 0 <min> 0 <max> "
            "+infinity <period> \"1\"\n"
            "addarc <commodity> \"DemandWidth45\" <from> \"Fine_Pattern_0_W1_100\" <to> "
            "\"Fine_W1_45.000\" <flow> 0 <fixed> False <opportunity> 0 <cost> 0 <min> 0 <max> "
            "+infinity <period> \"1\"\n" +
                wasteArc("1") + wasteArc("2") + wasteArc("3"));
}

TEST_F(WasteNodes, SkipAWidthOfZeroAtTheStartOfAPattern) {
  addPattern(sets_.add("Fine", 100), {0, 30});
  const std::string text = arcsOver(1);
  EXPECT_THAT(text, Not(HasSubstr("\"DemandWidth0\"")));
  EXPECT_THAT(text, HasSubstr("\"DemandWidth30\""));
}

TEST_F(WasteNodes, StartEveryPatternWithoutAWidthBefore) {
  PatternCompPattern &set = sets_.add("Fine", 100);
  addPattern(set, {30});
  addPattern(set, {30, 30});
  const std::string text = arcsOver(1);
  EXPECT_THAT(text, HasSubstr("<from> \"Fine_Pattern_0_W1_100\" <to> \"Fine_W1_30.000\""));
  EXPECT_THAT(text, HasSubstr("<from> \"Fine_Pattern_1_W1_100\" <to> \"Fine_W1_30.000\""));
}

TEST_F(WasteNodes, OfACutterWithoutASetHaveNoArcs) {
  EXPECT_EQ(arcsOver(1), "");
}

}  // namespace
}  // namespace corvane
