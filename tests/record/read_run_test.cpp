#include "record/read_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QCryptographicHash>
#include <QFile>
#include <QTemporaryDir>

#include "record/record_check.h"

namespace corvane::record {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

// The folder of a run as a scenario of the whole program leaves it.
class ReadRun : public testing::Test {
 protected:
  void takeScenario(const std::string &name) {
    const fs::path scenario = fs::path(CORVANE_SOURCE_DIR) / "tests" / "scenarios" / name;
    fs::copy(scenario / "data", data());
    for (const char *made : {"CV.imp", "corvane.log"}) {
      fs::copy_file(scenario / "expected" / made, data() / made);
    }
  }

  fs::path folder() const { return fs::path(scratch_.path().toStdString()) / "my_mill"; }
  fs::path data() const { return folder() / "data"; }

  Record read() {
    QString fault;
    const auto record = readRun({folder(), {}}, QStringLiteral("1.2.3"), fault);
    EXPECT_TRUE(record.has_value()) << fault.toStdString();
    return record.value_or(Record());
  }

  std::string faultOf(const fs::path &plan = {}) {
    QString fault;
    EXPECT_FALSE(readRun({folder(), plan}, QString(), fault).has_value());
    return fault.toStdString();
  }

  void SetUp() override { fs::create_directories(folder()); }

 private:
  QTemporaryDir scratch_;
};

TEST_F(ReadRun, TakesEverythingFromTheFolder) {
  takeScenario("with_delay_every_mode_has_a_node_on_the_way");
  const Record record = read();
  EXPECT_EQ(record::faultOf(record), QString());
  EXPECT_EQ(record.version, QStringLiteral("1.2.3"));
  EXPECT_EQ(record.name, QStringLiteral("my_mill"));
  EXPECT_TRUE(record.log.isComplete);
  EXPECT_FALSE(record.periods.isEmpty());
  EXPECT_FALSE(record.machines.empty());
  EXPECT_FALSE(record.machines[0].mill.isEmpty());
  EXPECT_FALSE(record.machines[0].name.startsWith(QStringLiteral("M_")));
  EXPECT_FALSE(record.patterns.empty());
  EXPECT_FALSE(record.seen.empty());
  EXPECT_TRUE(record.wereInputsChecked);
  EXPECT_FALSE(record.plan.has_value());
}

TEST_F(ReadRun, TheDemandIsThatOfTheLog) {
  takeScenario("with_delay_every_mode_has_a_node_on_the_way");
  const Record record = read();
  double inches = 0;
  for (const Order &order : record.orders) {
    for (const double rolls : order.rolls) {
      inches += rolls * order.width;
    }
  }
  ASSERT_TRUE(record.log.demandInches.has_value());
  EXPECT_NEAR(inches, *record.log.demandInches, 1e-4);
}

TEST_F(ReadRun, RollsAndTrimFillTheDeckle) {
  takeScenario("batch_puts_a_node_before_each_pattern_and_shifts_the_columns");
  const Record record = read();
  for (const Pattern &pattern : record.patterns) {
    double inches = pattern.trim;
    for (const auto &[width, count] : pattern.rolls) {
      inches += width * count;
    }
    EXPECT_NEAR(inches, record.cutters[static_cast<std::size_t>(pattern.cutter)].deckle, 1e-3);
  }
}

TEST_F(ReadRun, ParametersTellWhereTheyComeFrom) {
  takeScenario("with_delay_every_mode_has_a_node_on_the_way");
  QFile file(QString::fromStdString((data() / "Parameters.data").string()));
  ASSERT_TRUE(file.open(QIODevice::Append));
  file.write("\noccur min=3\n");
  file.close();
  for (const Parameter &parameter : read().parameters) {
    if (parameter.key == QStringLiteral("occur min")) {
      EXPECT_EQ(parameter.value, QStringLiteral("3"));
      EXPECT_EQ(parameter.origin, QStringLiteral("file"));
    }
    if (parameter.key == QStringLiteral("threshold")) {
      EXPECT_EQ(parameter.origin, QStringLiteral("default"));
    }
  }
}

TEST_F(ReadRun, FilesHaveTheirSizeAndHash) {
  takeScenario("with_delay_every_mode_has_a_node_on_the_way");
  fs::remove(data() / "freightRates.data");
  const Record record = read();
  QFile file(QString::fromStdString((data() / "orders.data").string()));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QByteArray bytes = file.readAll();
  int seen = 0;
  for (const File &entry : record.files) {
    if (entry.role == QStringLiteral("orders")) {
      ++seen;
      EXPECT_EQ(entry.bytes, bytes.size());
      EXPECT_EQ(entry.sha256.toLatin1(),
                QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
    }
    if (entry.role == QStringLiteral("freight rates")) {
      ++seen;
      EXPECT_FALSE(entry.isThere);
    }
  }
  EXPECT_EQ(seen, 2);
}

TEST_F(ReadRun, PatternsAloneMakeACatalogue) {
  takeScenario("patterns_only_writes_patterns_and_counts_no_demand");
  const Record record = read();
  EXPECT_EQ(record::faultOf(record), QString());
  EXPECT_FALSE(record.patterns.empty());
  EXPECT_FALSE(record.cutters.empty());
  EXPECT_TRUE(record.network.arcs.empty());
}

TEST_F(ReadRun, GenerationSeesTheFirstEntryOfAWidth) {
  takeScenario("with_delay_every_mode_has_a_node_on_the_way");
  QFile file(QString::fromStdString((data() / "orders.data").string()));
  ASSERT_TRUE(file.open(QIODevice::ReadWrite));
  const QList<QByteArray> first = file.readLine().trimmed().split(',');
  ASSERT_EQ(first.size(), 5);
  file.seek(file.size());
  file.write(first[0] + ',' + first[1] + ',' + first[2] + ",7777,Somebody Else\n");
  file.close();
  const Record record = read();
  const qsizetype period = record.periods.indexOf(QString::fromUtf8(first[0]));
  for (const SeenDemand &seen : record.seen) {
    if (seen.grade.toUtf8() == first[1] && seen.width == first[2].toDouble()) {
      EXPECT_LT(seen.rolls[static_cast<std::size_t>(period)], 7777);
      return;
    }
  }
  ADD_FAILURE() << "the width is not there";
}

TEST_F(ReadRun, WhatCannotBeReadIsNamed) {
  EXPECT_THAT(faultOf(), HasSubstr("parameter file"));
  takeScenario("with_delay_every_mode_has_a_node_on_the_way");
  EXPECT_THAT(faultOf(folder() / "none.json"), HasSubstr("none.json"));
  fs::resize_file(data() / "CV.imp", fs::file_size(data() / "CV.imp") / 2);
  EXPECT_THAT(faultOf(), HasSubstr("CV.imp"));
}

}  // namespace
}  // namespace corvane::record
