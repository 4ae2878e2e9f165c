#include "network/import_line.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

namespace corvane::network {

namespace {

constexpr std::string_view kInfinity = "+infinity";
constexpr std::string_view kTimeName = "Machine_Time";
constexpr std::string_view kWasteName = "Waste";
constexpr std::string_view kDecklePrefix = "Deckle";
constexpr std::string_view kWidthPrefix = "DemandWidth";

constexpr std::string_view kRootHead =
    "addroot <CompressBlockNodes> True <batchSizeSolve> False <batchSizeTune> ";
constexpr std::string_view kRootTail =
    "False <initialSolverAlgorithm> networkDualSolve <BatLP> dualSolve <batchSizePeriods> 1 "
    "<batchTuneStopThreshold> 100 <batchTuneTries> 99999 <batchSizeMode> 0 "
    "<batchSizePeriods> 9999 <batchSizeResolveFrequency> 5";
constexpr std::string_view kBatchRootTail =
    "True <initialSolverAlgorithm> networkDualSolve <BatLP> dualSolve <batchSizePeriods> 1 "
    "<batchTuneStopThreshold> 0 <batchTuneTries> 99999 <batchSizeMode> 1 "
    "<batchSizePeriods> 9999 <batchSizeResolveFrequency> 5";
constexpr std::string_view kTrailer = "# End of Corvane. import file.";

// Walks over a line from left to right. Each step says whether the line goes on so, and moves on
// only then.
class Scanner {
 public:
  explicit Scanner(std::string_view line) : rest_(line) {}

  bool skip(std::string_view text) {
    if (!rest_.starts_with(text)) {
      return false;
    }
    rest_.remove_prefix(text.size());
    return true;
  }

  bool atEnd() const { return rest_.empty(); }

  std::size_t left() const { return rest_.size(); }

  // A name whose opening quote is behind, up to its closing quote and the text that follows it;
  // without such a text the name ends the line. A '<' that ends the text is left to be read.
  bool name(std::string_view &name, std::string_view next) {
    if (next.empty()) {
      return lastName(name);
    }
    for (std::size_t quote = rest_.find('"'); quote != std::string_view::npos;
         quote = rest_.find('"', quote + 1)) {
      if (rest_.substr(quote + 1).starts_with(next)) {
        name = rest_.substr(0, quote);
        rest_.remove_prefix(quote + 1 + next.size() - (next.back() == '<' ? 1 : 0));
        return true;
      }
    }
    return false;
  }

  bool number(Number &number) {
    number.text = rest_.substr(0, rest_.find(' '));
    if (number.text == kInfinity) {
      number.value = std::numeric_limits<double>::infinity();
    } else {
      const char *end = number.text.data() + number.text.size();
      const auto [stop, error] = std::from_chars(number.text.data(), end, number.value);
      if (stop != end || error != std::errc()) {
        return false;
      }
    }
    rest_.remove_prefix(number.text.size());
    return true;
  }

  // A decimal integer of any size: places in the drawing have no other meaning.
  bool integer(std::string_view &text) {
    const std::size_t sign = rest_.starts_with('-') ? 1 : 0;
    const std::size_t end = std::min(rest_.find_first_not_of("0123456789", sign), rest_.size());
    if (end == sign) {
      return false;
    }
    text = rest_.substr(0, end);
    rest_.remove_prefix(end);
    return true;
  }

 private:
  bool lastName(std::string_view &name) {
    if (rest_.empty() || rest_.back() != '"') {
      return false;
    }
    name = rest_.substr(0, rest_.size() - 1);
    rest_ = {};
    return true;
  }

