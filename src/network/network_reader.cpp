#include "network/network_reader.h"

#include <algorithm>
#include <fstream>
#include <vector>

#include "core/files.h"
#include "network/network_builder.h"

namespace corvane::network {

namespace {

constexpr std::size_t kBlock = std::size_t{1} << 20U;
// A line that is longer than a block is none that the program writes.
constexpr const char *kTooLong = "the line has no end within a million characters";

// Gives the builder the whole lines of the text; what is left over is returned.
std::string_view takeLines(NetworkBuilder &builder, std::string_view text) {
  for (std::size_t end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
    builder.take(text.substr(0, end));
    text.remove_prefix(end + 1);
  }
  return text;
}

// The rest of a file behind its last line break.
void takeRest(NetworkBuilder &builder, std::string_view rest) {
  if (!rest.empty()) {
    builder.takeCutLine();
  }
}

}  // namespace

Network readNetworkFile(const std::string &path) {
  std::ifstream file;
  if (!openForReading(file, path)) {
    throw Refused(0, "the import file " + path + " cannot be opened");
  }
  NetworkBuilder builder;
  std::vector<char> block(2 * kBlock);
  std::size_t held = 0;  // of a line that goes on in the next block
  quint64 bytes = 0;
  while (file) {
    file.read(block.data() + held, static_cast<std::streamsize>(kBlock));
    const auto read = static_cast<std::size_t>(file.gcount());
    bytes += read;
    const std::string_view rest = takeLines(builder, {block.data(), held + read});
    if (rest.size() > kBlock) {
      throw Refused(builder.lines() + 1, kTooLong);
    }
    std::copy(rest.begin(), rest.end(), block.begin());
    held = rest.size();
  }
  if (file.bad()) {
    throw Refused(0, "the file cannot be read to its end");
  }
  takeRest(builder, {block.data(), held});
  return builder.finish(bytes);
}

Network readNetworkText(std::string_view text) {
  NetworkBuilder builder;
  takeRest(builder, takeLines(builder, text));
  return builder.finish(text.size());
}

}  // namespace corvane::network
