// Whole studies with programs that take no time: scripts that do what corvane and corvane-plan do
// to a folder, and the real corvane-sweep between the engine and them.

#include "sweep/sweep.h"

#include <gmock/gmock.h>

#include <sstream>

#include "study_folder.h"
#include "sweep/run_result.h"

namespace corvane::sweep {
namespace {

using testing::HasSubstr;

class SweepTest : public StudyTest {
 protected:
  void SetUp() override {
    StudyTest::SetUp();
    // The seed is the plan's cost; each run counts itself.
    script("corvane",
           "echo run >>count\n"
           "flock --nonblock . true && echo free >>locks || echo held >>locks\n"
           "sed -n 's/^rand num gen seed=//p' data/Parameters.data | tail -n 1 >data/CV.imp\n"
           "echo 'Total number of patterns in model: 12' >data/corvane.log\n" +
               QByteArray("grep -q '^5$' data/CV.imp && { echo 'Error: five'; exit 1; }\n") +
               "grep -q '^6$' data/CV.imp && [ ! -e killed ] && { touch killed; kill -KILL $$; }\n"
               "exit 0\n");
    script("corvane-plan",
           "while [ $# -gt 0 ]; do case $1 in --import-file) imp=$2;; -o) out=$2;; esac; shift; "
           "done\n: ${out:=$(dirname $imp)/plan}\nmkdir -p $out\n"
           "echo '{\"totals\": {\"cost\": {\"total\": '$(cat $imp)'}, \"unmet_rolls\": 0}}' "
           ">$out/plan.json\n");
    script("corvane-report", "echo \"$@\" >>pages\n");
    programs_ = {path("bin/corvane"), path("bin/corvane-plan"), path("bin/corvane-report"),
                 path("bin/corvane-sweep")};
    // What the engine starts: the same call as in the program.
    script("corvane-sweep",
           QByteArray("exec '" CORVANE_MAKE_RUNS "' '") + path("bin").toUtf8() + "' \"$@\"\n");
  }