  std::string_view rest_;
};

bool isDeckle(std::string_view commodity) {
  return commodity.starts_with(kDecklePrefix);
}

bool isWidth(std::string_view commodity) {
  return commodity.starts_with(kWidthPrefix);
}

// The place of a node, "<x> 10 <y> 210 ", is left out after its first period.
bool place(Scanner &scanner, ImportLine &line, bool &first) {
  first = scanner.skip("<x> ");
  return !first || (scanner.integer(line.x) && scanner.skip(" <y> ") && scanner.integer(line.y) &&
                    scanner.skip(" "));
}

bool lastPeriod(Scanner &scanner, ImportLine &line) {
  return scanner.skip("<period> \"") && scanner.name(line.period, "");
}

bool commodityLine(Scanner &scanner, ImportLine &line) {
  if (!scanner.skip("<name> \"") || !scanner.name(line.name, "")) {
    return false;
  }
  if (isDeckle(line.name)) {
    line.family = Family::kDeckleCommodity;
  } else if (isWidth(line.name)) {
    line.family = Family::kWidthCommodity;
  } else if (line.name == kWasteName || line.name == kTimeName) {
    line.family = line.name == kWasteName ? Family::kWasteCommodity : Family::kTimeCommodity;
    return true;
  } else {
    return false;
  }
  Scanner width(line.name.substr(isDeckle(line.name) ? kDecklePrefix.size() : kWidthPrefix.size()));
  return width.number(line.value) && width.atEnd();
}

bool machine(Scanner &scanner, ImportLine &line) {
  bool first = false;
  if (!place(scanner, line, first)) {
    return false;
  }
  line.family = first ? Family::kMachineFirst : Family::kMachineLater;
  return scanner.skip("<period> \"") &&
         scanner.name(line.period, " <fixed> False <min> 0 <max> ") && scanner.number(line.value) &&
         scanner.skip(" <cost> ") && scanner.number(line.cost) &&
         scanner.skip(" <overcost> +infinity") && scanner.atEnd();
}

bool process(Scanner &scanner, ImportLine &line) {
  bool first = false;
  line.family = Family::kProcess;
  return place(scanner, line, first) && first && lastPeriod(scanner, line);
}

bool batch(Scanner &scanner, ImportLine &line) {
  line.family = Family::kBatch;
  return scanner.skip("<x> ") && scanner.integer(line.x) && scanner.skip(" <y> ") &&
         scanner.integer(line.y) &&
         scanner.skip(
             " <flow> 0 <fixed> False <minrunlength> 0 <batchsize> 1 <setup> 0 <period> \"") &&
         scanner.name(line.period, "");
}

bool orderNode(Scanner &scanner, ImportLine &line, bool first) {
  if (!scanner.number(line.undercost) || !scanner.skip(" <storagemax> ") ||
      !scanner.number(line.storageMax)) {
    return false;
  }
  if (scanner.skip(" <demandamount> ")) {
    line.family = first ? Family::kOrderFirst : Family::kOrderLater;
    return scanner.number(line.value) && scanner.skip(" ") && lastPeriod(scanner, line);
  }
  line.family = Family::kOrderUndercost;
  return !first && scanner.skip(" ") && lastPeriod(scanner, line);
}

bool storage(Scanner &scanner, ImportLine &line) {
  bool first = false;
  if (!place(scanner, line, first)) {
    return false;
  }
  if (scanner.skip("<undercost> ")) {
    return orderNode(scanner, line, first);
  }
  line.family = first ? Family::kStoreFirst : Family::kStoreLater;
  return scanner.skip("<storagemax> ") && scanner.number(line.storageMax) && scanner.skip(" ") &&
         lastPeriod(scanner, line);
}

bool delay(Scanner &scanner, ImportLine &line) {
  bool first = false;
  if (!place(scanner, line, first)) {
    return false;
  }
  line.family = first ? Family::kDelayFirst : Family::kDelayLater;
  return scanner.skip("<periodstodelay> ") && scanner.number(line.value) && scanner.skip(" ") &&
         lastPeriod(scanner, line);
}

bool wasteDemand(Scanner &scanner, ImportLine &line) {
  bool first = false;
  line.family = Family::kWasteDemand;
  return place(scanner, line, first) && first && scanner.skip("<amount> 0 <fixed> False ") &&
         lastPeriod(scanner, line);
}

bool block(Scanner &scanner, ImportLine &line) {
  if (!scanner.skip("<x> ") || !scanner.integer(line.x) || !scanner.skip(" <y> ") ||
      !scanner.integer(line.y) ||
      !scanner.skip(" <fixedCost> 0 <operational> Ignore <capManFixed> False <singlesource> False "
                    "<sourcingChange> True <node> \"None\"")) {
    return false;
  }
  if (scanner.atEnd()) {
    line.family = Family::kOrderBlock;
    return true;
  }
  line.family = Family::kCutterBlock;
  return scanner.skip(" ") && lastPeriod(scanner, line);
}

struct NodeCommand {
  std::string_view head;
  std::string_view afterName;
  bool (*read)(Scanner &, ImportLine &);
};

// What follows a node's name is part of where the name ends: a name may hold `" <`.
constexpr std::array kNodeCommands{
    NodeCommand{R"("StorageDemand" <name> ")", " <", storage},
    NodeCommand{R"("Delay" <name> ")", " <", delay},
    NodeCommand{R"("Process" <name> ")", " <", process},
    NodeCommand{R"("Batch" <name> ")", " <singlePeriodSetups> True ", batch},
    NodeCommand{R"("Machine" <name> ")", " <", machine},
    NodeCommand{R"("Demand" <name> ")", " <", wasteDemand},
    NodeCommand{R"("Block" <name> ")",
                " <capMan> False <openAtStart> True <shutdownBenefit> 0 <startupCost> 0 ", block},
};

bool node(Scanner &scanner, ImportLine &line) {
  for (const NodeCommand &command : kNodeCommands) {
    if (scanner.skip(command.head)) {
      return scanner.name(line.name, command.afterName) && command.read(scanner, line);
    }
  }
  return false;
}

// What stands behind the commodity of an attachment, by the kind of commodity.
bool timeAttachment(Scanner &scanner, ImportLine &line) {
  const bool in = scanner.skip("<in> True");
  line.family = in ? Family::kTimeIn : Family::kTimeOut;
  return in || scanner.skip("<in> False");
}

bool deckleAttachment(Scanner &scanner, ImportLine &line) {
  if (scanner.skip("<quantity> ")) {
    line.family = Family::kDeckleCapacity;
    return scanner.number(line.value) && scanner.skip(" <in> False");
  }
  if (scanner.skip("<in> False")) {
    line.family = Family::kDeckleOut;
    return true;
  }
  if (!scanner.skip("<in> True")) {
    return false;
  }
  line.family = scanner.atEnd() ? Family::kDeckleIn : Family::kPatternDeckle;
  return scanner.atEnd() || scanner.skip(" <quantity> -1");
}

bool wasteAttachment(Scanner &scanner, ImportLine &line) {
  if (scanner.skip("<in> True")) {
    line.family = Family::kWasteIn;
    return true;
  }
  line.family = Family::kPatternWaste;
  return scanner.skip("<in> False <quantity> ") && scanner.number(line.value);
}

bool widthAttachment(Scanner &scanner, ImportLine &line) {
  if (scanner.skip("<in> True")) {
    line.family = Family::kWidthIn;
    return true;
  }
  if (!scanner.skip("<in> False")) {
    return false;
  }
  line.family = scanner.atEnd() ? Family::kWidthOut : Family::kPatternYield;
  return scanner.atEnd() || (scanner.skip(" <quantity> ") && scanner.number(line.value));
}

bool attachment(Scanner &scanner, ImportLine &line) {
  if (!scanner.skip("<node> \"") || !scanner.name(line.name, " <commodity> \"") ||
      !scanner.name(line.commodity, " <")) {
    return false;
  }
  if (isWidth(line.commodity)) {
    return widthAttachment(scanner, line);
  }
  if (isDeckle(line.commodity)) {
    return deckleAttachment(scanner, line);
  }
  return line.commodity == kTimeName    ? timeAttachment(scanner, line)
         : line.commodity == kWasteName ? wasteAttachment(scanner, line)
                                        : false;
}

bool freightArc(Scanner &scanner, ImportLine &line) {
  line.family = Family::kFreightArc;
  return isWidth(line.commodity) && scanner.name(line.period, " <cost> ") &&
         scanner.number(line.value);
}

bool arc(Scanner &scanner, ImportLine &line) {
  if (!scanner.skip("<commodity> \"") || !scanner.name(line.commodity, " <from> \"") ||
      !scanner.name(line.name, " <to> \"") ||
      !scanner.name(line.other, " <flow> 0 <fixed> False <opportunity> 0 ")) {
    return false;
  }
  if (scanner.skip("<min> 0 <max> +infinity <period> \"")) {
    return freightArc(scanner, line);
  }
  if (!scanner.skip("<cost> ") || !scanner.number(line.value) ||
      !scanner.skip(" <min> 0 <max> +infinity")) {
    return false;
  }
  if (line.commodity == kTimeName) {
    line.family = Family::kTimeArc;
    return scanner.atEnd();
  }
  line.family = isWidth(line.commodity)    ? Family::kYieldArc
                : isDeckle(line.commodity) ? Family::kDeckleArc
                                           : Family::kWasteArc;
  return scanner.skip(" ") && lastPeriod(scanner, line) &&
         (line.family != Family::kWasteArc || line.commodity == kWasteName);
}

bool root(Scanner &scanner, ImportLine &line) {
  line.family = Family::kRoot;
  if (scanner.skip(kRootTail)) {
    return true;
  }
  line.family = Family::kBatchRoot;
  return scanner.skip(kBatchRootTail);
}

bool grouping(Scanner &scanner, ImportLine &line) {
  line.family = Family::kNodeToSet;
  return scanner.name(line.name, " \"") && scanner.name(line.other, "");
}

bool blockSet(Scanner &scanner, ImportLine &line) {
  line.family = Family::kBlockSet;
  return scanner.name(line.name, "");
}

bool period(Scanner &scanner, ImportLine &line) {
  line.family = Family::kPeriod;
  return scanner.name(line.name, "");
}

bool trailer(Scanner & /*scanner*/, ImportLine &line) {
  line.family = Family::kTrailer;
  return true;
}

struct Keyword {
  std::string_view head;
  bool (*read)(Scanner &, ImportLine &);
};

// Those of which a file has most come first.
constexpr std::array kKeywords{
    Keyword{"addarc ", arc},
    Keyword{"addattach ", attachment},
    Keyword{"addnode <type> ", node},
    Keyword{"addnodetoset \"", grouping},
    Keyword{"blockset \"", blockSet},
    Keyword{"addcommodity ", commodityLine},
    Keyword{"addperiod <name> \"", period},
    Keyword{kRootHead, root},
    Keyword{kTrailer, trailer},
};

}  // namespace

std::optional<ImportLine> parseImportLine(std::string_view text, std::size_t *stop) {
  Scanner scanner(text);
  for (const Keyword &keyword : kKeywords) {
    if (scanner.skip(keyword.head)) {
      ImportLine line;
      if (keyword.read(scanner, line) && scanner.atEnd()) {
        return line;
      }
      break;
    }
  }
  if (stop != nullptr) {
    *stop = text.size() - scanner.left();
  }
  return std::nullopt;
}

}  // namespace corvane::network
