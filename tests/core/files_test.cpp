#include "core/files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/temporary_folder.h"
#include "support/terminal.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;
using support::TemporaryFolder;

// Goes into the folder for as long as it lives: file names are relative to it.
class WorkingFolder {
 public:
  explicit WorkingFolder(const fs::path &path) : old_(fs::current_path()) {
    fs::current_path(path);
  }
  WorkingFolder(const WorkingFolder &) = delete;
  WorkingFolder &operator=(const WorkingFolder &) = delete;
  ~WorkingFolder() { fs::current_path(old_); }

 private:
  fs::path old_;
};

class FilesTest : public testing::Test {
 protected:
  static std::string firstLine(const std::string &name) {
    std::ifstream file;
    if (!openForReading(file, name)) {
      return "(not opened)";
    }
    std::string line;
    std::getline(file, line);
    return line;
  }

  TemporaryFolder folder_;
  WorkingFolder inside_{folder_.path()};
};

TEST_F(FilesTest, ABackslashSeparatesFolders) {
  fs::create_directory("data");
  folder_.write("data/orders.data", "inside\n");
  EXPECT_EQ(firstLine("data\\orders.data"), "inside");
  EXPECT_EQ(firstLine("data/orders.data"), "inside");
}

TEST_F(FilesTest, AFileOfTheLiteralNameComesFirst) {
  fs::create_directory("data");
  folder_.write("data/orders.data", "inside\n");
  folder_.write("data\\orders.data", "literal\n");
  EXPECT_EQ(firstLine("data\\orders.data"), "literal");
}

TEST_F(FilesTest, AMissingFileDoesNotOpen) {
  EXPECT_EQ(firstLine("absent"), "(not opened)");
  EXPECT_EQ(firstLine(""), "(not opened)");
  EXPECT_EQ(firstLine("absent\\file"), "(not opened)");
}

TEST_F(FilesTest, AFolderDoesNotOpen) {
  fs::create_directory("data");
  EXPECT_EQ(firstLine("data"), "(not opened)");
  std::ofstream out;
  EXPECT_FALSE(openForWriting(out, "data", std::ios::trunc));
  EXPECT_FALSE(openForWriting(out, "absent/file", std::ios::trunc));
}

TEST_F(FilesTest, ANameOf600BytesDoesNotOpen) {
  EXPECT_EQ(firstLine(std::string(600, 'x')), "(not opened)");
}

TEST_F(FilesTest, ANameInUtf8Opens) {
  const std::string name = "\xC3\xA9t\xC3\xA9.data";
  folder_.write(name, "summer\n");
  EXPECT_EQ(firstLine(name), "summer");
}

TEST_F(FilesTest, AnEmptyFileOpensAtItsEnd) {
  folder_.write("empty", "");
  std::ifstream file;
  ASSERT_TRUE(openForReading(file, "empty"));
  EXPECT_TRUE(file.good());
  EXPECT_EQ(file.get(), std::ifstream::traits_type::eof());
}

TEST_F(FilesTest, ADeviceOpensOnlyWhenItHoldsNothing) {
  std::ifstream file;
  ASSERT_TRUE(openForReading(file, "/dev/null"));
  EXPECT_TRUE(file.good());
  EXPECT_EQ(firstLine("/dev/zero"), "(not opened)");
}

TEST_F(FilesTest, ATerminalOpensThoughItIsADevice) {
  const support::Terminal terminal;
  if (terminal.file() < 0) {
    GTEST_SKIP() << "no terminal can be made here";
  }
  std::ifstream file;
  EXPECT_TRUE(openForReading(file, terminal.name()));
}

TEST_F(FilesTest, ANameIsRelativeToTheFolderOfTheRun) {
  fs::create_directories("mill/data");
  folder_.write("mill/data/orders.data", "");
  EXPECT_EQ(pathOfFile("data\\orders.data", "mill"), "mill/data/orders.data");
  EXPECT_EQ(pathOfFile("data/absent", "mill"), "mill/data/absent");
  EXPECT_EQ(pathOfFile("/data/orders.data", "mill"), "/data/orders.data");
  folder_.write("mill/data\\orders.data", "");
  EXPECT_EQ(pathOfFile("data\\orders.data", "mill"), "mill/data\\orders.data");
}

TEST_F(FilesTest, NamesOfOneFileAreKnownByWhatTheyLeadTo) {
  fs::create_directory("data");
  folder_.write("data/a", "same");
  folder_.write("data/b", "same");
  fs::create_hard_link("data/a", "hard");
  fs::create_symlink("data/a", "soft");
  for (const char *name : {"data/a", "data\\a", "./data/../data/a", "hard", "soft"}) {
    EXPECT_TRUE(areOneFile(name, "data/a")) << name;
    EXPECT_FALSE(areOneFile(name, "data/b")) << name;
    EXPECT_FALSE(areOneFile("absent", name)) << name;
  }
}

TEST_F(FilesTest, NamesOfMissingFilesAreKnownByWhereTheyLead) {
  fs::create_directory("data");
  EXPECT_TRUE(areOneFile("data\\new", "./data/new"));
  EXPECT_TRUE(areOneFile("new", (folder_.path() / "new").string()));
  EXPECT_FALSE(areOneFile("data/new", "new"));
}

TEST_F(FilesTest, DevicesAndFoldersAreNoOneFile) {
  EXPECT_FALSE(areOneFile("/dev/null", "/dev/null"));
  EXPECT_FALSE(areOneFile(".", "."));
}

TEST_F(FilesTest, WritingBeginsAnewOrAppends) {
  folder_.write("old", "first\n");
  {
    std::ofstream out;
    ASSERT_TRUE(openForWriting(out, "old", std::ios::app));
    out << "second\n";
  }
  EXPECT_EQ(fs::file_size("old"), 13U);
  {
    std::ofstream out;
    ASSERT_TRUE(openForWriting(out, "old", std::ios::trunc));
    out << "third\n";
  }
  EXPECT_EQ(firstLine("old"), "third");
}

TEST_F(FilesTest, ANewFileIsWrittenBelowTheFolderThatABackslashNames) {
  fs::create_directory("data");
  std::ofstream out;
  ASSERT_TRUE(openForWriting(out, "data\\new.log", std::ios::app));
  EXPECT_TRUE(fs::exists("data/new.log"));
}

}  // namespace
}  // namespace corvane
