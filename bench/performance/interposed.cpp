#include "interposed.h"

#include "phase_clock.h"
#include "real_operations.h"

namespace corvane::bench {

namespace {

LpRecording *recordingOfRun = nullptr;

// Masters are solved while patterns are generated, final LPs while they are selected.
bool isGenerating() {
  const Phase phase = PhaseClock::instance().current();
  return phase == Phase::kGenerationRest || phase == Phase::kPricing;
}

Phase solverPhase() {
  return isGenerating() ? Phase::kMasterSolver : Phase::kFinalSolver;
}

template <typename Operation>
auto inSolver(Operation operation) {
  const InPhase timed(solverPhase());
  return operation();
}

// What the program does from here on, until its next call.
void goOnWith(Phase generating, Phase selecting) {
  PhaseClock::instance().switchTo(isGenerating() ? generating : selecting);
}

}  // namespace

void recordLps(LpRecording *recording) {
  recordingOfRun = recording;
}

}  // namespace corvane::bench

namespace bench = corvane::bench;
using bench::Phase;

extern "C" {

CPXENVptr __wrap_CPXopenCPLEXruntime(int *status, int serial, const char *licence) {
  return bench::inSolver([&] { return __real_CPXopenCPLEXruntime(status, serial, licence); });
}

int __wrap_CPXcloseCPLEX(CPXENVptr *env) {
  bench::goOnWith(Phase::kGenerationRest, Phase::kFinalRest);
  return bench::inSolver([&] { return __real_CPXcloseCPLEX(env); });
}

// Also where pricing found nothing for the LP before.
CPXLPptr __wrap_CPXcreateprob(CPXENVptr env, int *status, const char *name) {
  bench::goOnWith(Phase::kGenerationRest, Phase::kFinalRest);
  return bench::inSolver([&] { return __real_CPXcreateprob(env, status, name); });
}

int __wrap_CPXcopylp(CPXENVptr env, CPXLPptr lp, int columns, int rows, int sense,
                     const double *objective, const double *rhs, const char *senses,
                     const int *matbeg, const int *matcnt, const int *matind, const double *matval,
                     const double *lower, const double *upper, const double *ranges) {
  if (bench::recordingOfRun != nullptr) {
    bench::recordingOfRun->load(bench::isGenerating(), columns, rows, objective, rhs, matbeg,
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
  bench::PhaseClock::instance().switchTo(Phase::kGenerationRest);
  if (bench::recordingOfRun != nullptr) {
    bench::recordingOfRun->add(columns, nonzeros, objective, matbeg, matind, matval);
  }
  return bench::inSolver([&] {
    return __real_CPXaddcols(env, lp, columns, nonzeros, objective, matbeg, matind, matval, lower,
                             upper, names);
  });
}

int __wrap_CPXprimopt(CPXENVptr env, CPXLPptr lp) {
  return bench::inSolver([&] { return __real_CPXprimopt(env, lp); });
}

int __wrap_CPXgetobjval(CPXENVptr env, CPXLPptr lp, double *value) {
  return bench::inSolver([&] { return __real_CPXgetobjval(env, lp, value); });
}

int __wrap_CPXgetx(CPXENVptr env, CPXLPptr lp, double *x, int begin, int end) {
  return bench::inSolver([&] { return __real_CPXgetx(env, lp, x, begin, end); });
}

// What follows is the price list of these values, and pricing up to the next call.
int __wrap_CPXgetpi(CPXENVptr env, CPXLPptr lp, double *pi, int begin, int end) {
  const int code = bench::inSolver([&] { return __real_CPXgetpi(env, lp, pi, begin, end); });
  if (bench::recordingOfRun != nullptr) {
    bench::recordingOfRun->duals(pi, end - begin + 1);
  }
  bench::goOnWith(Phase::kPricing, Phase::kFinalRest);
  return code;
}

// The last that the program reads of a final LP: what follows is handing it out.
int __wrap_CPXgetdj(CPXENVptr env, CPXLPptr lp, double *dj, int begin, int end) {
  const int code = bench::inSolver([&] { return __real_CPXgetdj(env, lp, dj, begin, end); });
  bench::goOnWith(Phase::kGenerationRest, Phase::kSolutions);
  return code;
}

int __wrap_CPXfreeprob(CPXENVptr env, CPXLPptr *lp) {
  bench::goOnWith(Phase::kGenerationRest, Phase::kFinalRest);
  return bench::inSolver([&] { return __real_CPXfreeprob(env, lp); });
}

}  // extern "C"
