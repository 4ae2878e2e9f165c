#include "plan/full_form.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "plan/linear_model.h"
#include "plan/linear_solver.h"

namespace corvane::plan {

namespace {

// So that the solver's tolerance for reduced costs is small beside what a quick machine's reel is
// worth.
constexpr double kWeightScale = 1000.0;

using network::Attachment;
using network::CommodityKind;
using network::Node;
using network::NodeType;

class FullForm {
 public:
  FullForm(const Network &network, const PlanProblem &problem)
      : network_(network),
        problem_(problem),
        adjacency_(network),
        periods_(network.periodCount()),
        arcEntries_(network.arcs.size() * periods_) {
    for (const Pattern &pattern : problem.patterns) {
      if (!pattern.possible) {
        leftOut_[pattern.node] = true;
      }
    }
  }

  FullAnswer solve() {
    for (Index node = 0; node < network_.nodes.size(); ++node) {
      addNode(node);
    }
    addArcs();
    LinearSolver solver(model_);
    for (int column = 0; column < model_.columns(); ++column) {
      solver.setCost(column, 0.0);
    }
    for (std::size_t at = 0; at < unmet_.size(); ++at) {
      solver.setCost(unmet_[at], kWeightScale * weights_[at]);
    }
    LinearSolution solution = solver.solve(Method::kDual);
    if (solution.status != Status::kOptimal) {
      return {};
    }
    const double least = std::max(solution.objective / kWeightScale, 0.0);
    keepOptimal(solver, solution);
    for (int column = 0; column < model_.columns(); ++column) {
      solver.setCost(column, model_.cost[static_cast<std::size_t>(column)]);
    }
    solution = solver.solve(Method::kPrimal);
    return {solution.status == Status::kOptimal, least, solution.objective};
  }

 private:
  // Every solution with the same objective has a column whose reduced cost is not 0 at its bound,
  // and a row whose dual value is not 0 at its own. So no row needs to sum up what is unmet, of
  // which there may be billions of rolls.
  void keepOptimal(LinearSolver &solver, const LinearSolution &solution) {
    constexpr double kNothing = 1e-7;
    std::vector<double> activity(static_cast<std::size_t>(model_.rows()));
    for (int column = 0; column < model_.columns(); ++column) {
      const auto at = static_cast<std::size_t>(column);
      for (int entry = model_.start[at]; entry < model_.start[at + 1]; ++entry) {
        const auto e = static_cast<std::size_t>(entry);
        activity[static_cast<std::size_t>(model_.rowOf[e])] +=
            model_.value[e] * solution.primal[at];
      }
      if (std::fabs(solution.reducedCost[at]) > kNothing) {
        solver.setColumnBounds(column, solution.primal[at], solution.primal[at]);
      }
    }
    for (int row = 0; row < model_.rows(); ++row) {
      const auto at = static_cast<std::size_t>(row);
      if (std::fabs(solution.dual[at]) > kNothing && model_.rowLower[at] != model_.rowUpper[at]) {
        solver.setRowBounds(row, activity[at], activity[at]);
      }
    }
  }

  void addToArcs(std::span<const Index> arcs, std::size_t period, Index commodity, int row,
                 double sign) {
    for (const Index arc : arcs) {
      if (commodity == kNone || network_.arcs[arc].commodity == commodity) {
        arcEntries_[arc * periods_ + period].push_back({row, sign});
      }
    }
  }

  void addNode(Index index) {
    const Node &node = network_.nodes[index];
    int stockRow = -1;
    for (std::size_t period = 0; period < periods_; ++period) {
      switch (node.type) {
        case NodeType::kMachine:
          addToArcs(adjacency_.from(index), period, kNone,
                    model_.addRow(-kInfinite, node.days[period].value), 1.0);
          break;
        case NodeType::kProcess:
          addProcess(index, period);
          break;
        case NodeType::kBatch: {
          const int row = model_.addRow(0.0, 0.0);
          addToArcs(adjacency_.into(index), period, kNone, row, 1.0);
          addToArcs(adjacency_.from(index), period, kNone, row, -1.0);
          break;
        }
        case NodeType::kStorage:
          addStorage(index, period, stockRow);
          break;
        case NodeType::kDelay:
          break;
        case NodeType::kDemand:
          break;
      }
    }
    if (node.type == NodeType::kDelay) {
      addDelay(index);
    }
  }

