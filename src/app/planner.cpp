#include "app/planner.h"

#include <array>
#include <csignal>
#include <ctime>
#include <iomanip>
#include <iostream>
#include <new>
#include <string>

#include "app/parameter_file.h"
#include "app/process_objects.h"
#include "app/run_files.h"
#include "app/run_settings.h"
#include "core/fatal.h"
#include "core/progress.h"
#include "core/zem_mem_mgr.h"
#include "export/model.h"
#include "generation/generate_patterns.h"
#include "planning/freight_rate_file.h"
#include "planning/machine_file.h"
#include "planning/order_file.h"

namespace corvane {

namespace {

// The local time as "2010/05/17 14:03:22".
std::string timestamp() {
  std::array<char, 80> buffer{};
  const std::time_t now = std::time(nullptr);
  const std::size_t length =
      std::strftime(buffer.data(), buffer.size(), "%Y/%m/%d %X", std::localtime(&now));
  return {buffer.data(), length};
}

void writeTotals(double totalDemand, qint32 totalPatterns, std::ostream &log) {
  log << std::fixed << std::setprecision(4);
  log << "Total demand in inches           : " << totalDemand << std::endl;
  log << "Total number of patterns in model: " << totalPatterns << std::endl;
}

// A reader that closes its end of a pipe, and a file that may not grow any more, are write faults
// like any other, not the end of the run.
void ignoreWriteFaults() {
#if defined(SIGPIPE)
  std::signal(SIGPIPE, SIG_IGN);
#endif
#if defined(SIGXFSZ)
  std::signal(SIGXFSZ, SIG_IGN);
#endif
}

}  // namespace

int runPlanner(RunRecord &run, PatternRandom &random, std::ofstream &log) {
  zemPooledAllocation = 0;
  std::ifstream machineFile;
  std::ifstream orderFile;
  std::ifstream freightRateFile;
  RunParameters &parameters = run.parameters;
  if (!readParameters(parameters, parameterFileName(), std::cout)) {
    endRunOn(std::cout, "Could not open parameter file.");
  }
  openLog(parameters, log);
  log << "**** Start Corvane. " << timestamp() << " ****" << std::endl;
  printParameters(parameters, log);
  // Fails before the long computation rather than after it.
  ImportFileOfRun import(parameters);
  import.open().close();
  readMachineFile(run.planning, parameters.machineFile, machineFile, log);
  readOrderFile(run.planning, parameters.orderFile, orderFile, log);
  readFreightRateFile(run.planning, parameters.freightRateFile, freightRateFile, log);
  ProgressLine progress;
  const GenerationSettings settings = generationSettings(parameters);
  generatePatterns({run.planning, settings, run.patterns, random, log, progress});
  std::ofstream importFile = import.open();
  const double totalDemand =
      writeModel(run.planning, run.patterns, exportSettings(parameters), importFile, log);
  importFile.close();
  writeTotals(totalDemand, run.patterns.totalPatterns, log);
  log << "**** End Corvane. " << timestamp() << " ****" << std::endl << std::endl;
  log.close();
  return 0;
}

int runProcess() noexcept {
  ignoreWriteFaults();
  try {
    return runPlanner(runRecord, patternRandom, logStream);
  } catch (const std::bad_alloc &) {
    endRunOutOfMemory();
  }
}

}  // namespace corvane
