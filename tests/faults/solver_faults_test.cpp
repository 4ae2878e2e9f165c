// Every failure of the solver library that ends a run, at the first, a later and the last call of
// the operation; and those that do not.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "mill_run.h"

namespace corvane::faults {
namespace {

// The number of calls of each operation in a run without faults, and the problems of the solves.
struct Calls {
  std::map<std::string, int> counts;
  std::vector<std::size_t> problemOfSolve;  // counted from 0 in the order of creation
};

std::size_t problemOf(const std::string &call) {
  const std::size_t at = call.find("lp=lp");
  return at == std::string::npos ? 0 : std::stoul(call.substr(at + 5)) - 1;
}

Calls callsOf(const std::string &record) {
  Calls calls;
  std::istringstream lines(record);
  std::string call;
  while (std::getline(lines, call)) {
    const std::string operation = call.substr(0, call.find_first_of("( "));
    ++calls.counts[operation];
    if (operation == "CPXprimopt" || operation == "CPXhybbaropt") {
      calls.problemOfSolve.push_back(problemOf(call));
    }
  }
  return calls;
}

// An entry of a script: what the operation answers at that call.
std::string scriptEntry(std::string operation, int call, const std::string &answer) {
  operation += ':';
  operation += std::to_string(call);
  operation += '=';
  operation += answer;
  return operation;
}

// The sample has two grades and two periods, with demand for each.
class SolverFaults : public testing::Test {
 protected:
  SolverFaults() { mill_.takeSample("small"); }

  void useBarrier() const {
    mill_.write("Parameters.data", contentOf(mill_.data("Parameters.data")) + "solver=Barrier\n");
  }

  Calls goodRun() {
    const std::string record = mill_.folder() / "record";
    expectWholeRun(mill_, mill_.run({{"CORVANE_SCRIPTED_LP_LOG", record}}));
    const std::string log = withoutTimes(mill_.log());
    const std::size_t seedLine = log.find("Seed ");
    logUpToSeed_ = log.substr(0, log.find('\n', seedLine) + 1);
    return callsOf(contentOf(record));
  }

  Result runWith(const std::string &script) const {
    remove(mill_.data("corvane.log"));
    return mill_.run({{"CORVANE_SCRIPTED_LP_SCRIPT", script}});
  }

  // Nothing but the words follows the seed in the log.
  void expectEnd(const std::string &script, const std::string &words) const {
    SCOPED_TRACE(script);
    const Result result = runWith(script);
    expectFatal(mill_, result, words);
    EXPECT_EQ(result.out, words + "\n");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(withoutTimes(mill_.log()), logUpToSeed_ + words + "\n");
  }

  // The first call, the second, one in the middle, the last but one and the last.
  static std::set<int> callsToTry(int count) {
    EXPECT_GE(count, 3);
    return {1, 2, (count + 1) / 2, count - 1, count};
  }

  void expectEndAtCalls(int count, const std::string &operation, const std::string &answer,
                        const std::string &words) const {
    for (const int call : callsToTry(count)) {
      expectEnd(scriptEntry(operation, call, answer), words);
    }
  }

  // Beyond the last call a failure changes nothing.
  void expectNoEndBeyond(int count, const std::string &operation) const {
    expectWholeRun(mill_, runWith(scriptEntry(operation, count + 1, "7")));
  }

  // The status is read all the same, and comes from the script too.
  void expectSolveFailures(const std::string &operation, const Calls &calls) const {
    static const std::vector<std::string> kNames = {
        "Grade : CM26\nPeriod : 1", "Grade : CM26\nPeriod : 2", "Grade : LB42\nPeriod : 1",
        "Grade : LB42\nPeriod : 2"};
    const auto count = static_cast<int>(calls.problemOfSolve.size());
    for (const int call : callsToTry(count)) {
      const std::size_t problem = calls.problemOfSolve[static_cast<std::size_t>(call - 1)];
      expectEnd(scriptEntry(operation, call, "1217;") + scriptEntry("getstat", call, "5"),
                "Error: No solution to lp, status : 1217\n" + kNames[problem % kNames.size()] +
                    "\nError: Solution not optimal, status : 5");
    }
    expectNoEndBeyond(count, operation);
  }

