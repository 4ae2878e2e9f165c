// Pricing against the literal pricing, on price lists as they stand late in column generation: most
// attempts fail. Both make the same draws and picks, which is checked first.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <stdexcept>
#include <vector>

#include "generation/price_list.h"
#include "generation/pricing.h"
#include "support/literal_pricing.h"

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
    program.rebuild(widths, duals);
    literalPrices = support::literalPriceList(widths, duals);
    literalRandom.state = random.state();
    literalRandom.high = random.high();
  }

  void checkPicks() {
    for (int number = 0; number < 100; ++number) {
      Candidate candidate;
      const bool found = priceCandidate(kDeckleWidth, program, limits, random, candidate);
      std::vector<double> picks;
      support::LiteralCandidate literal;
      const bool isSame =
          found == support::literalPrice(kDeckleWidth, literalPrices, limits.attempts,
                                         limits.widths, literalRandom, literal, &picks);
      if (!isSame || random.state() != literalRandom.state ||
          (found && !std::equal(picks.begin(), picks.end(), candidate.widths.begin(),
                                candidate.widths.begin() + candidate.count))) {
        throw std::runtime_error("the picks differ");
      }
    }
  }

  std::vector<double> widths;
  std::vector<double> duals;
  PricingLimits limits;
  PatternRandom random;
  PriceList program;
  std::vector<support::LiteralPrice> literalPrices;
  support::LiteralRandom literalRandom;
};

void sizes(benchmark::internal::Benchmark *benchmark) {
  for (const int rows : {20, 60, 150, 400}) {
    for (const int widths : {5, 10}) {
      benchmark->Args({rows, widths});
    }
  }
}

void priceLiterally(benchmark::State &state) {
  Master master(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
  for (auto unused : state) {
    support::LiteralCandidate candidate;
    benchmark::DoNotOptimize(support::literalPrice(kDeckleWidth, master.literalPrices,
                                                   master.limits.attempts, master.limits.widths,
                                                   master.literalRandom, candidate));
  }
}
BENCHMARK(priceLiterally)->Apply(sizes);

void price(benchmark::State &state) {
  Master master(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
  master.checkPicks();
  for (auto unused : state) {
    Candidate candidate;
    benchmark::DoNotOptimize(
        priceCandidate(kDeckleWidth, master.program, master.limits, master.random, candidate));
  }
}
BENCHMARK(price)->Apply(sizes);

void buildPriceList(benchmark::State &state) {
  Master master(static_cast<int>(state.range(0)), 5);
  for (auto unused : state) {
    master.program.rebuild(master.widths, master.duals);
  }
}
BENCHMARK(buildPriceList)->Arg(20)->Arg(60)->Arg(150)->Arg(400);

}  // namespace
