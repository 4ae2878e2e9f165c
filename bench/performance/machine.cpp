#include "machine.h"

#include <unistd.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <string>
#include <thread>

namespace corvane::bench {

namespace {

// The value of the first line "key : value" or "key=value" of a system file.
std::string valueIn(const char *file, const std::string &key) {
  std::ifstream in(file);
  std::string line;
  while (std::getline(in, line)) {
    if (line.rfind(key, 0) == 0) {
      const std::size_t at = line.find_first_of(":=");
      const std::size_t begin = line.find_first_not_of(" \t\"", at + 1);
      const std::size_t end = line.find_last_not_of(" \t\"");
      return begin <= end ? line.substr(begin, end - begin + 1) : "";
    }
  }
  return "unknown";
}

long loadAverage() {
  std::array<double, 3> averages{};
  return getloadavg(averages.data(), 3) == 3 ? std::lround(averages[2]) : 0;
}

std::string today() {
  const std::time_t now = std::time(nullptr);
  std::array<char, 32> text{};
  std::strftime(text.data(), text.size(), "%Y-%m-%d", std::gmtime(&now));
  return text.data();
}

}  // namespace

void describeMachine(std::ostream &out) {
  const double bytes =
      static_cast<double>(sysconf(_SC_PHYS_PAGES)) * static_cast<double>(sysconf(_SC_PAGESIZE));
  out << "- Processor: " << valueIn("/proc/cpuinfo", "model name") << ", "
      << std::thread::hardware_concurrency() << " cores, one used\n"
      << "- Memory: " << std::lround(bytes / (1U << 30U)) << " GiB\n"
      << "- System: " << valueIn("/etc/os-release", "PRETTY_NAME") << '\n'
      << "- Compiler: " << CORVANE_COMPILER << '\n'
      << "- Programs that wanted a processor in the last 15 minutes: " << loadAverage() << '\n'
      << "- Date: " << today() << '\n';
}

}  // namespace corvane::bench
