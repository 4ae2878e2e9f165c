// The steps of a run, each with its clock.

#include "export/model_header.h"
#include "generation/column_generation.h"
#include "generation/final_lp.h"
#include "generation/pattern_choice.h"
#include "interposed.h"
#include "planning/freight_rate_file.h"
#include "planning/machine_file.h"
#include "planning/order_file.h"
#include "resources.h"

using namespace corvane;

using bench::interposed;
using bench::Phase;
using bench::Step;

// Calls that go to NAME from other files come to timedNAME; realNAME is the one of the program.
#define CORVANE_WRAP(result, name, mangled, ...)             \
  result real##name(__VA_ARGS__) __asm__("__real_" mangled); \
  result timed##name(__VA_ARGS__) __asm__("__wrap_" mangled)

CORVANE_WRAP(void, ReadMachineFile,
             "_ZN7corvane15readMachineFileERNS_12PlanningDataERK7QStringRSt14basic_"
             "ifstreamIcSt11char_traitsIcEERSo",
             PlanningData &, const QString &, std::ifstream &, std::ostream &);
CORVANE_WRAP(void, ReadOrderFile,
             "_ZN7corvane13readOrderFileERNS_12PlanningDataERK7QStringRSt14basic_"
             "ifstreamIcSt11char_traitsIcEERSo",
             PlanningData &, const QString &, std::ifstream &, std::ostream &);
CORVANE_WRAP(void, ReadFreightRateFile,
             "_ZN7corvane19readFreightRateFileERNS_12PlanningDataERK7QStringRSt14basic_"
             "ifstreamIcSt11char_traitsIcEERSo",
             PlanningData &, const QString &, std::ifstream &, std::ostream &);
CORVANE_WRAP(
    void, GenerateColumns,
    "_ZN7corvane15generateColumnsERKNS_11GradeDemandERKSt6vectorIdSaIdEERKNS_17GenerationContextE",
    const GradeDemand &, const std::vector<double> &, const GenerationContext &);
CORVANE_WRAP(void, SolveFinalLps, "_ZN7corvane13solveFinalLpsERKNS_17GenerationContextE",
             const GenerationContext &);
CORVANE_WRAP(std::vector<RareWidth>, ChoosePatterns,
             "_ZN7corvane14choosePatternsERKNS_18PatternCompPatternERKSt6vectorIdSaIdEEii",
             const PatternCompPattern &, const std::vector<double> &, qint32, qint32);
CORVANE_WRAP(void, PrunePatterns, "_ZN7corvane13prunePatternsERNS_11PatternSetsE", PatternSets &);
CORVANE_WRAP(void, WriteRoot, "_ZN7corvane9writeRootERKNS_9ModelDataERNS_10ImportFileE",
             const ModelData &, ImportFile &);

#undef CORVANE_WRAP

namespace {

double countPatterns(const PatternSets &sets) {
  double count = 0;
  for (const PatternCompPattern *set : sets.all) {
    count += set->patterns->count();
  }
  return count;
}

}  // namespace

void timedReadMachineFile(PlanningData &data, const QString &name, std::ifstream &file,
                          std::ostream &log) {
  const Step step(Phase::kReading);
  realReadMachineFile(data, name, file, log);
}

void timedReadOrderFile(PlanningData &data, const QString &name, std::ifstream &file,
                        std::ostream &log) {
  const Step step(Phase::kReading);
  realReadOrderFile(data, name, file, log);
}

void timedReadFreightRateFile(PlanningData &data, const QString &name, std::ifstream &file,
                              std::ostream &log) {
  const Step step(Phase::kReading);
  realReadFreightRateFile(data, name, file, log);
  interposed().result->readMemory = bench::peakMemory();
}

void timedGenerateColumns(const GradeDemand &demand, const std::vector<double> &deckleWidths,
                          const GenerationContext &context) {
  const Step step(Phase::kGenerationRest);
  realGenerateColumns(demand, deckleWidths, context);
}

void timedSolveFinalLps(const GenerationContext &context) {
  interposed().result->patterns = countPatterns(context.sets);
  const Step step(Phase::kFinalRest);
  realSolveFinalLps(context);
}

std::vector<RareWidth> timedChoosePatterns(const PatternCompPattern &set,
                                           const std::vector<double> &demandWidths,
                                           qint32 periodCount, qint32 occurMin) {
  const Step step(Phase::kReport);
  return realChoosePatterns(set, demandWidths, periodCount, occurMin);
}

void timedPrunePatterns(PatternSets &sets) {
  {
    const Step step(Phase::kPrune);
    realPrunePatterns(sets);
  }
  interposed().result->keptPatterns = countPatterns(sets);
}

// The first line of the import file; what follows is export to the end of the run.
void timedWriteRoot(const ModelData &data, ImportFile &file) {
  interposed().exporting = std::make_unique<Step>(Phase::kExport);
  realWriteRoot(data, file);
}
