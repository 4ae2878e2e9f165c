#include "measurements.h"

#include <fstream>

#include "child_process.h"
#include "file_references.h"
#include "planning/machine_file.h"
#include "planning/order_file.h"
#include "resources.h"

namespace corvane::bench {

namespace {

constexpr char kImportFile[] = "data/CV.imp";
constexpr char kOrderFile[] = "data/orders.data";

int millsMade = 0;

}  // namespace

Mill::Mill(const MillShape &shape, const std::filesystem::path &parent)
    : folder_(parent / ("mill" + std::to_string(++millsMade))) {
  writeMill(shape, folder_);
}

Mill::~Mill() {
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

RunResult measureRun(const Mill &mill) {
  return inChild<RunResult>(mill.folder(), [] { return runPlannerHere(); });
}

RunResult measurePlainRun(const Mill &mill) {
  RunResult result;
  runProgram(mill.folder(), "corvane_plain_run", &result, sizeof(result));
  return result;
}

SolverTimes measureSolver(const Mill &mill) {
  return inChild<SolverTimes>(mill.folder(), [] {
    LpRecording recording;
    runPlannerHere(&recording);
    SolverTimes times{};
    times.mastersLayer = recording.solveAgain(true, nullptr);
    times.mastersPlain = recording.solveAgain(true, "primal");
    times.finalsLayer = recording.solveAgain(false, nullptr);
    times.finalsPrimal = recording.solveAgain(false, "primal");
    times.finalsDual = recording.solveAgain(false, "dual");
    return times;
  });
}

PricingTimes measurePricing(const Mill &mill) {
  return inChild<PricingTimes>(mill.folder(), [] {
    LpRecording recording;
    runPlannerHere(&recording);
    return PricingReplay(recording.duals()).run();
  });
}

FileTimes measureReading(const Mill &mill) {
  return inChild<FileTimes>(mill.folder(), [] {
    FileTimes times{};
    times.reference = readAndSplit(kOrderFile);
    const double before = peakMemory();
    PlanningComparators comparators;
    PlanningData data(comparators);
    std::ofstream log;
    std::ifstream machines;
    readMachineFile(data, "data/machines.data", machines, log);
    std::ifstream orders;
    const double begin = cpuSeconds();
    readOrderFile(data, kOrderFile, orders, log);
    times.work = cpuSeconds() - begin;
    times.bytes = peakMemory() - before;
    return times;
  });
}

FileTimes measureExport(const Mill &mill) {
  return inChild<FileTimes>(mill.folder(), [] {
    FileTimes times{};
    const RunResult run = runPlannerHere();
    times.work = run[Phase::kExport];
    times.reference = writeAndFlush(kImportFile, "data/copy.imp");
    times.bytes = static_cast<double>(std::filesystem::file_size(kImportFile));
    return times;
  });
}

}  // namespace corvane::bench