  void script(const QString &name, const QByteArray &body) {
    write("bin/" + name, "#!/bin/sh\n" + body);
    QFile::setPermissions(path("bin/" + name),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  }

  bool sweepSeeds(const char *seeds) {
    out_.str({});
    err_.str({});
    const StudyReading reading = readStudy(
        QStringLiteral("mill = mill\nseed = ") + QString::fromUtf8(seeds) + '\n', folder_.path());
    EXPECT_TRUE(reading.faults.isEmpty());
    options_.folder = path("study");
    options_.engine.jobs = 2;
    return sweep(reading.study, options_, programs_, out_, err_);
  }

  // How often the planner was started, over all runs.
  qsizetype starts() const {
    qsizetype count = 0;
    const QDir runs(path("study/runs"));
    for (const QString &run : runs.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
      count += QString::fromStdString(content("study/runs/" + run + "/count")).count("run");
    }
    return count;
  }

  Programs programs_;
  SweepOptions options_;
  std::ostringstream out_;
  std::ostringstream err_;
};

TEST_F(SweepTest, MakesEveryRunOnceAndTellsBestAndWorst) {
  EXPECT_TRUE(sweepSeeds("1..4"));
  EXPECT_EQ(starts(), 4);
  EXPECT_THAT(out_.str(), HasSubstr("4 runs, 4 to make"));
  EXPECT_THAT(out_.str(), testing::ContainsRegex("Best:  .*seed=1.: cost 1.00"));
  EXPECT_THAT(out_.str(), testing::ContainsRegex("Worst: .*seed=4.: cost 4.00"));
  EXPECT_THAT(out_.str(), HasSubstr("Pooled patterns of 4 runs: cost 1.00, 0.00 % less"));
  EXPECT_THAT(out_.str(), HasSubstr("/study.html\n"));
}

TEST_F(SweepTest, HasAPageMadeOfAllRunsAndOneOfTheBestBesideTheWorst) {
  ASSERT_TRUE(sweepSeeds("1..3"));
  EXPECT_THAT(content("study/pages"),
              testing::MatchesRegex("runs/[0-9a-f]+ --with runs/[0-9a-f]+ -o "
                                    "compare-[0-9a-f]+.html\nstudy.json\n"));
}

TEST_F(SweepTest, MakesNothingTwice) {
  ASSERT_TRUE(sweepSeeds("1..3"));
  const std::string table = content("study/study.csv");
  EXPECT_TRUE(sweepSeeds("1..3"));
  EXPECT_EQ(starts(), 3);
  EXPECT_EQ(content("study/study.csv"), table);
  EXPECT_TRUE(sweepSeeds("1..4"));
  EXPECT_EQ(starts(), 4);
}

TEST_F(SweepTest, ListsARunThatFailsAndMakesTheOthers) {
  EXPECT_FALSE(sweepSeeds("4..5"));
  EXPECT_THAT(err_.str(), testing::ContainsRegex("failed: .*seed=5.: Error: five"));
  EXPECT_THAT(content("study/study.csv"), HasSubstr(",4,done,"));
  EXPECT_FALSE(sweepSeeds("4..5"));
  EXPECT_EQ(starts(), 2);
  options_.againFailed = true;
  EXPECT_FALSE(sweepSeeds("4..5"));
  EXPECT_EQ(starts(), 3);
}

TEST_F(SweepTest, MakesARunAgainThatWasKilled) {
  EXPECT_FALSE(sweepSeeds("6..7"));
  EXPECT_THAT(err_.str(), testing::ContainsRegex("missing: .*seed=6"));
  EXPECT_TRUE(sweepSeeds("6..7"));
  EXPECT_EQ(starts(), 3);
  EXPECT_THAT(content("study/study.csv"), HasSubstr(",6,done,6,"));
}

TEST_F(SweepTest, KeepsOtherProcessesFromARunThatIsBeingMade) {
  ASSERT_TRUE(sweepSeeds("1"));
  const QString run = QDir(path("study/runs")).entryList(QDir::Dirs | QDir::NoDotAndDotDot)[0];
  EXPECT_EQ(content("study/runs/" + run + "/locks"), "held\n");
}

TEST_F(SweepTest, SaysThatTheMillIsNotWhole) {
  QFile::remove(path("mill/data/orders.data"));
  EXPECT_FALSE(sweepSeeds("1"));
  EXPECT_THAT(err_.str(), HasSubstr("orders.data is not there"));
}

TEST_F(SweepTest, SaysThatAnEngineIsNotThere) {
  const QByteArray before = qgetenv("PATH");
  qputenv("PATH", "/nowhere");
  EXPECT_FALSE(sweepSeeds("1"));
  qputenv("PATH", before);
  EXPECT_THAT(err_.str(), HasSubstr("GNU parallel cannot be started"));
}

TEST_F(SweepTest, GivesATaskOfSlurmTheRunsOfItsLine) {
  // A scheduler that makes every task of the array at once, one after the other.
  script("sbatch",
         "while [ $# -gt 1 ]; do [ $1 = --array ] && array=$2; shift; done\n"
         "last=${array#1-}; last=${last%%%*}\n"
         "for task in $(seq $last); do SLURM_ARRAY_TASK_ID=$task sh \"$1\"; done\n");
  const QByteArray before = qgetenv("PATH");
  qputenv("PATH", path("bin").toUtf8() + ':' + before);
  options_.engine.name = QStringLiteral("slurm");
  EXPECT_TRUE(sweepSeeds("1..4"));
  qputenv("PATH", before);
  EXPECT_EQ(starts(), 4);
}

TEST_F(SweepTest, SharesManyRunsAmongAsManyTasksAsAnArrayMayHave) {
  script("sbatch", "exit 0\n");
  const QByteArray before = qgetenv("PATH");
  qputenv("PATH", path("bin").toUtf8() + ':' + before);
  QStringList runs;
  for (int i = 0; i < 1003; ++i) {
    runs << QStringLiteral("run %1").arg(i);
  }
  EXPECT_EQ(makeRuns(runs, folder_.path(), {QStringLiteral("slurm"), 0, {}}, programs_, {}),
            QString());
  qputenv("PATH", before);
  const QStringList lines =
      QString::fromStdString(content("pending")).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
  ASSERT_EQ(lines.size(), 1000);
  EXPECT_EQ(lines[0], QStringLiteral("'run 0' 'run 1000'"));
  EXPECT_EQ(lines[2], QStringLiteral("'run 2' 'run 1002'"));
  EXPECT_EQ(lines[3], QStringLiteral("'run 3'"));
}

}  // namespace
}  // namespace corvane::sweep
