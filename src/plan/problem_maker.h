#pragma once

#include <vector>

#include "plan/plan_problem.h"

namespace corvane::plan {

// Finds the roles of a network's nodes; see makeProblem().
class ProblemMaker {
 public:
  ProblemMaker(const Network &network, const ProblemOptions &options);

  PlanProblem make();

 private:
  // What a node is, by what it takes and gives.
  enum class Role { kNothing, kMachine, kCutter, kPattern, kBatch, kStore, kOrder, kDelay, kWaste };

  void findRoles();
  Role processRole(const network::Node &node) const;
  static Role storageRole(const network::Node &node);
  void checkArcs() const;
  void checkCosts() const;
  static bool mayJoin(Role from, Role to, network::CommodityKind kind);

  void addMachines();
  void addCutters();
  void addStorage();
  void addPatterns();
  void addFedPatterns(Index node);
  void addPatternOf(Index node, Index cutterNode, const std::vector<Index> &deckleArcs);
  void fillYields(Pattern &pattern) const;
  void fillWaste(Pattern &pattern) const;
  void fillCost(Pattern &pattern) const;
  void teachCutter(Index index);
  void addRoutes();
  void addRoute(Index store, Index arc, Index lastArc);
  std::vector<Index> arrivals(const Route &route);
  double delayOf(const Route &route, std::size_t period) const;
  void fillSurplusCosts();

  const Network &network_;
  network::Adjacency adjacency_;
  PlanProblem problem_;
  std::vector<Role> roles_;
  std::vector<Index> place_;  // of a machine, store or order node in its list of the problem
};

// Warnings of the roles: what can be planned but may surprise.
void warnOfRoles(const Network &network, PlanProblem &problem);

}  // namespace corvane::plan
