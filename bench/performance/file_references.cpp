#include "file_references.h"

#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "resources.h"

namespace corvane::bench {

double readAndSplit(const std::string &file) {
  const double begin = cpuSeconds();
  std::ifstream in(file);
  std::string line;
  std::size_t fields = 0;
  while (std::getline(in, line)) {
    for (char *field = std::strtok(line.data(), ","); field != nullptr;
         field = std::strtok(nullptr, ",")) {
      ++fields;
    }
  }
  if (fields == 0) {
    throw std::runtime_error("nothing to read");
  }
  return cpuSeconds() - begin;
}

double writeAndFlush(const std::string &file, const std::string &copy) {
  std::ifstream in(file);
  const std::string text{std::istreambuf_iterator<char>(in), {}};
  const double begin = cpuSeconds();
  std::ofstream out(copy, std::ios::trunc);
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = text.find('\n', at) + 1;
    out.write(text.data() + at, static_cast<std::streamsize>(end - at));
    out.flush();
    at = end;
  }
  out.close();
  return cpuSeconds() - begin;
}

}  // namespace corvane::bench
