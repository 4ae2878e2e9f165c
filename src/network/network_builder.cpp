#include "network/network_builder.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/numbers.h"

namespace corvane::network {

namespace {

const char *typeName(NodeType type) {
  switch (type) {
    case NodeType::kMachine:
      return "Machine";
    case NodeType::kProcess:
      return "Process";
    case NodeType::kBatch:
      return "Batch";
    case NodeType::kStorage:
      return "StorageDemand";
    case NodeType::kDelay:
      return "Delay";
    case NodeType::kDemand:
      return "Demand";
  }
  return "";
}

}  // namespace

void NetworkBuilder::tell(const Refused &refused) const {
  if (!onFault_) {
    throw refused;
  }
  onFault_(refused);
}

// The part is one of the line's text.
void NetworkBuilder::refuse(Fault fault, const std::string &text, std::string_view part) const {
  throw Refused(line_, text, fault,
                {static_cast<std::size_t>(part.data() - text_.data()), part.size()});
}

void NetworkBuilder::refuse(const std::string &text) const {
  throw Refused(line_, text);
}

void NetworkBuilder::takeCutLine() {
  isCutInALine_ = true;
  tell(Refused(line_ + 1, "the last line has no line break: the file is cut", Fault::kCut));
}

void NetworkBuilder::warn(const char *kind, std::string text) {
  network_.warnings.push_back({line_, kind, std::move(text)});
}

double NetworkBuilder::finite(const Number &number) const {
  if (!std::isfinite(number.value)) {
    refuse(Fault::kSense, "the number " + std::string(number.text) + " is not finite", number.text);
  }
  return number.value;
}

double NetworkBuilder::notNegative(const Number &number, const char *what) const {
  if (finite(number) < 0.0) {
    refuse(Fault::kSense, std::string(what) + " is below 0: " + std::string(number.text),
           number.text);
  }
  return number.value;
}

void NetworkBuilder::take(std::string_view text) {
  ++line_;
  text_ = text;
  try {
    takeLine();
  } catch (const Refused &refused) {
    tell(refused);
  }
}

void NetworkBuilder::takeLine() {
  if (stage_ == Stage::kEnd) {
    stage_ = Stage::kOver;
    tell(Refused(line_, "the file goes on after its last line: two runs have written it",
                 Fault::kSeveralRuns));
  }
  if (stage_ == Stage::kOver) {
    const std::optional<ImportLine> line = parseImportLine(text_);
    endIsThere_ = line && line->family == Family::kTrailer;
    return;
  }
  const ImportLine line = parse();
  if (stage_ == Stage::kCommands && line.family > Family::kPeriod) {
    takeCommand(line);
  } else {
    takeHeader(line);
  }
}

ImportLine NetworkBuilder::parse() {
  std::size_t stop = 0;
  std::optional<ImportLine> line = parseImportLine(text_, &stop);
  if (!line && text_.ends_with('\r')) {
    tell(Refused(line_, "the line ends in a carriage return: the file was converted",
                 Fault::kLineEnd));
    text_.remove_suffix(1);
    line = parseImportLine(text_, &stop);
  }
  if (!line) {
    // A first line that is none was to be the root.
    stage_ = std::max(stage_, Stage::kCommodities);
    refuse(Fault::kGrammar, "the line is none of an import file", text_.substr(stop));
  }
  return *line;
}

// The root, then commodities, then periods, then the commands.
void NetworkBuilder::takeHeader(const ImportLine &line) {
  if (line.family == Family::kRoot || line.family == Family::kBatchRoot) {
    return takeRoot(line);
  }
  if (stage_ == Stage::kStart) {
    stage_ = Stage::kCommodities;
    tell(Refused(line_, "the file starts without root"));
  }
  if (line.family == Family::kPeriod) {
    takePeriod(line);
  } else if (line.family < Family::kPeriod) {
    const bool isLate = stage_ != Stage::kCommodities;
    declareCommodity(line);
    if (isLate) {
      refuse("a commodity after the periods");
    }
  } else {
    stage_ = Stage::kCommands;
    takeCommand(line);
  }
}

void NetworkBuilder::takeRoot(const ImportLine &line) {
  if (stage_ != Stage::kStart) {
    stage_ = Stage::kOver;
    tell(Refused(line_, "a second root: two runs have written the file", Fault::kSeveralRuns));
    return;
  }
  network_.batch = line.family == Family::kBatchRoot;
  stage_ = Stage::kCommodities;
}

// Series have an entry a period, so none can join them once there are commands.
void NetworkBuilder::takePeriod(const ImportLine &line) {
  if (stage_ == Stage::kCommands || periods_.find(line.name) != kNone) {
    refuse(Fault::kSense, "the period " + inQuotes(line.name) + " stands out of place or twice",
           line.name);
  }
  stage_ = Stage::kPeriods;
  periods_.add(line.name, static_cast<Index>(network_.periods.size()));
  network_.periods.emplace_back(line.name);
}

void NetworkBuilder::declareCommodity(const ImportLine &line) {
  if (const Index known = commodities_.find(line.name); known != kNone) {
    warn("commodity-twice", "the commodity " + inQuotes(line.name) + " was declared in line " +
                                std::to_string(network_.commodities[known].line) +
                                " already: two widths are alike in six digits and count as one");
    return;
  }
  static constexpr CommodityKind kKinds[] = {CommodityKind::kDeckle, CommodityKind::kWidth,
                                             CommodityKind::kWaste, CommodityKind::kMachineTime};
  const auto kind =
      static_cast<std::size_t>(line.family) - static_cast<std::size_t>(Family::kDeckleCommodity);
  commodities_.add(line.name, static_cast<Index>(network_.commodities.size()));
  network_.commodities.push_back({std::string(line.name), kKinds[kind], finite(line.value), line_});
}

void NetworkBuilder::takeCommand(const ImportLine &line) {
  switch (line.family) {
    case Family::kTimeArc:
    case Family::kDeckleArc:
    case Family::kYieldArc:
    case Family::kWasteArc:
    case Family::kFreightArc:
      return takeArc(line);
    case Family::kTimeOut:
    case Family::kTimeIn:
    case Family::kDeckleCapacity:
    case Family::kDeckleIn:
    case Family::kDeckleOut:
    case Family::kPatternDeckle:
    case Family::kPatternYield:
    case Family::kPatternWaste:
    case Family::kWidthIn:
    case Family::kWidthOut:
    case Family::kWasteIn:
      return takeAttachment(line);
    case Family::kNodeToSet:
    case Family::kBlockSet:
    case Family::kCutterBlock:
    case Family::kOrderBlock:
      return takeGrouping(line);
    case Family::kTrailer:
      stage_ = Stage::kEnd;
      endIsThere_ = true;
      return;
    default:
      return takeNode(line);
  }
}

void NetworkBuilder::takeNode(const ImportLine &line) {
  switch (line.family) {
    case Family::kMachineFirst:
    case Family::kMachineLater:
      return setMachine(declareNode(NodeType::kMachine, line.name), line);
    case Family::kProcess:
      periodOf(line.period);
      return declareProcess(line.name);
    case Family::kBatch:
    case Family::kWasteDemand:
      periodOf(line.period);
      declareNode(line.family == Family::kBatch ? NodeType::kBatch : NodeType::kDemand, line.name);
      return;
    case Family::kDelayFirst:
    case Family::kDelayLater: {
      const Index node = declareNode(NodeType::kDelay, line.name);
      return set(network_.nodes[node].delay, periodOf(line.period),
                 notNegative(line.value, "the delay"), node, "delay");
    }
    default:
      return setStorage(declareNode(NodeType::kStorage, line.name), line);
  }
}

Index NetworkBuilder::declareNode(NodeType type, std::string_view name) {
  const Index known = nodes_.find(name);
  if (known != kNone) {
    const Node &node = network_.nodes[known];
    if (node.type != type) {
      refuse(Fault::kSense,
             "the node " + inQuotes(name) + " is a " + typeName(type) + " here and was a " +
                 typeName(node.type) + " in line " + std::to_string(node.line),
             name);
    }
    return known;
  }
  const auto node = static_cast<Index>(network_.nodes.size());
  nodes_.add(name, node);
  network_.nodes.emplace_back();
  network_.nodes.back().name = name;
  network_.nodes.back().type = type;
  network_.nodes.back().line = line_;
  recipeLine_.push_back(line_);
  return node;
}

// A process that is declared again starts its recipe anew.
void NetworkBuilder::declareProcess(std::string_view name) {
  const std::size_t known = network_.nodes.size();
  const Index node = declareNode(NodeType::kProcess, name);
  if (node < known) {
    earlierRecipes_.push_back(
        {node, recipeLine_[node], std::exchange(network_.nodes[node].attachments, {})});
    recipeLine_[node] = line_;
  }
}

void NetworkBuilder::setMachine(Index index, const ImportLine &line) {
  Node &node = network_.nodes[index];
  const Index period = periodOf(line.period);
  if (!node.days.empty() && node.days[period].line != 0 && sharedMachines_.insert(index).second) {
    warn("machine-shared", "the machine " + inQuotes(node.name) + " stands in line " +
                               std::to_string(node.days[period].line) +
                               " already: two mills have a cutter of this name, and its time "
                               "counts once");
  }
  set(node.days, period, notNegative(line.value, "the machine's time"), index, "time");
  set(node.dayCost, period, finite(line.cost), index, "cost of a day");
}

void NetworkBuilder::setStorage(Index index, const ImportLine &line) {
  Node &node = network_.nodes[index];
  const Index period = periodOf(line.period);
  if (std::isnan(line.storageMax.value) || line.storageMax.value < 0.0) {
    refuse(Fault::kSense, "the stock has no such limit: " + std::string(line.storageMax.text),
           line.storageMax.text);
  }
  set(node.storageMax, period, line.storageMax.value, index, "limit of stock");
  if (line.undercost.text.empty()) {
    return;
  }
  if (notNegative(line.undercost, "the undercost") == 0.0) {
    refuse(Fault::kSense, "the undercost is 0: nothing would be delivered", line.undercost.text);
  }
  set(node.undercost, period, line.undercost.value, index, "undercost");
  if (line.family == Family::kOrderUndercost) {
    return;
  }
  if (!node.amount.empty() && node.amount[period].line != 0) {
    const Datum &earlier = node.amount[period];
    warn("amount-twice", "the order " + inQuotes(node.name) + " in period " +
                             std::string(line.period) + " is for " + std::string(line.value.text) +
                             " rolls here and was for " + general(earlier.value) + " in line " +
                             std::to_string(earlier.line) + ", which is lost");
  }
  if (node.amount.empty()) {
    node.amount.resize(network_.periods.size());
  }
  node.amount[period] = {notNegative(line.value, "the demanded amount"), line_};
}

void NetworkBuilder::takeGrouping(const ImportLine &line) {
  switch (line.family) {
    case Family::kNodeToSet: {
      Index set = sets_.find(line.name);
      if (set == kNone) {
        set = static_cast<Index>(network_.setNames.size());
        sets_.add(line.name, set);
        network_.setNames.emplace_back(line.name);
      }
      network_.nodes[nodeOf(line.other)].set = set;
      return;
    }
    case Family::kBlockSet:
      if (sets_.find(line.name) == kNone) {
        refuse(Fault::kUndeclared, "the set " + inQuotes(line.name) + " holds no node", line.name);
      }
      return;
    default:
      if (!line.period.empty() || line.family == Family::kCutterBlock) {
        periodOf(line.period);
      }
      if (sets_.find(line.name) == kNone) {
        refuse(Fault::kUndeclared, "the block " + inQuotes(line.name) + " has no set", line.name);
      }
  }
}

Index NetworkBuilder::nodeOf(std::string_view name) {
  const Index node = nodes_.find(name);
  if (node == kNone) {
    refuse(Fault::kUndeclared, "the node " + inQuotes(name) + " is not declared", name);
  }
  return node;
}

Index NetworkBuilder::commodityOf(std::string_view name) {
  if (lastCommodity_ != kNone && network_.commodities[lastCommodity_].name == name) {
    return lastCommodity_;
  }
  lastCommodity_ = commodities_.find(name);
  if (lastCommodity_ == kNone) {
    refuse(Fault::kUndeclared, "the commodity " + inQuotes(name) + " is not declared", name);
  }
  return lastCommodity_;
}

// Periods come one after the other, again and again.
Index NetworkBuilder::periodOf(std::string_view name) {
  const std::size_t next = network_.periods.empty() || lastPeriod_ == kNone
                               ? 0
                               : (lastPeriod_ + 1) % network_.periods.size();
  if (next < network_.periods.size() && network_.periods[next] == name) {
    lastPeriod_ = static_cast<Index>(next);
    return lastPeriod_;
  }
  const Index period = periods_.find(name);
  if (period == kNone) {
    refuse(Fault::kUndeclared, "the period " + inQuotes(name) + " is not declared", name);
  }
  lastPeriod_ = period;
  return period;
}

void NetworkBuilder::set(Series &series, Index period, double value, Index node,
                         const char *attribute) {
  if (series.empty()) {
    series.resize(network_.periods.size());
  }
  Datum &datum = series[period];
  if (datum.line != 0 && datum.value != value) {
    const std::string &name = network_.nodes[node].name;
    replaced_.add(attribute == std::string_view("delay") ? kDelayDiffers : "value-replaced", node,
                  "the " + std::string(attribute) + " of " + inQuotes(name),
                  {line_, value, datum.line, datum.value, network_.periods[period]});
  }
  datum = {value, line_};
}

}  // namespace corvane::network
