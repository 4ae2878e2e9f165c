// What each of the six files may be other than a file in order: missing, a folder, closed to the
// user, oddly named, empty, cut short, a device, a pipe, or on a disk that is full.

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include "mill_run.h"

namespace corvane::faults {
namespace {

namespace fs = std::filesystem;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

// One of the four files that are read: its key and default name, and what a run says that cannot
// open it.
struct InputFile {
  const char *key;
  const char *name;
  const char *words;
};

std::ostream &operator<<(std::ostream &out, const InputFile &file) {
  return out << file.name;
}

constexpr InputFile kParameterFile = {"", "Parameters.data", "Could not open parameter file."};
constexpr InputFile kMachineFile = {"machine file", "machines.data",
                                    "Error: Could not open machine data file."};
constexpr InputFile kOrderFile = {"order file", "orders.data",
                                  "Error: Could not open orders file."};
constexpr InputFile kFreightRateFile = {"freight rate file", "freightRates.data",
                                        "Error: Could not open freight rate file."};

// A path of 600 bytes whose parts a file system takes.
std::string pathOf600Bytes(const fs::path &below, const std::string &ending) {
  std::string path =
      below.string() + "/" + std::string(200, 'a') + "/" + std::string(200, 'b') + "/";
  path += std::string(600 - path.size() - ending.size(), 'c') + ending;
  return path;
}

// What the log says after the name of the import file.
std::string logAfterOutputName(const std::string &log) {
  const std::size_t at = log.find("\nOutput File ");
  return log.substr(std::min(log.size(), log.find('\n', at + 1)));
}

class FileFaults : public testing::Test {
 protected:
  void setParameter(const std::string &key, const std::string &value) const {
    mill_.write("Parameters.data",
                contentOf(mill_.data("Parameters.data")) + key + "=" + value + "\n");
  }

  void copyTo(const std::string &name, const fs::path &target) const {
    fs::create_directories(target.parent_path());
    fs::copy_file(mill_.data(name), target, fs::copy_options::overwrite_existing);
  }

  Result runBoundByPermissions() const {
    Child child = mill_.scripted();
    child.boundByPermissions = true;
    return runChild(child);
  }

  // Nothing was written, since there was no log yet; or what was, says so.
  void expectUnopened(const InputFile &file, const Result &result) const {
    SCOPED_TRACE(file.name);
    if (file.key[0] != '\0') {
      expectFatal(mill_, result, file.words);
      return;
    }
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, std::string(file.words) + "\n");
    EXPECT_FALSE(exists(mill_.data("corvane.log")) || exists(mill_.data("CV.imp")));
  }

  // What the log or the import file cannot be opened for.
  void expectUnwritable(const std::string &words, const Result &result) const {
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, words + "\n");
  }

  MillRun mill_;
};

class InputFileFaults : public FileFaults, public testing::WithParamInterface<InputFile> {
 protected:
  fs::path file() const { return mill_.data(GetParam().name); }

  // Lets the run find the file under another name, as the parameters hold it.
  Result runWithName(const std::string &name) const {
    if (GetParam().key[0] == '\0') {
      return mill_.run({{"ZEM_CVN_PARAM", name}});
    }
    setParameter(GetParam().key, name);
    return mill_.run();
  }
};

INSTANTIATE_TEST_SUITE_P(All, InputFileFaults,
                         testing::Values(kParameterFile, kMachineFile, kOrderFile,
                                         kFreightRateFile));

TEST_P(InputFileFaults, AMissingFileEndsTheRun) {
  fs::remove(file());
  expectUnopened(GetParam(), mill_.run());
}

TEST_P(InputFileFaults, AFolderEndsTheRun) {
  fs::remove(file());
  fs::create_directory(file());
  expectUnopened(GetParam(), mill_.run());
}

TEST_P(InputFileFaults, AFileClosedToTheUserEndsTheRun) {
  fs::permissions(file(), fs::perms::none);
  expectUnopened(GetParam(), runBoundByPermissions());
}

TEST_P(InputFileFaults, ADeviceThatNeverEndsEndsTheRun) {
  for (const char *device : {"/dev/zero", "/dev/urandom", "/dev/full"}) {
    SCOPED_TRACE(device);
    fs::remove(mill_.data("corvane.log"));
    fs::remove(mill_.data("CV.imp"));
    fs::remove(file());
    fs::create_symlink(device, file());
    expectUnopened(GetParam(), mill_.run());
  }
}

