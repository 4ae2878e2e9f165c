#include "sweep/run_folder.h"

#include <gmock/gmock.h>

#include <set>

#include "study_folder.h"

namespace corvane::sweep {
namespace {

using testing::EndsWith;
using testing::StartsWith;

class RunFolder : public StudyTest {
 protected:
  // The runs of a study of the mill, with their folders made.
  std::vector<RunSettings> make(const char *text) {
    const StudyReading reading =
        readStudy(QStringLiteral("mill = mill\n") + QString::fromUtf8(text), folder_.path());
    EXPECT_TRUE(reading.faults.isEmpty()) << reading.faults.join("; ").toStdString();
    study_ = reading.study;
    const MillReading mill = readMill(study_.mill);
    EXPECT_EQ(mill.fault, QString());
    const auto runs = allRuns(study_, mill.mill);
    EXPECT_EQ(makeFolders({path("study")}, study_, runs, mill.mill), QString());
    return runs;
  }

  std::string contentOf(const RunSettings &run, const char *name) {
    return content(QStringLiteral("study/runs/%1/%2").arg(run.id, QLatin1String(name)));
  }

  Study study_;
};

TEST_F(RunFolder, HoldsTheMillsParametersWithTheRunsOwnBehindThem) {
  const auto runs = make("seed = 1, 2\noccur min = 7\n");
  ASSERT_EQ(runs.size(), 2U);
  EXPECT_EQ(contentOf(runs[1], "data/Parameters.data"),
            "# a mill\ndays per period=5\nrand num gen seed=1\n# of this run\n"
            "rand num gen seed=2\noccur min=7\n"
            "machine file=inputs/machines.data\norder file=inputs/orders.data\n"
            "freight rate file=inputs/freightRates.data\noutput=data/CV.imp\n"
            "log file=data/corvane.log\n");
}

TEST_F(RunFolder, DropsALastLineThatTheProgramWouldNotRead) {
  write("mill/data/Parameters.data", "batch=False\ndelay=Fal");
  EXPECT_THAT(contentOf(make("seed = 1\n")[0], "data/Parameters.data"),
              StartsWith("batch=False\n# of this run\n"));
}

TEST_F(RunFolder, LinksToTheDataThatDoesNotChange) {
  const auto runs = make("seed = 1\n");
  const QFileInfo link(path("study/runs/" + runs[0].id + "/inputs/orders.data"));
  EXPECT_EQ(link.symLinkTarget(), path("mill/data/orders.data"));
  EXPECT_EQ(QDir(path("study/inputs")).entryList(QDir::Dirs | QDir::NoDotAndDotDot),
            QStringList(runs[0].dataId));
}

TEST_F(RunFolder, LinksAnewWhenTheSameDataIsElsewhere) {
  write("a.data", "2,LB42,30,5,Badger Box\n");
  make("order file = a.data\n");
  ASSERT_TRUE(QFile::rename(path("a.data"), path("b.data")));
  const auto runs = make("order file = b.data\n");
  EXPECT_EQ(contentOf(runs[0], "inputs/orders.data"), content("b.data"));
}

TEST_F(RunFolder, HoldsOtherFilesAndChangedFreight) {
  write("more.data", "2,LB42,30,5,Badger Box\n");
  const auto runs = make("order file = as it is, more.data\nfreight = 0%, +10%\n");
  ASSERT_EQ(runs.size(), 4U);
  EXPECT_EQ(contentOf(runs[3], "inputs/orders.data"), "2,LB42,30,5,Badger Box\n");
  EXPECT_EQ(contentOf(runs[3], "inputs/freightRates.data"),
            "Badger Box,Alder Falls,Rail,20.35,1\n");
  EXPECT_EQ(contentOf(runs[0], "inputs/orders.data"), content("mill/data/orders.data"));
  EXPECT_EQ(contentOf(runs[2], "inputs/freightRates.data"), content("mill/data/freightRates.data"));
}

TEST_F(RunFolder, IsNamedByItsSettingsAndByTheDataThatItReads) {
  const auto before = make("seed = 1..3\n");
  const auto again = make("seed = 3, 1\n");
  EXPECT_EQ(again[0].id, before[2].id);
  EXPECT_EQ(again[1].id, before[0].id);
  EXPECT_EQ(before[0].dataId, before[2].dataId);
  write("mill/data/orders.data", "1,LB42,44.75,61,Badger Box\n");
  const auto after = make("seed = 1\n");
  EXPECT_NE(after[0].id, before[0].id);
  EXPECT_NE(after[0].dataId, before[0].dataId);
  EXPECT_NE(make("seed = 1\nplan options = --storage inf\n")[0].id, after[0].id);
  write("mill/data/Parameters.data", "days per period=6\n");
  const auto other = make("seed = 1\n");
  EXPECT_NE(other[0].id, after[0].id);
  EXPECT_EQ(other[0].dataId, after[0].dataId);
}

TEST_F(RunFolder, TellsAllCombinationsApart) {
  std::set<QString> ids;
  for (const RunSettings &run : make("seed = 1..4\noccur min = 1, 2\nfreight = 0 %, 5 %\n")) {
    ids.insert(run.id);
  }
  EXPECT_EQ(ids.size(), 16U);
}

TEST_F(RunFolder, FindsTheFilesThatTheParametersName) {
  write("mill/data/Parameters.data", "order file=in\\mine.data\n");
  write("mill/in/mine.data", "3,LB42,30,5,Badger Box\n");
  EXPECT_EQ(contentOf(make("seed = 1\n")[0], "inputs/orders.data"), "3,LB42,30,5,Badger Box\n");
}

TEST_F(RunFolder, NeedsAllFilesOfTheMill) {
  QFile::remove(path("mill/data/machines.data"));
  EXPECT_THAT(readMill(path("mill")).fault.toStdString(), EndsWith("machines.data is not there"));
  EXPECT_THAT(readMill(path("none")).fault.toStdString(), EndsWith("cannot be read"));
}

TEST(ChangeRates, ChangesTheRateAndNothingElse) {
  EXPECT_EQ(changeRates("A,B,Rail,20,1\nA,B,,Truck,18.5,0\nshort,line\n", -50),
            "A,B,Rail,10,1\nA,B,Truck,9.25,0\nshort,line\n");
}

}  // namespace
}  // namespace corvane::sweep