  void addProcess(Index index, std::size_t period) {
    std::vector<Entry> entries;
    for (const Attachment &attachment : network_.nodes[index].attachments) {
      const int row = model_.addRow(0.0, 0.0);
      addToArcs(attachment.in ? adjacency_.into(index) : adjacency_.from(index), period,
                attachment.commodity, row, 1.0);
      entries.push_back({row, -attachment.quantity});
    }
    model_.addColumn(0.0, 0.0, leftOut_[index] ? 0.0 : kInfinite, entries);
  }

  void addStorage(Index index, std::size_t period, int &stockRow) {
    const Node &node = network_.nodes[index];
    const bool store = std::any_of(node.attachments.begin(), node.attachments.end(),
                                   [](const Attachment &attachment) { return !attachment.in; });
    const double amount = node.amount.empty() ? 0.0 : node.amount[period].value;
    const int row = model_.addRow(store ? 0.0 : amount, store ? 0.0 : amount);
    addToArcs(adjacency_.into(index), period, kNone, row, 1.0);
    if (!store) {
      unmet_.push_back(model_.addColumn(0.0, 0.0, amount, std::vector<Entry>{{row, 1.0}}));
      weights_.push_back(node.undercost[period].value / problem_.highestUndercost);
      return;
    }
    addToArcs(adjacency_.from(index), period, kNone, row, -1.0);
    if (stockRow >= 0) {  // what is kept from the period before
      const double most =
          problem_.options.freeStock ? kInfinite : node.storageMax[period - 1].value;
      model_.addColumn(0.0, 0.0, most, std::vector<Entry>{{stockRow, -1.0}, {row, 1.0}});
    }
    stockRow = row;
    model_.addColumn(surplusCost(index, period), 0.0, kInfinite, std::vector<Entry>{{row, -1.0}});
  }

  double surplusCost(Index store, std::size_t period) const {
    const double width =
        network_.commodities[network_.nodes[store].attachments.front().commodity].width;
    double highest = -HUGE_VAL;
    for (const Index arc : adjacency_.into(store)) {
      for (const Index waste : adjacency_.from(network_.arcs[arc].from)) {
        if (network_.commodities[network_.arcs[waste].commodity].kind == CommodityKind::kWaste) {
          highest = std::max(highest, network_.arcCost(waste, period) * width);
        }
      }
    }
    return std::isinf(highest) ? 0.0 : highest;
  }

  void addDelay(Index index) {
    std::vector<int> rows;
    for (std::size_t period = 0; period < periods_; ++period) {
      rows.push_back(model_.addRow(0.0, 0.0));
      addToArcs(adjacency_.from(index), period, kNone, rows.back(), -1.0);
    }
    for (const Index arc : adjacency_.into(index)) {
      for (std::size_t period = 0; period < periods_; ++period) {
        const double delay = problem_.options.delaysByMill
                                 ? network_.arcDatum(arc, period).delayWhenWritten
                                 : network_.nodes[index].delay[period].value;
        const double arrival = static_cast<double>(period) + std::ceil(delay);
        if (arrival < static_cast<double>(periods_)) {
          arcEntries_[arc * periods_ + period].push_back(
              {rows[static_cast<std::size_t>(arrival)], 1.0});
        } else {
          late_[arc * periods_ + period] = true;
        }
      }
    }
  }

  void addArcs() {
    for (Index arc = 0; arc < network_.arcs.size(); ++arc) {
      for (std::size_t period = 0; period < periods_; ++period) {
        const std::size_t at = arc * periods_ + period;
        const Node &from = network_.nodes[network_.arcs[arc].from];
        const double days = from.dayCost.empty() ? 0.0 : from.dayCost[period].value;
        model_.addColumn(network_.arcCost(arc, period) + days, 0.0,
                         late_.contains(at) ? 0.0 : kInfinite, arcEntries_[at]);
      }
    }
  }

  const Network &network_;
  const PlanProblem &problem_;
  network::Adjacency adjacency_;
  std::size_t periods_;
  LinearModel model_;
  std::vector<std::vector<Entry>> arcEntries_;
  std::map<Index, bool> leftOut_;
  std::map<std::size_t, bool> late_;
  std::vector<int> unmet_;
  std::vector<double> weights_;
};

}  // namespace

FullAnswer solveFullForm(const Network &network, const PlanProblem &problem) {
  return FullForm(network, problem).solve();
}

}  // namespace corvane::plan
