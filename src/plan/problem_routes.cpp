// The part of the maker that finds the ways of rolls to the orders, and what is out of reach.

#include <algorithm>
#include <cmath>

#include "plan/problem_maker.h"

namespace corvane::plan {

namespace {

constexpr const char *kDirect = "direct";

// "Rail" of the delay node "Rail_G_A_30.000" that leads to the order "G_A_30.000".
std::string modeName(const std::string &delayNode, const std::string &order) {
  const std::string tail = '_' + order;
  return delayNode.ends_with(tail) ? delayNode.substr(0, delayNode.size() - tail.size())
                                   : delayNode;
}

}  // namespace

void ProblemMaker::addRoutes() {
  for (Index store = 0; store < problem_.stores.size(); ++store) {
    for (const Index arc : adjacency_.from(problem_.stores[store].node)) {
      const Index next = network_.arcs[arc].to;
      if (roles_[next] == Role::kOrder) {
        addRoute(store, arc, arc);
        continue;
      }
      for (const Index last : adjacency_.from(next)) {
        addRoute(store, arc, last);
      }
    }
  }
}

void ProblemMaker::addRoute(Index store, Index arc, Index lastArc) {
  Route route;
  route.store = store;
  route.order = place_[network_.arcs[lastArc].to];
  route.arc = arc;
  route.lastArc = lastArc;
  Order &order = problem_.orders[route.order];
  if (arc == lastArc) {
    route.mode = kDirect;
  } else {
    route.delayNode = network_.arcs[arc].to;
    route.mode = modeName(network_.nodes[route.delayNode].name, order.name);
  }
  route.arrival = arrivals(route);
  for (std::size_t period = 0; period < problem_.periodCount(); ++period) {
    double cost = network_.arcCost(arc, period);
    if (arc != lastArc && route.arrival[period] != kNone) {
      cost += network_.arcCost(lastArc, route.arrival[period]);
    }
    route.cost.push_back(cost);
  }
  order.routes.push_back(static_cast<Index>(problem_.routes.size()));
  problem_.routes.push_back(std::move(route));
}

double ProblemMaker::delayOf(const Route &route, std::size_t period) const {
  return route.delayNode == kNone        ? 0.0
         : problem_.options.delaysByMill ? network_.arcDatum(route.arc, period).delayWhenWritten
                                         : network_.nodes[route.delayNode].delay[period].value;
}

// Goods must not arrive early: a part of a period counts as a whole one.
std::vector<Index> ProblemMaker::arrivals(const Route &route) {
  const std::size_t periods = problem_.periodCount();
  std::vector<Index> arrivals(periods, kNone);
  for (std::size_t period = 0; period < periods; ++period) {
    const double arrival = static_cast<double>(period) + std::ceil(delayOf(route, period));
    if (arrival < static_cast<double>(periods)) {
      arrivals[period] = static_cast<Index>(arrival);
    }
  }
  return arrivals;
}

namespace {

// Why no plan can deliver to the order in the period; kNone when one may.
Reason reachOf(const PlanProblem &problem, const Order &order, std::size_t period) {
  bool patterns = false;
  bool capacity = false;
  for (const Index index : order.routes) {
    const Route &route = problem.routes[index];
    const std::vector<Index> &makers = problem.stores[route.store].patterns;
    patterns = patterns || !makers.empty();
    const bool made = std::any_of(makers.begin(), makers.end(), [&](Index pattern) {
      return problem.cutters[problem.patterns[pattern].cutter].capacity > 0.0;
    });
    capacity = capacity || made;
    if (made &&
        std::find(route.arrival.begin(), route.arrival.end(), period) != route.arrival.end()) {
      return Reason::kMet;
    }
  }
  return order.routes.empty() ? Reason::kNoRoute
         : !patterns          ? Reason::kNoPattern
         : !capacity          ? Reason::kNoCapacity
                              : Reason::kTooEarly;
}

}  // namespace

void findReach(PlanProblem &problem) {
  for (Order &order : problem.orders) {
    order.reach.assign(problem.periodCount(), Reason::kMet);
    for (std::size_t period = 0; period < problem.periodCount(); ++period) {
      if (order.demand[period] > 0.0) {
        order.reach[period] = reachOf(problem, order, period);
      }
    }
  }
}

}  // namespace corvane::plan
