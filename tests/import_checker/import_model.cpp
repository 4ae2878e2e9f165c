#include "import_model.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

#include "import_sections.h"
#include "network/warning.h"

namespace corvane::import_checker {
namespace {

double number(const std::string &text) {
  return std::strtod(text.c_str(), nullptr);
}

}  // namespace

void ImportModel::take(std::size_t line, const Command &command) {
  line_ = line;
  seen_.insert(command.family);
  const std::vector<int> sections = sectionsOf(command);
  const auto section =
      std::find_if(sections.begin(), sections.end(), [this](int s) { return s >= section_; });
  if (section == sections.end()) {
    complain(line_, "stands after a later section");
  } else {
    section_ = *section;
  }
  checkOptions(command.family);
  checkNumbers(command);
  takeHeader(command);
  takeNode(command);
  takeAttachment(command);
  takeArc(command);
  takeGrouping(command);
}

void ImportModel::checkOptions(Family family) {
  const bool batch = options_.batch && !options_.patternsOnly;
  if (family == Family::kRoot && batch) {
    complain(line_, "is the root of a run without batch");
  }
  if (family == Family::kBatchRoot && !batch) {
    complain(line_, "is the root of a run with batch");
  }
  if ((family == Family::kBatch || family == Family::kDeckleIn || family == Family::kDeckleOut) &&
      !batch) {
    complain(line_, "belongs to a run with batch");
  }
  if ((family == Family::kDelayFirst || family == Family::kDelayLater) && !options_.delay) {
    complain(line_, "belongs to a run with delay");
  }
  if (options_.patternsOnly && section_ > kPeriodSection && section_ < kTrailerSection &&
      (section_ != kPatternSection || family == Family::kDeckleArc)) {
    complain(line_, "does not belong to a run of patterns only");
  }
}

void ImportModel::checkNumbers(const Command &command) {
  for (const char *label : {"width", "capacity", "waste", "cost", "delay"}) {
    const auto field = command.fields.find(label);
    if (options_.ordinaryData && field != command.fields.end() &&
        !std::isfinite(number(field->second))) {
      complain(line_, "has a " + std::string(label) + " that is not finite");
    }
  }
}

void ImportModel::takeHeader(const Command &command) {
  switch (command.family) {
    case Family::kRoot:
    case Family::kBatchRoot:
      if (line_ != 1) {
        complain(line_, "is a root below the first line");
      }
      break;
    case Family::kDeckleCommodity:
      declareWidthCommodity("Deckle", command["width"]);
      break;
    case Family::kWidthCommodity:
      declareWidthCommodity("DemandWidth", command["width"]);
      break;
    case Family::kWasteCommodity:
      declareCommodity("Waste");
      break;
    case Family::kTimeCommodity:
      declareCommodity("Machine_Time");
      break;
    case Family::kPeriod:
      if (std::find(periods_.begin(), periods_.end(), command["period"]) != periods_.end()) {
        complain(line_, "declares the period " + network::inQuotes(command["period"]) + " again");
      }
      periods_.push_back(command["period"]);
      break;
    default:
      break;
  }
}

void ImportModel::declareCommodity(const std::string &name) {
  if (!commodities_.insert(name).second && options_.ordinaryData) {
    complain(line_, "declares the commodity " + network::inQuotes(name) + " again");
  }
}

void ImportModel::declareWidthCommodity(const std::string &prefix, const std::string &width) {
  declareCommodity(widthCommodity(prefix, width));
  const double value = number(width);
  const auto last = lastWidth_.find(prefix);
  if (last != lastWidth_.end() && value < last->second) {
    complain(line_, "declares its width after a wider one");
  }
  lastWidth_[prefix] = value;
}

// Among odd data, 0 and -0 are one width that is written in two ways.
std::string ImportModel::widthCommodity(const std::string &prefix, const std::string &width) const {
  return prefix + (width == "-0" && !options_.ordinaryData ? "0" : width);
}

void ImportModel::takeNode(const Command &command) {
  switch (command.family) {
    case Family::kMachineFirst:
    case Family::kMachineLater:
      declareNode(Kind::kMachine, command, command.family == Family::kMachineFirst);
      break;
    case Family::kProcess:
      declareProcess(command);
      break;
    case Family::kBatch:
      declareNode(Kind::kBatch, command, true);
      break;
    case Family::kStoreFirst:
    case Family::kStoreLater:
      declareNode(Kind::kStore, command, command.family == Family::kStoreFirst);
      break;
    case Family::kWasteDemand:
      declareNode(Kind::kWasteDemand, command, true);
      expectFirstPeriod(command["period"]);
      break;
    case Family::kDelayFirst:
    case Family::kDelayLater:
      declareNode(Kind::kDelay, command, command.family == Family::kDelayFirst);
      break;
    case Family::kOrderFirst:
    case Family::kOrderLater:
      declareOrder(command, command.family == Family::kOrderFirst);
      break;
    case Family::kOrderUndercost:
      usePeriod(command["period"]);
      undercosts_[command["node"]].line = line_;
      ++undercosts_[command["node"]].periods[command["period"]];
      if (!isNode(Kind::kOrder, command["node"])) {
        complain(line_,
                 "names the order node " + network::inQuotes(command["node"]) + ", not declared");
      }
      break;
    default:
      break;
  }
}

void ImportModel::declareNode(Kind kind, const Command &command, bool first) {
  const std::string &name = command["node"];
  usePeriod(command["period"]);
  const bool known = isNode(kind, name);
  Node &node = nodes_[{kind, name}];
  if (first) {
    expectX(kind, command["x"]);
  } else if (!known) {
    complain(line_, "is the first line of the node " + network::inQuotes(name) +
                        " but has no coordinates");
  }
  if (first && kind != Kind::kBatch && !periods_.empty() && command["period"] != periods_.front()) {
    complain(line_, "has coordinates in a period that is not the first");
  }
  if (!known) {
    node.line = line_;
  }
  // A delay node is named without its mill and comes again with each cutter.
  if (++node.periods[command["period"]] > 1 && kind != Kind::kDelay && options_.ordinaryData) {
    complain(line_, "declares the node " + network::inQuotes(name) + " again");
  }
}

void ImportModel::declareProcess(const Command &command) {
  const bool cutter = isCutter(command);
  declareNode(cutter ? Kind::kCutter : Kind::kPattern, command, true);
  expectFirstPeriod(command["period"]);
  if (!cutter && patterns_[command["node"]].line == 0) {
    patterns_[command["node"]].line = line_;
  }
}

void ImportModel::declareOrder(const Command &command, bool first) {
  const std::string &name = command["node"];
  usePeriod(command["period"]);
  if (first) {
    expectX(Kind::kOrder, command["x"]);
    if (isNode(Kind::kOrder, name)) {
      complain(line_, "declares the node " + network::inQuotes(name) + " again");
    }
    nodes_[{Kind::kOrder, name}].line = line_;
  } else if (!isNode(Kind::kOrder, name)) {
    complain(line_, "is the first line of the node " + network::inQuotes(name) +
                        " but has no coordinates");
  }
  if (!amountPeriods_[name].insert(command["period"]).second && options_.ordinaryData) {
    complain(line_, "gives a second amount for the period");
  }
  if (number(command["amount"]) < 1 && options_.ordinaryData) {
    complain(line_, "demands an amount below 1");
  }
}

void ImportModel::takeAttachment(const Command &command) {
  const auto width = command.fields.find("width");
  const std::string wide = width == command.fields.end() ? "" : width->second;
  switch (command.family) {
    case Family::kTimeOut:
      attach(command, "Machine_Time", false, {Kind::kMachine});
      break;
    case Family::kTimeIn:
      attach(command, "Machine_Time", true, {Kind::kCutter});
      break;
    case Family::kDeckleCapacity:
      attach(command, widthCommodity("Deckle", wide), false, {Kind::kCutter});
      break;
    case Family::kDeckleIn:
    case Family::kDeckleOut:
      attach(command, widthCommodity("Deckle", wide), command.family == Family::kDeckleIn,
             {Kind::kBatch});
      break;
    case Family::kPatternDeckle:
    case Family::kPatternYield:
    case Family::kPatternWaste:
      takePatternLine(command);
      break;
    case Family::kWidthIn:
      attach(command, widthCommodity("DemandWidth", wide), true,
             {Kind::kStore, Kind::kDelay, Kind::kOrder});
      if (isNode(Kind::kOrder, command["node"])) {
        orderCommodity_[command["node"]] = widthCommodity("DemandWidth", wide);
      }
      break;
    case Family::kWidthOut:
      attach(command, widthCommodity("DemandWidth", wide), false, {Kind::kStore, Kind::kDelay});
      break;
    case Family::kWasteIn:
      attach(command, "Waste", true, {Kind::kWasteDemand});
      break;
    default:
      break;
  }
}

void ImportModel::takePatternLine(const Command &command) {
  const std::string &name = command["node"];
  PatternContent &content = patterns_[name];
  if (command.family == Family::kPatternDeckle) {
    attach(command, widthCommodity("Deckle", command["width"]), true, {Kind::kPattern});
    content.deckles.push_back(number(command["width"]));
  } else if (command.family == Family::kPatternWaste) {
    attach(command, "Waste", false, {Kind::kPattern});
    content.flows.insert("Waste");
    content.wastes.push_back(number(command["waste"]));
  } else {
    const double count = number(command["count"]);
    if (number(command["width"]) == 0.0) {
      // No arc takes a roll without width from a pattern; and a pattern without widths names one
      // that no order has.
      left_.insert({name, "DemandWidth0"});
    }
    if (number(command["width"]) == 0.0 && count == 0.0) {
      commodities_.insert("DemandWidth0");
    } else if (count < 1.0) {
      complain(line_, "yields a count below 1");
    }
    attach(command, widthCommodity("DemandWidth", command["width"]), false, {Kind::kPattern});
    content.flows.insert(widthCommodity("DemandWidth", command["width"]));
    yieldingPatterns_[widthCommodity("DemandWidth", command["width"])].insert(name);
    ++content.yields;
    content.cut += number(command["width"]) * count;
  }
}

void ImportModel::attach(const Command &command, const std::string &commodity, bool in,
                         const std::set<Kind> &kinds) {
  const std::string &name = command["node"];
  useCommodity(commodity);
  const bool known =
      std::any_of(kinds.begin(), kinds.end(), [&](Kind kind) { return isNode(kind, name); });
  if (!known) {
    complain(line_, "attaches to " + network::inQuotes(name) +
                        ", no such node of a fitting kind is declared");
  }
  attachments_.insert({name, commodity, in});
}

void ImportModel::takeArc(const Command &command) {
  const auto width = command.fields.find("width");
  const std::string wide = width == command.fields.end() ? "" : width->second;
  switch (command.family) {
    case Family::kTimeArc:
      join(command, "Machine_Time", {{Kind::kMachine, Kind::kCutter}});
      break;
    case Family::kDeckleArc: {
      const bool free = isNode(Kind::kBatch, command["from"]);
      join(command, widthCommodity("Deckle", wide),
           {{Kind::kCutter, options_.batch ? Kind::kBatch : Kind::kPattern},
            {Kind::kBatch, Kind::kPattern}});
      expectNumber("cost", command["cost"], free ? 0 : 10);
      if (free) {
        expectFirstPeriod(command["period"]);
      }
      break;
    }
    case Family::kYieldArc:
      join(command, widthCommodity("DemandWidth", wide), {{Kind::kPattern, Kind::kStore}});
      expectFirstPeriod(command["period"]);
      break;
    case Family::kWasteArc:
      join(command, "Waste", {{Kind::kPattern, Kind::kWasteDemand}});
      break;
    case Family::kFreightArc:
      if (options_.delay) {
        join(command, widthCommodity("DemandWidth", wide),
             {{Kind::kStore, Kind::kDelay}, {Kind::kDelay, Kind::kOrder}});
      } else {
        join(command, widthCommodity("DemandWidth", wide), {{Kind::kStore, Kind::kOrder}});
      }
      break;
    default:
      break;
  }
}

void ImportModel::join(const Command &command, const std::string &commodity,
                       const std::vector<std::pair<Kind, Kind>> &kinds) {
  const std::string &from = command["from"];
  const std::string &to = command["to"];
  useCommodity(commodity);
  const bool known = std::any_of(kinds.begin(), kinds.end(), [&](const auto &pair) {
    return isNode(pair.first, from) && isNode(pair.second, to);
  });
  if (!known) {
    complain(line_, "joins " + network::inQuotes(from) + " and " + network::inQuotes(to) +
                        ", no such nodes of fitting kinds are declared");
  }
  if (!attachments_.contains({from, commodity, false})) {
    complain(line_, network::inQuotes(commodity) + " does not leave " + network::inQuotes(from));
  }
  if (!attachments_.contains({to, commodity, true})) {
    complain(line_, network::inQuotes(commodity) + " does not enter " + network::inQuotes(to));
  }
  const auto period = command.fields.find("period");
  if (period != command.fields.end()) {
    usePeriod(period->second);
    Arcs &arcs = arcs_[{command.family, from, to}];
    arcs.line = line_;
    ++arcs.periods[period->second];
  }
  entered_.insert(to);
  left_.insert({from, commodity});
}

void ImportModel::takeGrouping(const Command &command) {
  switch (command.family) {
    case Family::kNodeToSet:
      putIntoSet(command["set"], command["node"]);
      break;
    case Family::kBlockSet:
      makeBlockSet(command["set"]);
      break;
    case Family::kCutterBlock:
      declareBlock(command["node"]);
      expectFirstPeriod(command["period"]);
      expectX(Kind::kStore, command["x"]);
      break;
    case Family::kOrderBlock:
      declareBlock(command["node"]);
      expectX(Kind::kOrder, command["x"]);
      break;
    default:
      break;
  }
}

void ImportModel::putIntoSet(const std::string &set, const std::string &node) {
  if (!isNode(Kind::kStore, node) && !isNode(Kind::kOrder, node)) {
    complain(line_,
             "puts " + network::inQuotes(node) + " into a set, no such store or order is declared");
  }
  setLines_.try_emplace(set, line_);
  grouped_.insert(node);
  if (!members_.insert({set, node}).second && options_.ordinaryData) {
    complain(line_, "puts the node into the set again");
  }
}

void ImportModel::makeBlockSet(const std::string &set) {
  if (!setLines_.contains(set)) {
    complain(line_, "makes a block of the set " + network::inQuotes(set) + ", which is empty");
  }
  if (!blockSets_.try_emplace(set, line_).second && options_.ordinaryData) {
    complain(line_, "makes a block of the set again");
  }
}

void ImportModel::declareBlock(const std::string &name) {
  if (!blockSets_.contains(name)) {
    complain(line_, "is the block of " + network::inQuotes(name) + ", which is no block set");
  }
  nodes_[{Kind::kBlock, name}].line = line_;
}

void ImportModel::useCommodity(const std::string &name) {
  if (!commodities_.contains(name)) {
    complain(line_, "uses the commodity " + network::inQuotes(name) + ", not declared");
  }
}

void ImportModel::usePeriod(const std::string &period) {
  if (std::find(periods_.begin(), periods_.end(), period) == periods_.end()) {
    complain(line_, "uses the period " + network::inQuotes(period) + ", not declared");
  }
}

void ImportModel::expectFirstPeriod(const std::string &period) {
  if (!periods_.empty() && period != periods_.front()) {
    complain(line_, "must stand in the first period");
  }
}

void ImportModel::expectNumber(std::string_view what, const std::string &text, long long wanted) {
  if (text != std::to_string(wanted)) {
    complain(line_,
             "has the " + std::string(what) + " " + text + " instead of " + std::to_string(wanted));
  }
}

void ImportModel::expectX(Kind kind, const std::string &x) {
  constexpr int kStep = 290;
  const int batch = options_.batch ? kStep : 0;
  const int delay = options_.delay ? kStep : 0;
  switch (kind) {
    case Kind::kMachine:
      return expectNumber("x", x, 10);
    case Kind::kCutter:
      return expectNumber("x", x, 180);
    case Kind::kBatch:
      return expectNumber("x", x, 420);
    case Kind::kPattern:
      return expectNumber("x", x, options_.patternsOnly ? 420 : 420 + batch);
    case Kind::kStore:
    case Kind::kWasteDemand:
      return expectNumber("x", x, 710 + batch);
    case Kind::kDelay:
      return expectNumber("x", x, 910 + batch);
    case Kind::kOrder:
      return expectNumber("x", x, 910 + batch + delay);
    case Kind::kBlock:
      return;
  }
}

}  // namespace corvane::import_checker