TEST_P(InputFileFaults, AnEmptyDeviceIsAnEmptyFile) {
  const bool isOrders = std::string(GetParam().name) == kOrderFile.name;
  fs::remove(file());
  fs::create_symlink("/dev/null", file());
  expectWholeRun(mill_, mill_.run());
  // Without parameters there is no seed, but everything else is there.
  const bool isMade = !isOrders && std::string(GetParam().name) != kMachineFile.name;
  EXPECT_EQ(mill_.importFile().find("\"G_Customer_30.000\"") != std::string::npos, isMade);
}

TEST_P(InputFileFaults, AnEmptyFileIsRead) {
  fs::resize_file(file(), 0);
  expectWholeRun(mill_, mill_.run());
}

TEST_P(InputFileFaults, ALastLineWithoutALineBreakIsNotUsed) {
  const std::string text = contentOf(file());
  expectWholeRun(mill_, mill_.run());
  const std::string imported = mill_.importFile();
  mill_.write(GetParam().name, text + "Mill,C2,G,90,46,68,13");
  expectWholeRun(mill_, mill_.run());
  EXPECT_EQ(mill_.importFile(), imported);
}

TEST_P(InputFileFaults, BackslashesSeparateFolders) {
  copyTo(GetParam().name, mill_.folder() / "other" / "deep" / "file.data");
  fs::remove(file());
  expectWholeRun(mill_, runWithName("other\\deep\\file.data"));
}

TEST_P(InputFileFaults, AFileWhoseNameHoldsABackslashIsFoundFirst) {
  copyTo(GetParam().name, mill_.folder() / "data\\odd.data");
  fs::create_directory(mill_.data("odd.data"));
  expectWholeRun(mill_, runWithName("data\\odd.data"));
}

TEST_P(InputFileFaults, ANameInUtf8) {
  const std::string name = "data/Zuschläge – 運賃.data";
  copyTo(GetParam().name, mill_.folder() / name);
  fs::remove(file());
  expectWholeRun(mill_, runWithName(name));
}

TEST_P(InputFileFaults, ANameOf600BytesInOnePartEndsTheRun) {
  expectUnopened(GetParam(), runWithName(std::string(600, 'n')));
}

// Only the first 511 bytes of the name of the parameter file count.
TEST_P(InputFileFaults, ANameOf600Bytes) {
  const std::string path = pathOf600Bytes(mill_.folder(), ".data");
  copyTo(GetParam().name, path);
  const Result result = runWithName(path);
  if (GetParam().key[0] == '\0') {
    expectUnopened(GetParam(), result);
  } else {
    expectWholeRun(mill_, result);
    EXPECT_THAT(mill_.log(), HasSubstr(": " + path + "\n"));
  }
}

