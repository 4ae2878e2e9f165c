#include "record/order_demand.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace corvane::record {
namespace {

class InputFactsTest : public testing::Test {
 protected:
  InputFacts read(const QByteArray &machines, const QByteArray &orders) {
    write("machines.data", machines);
    write("orders.data", orders);
    RunParameters parameters;
    parameters.machineFile = QStringLiteral("machines.data");
    parameters.orderFile = QStringLiteral("orders.data");
    return readInputFacts(parameters, folder_.path().toStdString(), {"1", "2"});
  }

 private:
  void write(const char *name, const QByteArray &content) const {
    QFile file(folder_.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
  }

  QTemporaryDir folder_;
};

TEST_F(InputFactsTest, TellTheFirstDemandOfEachWidthAndPeriod) {
  const InputFacts facts = read("Alder Falls,AF1,A,100,46,68.5,13.75\n",
                                "1,A,30,5,Badger Box\n2,A,30,7,Badger Box\n1,A,40,2,Badger Box\n"
                                "3,A,40,9,Badger Box\n");
  ASSERT_EQ(facts.seen.size(), 2U);
  EXPECT_EQ(facts.seen[0].width, 40);
  EXPECT_THAT(facts.seen[0].rolls, testing::ElementsAre(2, 0));
  EXPECT_EQ(facts.seen[1].width, 30);
  EXPECT_THAT(facts.seen[1].rolls, testing::ElementsAre(5, 7));
}

TEST_F(InputFactsTest, AMachineIsOfTheFirstMillThatHasIt) {
  const InputFacts facts = read(
      "Alder Falls,M1,A,100,46,68.5,13.75\nBirch Landing,M1,B,90,46,68.5,13.75\n"
      "Birch Landing,M2,B,90,46,68.5,13.75\n",
      "1,A,30,5,Badger Box\n");
  EXPECT_EQ(facts.cutters.size(), 3U);
  EXPECT_EQ(facts.millOfMachine.value("M1"), QStringLiteral("Alder Falls"));
  EXPECT_EQ(facts.millOfMachine.value("M2"), QStringLiteral("Birch Landing"));
}

TEST_F(InputFactsTest, AreNoneWhereAFileIsMissing) {
  RunParameters parameters;
  parameters.machineFile = parameters.orderFile = QStringLiteral("nowhere");
  const InputFacts facts = readInputFacts(parameters, "/nowhere", {"1"});
  EXPECT_TRUE(facts.cutters.empty());
  EXPECT_TRUE(facts.seen.empty());
}

}  // namespace
}  // namespace corvane::record
