// The rules that only the whole import file shows.

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "import_model.h"
#include "network/warning.h"

namespace corvane::import_checker {
namespace {}  // namespace

void ImportModel::finish() {
  checkHeader();
  checkNodePeriods();
  checkArcPeriods();
  checkPatterns();
  checkFlows();
  checkSupply();
  checkSets();
}

void ImportModel::checkHeader() {
  if (!seen_.contains(Family::kRoot) && !seen_.contains(Family::kBatchRoot)) {
    complain(0, "there is no root");
  }
  if (!seen_.contains(Family::kTrailer)) {
    complain(0, "there is no trailer");
  }
  for (const char *name : {"Waste", "Machine_Time"}) {
    if (!commodities_.contains(name)) {
      complain(0, "the commodity " + network::inQuotes(name) + " is not declared");
    }
  }
  if (options_.periods && *options_.periods != periods_.size()) {
    complain(0, "there are " + std::to_string(periods_.size()) + " periods instead of " +
                    std::to_string(*options_.periods));
  }
}

// Each period must occur, and all equally often: a line that comes again comes in every period.
bool ImportModel::fillsEveryPeriod(const std::map<std::string, int> &periods) const {
  return periods.size() == periods_.size() &&
         std::all_of(periods.begin(), periods.end(),
                     [&](const auto &entry) { return entry.second == periods.begin()->second; });
}

void ImportModel::checkNodePeriods() {
  const std::set<Kind> inEveryPeriod{Kind::kMachine, Kind::kBatch, Kind::kStore, Kind::kDelay};
  for (const auto &[key, node] : nodes_) {
    if (inEveryPeriod.contains(key.first) && !fillsEveryPeriod(node.periods)) {
      complain(node.line,
               "the node " + network::inQuotes(key.second) + " does not stand in every period");
    }
    if (key.first == Kind::kOrder && !fillsEveryPeriod(undercosts_[key.second].periods)) {
      complain(node.line, "the order node has no undercost line in every period");
    }
  }
}

void ImportModel::checkArcPeriods() {
  for (const auto &[key, arcs] : arcs_) {
    const auto &[family, from, to] = key;
    const bool firstOnly =
        family == Family::kYieldArc || (family == Family::kDeckleArc && isNode(Kind::kBatch, from));
    if (!firstOnly && !fillsEveryPeriod(arcs.periods)) {
      complain(arcs.line, "the arc from " + network::inQuotes(from) + " to " +
                              network::inQuotes(to) + " does not stand in every period");
    }
  }
}

void ImportModel::checkPatterns() {
  for (const auto &[name, content] : patterns_) {
    if (content.line == 0) {
      continue;  // never declared; each line that uses it has said so
    }
    const bool whole = content.deckles.size() == 1 && content.wastes.size() == 1;
    if ((!whole && options_.ordinaryData) || content.deckles.empty() || content.yields == 0) {
      complain(content.line, "the pattern needs one deckle, one waste and a yield");
      continue;
    }
    if (!whole || !options_.ordinaryData) {
      continue;
    }
    const double deckle = content.deckles.front();
    const double waste = content.wastes.front();
    const double rest = deckle - content.cut - waste;
    const double rounding = 2e-5 * std::max(std::fabs(deckle), 1.0);
    if (waste < 0.0 || rest > rounding || (waste > 0.0 && rest < -rounding)) {
      complain(content.line, "the pattern's widths and waste do not add up to its deckle");
    }
  }
}

// Each cutter and pattern is fed, and each commodity that a pattern gives has somewhere to go.
void ImportModel::checkFlows() {
  if (options_.patternsOnly) {
    return;
  }
  for (const auto &[key, node] : nodes_) {
    if ((key.first == Kind::kCutter || key.first == Kind::kPattern) &&
        !entered_.contains(key.second)) {
      complain(node.line, "no arc feeds the node " + network::inQuotes(key.second));
    }
  }
  for (const auto &[name, content] : patterns_) {
    for (const std::string &commodity : content.flows) {
      if (!left_.contains({name, commodity})) {
        complain(content.line,
                 "no arc takes " + network::inQuotes(commodity) + " from the pattern");
      }
    }
  }
}

bool ImportModel::isYielded(const std::string &orderNode, const std::string &commodity) const {
  const auto patterns = yieldingPatterns_.find(commodity);
  return patterns != yieldingPatterns_.end() &&
         std::any_of(patterns->second.begin(), patterns->second.end(),
                     [&](const std::string &pattern) {
                       const std::string grade = pattern.substr(0, pattern.find("_Pattern_"));
                       return orderNode.starts_with(grade + '_');
                     });
}

void ImportModel::checkSupply() {
  for (const std::string &commodity : commodities_) {
    if (commodity.starts_with("DemandWidth") && !yieldingPatterns_.contains(commodity)) {
      complain(0, "no pattern yields " + network::inQuotes(commodity));
    }
  }
  for (const auto &[key, node] : nodes_) {
    if (key.first != Kind::kOrder) {
      continue;
    }
    const auto commodity = orderCommodity_.find(key.second);
    if (commodity == orderCommodity_.end()) {
      complain(node.line, "the order node takes in no width");
    } else if (!isYielded(key.second, commodity->second)) {
      complain(node.line, "no pattern of its grade yields " + network::inQuotes(commodity->second));
    }
    if (options_.freightComplete && !entered_.contains(key.second)) {
      complain(node.line, "no freight arc reaches the order node");
    }
  }
}

void ImportModel::checkSets() {
  for (const auto &[set, line] : setLines_) {
    if (!blockSets_.contains(set)) {
      complain(line, "the set " + network::inQuotes(set) + " never becomes a block");
    }
  }
  for (const auto &[set, line] : blockSets_) {
    if (!isNode(Kind::kBlock, set)) {
      complain(line, "the block set " + network::inQuotes(set) + " has no block");
    }
  }
  for (const auto &[key, node] : nodes_) {
    const bool groups = key.first == Kind::kStore || key.first == Kind::kOrder;
    if (groups && !grouped_.contains(key.second)) {
      complain(node.line, "the node " + network::inQuotes(key.second) + " is in no set");
    }
  }
}

}  // namespace corvane::import_checker
