// Pricing against the literal pricing, on price lists as they stand late in column generation: most
// attempts fail. Both make the same draws and picks, which is checked first.

#include <benchmark/benchmark.h>

#include <functional>
#include <random>
#include <set>
#include <stdexcept>
#include <vector>

#include "generation/price_list.h"
#include "generation/pricing.h"
#include "literal_pricing.h"

using namespace corvane;

namespace {

constexpr double kDeckleWidth = 250;
constexpr double kPickPercentage = 10;

struct Master {
  // The widths of a pattern take up the deckle; a width is worth what it takes of it, more or less.
  Master(int rows, int widthsInPattern) : limits{1000, widthsInPattern} {
    std::mt19937 engine(1);
    const double narrowest = 2 * kDeckleWidth / (3 * widthsInPattern);
    for (int row = 0; row < rows; ++row) {
      widths.push_back(narrowest * (3.0 - 2.0 * row / rows));
      duals.push_back(widths.back() * (0.9 + 0.1 * static_cast<double>(engine() % 1000) / 1000));
    }
    setPickRange(rows, kPickPercentage, random);
    random.seed(42);
    program.rebuild(widths, duals.data());
    literal.rebuild(widths, duals.data());
  }

  void checkPicks() {
    PatternRandom other = random;
    for (int candidate = 0; candidate < 100; ++candidate) {
      Candidate ours;
      Candidate expected;
      const bool isSame = priceCandidate(kDeckleWidth, program, limits, random, ours) ==
                          literal.price(kDeckleWidth, limits, other, expected);
      if (!isSame || random.state() != other.state() || widthsOf(ours) != widthsOf(expected)) {
        throw std::runtime_error("the picks differ");
      }
    }
  }

  // Descending; a candidate of the program holds them as they were picked.
  static std::multiset<double, std::greater<>> widthsOf(const Candidate &candidate) {
    std::multiset<double, std::greater<>> sorted;
    for (int at = 0; at < candidate.count; ++at) {
      sorted.insert(candidate.widths[static_cast<std::size_t>(at)]);
    }
    return sorted;
  }

  std::vector<double> widths;
  std::vector<double> duals;
  PricingLimits limits;
  PatternRandom random;
  PriceList program;
  bench::LiteralPricing literal;
};

void sizes(benchmark::internal::Benchmark *benchmark) {
  for (const int rows : {20, 60, 150, 400}) {
    for (const int widths : {5, 10}) {
      benchmark->Args({rows, widths});
    }
  }
}

template <bool kLiteral>
void price(benchmark::State &state) {
  Master master(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
  master.checkPicks();
  for (auto unused : state) {
    Candidate candidate;
    benchmark::DoNotOptimize(
        kLiteral ? master.literal.price(kDeckleWidth, master.limits, master.random, candidate)
                 : priceCandidate(kDeckleWidth, master.program, master.limits, master.random,
                                  candidate));
  }
}
BENCHMARK_TEMPLATE(price, true)->Apply(sizes)->Name("literal");
BENCHMARK_TEMPLATE(price, false)->Apply(sizes)->Name("program");

void buildPriceList(benchmark::State &state) {
  Master master(static_cast<int>(state.range(0)), 5);
  for (auto unused : state) {
    master.program.rebuild(master.widths, master.duals.data());
  }
}
BENCHMARK(buildPriceList)->Arg(20)->Arg(60)->Arg(150)->Arg(400);

}  // namespace
