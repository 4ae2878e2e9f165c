#pragma once

#include <optional>
#include <unordered_map>
#include <vector>

#include "plan/reel_search.h"
#include "plan/whole_solver.h"

namespace corvane::plan {

struct NeighbourhoodResult {
  std::optional<ReelPlan> plan;  // nothing where none was found that is better
  bool isOptimal = false;        // within the gap of the limits there is no better one
};

// A small part of a plan that is planned anew while the rest stays as it is: some reels, in whole
// numbers, what becomes of the rolls of the stores that they fill (shipments, surplus, stock
// between them), and what stays unmet of the orders that these rolls can go to. Large neighbourhood
// search (P. Shaw, "Using constraint programming and local search methods to solve vehicle routing
// problems", 1998) makes a plan better by many of them, each a whole programme for CBC, or two:
// first less unmet, where something is, then less cost with no more unmet than that.
class ReelNeighbourhood {
 public:
  // `reels` are columns of reels, each of which may have at most `span` reels more or less than the
  // plan. Space and plan are REQUIRED to outlive this.
  ReelNeighbourhood(const ReelSpace &space, const ReelPlan &plan, const std::vector<int> &reels,
                    double span = kInfinite);

  // Looks for a plan that isBetter(). The cutoff is set here; two programmes share the seconds.
  NeighbourhoodResult search(WholeLimits limits) const;

  // Equal for parts that are the same to a search, and hardly ever for others.
  std::size_t fingerprint() const;

 private:
  void freeColumns(const std::vector<int> &reels);
  void touchRowsOf(int column, std::vector<int> &touched);
  void freeRollsOf(int row);
  void free(int column);
  int addRow(int row);
  void addColumns(double span);
  double fixedLoad(int row) const;
  WholeAnswer deliverMore(WholeLimits limits) const;
  WholeAnswer costLess(WholeLimits limits, double unmet, double cost) const;
  ReelPlan planWith(const std::vector<double> &values) const;

  const ReelSpace &space_;
  const ReelPlan &plan_;
  std::vector<int> columns_;              // of the LP, that are free
  std::unordered_map<int, int> placeOf_;  // of a free column in `columns_`
  std::unordered_map<int, int> rows_;     // of the LP by their place in the neighbourhood
  LinearModel model_;
  // Of the free columns: their values in the plan, and the weights of unmet rolls.
  std::vector<double> values_;
  std::vector<double> weights_;
};

}  // namespace corvane::plan
