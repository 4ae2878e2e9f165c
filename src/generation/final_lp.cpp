#include "generation/final_lp.h"

#include <vector>

#include "core/fatal.h"
#include "core/skip_list_cursor.h"
#include "core/text.h"
#include "generation/lp_solver.h"

namespace corvane {

namespace {

using GradeSets = std::vector<PatternCompPattern *>;

// Calls visit(set, pattern) for every column of the grade's LP, in column order.
template <typename Visit>
void forEachColumn(const GradeSets &gradeSets, Visit visit) {
  for (PatternCompPattern *set : gradeSets) {
    forEachElement(*set->patterns, [&](Pattern &pattern) { visit(*set, pattern); });
  }
}

std::size_t countColumns(const GradeSets &gradeSets) {
  std::size_t columns = 0;
  for (const PatternCompPattern *set : gradeSets) {
    columns += static_cast<std::size_t>(set->patterns->count());
  }
  return columns;
}

std::size_t countNonzeros(const GradeSets &gradeSets) {
  std::size_t nonzeros = 0;
  std::vector<TallyEntry> tally;
  forEachColumn(gradeSets, [&](const PatternCompPattern &, const Pattern &pattern) {
    tallyWidths(pattern.widths, tally);
    nonzeros += tally.size();
  });
  return nonzeros;
}

LpProblem buildFinalLp(const GradeSets &gradeSets, const std::vector<double> &rowWidths,
                       std::ostream &log) {
  const std::size_t nonzeros = countNonzeros(gradeSets);
  LpProblem lp(rowWidths.size(), countColumns(gradeSets), nonzeros, log);
  forEachColumn(gradeSets, [&](const PatternCompPattern &set, const Pattern &pattern) {
    lp.columns.append(set.deckleWidth, pattern.widths, rowWidths);
  });
  requireEqualCounts(static_cast<int>(nonzeros), lp.columns.nonzeros(),
                     "Error: Something wrong with coefficient matrix.", log);
  return lp;
}

// The demand of each row's width in the period, or 0.
void setRightHandSides(const PeriodDemand *demand, const std::vector<double> &rowWidths,
                       LpProblem &lp) {
  lp.rightHandSides.assign(rowWidths.size(), 0.0);
  for (const DemandEntry &entry : demandList(demand)) {
    lp.rightHandSides[static_cast<std::size_t>(rowOf(entry.width, rowWidths))] =
        static_cast<double>(entry.quantity);
  }
}

// Hands every pattern its part of the solution of one period.
void storeSolution(const GradeSets &gradeSets, const LpSolution &solution, std::ostream &log) {
  std::size_t column = 0;
  forEachColumn(gradeSets, [&](const PatternCompPattern &, Pattern &pattern) {
    pattern.xValues.append(solution.xValues[column]);
    pattern.reducedCosts.append(solution.reducedCosts[column]);
    pattern.inModel.append(0);
    ++column;
  });
  requireEqualCounts(static_cast<int>(solution.xValues.size()), static_cast<int>(column),
                     "Error: Something wrong with x values and reduced costs.", log);
}

void showProgress(const QString &grade, const QString &period, int patterns,
                  ProgressLine &progress) {
  progress.show([&] {
    return "final selection, grade " + utf8(grade) + ", period " + utf8(period) + ", patterns " +
           std::to_string(patterns);
  });
}

void solveGrade(const GradeDemand &demand, const GenerationContext &context, LpSolver &solver) {
  const GradeSets &gradeSets = context.sets.ofGrade(demand.grade);
  const std::vector<double> &rowWidths = demand.widths;
  LpProblem lp = buildFinalLp(gradeSets, rowWidths, context.log);
  for (const QString &period : context.data.periods) {
    showProgress(demand.grade, period, lp.columns.count(), context.progress);
    setRightHandSides(demand.find(period), rowWidths, lp);
    solver.create(lp);
    solver.solve(demand.grade, period);
    storeSolution(gradeSets, solver.readSolution(), context.log);
    solver.freeProblem();
  }
}

}  // namespace

void requireEqualCounts(int counted, int built, const char *text, std::ostream &log) {
  if (counted != built) {
    endRun(log, text);
  }
}

void solveFinalLps(const GenerationContext &context) {
  LpSolver solver(context.settings.barrier, context.log);
  solver.open();
  for (const QString &grade : context.data.grades) {
    solveGrade(*context.data.demand.find(grade), context, solver);
  }
  solver.close();
}

}  // namespace corvane
