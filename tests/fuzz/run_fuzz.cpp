// Input: a parameter file, a machine file, an order file and a freight rate file, with a line "%%"
// between each two. The run goes through every step of the program but the opening of the log and
// the import file, on the scripted solver library and within a small budget. It may end early with
// an error of its own; a run that goes through must write an import file that the import checker
// takes, whose demand is that of the orders.

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <sstream>
#include <string>

#include "app/parameter_file.h"
#include "app/planner.h"
#include "app/run_settings.h"
#include "check.h"
#include "core/skip_list_cursor.h"
#include "demand_check.h"
#include "export/model.h"
#include "generation/generate_patterns.h"
#include "import_checker.h"
#include "memory_file.h"
#include "planning/freight_rate_file.h"
#include "planning/machine_file.h"
#include "planning/order_file.h"
#include "run_ended.h"
#include "scripted_lp.h"
#include "target.h"

using namespace corvane;

namespace {

using corvane::fuzz::MemoryFile;
using corvane::fuzz::require;
using corvane::fuzz::RunEnded;

// Beyond this a run takes too long to be one of many.
constexpr std::size_t kMostBytes = 4096;
constexpr qsizetype kMostLps = 24;
constexpr std::size_t kMostWidths = 12;
constexpr int kMostSets = 12;

struct Inputs {
  std::string parameters;
  std::string machines;
  std::string orders;
  std::string freightRates;
};

Inputs split(std::string_view rest) {
  Inputs inputs;
  inputs.parameters = corvane::fuzz::takePart(rest);
  inputs.machines = corvane::fuzz::takePart(rest);
  inputs.orders = corvane::fuzz::takePart(rest);
  inputs.freightRates = rest;
  return inputs;
}

void keepToBudget(RunParameters &parameters) {
  parameters.newPatternsPerIteration = 10;
  parameters.stopGeneratingThreshold = 100;
  // The clock must not decide what a run does.
  parameters.seed = std::max(parameters.seed, 0);
  parameters.timeLimit = parameters.timeLimit == 0 ? 0 : -1;
}

bool isWithinBudget(const PlanningData &data) {
  return data.grades.size() * data.periods.size() <= kMostLps &&
         data.cutters.count() <= kMostSets &&
         std::all_of(data.demand.grades.cbegin(), data.demand.grades.cend(),
                     [](const GradeDemand &grade) { return grade.widths.size() <= kMostWidths; });
}

struct Outcome {
  std::string importFile;
  double totalDemand = 0;
};

Outcome modelOf(const RunRecord &run, std::ostream &log) {
  std::ostringstream stream;
  const double totalDemand =
      writeModel(run.planning, run.patterns, exportSettings(run.parameters), stream, log);
  return {stream.str(), totalDemand};
}

// False when the input is beyond the budget.
bool readInputs(RunRecord &run, const Inputs &inputs, std::ostream &log) {
  static MemoryFile files[4];
  const std::string *texts[] = {&inputs.parameters, &inputs.machines, &inputs.orders,
                                &inputs.freightRates};
  for (std::size_t at = 0; at < 4; ++at) {
    files[at].write(*texts[at]);
  }
  require(readParameters(run.parameters, files[0].name(), std::cout), "a parameter file");
  std::ifstream streams[4];
  keepToBudget(run.parameters);
  printParameters(run.parameters, log);
  readMachineFile(run.planning, QString::fromStdString(files[1].name()), streams[1], log);
  readOrderFile(run.planning, QString::fromStdString(files[2].name()), streams[2], log);
  readFreightRateFile(run.planning, QString::fromStdString(files[3].name()), streams[3], log);
  return isWithinBudget(run.planning);
}

// The language of the import file knows no quotation mark inside a name.
bool namesCanBeRead(const Inputs &inputs) {
  return (inputs.machines + inputs.orders + inputs.freightRates).find('"') == std::string::npos;
}

void requireGoodModel(const RunRecord &run, const Inputs &inputs, const Outcome &outcome) {
  import_checker::ImportOptions options;
  options.batch = run.parameters.batch != 0;
  options.delay = run.parameters.delay != 0;
  options.patternsOnly = run.parameters.patternsOnly != 0;
  options.periods = static_cast<std::size_t>(run.planning.periods.size());
  options.ordinaryData = false;
  const auto complaints = import_checker::checkImport(outcome.importFile, options);
  require(complaints.empty(), import_checker::describe(complaints));
  if (options.patternsOnly) {
    require(outcome.totalDemand == 0.0, "no demand with patterns only");
    return;
  }
  const import_checker::OrderData data{inputs.machines, inputs.orders};
  const auto differences = import_checker::checkDemand(outcome.importFile, data);
  require(differences.empty(), import_checker::describe(differences));
  const double ordered = import_checker::orderedInches(data);
  const bool conserved = std::isfinite(ordered)
                             ? std::abs(ordered - outcome.totalDemand) <= 1e-9 * ordered
                             : !std::isfinite(outcome.totalDemand);
  require(conserved, "the demanded inches");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  if (size > kMostBytes) {
    return -1;
  }
  const corvane::fuzz::Quiet quiet;
  const Inputs inputs = split(corvane::fuzz::textOf(data, size));
  scripted_lp::reset();
  PlanningComparators comparators;
  RunRecord run(comparators);
  PatternRandom random;
  std::ostringstream log;
  try {
    if (!readInputs(run, inputs, log)) {
      return -1;
    }
    ProgressLine progress;
    const GenerationSettings settings = generationSettings(run.parameters);
    generatePatterns({run.planning, settings, run.patterns, random, log, progress});
    const Outcome outcome = modelOf(run, log);
    if (namesCanBeRead(inputs)) {
      requireGoodModel(run, inputs, outcome);
    }
  } catch (const RunEnded &end) {
    require(log.str().ends_with(end.text + "\n"), "an error that is last in the log");
  }
  return 0;
}