TEST_P(InputFileFaults, APipeWhoseWriterClosesIsAFileThatEnds) {
  const std::string text = contentOf(file());
  fs::remove(file());
  ASSERT_EQ(mkfifo(file().c_str(), 0600), 0);
  std::thread writer([&] {
    // Waits for a reader.
    const int pipe = open(file().c_str(), O_WRONLY | O_CLOEXEC);
    // A whole line and a part of one, and then no more.
    const std::string bytes = text + "cut, in the";
    EXPECT_EQ(write(pipe, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    close(pipe);
  });
  const Result result = mill_.run();
  // Where the run never came, the writer must not wait for ever.
  const int reader = open(file().c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  writer.join();
  close(reader);
  expectWholeRun(mill_, result);
}

TEST_F(FileFaults, AnEmptyNameOfTheParameterFileEndsTheRun) {
  expectUnopened(kParameterFile, mill_.run({{"ZEM_CVN_PARAM", ""}}));
}

TEST_F(FileFaults, TheParameterFileMayHave511BytesOfName) {
  const std::string path = pathOf600Bytes(mill_.folder(), ".data").substr(0, 511);
  copyTo("Parameters.data", path);
  fs::remove(mill_.data("Parameters.data"));
  expectWholeRun(mill_, mill_.run({{"ZEM_CVN_PARAM", path}}));
  expectWholeRun(mill_, mill_.run({{"ZEM_CVN_PARAM", path + "more"}}));
}

// The two files that are written.

TEST_F(FileFaults, ALogThatCannotBeOpenedEndsTheRunBeforeAnythingIsWritten) {
  const std::string long_name(600, 'l');
  fs::create_directory(mill_.data("folder"));
  for (const std::string &name :
       {std::string("nowhere\\run.log"), std::string("data\\folder"), long_name}) {
    setParameter("log file", name);
    expectUnwritable("Could not open log file: " + name, mill_.run());
    EXPECT_FALSE(exists(mill_.data("CV.imp")));
  }
}

TEST_F(FileFaults, AnImportFileThatCannotBeOpenedEndsTheRunBeforeTheDataAreRead) {
  const std::string long_name(600, 'i');
  fs::create_directory(mill_.data("folder"));
  fs::remove(mill_.data("machines.data"));
  for (const std::string &name :
       {std::string("nowhere\\CV.imp"), std::string("data\\folder"), long_name}) {
    setParameter("output", name);
    expectUnwritable("Could not open import file: " + name, mill_.run());
    EXPECT_THAT(mill_.log(), EndsWith("Time Limit           : None\n"));
  }
}

TEST_F(FileFaults, WrittenFilesClosedToTheUserEndTheRun) {
  mill_.write("CV.imp", "kept");
  fs::permissions(mill_.data("CV.imp"), fs::perms::owner_read);
  expectUnwritable("Could not open import file: data\\CV.imp", runBoundByPermissions());
  EXPECT_EQ(mill_.importFile(), "kept");
  fs::permissions(mill_.data("corvane.log"), fs::perms::owner_read);
  const std::string log = mill_.log();
  expectUnwritable("Could not open log file: data\\corvane.log", runBoundByPermissions());
  EXPECT_EQ(mill_.log(), log);
}

TEST_F(FileFaults, WrittenFilesMayHaveOddNames) {
  const std::string deep = pathOf600Bytes(mill_.folder(), ".out");
  fs::create_directories(fs::path(deep).parent_path());
  fs::create_directory(mill_.folder() / "Läufe");
  for (const std::string &name : {deep, std::string("Läufe\\Tag – 一.out")}) {
    setParameter("output", name + "i");
    setParameter("log file", name + "l");
    EXPECT_EQ(mill_.run().status, 0);
    std::string path = name;
    std::replace(path.begin(), path.end(), '\\', '/');
    EXPECT_THAT(contentOf(mill_.folder() / (path + "i")), EndsWith("import file.\n"));
    EXPECT_THAT(contentOf(mill_.folder() / (path + "l")),
                HasSubstr("\nOutput File          : " + name));
  }
}

// A file of the literal name is taken first.
TEST_F(FileFaults, WrittenFilesWhoseNamesHoldABackslashAreFoundFirst) {
  for (const char *name : {"data\\corvane.log", "data\\CV.imp"}) {
    std::ofstream(mill_.folder() / name) << "";
  }
  EXPECT_EQ(mill_.run().status, 0);
  EXPECT_THAT(contentOf(mill_.folder() / "data\\corvane.log"), HasSubstr("**** End Corvane. "));
  EXPECT_THAT(contentOf(mill_.folder() / "data\\CV.imp"), EndsWith("import file.\n"));
  EXPECT_FALSE(exists(mill_.data("corvane.log")) || exists(mill_.data("CV.imp")));
}

// The log grows even behind a line without an end; the import file is written anew.
TEST_F(FileFaults, WrittenFilesMayBeThereAlready) {
  expectWholeRun(mill_, mill_.run());
  const std::string log = withoutTimes(mill_.log());
  const std::string import = mill_.importFile();
  for (const std::string before : {"", "cut off", "a line\n"}) {
    SCOPED_TRACE(before);
    mill_.write("corvane.log", before);
    mill_.write("CV.imp", before + import + import);
    expectWholeRun(mill_, mill_.run());
    EXPECT_EQ(withoutTimes(mill_.log()), before + log);
    EXPECT_EQ(mill_.importFile(), import);
  }
}

TEST_F(FileFaults, WrittenFilesMayBeDevicesThatKeepNothing) {
  setParameter("log file", "/dev/zero");
  const Result result = mill_.run();
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(mill_.importFile(), EndsWith("import file.\n"));
  setParameter("log file", "data/corvane.log");
  setParameter("output", "/dev/zero");
  EXPECT_EQ(mill_.run().status, 0);
  EXPECT_THAT(mill_.log(), HasSubstr("**** End Corvane. "));
}

// Nothing says so, but nothing looks whole either.
TEST_F(FileFaults, AFullDiskUnderTheImportFileLeavesNothingThatLooksWhole) {
  setParameter("output", "/dev/full");
  const Result result = mill_.run();
  EXPECT_EQ(result.status, 0);
  EXPECT_FALSE(exists(mill_.data("CV.imp")));
}

TEST_F(FileFaults, ADiskThatFillsUpLeavesAnImportFileWithoutATrailer) {
  expectWholeRun(mill_, mill_.run());
  const std::string whole = mill_.importFile();
  setParameter("log file", "/dev/null");
  for (const std::size_t bytes :
       {std::size_t{1}, std::size_t{4096}, whole.size() / 2, whole.size() - 30, whole.size() - 1}) {
    SCOPED_TRACE(bytes);
    Child child = mill_.scripted();
    child.mostFileBytes = bytes;
    const Result result = runChild(child);
    EXPECT_EQ(result.status, 0) << result.err;
    const std::string cut = mill_.importFile();
    EXPECT_LE(cut.size(), bytes);
    EXPECT_THAT(whole, StartsWith(cut));
    EXPECT_THAT(cut, Not(EndsWith("import file.\n")));
  }
}

TEST_F(FileFaults, AFullDiskUnderTheLogDoesNotHarmTheImportFile) {
  setParameter("log file", "/dev/full");
  const Result result = mill_.run();
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(mill_.importFile(), EndsWith("import file.\n"));
  expectGoodImport(mill_, true);
}

TEST_F(FileFaults, AFullDiskOrAClosedPipeUnderStandardOutputChangesNothing) {
  setParameter("unknown", "message");
  mill_.write("orders.data", std::string("bad\n") + MillRun::kOrders);
  Child full = mill_.scripted();
  full.outputTo = "/dev/full";
  expectWholeRun(mill_, runChild(full));
  Child closed = mill_.scripted();
  closed.outputIsClosedPipe = true;
  expectWholeRun(mill_, runChild(closed));
  // A fatal end keeps its exit status.
  fs::remove(mill_.data("orders.data"));
  EXPECT_EQ(runChild(closed).status, 1);
  EXPECT_THAT(mill_.log(), EndsWith("\nError: Could not open orders file.\n"));
}

// Warnings about lines that are too long fill the pipe, each written at once.
TEST_F(FileFaults, ALogWhoseReaderClosesDoesNotEndTheRun) {
  std::string tooLong;
  for (int line = 0; line < 100; ++line) {
    tooLong += std::string(1024, 'x') + "\n";
  }
  mill_.write("machines.data", MillRun::kMachines + tooLong);
  expectWholeRun(mill_, mill_.run());
  EXPECT_GT(mill_.log().size(), kPipeBytes);
  const std::string import = mill_.importFile();
  setParameter("log file", "data/log.pipe");
  const Result result = runAndCloseReader(mill_.scripted(), mill_.data("log.pipe"));
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(mill_.importFile(), import);
}

TEST_F(FileFaults, AnImportFileWhoseReaderClosesDoesNotEndTheRun) {
  std::string orders = MillRun::kOrders;
  for (int customer = 0; customer < 100; ++customer) {
    orders += "1,G,30,1,Customer" + std::to_string(customer) + "\n";
  }
  mill_.write("orders.data", orders);
  expectWholeRun(mill_, mill_.run());
  // Not even what the stream keeps back fits in beside the pipe.
  EXPECT_GT(mill_.importFile().size(), 4 * kPipeBytes);
  const std::string log = withoutTimes(mill_.log());
  fs::remove(mill_.data("corvane.log"));
  setParameter("output", "data/import.pipe");
  const Result result = runAndCloseReader(mill_.scripted(), mill_.data("import.pipe"));
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(logAfterOutputName(withoutTimes(mill_.log())), logAfterOutputName(log));
}

}  // namespace
}  // namespace corvane::faults
