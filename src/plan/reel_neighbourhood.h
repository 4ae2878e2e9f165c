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
// problems", 1998) makes a plan better by many of them, each a whole programme for CBC.
class ReelNeighbourhood {
 public:
  // `reels` are columns of reels. Space and plan are REQUIRED to outlive this.
  ReelNeighbourhood(const ReelSpace &space, const ReelPlan &plan, const std::vector<int> &reels);

  // Looks for better values than the plan has, by more than noise. The cutoff is set here.
  NeighbourhoodResult search(WholeLimits limits) const;

 private:
  void freeColumns(const std::vector<int> &reels);
  void freeRollsOf(int row);
  void free(int column);
  int addRow(int row);
  void addColumns();
  double fixedLoad(int row) const;

  const ReelSpace &space_;
  const ReelPlan &plan_;
  std::vector<int> columns_;              // of the LP, that are free
  std::unordered_map<int, int> placeOf_;  // of a free column in `columns_`
  std::unordered_map<int, int> rows_;     // of the LP by their place in the neighbourhood
  LinearModel model_;
  double objective_ = 0;  // of the free columns in the plan
};

}  // namespace corvane::plan
