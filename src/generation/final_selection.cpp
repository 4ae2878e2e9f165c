#include "generation/final_selection.h"

#include <vector>

#include "core/fatal.h"
#include "core/skip_list_cursor.h"
#include "core/text.h"
#include "generation/lp_solver.h"
#include "generation/width_tally.h"

namespace corvane {

namespace {

// Calls visit(set, pattern) for every column of the grade's LP, in column order.
template <typename Visit>
void forEachColumn(const std::vector<PatternCompPattern *> &gradeSets, Visit visit) {
  for (PatternCompPattern *set : gradeSets) {
    forEachElement(*set->patterns, [&](Pattern &pattern) { visit(*set, pattern); });
  }
}

std::size_t countColumns(const std::vector<PatternCompPattern *> &gradeSets) {
  std::size_t columns = 0;
  for (const PatternCompPattern *set : gradeSets) {
    columns += static_cast<std::size_t>(set->patterns->count());
  }
  return columns;
}

std::size_t countNonzeros(const std::vector<PatternCompPattern *> &gradeSets) {
  std::size_t nonzeros = 0;
  std::vector<TallyEntry> tally;
  forEachColumn(gradeSets, [&](const PatternCompPattern &, const Pattern &pattern) {
    tallyWidths(pattern.widths, tally);
    nonzeros += tally.size();
  });
  return nonzeros;
}

// Fills objective and matrix, whose memory is there.
void fillColumns(const std::vector<PatternCompPattern *> &gradeSets,
                 const std::vector<double> &rowWidths, LpArrays &lp, std::ostream &log) {
  std::size_t column = 0;
  std::size_t nonzero = 0;
  std::vector<TallyEntry> tally;
  forEachColumn(gradeSets, [&](const PatternCompPattern &set, const Pattern &pattern) {
    tallyWidths(pattern.widths, tally);
    lp.objective[column] = set.deckleWidth;
    lp.starts[column] = static_cast<int>(nonzero);
    lp.counts[column] = static_cast<int>(tally.size());
    for (const TallyEntry &entry : tally) {
      lp.indices[nonzero] = rowOf(entry.width, rowWidths);
      lp.values[nonzero] = static_cast<double>(entry.count);
      ++nonzero;
    }
    ++column;
  });
  requireEqualCounts(lp.indices.size(), nonzero, "Error: Something wrong with coefficient matrix.",
                     log);
}

void buildFinalLp(const std::vector<PatternCompPattern *> &gradeSets,
                  const std::vector<double> &rowWidths, LpArrays &lp, std::ostream &log) {
  const std::size_t columns = countColumns(gradeSets);
  const std::size_t nonzeros = countNonzeros(gradeSets);
  lp.allocateObjective(columns, 0.0, log);
  lp.allocateSenses(rowWidths.size(), log);
  lp.allocateMatrix(columns, nonzeros, log);
  lp.allocateBounds(columns, log);
  fillColumns(gradeSets, rowWidths, lp, log);
}

// The demand of each row's width in the period, or 0.
void setRightHandSides(const PeriodDemand *demand, const std::vector<double> &rowWidths,
                       LpArrays &lp, std::ostream &log) {
  lp.allocateRightHandSides(rowWidths.size(), log);
  for (const DemandEntry &entry : demandList(demand)) {
    lp.rightHandSides[static_cast<std::size_t>(rowOf(entry.width, rowWidths))] =
        static_cast<double>(entry.quantity);
  }
}

// Hands every pattern its part of the solution of one period.
void storeSolution(const std::vector<PatternCompPattern *> &gradeSets,
                   const std::vector<double> &rowWidths, const CheckedArray<double> &xValues,
                   const CheckedArray<double> &reducedCosts, std::ostream &log) {
  std::size_t column = 0;
  std::vector<PricedPattern> priced;
  for (PatternCompPattern *set : gradeSets) {
    priced.clear();
    priced.reserve(static_cast<std::size_t>(set->patterns->count()));
    forEachElement(*set->patterns, [&](Pattern &pattern) {
      pattern.xValues.append(xValues[column]);
      pattern.reducedCosts.append(reducedCosts[column]);
      pattern.inModel.append(0);
      priced.push_back({reducedCosts[column], static_cast<qint32>(priced.size()), &pattern});
      ++column;
    });
    set->addRedCostSet(priced, ordersTotally(rowWidths, set->deckleWidth));
  }
  requireEqualCounts(xValues.size(), column,
                     "Error: Something wrong with x values and reduced costs.", log);
}

}  // namespace

void requireEqualCounts(std::size_t counted, std::size_t built, const char *text,
                        std::ostream &log) {
  if (counted != built) {
    endRun(log, text);
  }
}

void selectPatterns(const QLinkedList<QString> &grades, const QLinkedList<QString> &periods,
                    const DemandTable &demand, const GenerationSettings &settings,
                    PatternSets &sets, ProgressLine &progress, std::ostream &log) {
  LpSolver solver(settings.barrier, log);
  solver.open();
  for (const QString &grade : grades) {
    const std::vector<PatternCompPattern *> &gradeSets = sets.ofGrade(grade);
    const GradeDemand &gradeDemand = *demand.find(grade);
    const std::vector<double> rowWidths = distinctWidths(gradeDemand);
    LpArrays lp;
    buildFinalLp(gradeSets, rowWidths, lp, log);
    for (const QString &period : periods) {
      progress.show([&] {
        return "final selection, grade " + utf8(grade) + ", period " + utf8(period) +
               ", patterns " + std::to_string(lp.columns());
      });
      setRightHandSides(gradeDemand.find(period), rowWidths, lp, log);
      solver.create(lp);
      solver.solve(grade, period);
      double objectiveValue = 0;
      CheckedArray<double> xValues;
      CheckedArray<double> reducedCosts;
      solver.readSolution(xValues, reducedCosts, objectiveValue);
      storeSolution(gradeSets, rowWidths, xValues, reducedCosts, log);
      solver.freeProblem();
    }
  }
  solver.close();
}

}  // namespace corvane
