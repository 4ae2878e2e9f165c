#include "interposed.h"

#include <algorithm>

#include "generation/lp_columns.h"
#include "generation/price_list.h"
#include "generation/pricing.h"
#include "phase_clock.h"
#include "real_operations.h"
#include "support/literal_pricing.h"

namespace corvane::bench {

Interposed &interposed() {
  static Interposed setting;
  return setting;
}

namespace {

std::vector<support::LiteralPrice> literalPrices;

bool priceLiterally(double deckleWidth, const PricingLimits &limits, PatternRandom &random,
                    Candidate &candidate) {
  support::LiteralRandom literal;
  literal.state = random.state();
  literal.low = random.low();
  literal.high = random.high();
  support::LiteralCandidate made;
  made.trim = deckleWidth;
  const bool found = support::literalPrice(deckleWidth, literalPrices, limits.attempts,
                                           limits.widths, literal, made);
  random.seed(literal.state);
  candidate.count = static_cast<int>(made.widths.size());
  std::copy(made.widths.begin(), made.widths.end(), candidate.widths.begin());
  candidate.trim = made.trim;
  return found;
}

// Masters are solved while patterns are generated, final LPs while they are selected.
bool isGenerating() {
  const Phase phase = PhaseClock::instance().current();
  return phase == Phase::kGenerationRest || phase == Phase::kPatternSets;
}

Phase solverPhase() {
  return isGenerating() ? Phase::kMasterSolver : Phase::kFinalSolver;
}

template <typename Operation>
auto inSolver(Operation operation) {
  const InPhase timed(solverPhase());
  return operation();
}

}  // namespace

}  // namespace corvane::bench

namespace bench = corvane::bench;
using namespace corvane;
using bench::InPhase;
using bench::interposed;
using bench::Phase;
using bench::PhaseClock;

extern "C" {

CPXENVptr __wrap_CPXopenCPLEXruntime(int *status, int serial, const char *licence) {
  return bench::inSolver([&] { return __real_CPXopenCPLEXruntime(status, serial, licence); });
}

int __wrap_CPXcloseCPLEX(CPXENVptr *env) {
  return bench::inSolver([&] { return __real_CPXcloseCPLEX(env); });
}

CPXLPptr __wrap_CPXcreateprob(CPXENVptr env, int *status, const char *name) {
  return bench::inSolver([&] { return __real_CPXcreateprob(env, status, name); });
}

int __wrap_CPXcopylp(CPXENVptr env, CPXLPptr lp, int columns, int rows, int sense,
                     const double *objective, const double *rhs, const char *senses,
                     const int *matbeg, const int *matcnt, const int *matind, const double *matval,
                     const double *lower, const double *upper, const double *ranges) {
  if (interposed().recording != nullptr) {
    interposed().recording->load(bench::isGenerating(), columns, rows, objective, rhs, matbeg,
                                 matcnt, matind, matval);
  }
  return bench::inSolver([&] {
    return __real_CPXcopylp(env, lp, columns, rows, sense, objective, rhs, senses, matbeg, matcnt,
                            matind, matval, lower, upper, ranges);
  });
}

int __wrap_CPXaddcols(CPXENVptr env, CPXLPptr lp, int columns, int nonzeros,
                      const double *objective, const int *matbeg, const int *matind,
                      const double *matval, const double *lower, const double *upper,
                      char **names) {
  PhaseClock::instance().switchTo(Phase::kGenerationRest);
  if (interposed().recording != nullptr) {
    interposed().recording->add(columns, nonzeros, objective, matbeg, matind, matval);
  }
  return bench::inSolver([&] {
    return __real_CPXaddcols(env, lp, columns, nonzeros, objective, matbeg, matind, matval, lower,
                             upper, names);
  });
}

int __wrap_CPXprimopt(CPXENVptr env, CPXLPptr lp) {
  if (bench::isGenerating()) {
    // Also where an iteration added no column.
    PhaseClock::instance().switchTo(Phase::kGenerationRest);
  }
  return bench::inSolver([&] { return __real_CPXprimopt(env, lp); });
}

int __wrap_CPXgetobjval(CPXENVptr env, CPXLPptr lp, double *value) {
  return bench::inSolver([&] { return __real_CPXgetobjval(env, lp, value); });
}

int __wrap_CPXgetx(CPXENVptr env, CPXLPptr lp, double *x, int begin, int end) {
  return bench::inSolver([&] { return __real_CPXgetx(env, lp, x, begin, end); });
}

int __wrap_CPXgetpi(CPXENVptr env, CPXLPptr lp, double *pi, int begin, int end) {
  return bench::inSolver([&] { return __real_CPXgetpi(env, lp, pi, begin, end); });
}

// The last that the program reads of a final LP: what follows is handing it out.
int __wrap_CPXgetdj(CPXENVptr env, CPXLPptr lp, double *dj, int begin, int end) {
  const int code = bench::inSolver([&] { return __real_CPXgetdj(env, lp, dj, begin, end); });
  PhaseClock::instance().switchTo(Phase::kFinalLists);
  return code;
}

int __wrap_CPXfreeprob(CPXENVptr env, CPXLPptr *lp) {
  PhaseClock::instance().switchTo(Phase::kFinalRest);
  return bench::inSolver([&] { return __real_CPXfreeprob(env, lp); });
}

}  // extern "C"

