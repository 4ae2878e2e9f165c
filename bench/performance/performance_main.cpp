// corvane_performance [REPORT [REPEATS]]: measures the program on generated mills, prints the
// report and writes it to the file. 5 repeats by default. Works in the folder for temporary files.

#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <sstream>

#include "machine.h"
#include "report_sections.h"

using namespace corvane;

namespace {

void writeReport(std::ostream &out, int repeats, const std::filesystem::path &folder) {
  out << "# Performance\n\n"
         "Written by `./run-bench`; `bench/` holds what measures. Everything is processor time of "
         "one thread,\nso that other programs on the machine do not count, and every figure is the "
         "median of "
      << repeats
      << " repeats, with\nthe lowest and the highest in brackets. What is compared was measured in "
         "turns, each in a process of\nits own.\n\n";
  std::ostringstream measured;
  for (const auto section : {bench::writeWholeRuns, bench::writeSolver, bench::writePricing,
                             bench::writeFiles, bench::writeMemory, bench::writeGrowth}) {
    measured << '\n';
    section(measured, repeats, folder);
    std::cerr << '.' << std::flush;
  }
  // Last, so that it tells how busy the machine was meanwhile.
  bench::describeMachine(out);
  out << measured.str();
}

}  // namespace

int main(int argc, char **argv) {
  const int repeats = argc > 2 ? std::max(1, std::atoi(argv[2])) : 5;
  const std::filesystem::path folder =
      std::filesystem::temp_directory_path() / "corvane_performance";
  try {
    std::ostringstream report;
    writeReport(report, repeats, folder);
    std::filesystem::remove_all(folder);
    std::cerr << '\n';
    std::cout << report.str();
    if (argc > 1) {
      std::ofstream file(argv[1], std::ios::trunc);
      file << report.str();
      return file.flush() ? EXIT_SUCCESS : EXIT_FAILURE;
    }
  } catch (const std::exception &error) {
    std::cerr << error.what() << '\n';
    return EXIT_FAILURE;
  }
  return EXIT_SUCCESS;
}
