#include "generation/column_generation.h"

#include <ctime>
#include <iostream>
#include <memory>

#include "core/messages.h"
#include "core/numbers.h"
#include "core/text.h"
#include "generation/lp_solver.h"
#include "generation/master_lp.h"
#include "generation/price_list.h"
#include "generation/pricing.h"

namespace corvane {

namespace {

// The memory for the columns of an iteration to begin with.
constexpr std::size_t kFirstColumns = 128;
constexpr std::size_t kFirstNonzeros = 512;

std::unique_ptr<Pattern> makePattern(const Candidate &candidate) {
  auto pattern = std::make_unique<Pattern>(candidate.trim);
  for (int pick = 0; pick < candidate.count; ++pick) {
    pattern->widths.append(candidate.widths[static_cast<std::size_t>(pick)]);
  }
  sortWidthsDescending(*pattern);
  return pattern;
}

// Whole seconds of the clock since construction, against a limit. A negative limit never runs out.
class TimeLimit {
 public:
  explicit TimeLimit(qint32 seconds) : seconds_(seconds), start_(std::time(nullptr)) {}
  bool exceeded() const { return seconds_ >= 0 && std::time(nullptr) - start_ > seconds_; }

 private:
  qint32 seconds_;
  std::time_t start_;
};

// Column generation of one grade.
class GradeGenerator {
 public:
  GradeGenerator(const GradeDemand &demand, double smallestDeckleWidth,
                 const GenerationContext &context)
      : demand_(demand),
        smallestDeckleWidth_(smallestDeckleWidth),
        context_(context),
        gradeSets_(context.sets.ofGrade(demand.grade)),
        limits_{context.settings.stopGeneratingThreshold, context.settings.maximumWidthsInPattern},
        solver_(context.settings.barrier, context.log) {}

  void run() {
    solver_.open();
    for (const QString &period : context_.data.periods) {
      const PeriodDemand *own = demand_.find(period);
      // Deliberately not forgotten when a period has no demand.
      lastDemand_ = own != nullptr ? own : lastDemand_;
      if (lastDemand_ != nullptr) {
        widths_ = distinctWidths(*lastDemand_);
        runPeriod(period, demandList(own));
      }
    }
    solver_.close();
  }

 private:
  void runPeriod(const QString &period, const std::vector<DemandEntry> &demands) {
    setPickRange(static_cast<int>(widths_.size()), context_.settings.widthPickSetSize,
                 context_.random);
    solver_.create(buildMasterLp(demand_.grade, widths_, demands, smallestDeckleWidth_,
                                 context_.sets, context_.log));
    int iteration = 0;
    do {
      showProgress(period, ++iteration);
      solver_.solve(demand_.grade, period);
      prices_.rebuild(widths_, solver_.readDuals());
    } while (addColumns());
  }

  // Prices patterns for every deckle width of the grade; false when no new one came of it.
  bool addColumns() {
    LpColumns columns(LpColumns::kAdditional, context_.log);
    columns.reserveObjective(kFirstColumns);
    columns.reserveMatrix(kFirstColumns, kFirstNonzeros);
    columns.reserveBounds(kFirstColumns);
    // A limit of 0 switches generation off: the LP keeps its seeds.
    if (context_.settings.timeLimit != 0) {
      for (PatternCompPattern *set : gradeSets_) {
        generateFor(*set, columns);
      }
    }
    if (columns.count() == 0) {
      return false;
    }
    solver_.addColumns(columns);
    return true;
  }

  void generateFor(PatternCompPattern &set, LpColumns &columns) {
    const TimeLimit timeLimit(context_.settings.timeLimit);
    for (qint32 made = 0; made < context_.settings.newPatternsPerIteration; ++made) {
      if (timeLimit.exceeded()) {
        reportTimeOut(set, made);
        break;
      }
      Candidate candidate;
      if (!priceCandidate(set.deckleWidth, prices_, limits_, context_.random, candidate)) {
        break;
      }
      keepPattern(set, candidate, columns);
    }
  }

  // Adds a column, unless the set holds an equal pattern.
  void keepPattern(PatternCompPattern &set, const Candidate &candidate, LpColumns &columns) {
    std::unique_ptr<Pattern> pattern = makePattern(candidate);
    if (set.patterns->insert(pattern.get()) != skipList<Pattern>::kStored) {
      ++context_.sets.duplicates;
      return;
    }
    ++context_.sets.totalPatterns;
    columns.append(set.deckleWidth, pattern.release()->widths, widths_);
  }

  void reportTimeOut(const PatternCompPattern &set, qint32 made) {
    tell(std::cout, context_.log,
         "Timed out on grade: " + utf8(demand_.grade) +
             ", deckle width: " + fixed(set.deckleWidth, 3) + " after generating " +
             std::to_string(made) + " patterns.");
  }

  void showProgress(const QString &period, int iteration) {
    context_.progress.show([&] {
      return "grade " + utf8(demand_.grade) + ", period " + utf8(period) + ", iteration " +
             std::to_string(iteration) + ", patterns " +
             std::to_string(context_.sets.totalPatterns);
    });
  }

  const GradeDemand &demand_;
  double smallestDeckleWidth_;
  const GenerationContext &context_;
  const std::vector<PatternCompPattern *> &gradeSets_;
  PricingLimits limits_;
  LpSolver solver_;
  PriceList prices_;
  const PeriodDemand *lastDemand_ = nullptr;
  std::vector<double> widths_;
};

}  // namespace

void generateColumns(const GradeDemand &demand, const std::vector<double> &deckleWidths,
                     const GenerationContext &context) {
  GradeGenerator(demand, deckleWidths.front(), context).run();
}

}  // namespace corvane
