// The part of the builder that takes attachments and arcs and closes the network.

#include <algorithm>
#include <utility>

#include "network/network_builder.h"
#include "network/period_order.h"

namespace corvane::network {

namespace {

// The pattern without widths, which only a deckle below 0 can bring about.
bool isEmptyYield(const ImportLine &line) {
  return line.commodity == "DemandWidth0" && line.value.value == 0.0;
}

bool byCommodity(const Attachment &a, const Attachment &b) {
  return std::pair(a.commodity, a.in) < std::pair(b.commodity, b.in);
}

}  // namespace

void NetworkBuilder::takeAttachment(const ImportLine &line) {
  const Index node = nodeOf(line.name);
  switch (line.family) {
    case Family::kPatternYield:
      return attachYield(node, line);
    case Family::kDeckleCapacity:
      return attach(node, commodityOf(line.commodity), false,
                    notNegative(line.value, "the capacity"));
    case Family::kPatternWaste:
      return attach(node, commodityOf(line.commodity), false,
                    notNegative(line.value, "the waste of a pattern"));
    case Family::kTimeOut:
    case Family::kDeckleOut:
    case Family::kWidthOut:
      return attach(node, commodityOf(line.commodity), false, 1.0);
    default:
      return attach(node, commodityOf(line.commodity), true, 1.0);
  }
}

void NetworkBuilder::attachYield(Index node, const ImportLine &line) {
  if (isEmptyYield(line) && commodities_.find(line.commodity) == kNone) {
    warn("no-widths", "the pattern " + inQuotes(line.name) + " cuts no roll");
    return;
  }
  const Index commodity = commodityOf(line.commodity);
  const double rolls = notNegative(line.value, "the number of rolls");
  for (Attachment &attachment : network_.nodes[node].attachments) {
    if (attachment.commodity == commodity && !attachment.in) {
      attachment.quantity += rolls;
      return;
    }
  }
  attach(node, commodity, false, rolls);
}

void NetworkBuilder::attach(Index index, Index commodity, bool in, double quantity) {
  Node &node = network_.nodes[index];
  for (const Attachment &attachment : node.attachments) {
    if (attachment.commodity == commodity && attachment.in == in) {
      if (attachment.quantity != quantity) {
        refuse("the process " + inQuotes(node.name) + " has two quantities of one commodity");
      }
      return;
    }
    if (node.type != NodeType::kProcess && attachment.commodity != commodity) {
      refuse("the node " + inQuotes(node.name) + " holds " +
             inQuotes(network_.commodities[commodity].name) + " here and " +
             inQuotes(network_.commodities[attachment.commodity].name) +
             " before: two widths are alike in their names");
    }
  }
  node.attachments.push_back({commodity, in, quantity});
}

void NetworkBuilder::takeArc(const ImportLine &line) {
  const Index commodity = commodityOf(line.commodity);
  if (lastFrom_ == kNone || network_.nodes[lastFrom_].name != line.name) {
    lastFrom_ = nodeOf(line.name);
  }
  if (lastTo_ == kNone || network_.nodes[lastTo_].name != line.other) {
    lastTo_ = nodeOf(line.other);
  }
  const Index arc = findOrAddArc({commodity, lastFrom_, lastTo_, line_}, line);
  const double cost = finite(line.value);
  if (cost != 0.0 && (line.family == Family::kTimeArc || line.family == Family::kYieldArc)) {
    refuse(Fault::kSense,
           "the arc has a cost where none has a meaning: " + std::string(line.value.text),
           line.value.text);
  }
  if (line.family == Family::kTimeArc) {  // it names no period and holds for all
    for (Index period = 0; period < network_.periods.size(); ++period) {
      setArc(arc, period, cost);
    }
  } else {
    setArc(arc, periodOf(line.period), cost);
  }
}

Index NetworkBuilder::findOrAddArc(const Arc &arc, const ImportLine &line) {
  if (lastArc_ != kNone) {
    const Arc &last = network_.arcs[lastArc_];
    if (last.from == arc.from && last.to == arc.to && last.commodity == arc.commodity) {
      return lastArc_;
    }
  }
  const ArcKey key = {(quint64{arc.from} << 32U) | arc.to, arc.commodity};
  if (const auto known = arcs_.find(key); known != arcs_.end()) {
    lastArc_ = known->second;
    return lastArc_;
  }
  requireEnds(arc, line);
  lastArc_ = static_cast<Index>(network_.arcs.size());
  arcs_.emplace(key, lastArc_);
  network_.arcs.push_back(arc);
  network_.arcData.resize(network_.arcs.size() * network_.periods.size());
  return lastArc_;
}

void NetworkBuilder::requireEnds(const Arc &arc, const ImportLine &line) {
  for (const bool leaving : {true, false}) {
    const Node &node = network_.nodes[leaving ? arc.from : arc.to];
    if (leaving ? !node.gives(arc.commodity) : !node.takes(arc.commodity)) {
      compareRecipes();  // says it better where the node was declared twice
      refuse(Fault::kArcEnd,
             "the node " + inQuotes(node.name) + (leaving ? " gives no " : " takes no ") +
                 inQuotes(network_.commodities[arc.commodity].name),
             leaving ? line.name : line.other);
    }
  }
}

void NetworkBuilder::setArc(Index index, Index period, double cost) {
  const Arc &arc = network_.arcs[index];
  ArcDatum &datum = network_.arcData[index * network_.periods.size() + period];
  if (datum.line != 0 && datum.cost != cost) {
    replaced_.add("cost-replaced", index,
                  "the cost of the arc from " + inQuotes(network_.nodes[arc.from].name) + " to " +
                      inQuotes(network_.nodes[arc.to].name),
                  {line_, cost, datum.line, datum.cost, network_.periods[period]});
  }
  const Series &delay = network_.nodes[arc.to].delay;
  datum = {cost, delay.empty() ? 0.0 : delay[period].value, line_};
}

Network NetworkBuilder::finish(quint64 bytes) {
  if (line_ == 0 && !isCutInALine_) {
    tell(Refused(0, "the file is empty: the run that was to write it failed early", Fault::kCut));
  } else if (!endIsThere_ && !isCutInALine_) {
    tell(Refused(line_, "the file has no end line: the run that wrote it did not finish",
                 Fault::kCut));
  }
  compareRecipes();
  carryOver();
  if (const std::string order = unsortedPeriods(network_.periods); !order.empty()) {
    network_.warnings.push_back(
        {0, "period-order",
         "the periods are not sorted: " + order +
             "; time runs as in the file, so a delay of 1 leads to the next of this list"});
  }
  for (Warning &warning : replaced_.warnings()) {
    network_.warnings.push_back(std::move(warning));
  }
  std::stable_sort(network_.warnings.begin(), network_.warnings.end(),
                   [](const Warning &a, const Warning &b) { return a.line < b.line; });
  network_.bytes = bytes;
  network_.lines = line_;
  return std::move(network_);
}

void NetworkBuilder::compareRecipes() {
  for (EarlierRecipe &earlier : std::exchange(earlierRecipes_, {})) {
    compareRecipe(earlier);
  }
}

// Two patterns under one name are none; the capacity of a cutter may differ.
void NetworkBuilder::compareRecipe(EarlierRecipe &earlier) {
  const Node &node = network_.nodes[earlier.node];
  std::vector<Attachment> recipe = node.attachments;
  std::sort(recipe.begin(), recipe.end(), byCommodity);
  std::sort(earlier.attachments.begin(), earlier.attachments.end(), byCommodity);
  bool equal = recipe.size() == earlier.attachments.size();
  for (std::size_t at = 0; equal && at < recipe.size(); ++at) {
    const Attachment &now = recipe[at];
    const Attachment &before = earlier.attachments[at];
    equal = now.commodity == before.commodity && now.in == before.in;
    if (!equal || now.quantity == before.quantity) {
      continue;
    }
    equal = network_.commodities[now.commodity].kind == CommodityKind::kDeckle;
    replaced_.add("capacity-replaced", earlier.node, "the capacity of " + inQuotes(node.name),
                  {recipeLine_[earlier.node], now.quantity, earlier.line, before.quantity, ""});
  }
  if (!equal) {
    tell(Refused(recipeLine_[earlier.node],
                 "the process " + inQuotes(node.name) + " has another recipe than in line " +
                     std::to_string(earlier.line) + ": two of them under one name"));
  }
}

namespace {

// Gives each period without a line the data of the last before it that has one, else of the first.
template <typename Value>
void carryOverSeries(Value *data, std::size_t periods) {
  std::size_t first = 0;
  while (first < periods && data[first].line == 0) {
    ++first;
  }
  if (first == periods) {
    return;
  }
  for (std::size_t period = 0; period < periods; ++period) {
    if (data[period].line == 0) {
      data[period] = data[period < first ? first : period - 1];
      data[period].line = 0;
    }
  }
}

}  // namespace

void NetworkBuilder::carryOver() {
  const std::size_t periods = network_.periods.size();
  for (Node &node : network_.nodes) {
    for (Series *series :
         {&node.days, &node.dayCost, &node.storageMax, &node.undercost, &node.delay}) {
      carryOverSeries(series->data(), series->size());
    }
  }
  for (std::size_t arc = 0; arc < network_.arcs.size(); ++arc) {
    carryOverSeries(network_.arcData.data() + arc * periods, periods);
  }
}

}  // namespace corvane::network