  MillRun mill_;
  std::string logUpToSeed_;
};

TEST_F(SolverFaults, EveryProblemIsOfOneGradeAndPeriod) {
  const Calls calls = goodRun();
  EXPECT_EQ(calls.counts.at("CPXcreateprob"), 8);
  EXPECT_EQ(calls.problemOfSolve.back(), 7U);
}

TEST_F(SolverFaults, AnEnvironmentThatDoesNotOpenEndsTheRun) {
  const int count = goodRun().counts.at("CPXopenCPLEXruntime");
  for (const char *answer : {"1", "-1", "32201", "null"}) {
    expectEndAtCalls(count, "open", answer, "Error: Could not open cplex.");
  }
  expectNoEndBeyond(count, "open");
}

TEST_F(SolverFaults, AnEnvironmentThatDoesNotCloseEndsTheRun) {
  const int count = goodRun().counts.at("CPXcloseCPLEX");
  expectEndAtCalls(count, "close", "1", "Error: Could not close cplex.");
  expectEndAtCalls(count, "close", "-7", "Error: Could not close cplex.");
  expectNoEndBeyond(count, "close");
}

TEST_F(SolverFaults, AProblemThatIsNotCreatedEndsTheRun) {
  const int count = goodRun().counts.at("CPXcreateprob");
  for (const char *answer : {"1", "null"}) {
    expectEndAtCalls(count, "createprob", answer, "Error: Could not create LP.");
  }
  expectNoEndBeyond(count, "createprob");
}

TEST_F(SolverFaults, AFailingPrimalSimplexEndsTheRun) {
  expectSolveFailures("primopt", goodRun());
}

TEST_F(SolverFaults, AFailingBarrierEndsTheRun) {
  useBarrier();
  expectSolveFailures("hybbaropt", goodRun());
}

TEST_F(SolverFaults, TheOtherMethodIsNeverCalled) {
  Calls calls = goodRun();
  EXPECT_EQ(calls.counts["CPXhybbaropt"], 0);
  useBarrier();
  calls = goodRun();
  EXPECT_EQ(calls.counts["CPXprimopt"], 0);
}

TEST_F(SolverFaults, AnyStatusButOptimalEndsTheRun) {
  const int count = goodRun().counts.at("CPXgetstat");
  for (const char *status : {"0", "2", "3", "6", "-1", "101", "2147483647"}) {
    expectEndAtCalls(count, "getstat", status, "Error: Solution not optimal.");
  }
  expectNoEndBeyond(count, "getstat");
}

TEST_F(SolverFaults, MissingDualValuesEndTheRun) {
  const int count = goodRun().counts.at("CPXgetpi");
  expectEndAtCalls(count, "getpi", "1217", "Error: Could not get dual values from LP : 1217");
  expectEndAtCalls(count, "getpi", "-3", "Error: Could not get dual values from LP : -3");
  expectNoEndBeyond(count, "getpi");
}

TEST_F(SolverFaults, ColumnsThatAreNotAddedEndTheRun) {
  const int count = goodRun().counts.at("CPXaddcols");
  expectEndAtCalls(count, "addcols", "1", "Error: Could not add columns to LP.");
  expectNoEndBeyond(count, "addcols");
}

TEST_F(SolverFaults, AProblemThatIsNotFreedEndsTheRun) {
  const int count = goodRun().counts.at("CPXfreeprob");
  expectEndAtCalls(count, "freeprob", "1", "Error: LP did not unload successfully.");
  expectNoEndBeyond(count, "freeprob");
}

// A load that fails leaves a problem without rows, and the next step that needs them says so.
TEST_F(SolverFaults, AFailingLoadOfColumnGenerationShowsInTheDualValues) {
  ASSERT_EQ(goodRun().counts.at("CPXcopylp"), 8);
  for (const int call : {1, 2, 3, 4}) {
    expectEnd(scriptEntry("copylp", call, "7"), "Error: Could not get dual values from LP : 1200");
  }
}

// x values and reduced costs stay 0 there, whatever comes of the solve.
TEST_F(SolverFaults, AFailingLoadOfTheFinalSelectionChangesNoOutcome) {
  ASSERT_EQ(goodRun().counts.at("CPXcopylp"), 8);
  for (const int call : {5, 6, 7, 8}) {
    expectWholeRun(mill_, runWith(scriptEntry("copylp", call, "7")));
    expectGoodImport(mill_, true);
  }
  expectNoEndBeyond(8, "copylp");
}

// The model then holds what `occur min` asks for.
TEST_F(SolverFaults, MissingValuesOfTheFinalSelectionAreTakenAsZero) {
  const Calls calls = goodRun();
  for (const std::string operation : {"getobjval", "getx", "getdj"}) {
    const int count = calls.counts.at("CPX" + operation);
    EXPECT_EQ(count, 4) << operation;
    for (const std::string &script :
         {scriptEntry(operation, 1, "1217"), scriptEntry(operation, 2, "1217"),
          scriptEntry(operation, count, "1217"), operation + ":1+=1217"}) {
      SCOPED_TRACE(script);
      const Result result = runWith(script);
      expectWholeRun(mill_, result);
      expectGoodImport(mill_, true);
    }
  }
}

// Values that no solver should give: the run ends by itself, in one way or the other.
TEST_F(SolverFaults, SenselessValuesDoNotStopOrCrashARun) {
  for (const std::string values : {"[nan,nan,nan,nan]", "[inf,inf,inf,inf]", "[-inf,-inf,-inf]",
                                   "[1e308,1e308,1e308]", "[-1e308]", "[inf,-inf,nan,0]"}) {
    for (const std::string operation : {"getpi", "getx", "getdj", "getobjval"}) {
      const std::string script = operation + ":1+=" + values;
      SCOPED_TRACE(script);
      const Result result = runWith(script);
      expectWholeRun(mill_, result);
      expectGoodImport(mill_, true);
    }
  }
}

}  // namespace
}  // namespace corvane::faults
