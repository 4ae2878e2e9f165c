#include "pricing_replay.h"

#include <fstream>
#include <iostream>
#include <stdexcept>

#include "app/parameter_file.h"
#include "app/run_settings.h"
#include "generation/generate_patterns.h"
#include "generation/price_list.h"
#include "generation/pricing.h"
#include "planning/machine_file.h"
#include "planning/order_file.h"
#include "resources.h"
#include "support/literal_pricing.h"

namespace corvane::bench {

namespace {

// Calls price() as often as column generation does after one solve: for every deckle width, until
// it finds nothing or enough.
template <typename Price>
void priceAll(const std::vector<double> &deckleWidths, int mostPatterns, Price price) {
  for (const double deckleWidth : deckleWidths) {
    for (int made = 0; made < mostPatterns && price(deckleWidth); ++made) {
    }
  }
}

}  // namespace

PricingReplay::PricingReplay(const std::vector<std::vector<double>> &duals) : duals_(duals) {
  RunParameters parameters;
  readParameters(parameters, parameterFileName(), std::cout);
  settings_ = generationSettings(parameters);
  PlanningComparators comparators;
  PlanningData data(comparators);
  std::ofstream log;
  std::ifstream machines;
  std::ifstream orders;
  readMachineFile(data, parameters.machineFile, machines, log);
  readOrderFile(data, parameters.orderFile, orders, log);
  const QString &grade = data.grades.first();
  widths_ = data.demandWidthsOf(grade);
  PatternSets sets;
  createPatternSets(grade, data.cuttersOf(grade), sets);
  for (const PatternCompPattern *set : sets.all) {
    deckleWidths_.push_back(set->deckleWidth);
  }
}

PricingTimes PricingReplay::run() const {
  const Timed program = priceAsProgram();
  const Timed literal = priceLiterally();
  if (program.lastDraw != literal.lastDraw) {
    throw std::runtime_error("the draws differ");
  }
  return {program.seconds, literal.seconds};
}

PricingReplay::Timed PricingReplay::priceAsProgram() const {
  const PricingLimits limits{settings_.stopGeneratingThreshold, settings_.maximumWidthsInPattern};
  PatternRandom random;
  random.seed(static_cast<quint32>(settings_.seed));
  setPickRange(static_cast<int>(widths_.size()), settings_.widthPickSetSize, random);
  PriceList prices;
  const double begin = cpuSeconds();
  for (const std::vector<double> &duals : duals_) {
    prices.rebuild(widths_, duals);
    priceAll(deckleWidths_, settings_.newPatternsPerIteration, [&](double deckleWidth) {
      Candidate candidate;
      return priceCandidate(deckleWidth, prices, limits, random, candidate);
    });
  }
  return {cpuSeconds() - begin, random.state()};
}

PricingReplay::Timed PricingReplay::priceLiterally() const {
  PatternRandom range;
  setPickRange(static_cast<int>(widths_.size()), settings_.widthPickSetSize, range);
  support::LiteralRandom random;
  random.state = static_cast<quint32>(settings_.seed);
  random.low = range.low();
  random.high = range.high();
  const double begin = cpuSeconds();
  for (const std::vector<double> &duals : duals_) {
    const auto prices = support::literalPriceList(widths_, duals);
    priceAll(deckleWidths_, settings_.newPatternsPerIteration, [&](double deckleWidth) {
      support::LiteralCandidate candidate;
      return support::literalPrice(deckleWidth, prices, settings_.stopGeneratingThreshold,
                                   settings_.maximumWidthsInPattern, random, candidate);
    });
  }
  return {cpuSeconds() - begin, random.state};
}

}  // namespace corvane::bench