// The C++ functions, by the names that the compiler gives them.

void realRebuild(PriceList &list, const std::vector<double> &widths,
                 const std::vector<double>
                     &duals) __asm__("__real__ZN7corvane9PriceList7rebuildERKSt6vectorIdSaIdEES5_");
void timedRebuild(PriceList &list, const std::vector<double> &widths,
                  const std::vector<double> &
                      duals) __asm__("__wrap__ZN7corvane9PriceList7rebuildERKSt6vectorIdSaIdEES5_");
bool realPriceCandidate(double deckleWidth, const PriceList &prices, const PricingLimits &limits, PatternRandom &random, Candidate &candidate) __asm__(
    "__real__ZN7corvane14priceCandidateEdRKNS_9PriceListERKNS_13PricingLimitsERNS_"
    "13PatternRandomERNS_9CandidateE");
bool timedPriceCandidate(double deckleWidth, const PriceList &prices, const PricingLimits &limits, PatternRandom &random, Candidate &candidate) __asm__(
    "__wrap__ZN7corvane14priceCandidateEdRKNS_9PriceListERKNS_13PricingLimitsERNS_"
    "13PatternRandomERNS_9CandidateE");
void realAppend(LpColumns &columns, double cost, const QLinkedList<double> &widths, const std::vector<double> &rowWidths) __asm__(
    "__real__ZN7corvane9LpColumns6appendEdRK11QLinkedListIdERKSt6vectorIdSaIdEE");
void timedAppend(LpColumns &columns, double cost, const QLinkedList<double> &widths, const std::vector<double> &rowWidths) __asm__(
    "__wrap__ZN7corvane9LpColumns6appendEdRK11QLinkedListIdERKSt6vectorIdSaIdEE");

void timedRebuild(PriceList &list, const std::vector<double> &widths,
                  const std::vector<double> &duals) {
  const InPhase timed(Phase::kPricing);
  if (interposed().literalPricing) {
    bench::literalPrices = support::literalPriceList(widths, duals);
  } else {
    realRebuild(list, widths, duals);
  }
}

// What follows a candidate that was found is its way into the pattern set.
bool timedPriceCandidate(double deckleWidth, const PriceList &prices, const PricingLimits &limits,
                         PatternRandom &random, Candidate &candidate) {
  PhaseClock::instance().switchTo(Phase::kPricing);
  const bool found = interposed().literalPricing
                         ? bench::priceLiterally(deckleWidth, limits, random, candidate)
                         : realPriceCandidate(deckleWidth, prices, limits, random, candidate);
  PhaseClock::instance().switchTo(found ? Phase::kPatternSets : Phase::kGenerationRest);
  return found;
}

void timedAppend(LpColumns &columns, double cost, const QLinkedList<double> &widths,
                 const std::vector<double> &rowWidths) {
  // Seeds and final LPs append columns too, each in a phase of its own.
  if (PhaseClock::instance().current() == Phase::kPatternSets) {
    PhaseClock::instance().switchTo(Phase::kGenerationRest);
  }
  realAppend(columns, cost, widths, rowWidths);
}
