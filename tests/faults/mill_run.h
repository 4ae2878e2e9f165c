#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>

#include "child.h"
#include "support/temporary_folder.h"

namespace corvane::faults {

// The bytes of a file; empty when there is none.
std::string contentOf(const std::filesystem::path &path);

// The text with the times of the banners as YYYY/MM/DD HH:MM:SS.
std::string withoutTimes(const std::string &text);

// The number of lines that equal the text, without their line breaks.
int countLines(const std::string &text, const std::string &line);

// A mill in a folder of its own, and runs of the program there.
class MillRun {
 public:
  MillRun();

  std::filesystem::path folder() const { return folder_.path(); }
  std::filesystem::path data(const std::string &name) const { return folder() / "data" / name; }

  static constexpr const char *kInputs[] = {"Parameters.data", "machines.data", "orders.data",
                                            "freightRates.data"};

  // The four input files: one grade, two widths, two periods, one customer, and a seed.
  static constexpr const char *kParameters =
      "rand num gen seed=7\nnew patterns per iteration=10\nstop generating threshold=100\n";
  static constexpr const char *kMachines = "Mill,C1,G,100,46,68,13\n";
  static constexpr const char *kOrders =
      "1,G,30,5,Customer\n1,G,45,4,Customer\n2,G,30,6,Customer\n";
  static constexpr const char *kFreightRates = "Customer,Mill,Rail,18.5,1\n";

  // Replaces a file under data/.
  void write(const std::string &name, const std::string &bytes) const;
  // Replaces the four input files by those of samples/<name>/data.
  void takeSample(const std::string &name) const;

  std::string log() const { return contentOf(data("corvane.log")); }
  std::string importFile() const { return contentOf(data("CV.imp")); }

  // The program on the scripted solver library, or on the default one; steer it and run it.
  Child scripted() const;
  Child onClp() const;
  Result run(const std::map<std::string, std::string> &environment = {}) const;

 private:
  support::TemporaryFolder folder_;
};

// Expects a run that went through: exit status 0, the end banner last in the log, the trailer last
// in the import file.
void expectWholeRun(const MillRun &mill, const Result &result);

// Expects a run that ended with the words on standard output and last in the log, exit status 1, an
// empty import file, no totals and no end banner.
void expectFatal(const MillRun &mill, const Result &result, const std::string &words);

// Expects that the import file is one that can be read back, with the demand of the orders.
void expectGoodImport(const MillRun &mill, bool ordinaryData);

}  // namespace corvane::faults
