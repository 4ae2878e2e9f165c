#include "core/file_lock.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <optional>

#include "support/temporary_folder.h"

namespace corvane {
namespace {

class FileLockTest : public testing::Test {
 protected:
  static bool isFree(const std::string &name) {
    FileLock lock;
    return lock.acquire(name);
  }

  support::TemporaryFolder folder_;
};

TEST_F(FileLockTest, IsHeldByOneAtATimeForAsLongAsItLives) {
  const std::string name = folder_.file("file");
  std::optional<FileLock> lock(std::in_place);
  ASSERT_TRUE(lock->acquire(name));
  EXPECT_FALSE(isFree(name));
  lock.reset();
  EXPECT_TRUE(isFree(name));
}

TEST_F(FileLockTest, MakesAMissingFileAndLeavesWhatIsThere) {
  EXPECT_TRUE(isFree(folder_.file("new")));
  EXPECT_TRUE(std::filesystem::exists(folder_.file("new")));
  const std::string old = folder_.write("old", "kept");
  EXPECT_TRUE(isFree(old));
  EXPECT_EQ(std::filesystem::file_size(old), 4U);
}

TEST_F(FileLockTest, OutlivesTheOpeningAndClosingOfItsFile) {
  const std::string name = folder_.file("file");
  FileLock lock;
  ASSERT_TRUE(lock.acquire(name));
  { const std::ofstream written(name); }
  EXPECT_FALSE(isFree(name));
}

TEST_F(FileLockTest, IsRefusedWhereNothingCanBeWritten) {
  EXPECT_FALSE(isFree(folder_.path().string()));
  EXPECT_FALSE(isFree(folder_.file("absent/file")));
}

TEST_F(FileLockTest, IsNotNeededForADevice) {
  FileLock lock;
  EXPECT_TRUE(lock.acquire("/dev/null"));
  EXPECT_TRUE(isFree("/dev/null"));
}

}  // namespace
}  // namespace corvane
