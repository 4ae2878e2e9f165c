#include "app/planner.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <QRegularExpression>
#include <QString>
#include <csignal>
#include <ctime>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <thread>

#include "app/process_objects.h"
#include "core/zem_mem_mgr.h"
#include "scripted_lp.h"
#include "support/scoped_pooling.h"
#include "support/stream_capture.h"
#include "support/temporary_folder.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;
using support::StreamCapture;
using support::TemporaryFolder;
using testing::HasSubstr;
using testing::Not;

std::string bytesOf(const fs::path &path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// Runs in a folder of its own, on the default file names.
class Planner : public testing::Test {
 protected:
  void SetUp() override {
    scripted_lp::reset();
    old_ = fs::current_path();
    fs::current_path(folder_.path());
    fs::create_directory("data");
    folder_.write("data/Parameters.data", "rand num gen seed=5\n");
    folder_.write("data/machines.data", "North,W1,Fine,100,500,2.5,0.5\n");
    folder_.write("data/orders.data",
                  "1,Fine,37,3,Acme\n1,Fine,31,5,Acme\n1,Fine,26,7,Acme\n"
                  "2,Fine,19,7,Acme\n2,Fine,13,9,Acme\n");
    folder_.write("data/freightRates.data", "Acme,North,Rail,40,1\n");
  }
  void TearDown() override { fs::current_path(old_); }

  // Returns the log of this run.
  std::string run(qint32 pooledAllocation = 0) {
    fs::remove("data/corvane.log");
    const StreamCapture out(std::cout);
    PlanningComparators comparators;
    RunRecord record(comparators);
    PatternRandom random;
    std::ofstream log;
    zemPooledAllocation = pooledAllocation;
    EXPECT_EQ(runPlanner(record, random, log), 0);
    EXPECT_FALSE(log.is_open());
    return bytesOf("data/corvane.log");
  }

  std::string import() const { return bytesOf("data/CV.imp"); }

  TemporaryFolder folder_;
  fs::path old_;
};

TEST_F(Planner, SwitchesPooledAllocationOffFirst) {
  const support::ScopedPooling pooling(false);
  run(1);
  EXPECT_EQ(zemPooledAllocation, 0);
}

TEST_F(Planner, WritesTheSameBytesForTheSameSeed) {
  run();
  const std::string first = import();
  run();
  EXPECT_EQ(import(), first);
  EXPECT_THAT(first, testing::EndsWith("# End of Corvane. import file.\n"));
}

TEST_F(Planner, WritesOtherBytesForAnotherSeed) {
  folder_.write("data/Parameters.data", "rand num gen seed=5\nnew patterns per iteration=10\n");
  run();
  const std::string first = import();
  folder_.write("data/Parameters.data", "rand num gen seed=6\nnew patterns per iteration=10\n");
  run();
  EXPECT_NE(import(), first);
}

// As the banners show it.
QString localTime() {
  const std::time_t now = std::time(nullptr);
  char text[40];
  std::strftime(text, sizeof text, "%Y/%m/%d %H:%M:%S", std::localtime(&now));
  return text;
}

TEST_F(Planner, PutsTheTimeIntoTheBannersAndAnEmptyLineAtTheEnd) {
  const QString before = localTime();
  const std::string log = run();
  static const QRegularExpression form(
      R"(^\*\*\*\* Start Corvane\. (\d{4}/\d\d/\d\d \d\d:\d\d:\d\d) \*\*\*\*\nParameters:\n[\s\S]*)"
      R"(\n\*\*\*\* End Corvane\. (\d{4}/\d\d/\d\d \d\d:\d\d:\d\d) \*\*\*\*\n\n$)");
  const QRegularExpressionMatch times = form.match(QString::fromStdString(log));
  ASSERT_TRUE(times.hasMatch()) << log;
  EXPECT_LE(before, times.captured(1));
  EXPECT_LE(times.captured(1), times.captured(2));
  EXPECT_LE(times.captured(2), localTime());
}

TEST_F(Planner, LogsTheTotalsWithFourDecimalsAndAsAPlainInteger) {
  folder_.write("data/Parameters.data", "rand num gen seed=5\ntime limit=0\n");
  // 3 x 37 + 5 x 31 + 7 x 26 + 7 x 19 + 9 x 13; three seeds in period 1, two in period 2.
  EXPECT_THAT(run(), HasSubstr("Total demand in inches           : 698.0000\n"
                               "Total number of patterns in model: 5\n"));
}

TEST_F(Planner, HandsTheParametersToGenerationAndExport) {
  folder_.write("data/Parameters.data",
                "rand num gen seed=5\nsolver=Barrier\nbatch=True\ndelay=False\n"
                "days per period=3\noccur min=2\n");
  const std::string log = run();
  EXPECT_THAT(scripted_lp::calls_of("primopt"), testing::IsEmpty());
  EXPECT_THAT(scripted_lp::calls_of("hybbaropt"), Not(testing::IsEmpty()));
  EXPECT_THAT(import(), HasSubstr("\"Batch\""));
  EXPECT_THAT(import(), Not(HasSubstr("\"Delay\"")));
  EXPECT_THAT(import(), HasSubstr(" <max> 3 "));
}

// The machine file is a pipe, so that the run waits for it after the probe; the folder that takes
// the place of the import file meanwhile is met after generation.
TEST_F(Planner, EndsOnAnImportFileThatCannotBeOpenedAfterGeneration) {
  ASSERT_EQ(mkfifo("data/pipe", 0600), 0);
  folder_.write("data/Parameters.data", "rand num gen seed=5\nmachine file=data/pipe\n");
  const auto run = [] {
    std::thread meanwhile([] {
      // Opens once the run reads its other end.
      std::ofstream pipe("data/pipe");
      fs::remove("data/CV.imp");
      fs::create_directory("data/CV.imp");
      pipe << "North,W1,Fine,100,500,2.5,0.5\n";
    });
    meanwhile.detach();
    PlanningComparators comparators;
    RunRecord record(comparators);
    PatternRandom random;
    std::ofstream log;
    runPlanner(record, random, log);
  };
  EXPECT_EXIT(run(), testing::ExitedWithCode(1),
              testing::Eq("Could not open import file: data\\CV.imp\n"));
  EXPECT_THAT(bytesOf("data/corvane.log"), testing::EndsWith("Seed                 : 5\n"));
}

TEST_F(Planner, OfTheProcessReturnsZeroAndIgnoresClosedPipesAndFilesThatMayNotGrow) {
  const auto process = [] {
    const int status = runProcess();
    const bool ignored =
        std::signal(SIGPIPE, SIG_DFL) == SIG_IGN && std::signal(SIGXFSZ, SIG_DFL) == SIG_IGN;
    std::_Exit(status == 0 && ignored ? 7 : 8);
  };
  EXPECT_EXIT(process(), testing::ExitedWithCode(7), "");
}

}  // namespace
}  // namespace corvane
