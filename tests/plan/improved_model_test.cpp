#include "plan/improved_model.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iostream>
#include <sstream>

#include "support/stream_capture.h"
#include "support/temporary_folder.h"

namespace corvane::plan {

namespace {

using testing::HasSubstr;
using testing::Not;

class ImprovedModelTest : public testing::Test {
 protected:
  RunParameters parameters() const {
    RunParameters parameters;
    parameters.machineFile = file("machines", "Mill,W1,Fine,100.5,40,2,1.5\n");
    parameters.orderFile = file("orders", "1,Fine,33.3333333,10,Acme\n1,Fine,25,8,Acme\n");
    parameters.freightRateFile = file("rates", "Acme,Mill,Road,50,0\n");
    return parameters;
  }

  QString file(const char *name, const char *text) const {
    return QString::fromStdString(folder_.write(name, text));
  }

  std::string improved(const std::vector<SlitPattern> &patterns) const {
    std::ostringstream out;
    writeImprovedModel(MillInputs(parameters()), patterns, out);
    return out.str();
  }

  support::TemporaryFolder folder_;
};

TEST_F(ImprovedModelTest, HoldsThePatternsWithTheirYieldsAndTrim) {
  const std::string model =
      improved({{"Fine", 100.5, {33.3333333, 33.3333333, 25}}, {"Fine", 100.5, {25, 25}}});
  EXPECT_THAT(model, HasSubstr(R"(<node> "Fine_Pattern_0_W1_100" <commodity> "DemandWidth25" <in> )"
                               "False <quantity> 2\n"));
  EXPECT_THAT(model, HasSubstr(R"(<node> "Fine_Pattern_1_W1_100" <commodity> "Waste" <in> False )"
                               "<quantity> 8.83333\n"));
  EXPECT_THAT(model, HasSubstr("Fine_Acme_33.333"));
  EXPECT_THAT(model, HasSubstr("\n#"));
}

TEST_F(ImprovedModelTest, HoldsEqualPatternsOnce) {
  const std::string model = improved({{"Fine", 100.5, {25, 25}}, {"Fine", 100.5, {25, 25}}});
  EXPECT_THAT(model, HasSubstr("Fine_Pattern_0_"));
  EXPECT_THAT(model, Not(HasSubstr("Fine_Pattern_1_")));
}

TEST_F(ImprovedModelTest, TellsWarningsOfTheReadersOnStandardError) {
  RunParameters dirty = parameters();
  dirty.orderFile = file("orders", "1,Fine,300,8,Acme\n1,Fine,25,8,Acme\n");
  const support::StreamCapture out(std::cout);
  const support::StreamCapture errors(std::cerr);
  const MillInputs inputs(dirty);
  EXPECT_EQ(out.text(), "");
  EXPECT_NE(errors.text(), "");
}

}  // namespace

}  // namespace corvane::plan
