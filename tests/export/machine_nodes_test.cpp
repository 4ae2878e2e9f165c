#include "export/machine_nodes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/model_fixture.h"

namespace corvane {
namespace {

using support::Mill;
using testing::HasSubstr;
using testing::Not;

class MachineNodes : public support::ModelTest {
 protected:
  std::string machines(const std::string &machines, const std::string &orders) {
    Mill mill(machines, orders);
    return write(mill,
                 [](const ModelData &data, ImportFile &file) { writeMachineNodes(data, file); });
  }
};

TEST_F(MachineNodes, OfTwoCuttersOfOneMachineAreOneMachineSeriesAndTwoProcesses) {
  settings_.daysPerPeriod = 5;
  EXPECT_EQ(machines("N,W1,Board,100,500,1,1\nN,W1,Fine,120.5,62.5,1,1\n",
                     "1,Fine,30,1,Acme\n2,Board,30,1,Acme\n"),
            "addnode <type> \"Machine\" <name> \"M_W1\" <x> 10 <y> 210 <period> \"1\" <fixed> "
            "False <min> 0 <max> 5 <cost> 0 <overcost> +infinity\n"
            "addnode <type> \"Machine\" <name> \"M_W1\" <period> \"2\" <fixed> False <min> 0 "
            "<max> 5 <cost> 0 <overcost> +infinity\n"
            "addattach <node> \"M_W1\" <commodity> \"Machine_Time\" <in> False\n"
            "addnode <type> \"Process\" <name> \"Board_W1_100\" <x> 180 <y> 210 <period> \"1\"\n"
            "addattach <node> \"Board_W1_100\" <commodity> \"Machine_Time\" <in> True\n"
            "addattach <node> \"Board_W1_100\" <commodity> \"Deckle100\" <quantity> 500 <in> "
            "False\n"
            "addarc <commodity> \"Machine_Time\" <from> \"M_W1\" <to> \"Board_W1_100\" <flow> 0 "
            "<fixed> False <opportunity> 0 <cost> 0 <min> 0 <max> +infinity\n"
            "addnode <type> \"Process\" <name> \"Fine_W1_120\" <x> 180 <y> 260 <period> \"1\"\n"
            "addattach <node> \"Fine_W1_120\" <commodity> \"Machine_Time\" <in> True\n"
            "addattach <node> \"Fine_W1_120\" <commodity> \"Deckle120.5\" <quantity> 62.5 <in> "
            "False\n"
            "addarc <commodity> \"Machine_Time\" <from> \"M_W1\" <to> \"Fine_W1_120\" <flow> 0 "
            "<fixed> False <opportunity> 0 <cost> 0 <min> 0 <max> +infinity\n");
}

TEST_F(MachineNodes, CarryTheRowOfTheFirstPlannedCutterOfTheMachine) {
  const std::string text = machines(
      "N,W1,Fine,100,1,1,1\nN,W2,Bond,100,1,1,1\nN,W2,Fine,100,1,1,1\n", "1,Fine,30,1,Acme\n");
  EXPECT_THAT(text, HasSubstr("<name> \"M_W1\" <x> 10 <y> 210 "));
  EXPECT_THAT(text, HasSubstr("<name> \"M_W2\" <x> 10 <y> 260 "));
  EXPECT_THAT(text, HasSubstr("<name> \"Fine_W2_100\" <x> 180 <y> 260 "));
  EXPECT_THAT(text, Not(HasSubstr("Bond")));
}

TEST_F(MachineNodes, WithoutAPlannedCutterAreNotWritten) {
  EXPECT_EQ(machines("N,W1,Bond,100,1,1,1\n", ""), "");
  EXPECT_THAT(machines("N,W1,Bond,100,1,1,1\nN,W2,Fine,100,1,1,1\n", "1,Fine,30,1,Acme\n"),
              Not(HasSubstr("M_W1")));
}

TEST_F(MachineNodes, OfOneNameAtTwoLocationsAreTwoMachines) {
  const std::string text =
      machines("N,W1,Fine,100,1,1,1\nS,W1,Fine,100,1,1,1\n", "1,Fine,30,1,Acme\n");
  EXPECT_THAT(text, HasSubstr("<name> \"M_W1\" <x> 10 <y> 210 "));
  EXPECT_THAT(text, HasSubstr("<name> \"M_W1\" <x> 10 <y> 260 "));
}

TEST_F(MachineNodes, OfACutterCountItsRowAndTellThatTheMachineStands) {
  Mill mill("N,W1,Fine,100,1,1,1\n", "1,Fine,30,1,Acme\n");
  quint32 row = 7;
  bool machineWritten = true;
  const std::string text = write(mill, [&](const ModelData &data, ImportFile &file) {
    writeCutterNodes(data, file, *data.planning.cuttersOf("Fine").front(), row, machineWritten);
  });
  EXPECT_EQ(row, 8U);
  EXPECT_THAT(text, Not(HasSubstr("\"Machine\"")));
  EXPECT_THAT(text, HasSubstr("<y> 560"));
}

TEST_F(MachineNodes, OfAnUnplannedCutterCountNoRow) {
  Mill mill("N,W1,Fine,100,1,1,1\n", "");
  quint32 row = 7;
  bool machineWritten = false;
  EXPECT_EQ(write(mill,
                  [&](const ModelData &data, ImportFile &file) {
                    writeCutterNodes(data, file, *data.planning.cuttersOf("Fine").front(), row,
                                     machineWritten);
                  }),
            "");
  EXPECT_EQ(row, 7U);
  EXPECT_FALSE(machineWritten);
}

}  // namespace
}  // namespace corvane
