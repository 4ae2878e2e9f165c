#pragma once

#include <cstdint>
#include <filesystem>

namespace corvane::bench {

// What a generated mill is like. Everything else follows from the seed.
struct MillShape {
  int grades = 1;
  int widths = 60;       // demand widths of each grade
  int deckleWidths = 1;  // of each grade, a cutter each
  int periods = 2;
  int widthsInPattern = 5;  // maximum widths in pattern
  int newPatterns = 100;    // new patterns per iteration
  long long orders = 1000;
  int customers = 50;
  int modes = 2;              // of transport
  int reelsADay = 50;         // of each cutter
  int farFreight = 1;         // how many times as much freight costs from all mills but one
  double pickSetSize = 10.0;  // percent
  int attempts = 1000;        // stop generating threshold
  bool delay = true;
  std::uint32_t seed = 1;
};

// Writes the parameter file, the machine file, the order file and the freight rate file of the mill
// into folder/data, by their default names. The same shape gives the same bytes on every platform.
//
// Every width of a grade is ordered in every period as far as the orders suffice; further orders
// are drawn at random, so that many of them share their key and are merged. Throws
// std::runtime_error when a file cannot be written.
void writeMill(const MillShape &shape, const std::filesystem::path &folder);

}  // namespace corvane::bench
