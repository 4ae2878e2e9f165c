#include "import_grammar.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace corvane::import_checker {
namespace {

struct Template {
  Family family;
  std::string_view text;
};

#define ROOT_HEAD "addroot <CompressBlockNodes> True <batchSizeSolve> False <batchSizeTune> "
#define ROOT_MIDDLE \
  " <initialSolverAlgorithm> networkDualSolve <BatLP> dualSolve <batchSizePeriods> 1 "
#define BLOCK_HEAD                                                                           \
  "addnode <type> \"Block\" <name> {name:node} <capMan> False <openAtStart> True "           \
  "<shutdownBenefit> 0 <startupCost> 0 <x> {int:x} <y> {int:y} <fixedCost> 0 <operational> " \
  "Ignore "                                                                                  \
  "<capManFixed> False <singlesource> False <sourcingChange> True <node> \"None\""
#define ARC_ENDS " <from> {name:from} <to> {name:to} <flow> 0 <fixed> False <opportunity> 0 "

// Families of one keyword that differ only by a tail stand next to each other; a line fits one.
constexpr std::array kTemplates{
    Template{Family::kRoot,
             ROOT_HEAD "False" ROOT_MIDDLE
                       "<batchTuneStopThreshold> 100 <batchTuneTries> 99999 <batchSizeMode> 0 "
                       "<batchSizePeriods> 9999 <batchSizeResolveFrequency> 5"},
    Template{Family::kBatchRoot,
             ROOT_HEAD "True" ROOT_MIDDLE
                       "<batchTuneStopThreshold> 0 <batchTuneTries> 99999 <batchSizeMode> 1 "
                       "<batchSizePeriods> 9999 <batchSizeResolveFrequency> 5"},
    Template{Family::kDeckleCommodity, "addcommodity <name> \"Deckle{num:width}\""},
    Template{Family::kWidthCommodity, "addcommodity <name> \"DemandWidth{num:width}\""},
    Template{Family::kWasteCommodity, "addcommodity <name> \"Waste\""},
    Template{Family::kTimeCommodity, "addcommodity <name> \"Machine_Time\""},
    Template{Family::kPeriod, "addperiod <name> {name:period}"},
    Template{Family::kMachineFirst,
             "addnode <type> \"Machine\" <name> {name:node} <x> {int:x} <y> {int:y} <period> "
             "{name:period} <fixed> False <min> 0 <max> {int:days} <cost> 0 <overcost> +infinity"},
    Template{Family::kMachineLater,
             "addnode <type> \"Machine\" <name> {name:node} <period> {name:period} <fixed> False "
             "<min> 0 <max> {int:days} <cost> 0 <overcost> +infinity"},
    Template{Family::kTimeOut,
             "addattach <node> {name:node} <commodity> \"Machine_Time\" <in> False"},
    Template{Family::kTimeIn,
             "addattach <node> {name:node} <commodity> \"Machine_Time\" <in> True"},
    Template{Family::kProcess,
             "addnode <type> \"Process\" <name> {name:node} <x> {int:x} <y> {int:y} <period> "
             "{name:period}"},
    Template{Family::kDeckleCapacity,
             "addattach <node> {name:node} <commodity> \"Deckle{num:width}\" <quantity> "
             "{num:capacity} <in> False"},
    Template{Family::kTimeArc,
             "addarc <commodity> \"Machine_Time\"" ARC_ENDS "<cost> 0 <min> 0 <max> +infinity"},
    Template{
        Family::kBatch,
        "addnode <type> \"Batch\" <name> {name:node} <singlePeriodSetups> True <x> {int:x} <y> "
        "{int:y} <flow> 0 <fixed> False <minrunlength> 0 <batchsize> 1 <setup> 0 <period> "
        "{name:period}"},
    Template{Family::kDeckleIn,
             "addattach <node> {name:node} <commodity> \"Deckle{num:width}\" <in> True"},
    Template{Family::kDeckleOut,
             "addattach <node> {name:node} <commodity> \"Deckle{num:width}\" <in> False"},
    Template{Family::kPatternDeckle,
             "addattach <node> {name:node} <commodity> \"Deckle{num:width}\" <in> True <quantity> "
             "-1"},
    Template{Family::kPatternYield,
             "addattach <node> {name:node} <commodity> \"DemandWidth{num:width}\" <in> False "
             "<quantity> {int:count}"},
    Template{Family::kPatternWaste,
             "addattach <node> {name:node} <commodity> \"Waste\" <in> False <quantity> "
             "{num:waste}"},
    Template{Family::kDeckleArc,
             "addarc <commodity> \"Deckle{num:width}\"" ARC_ENDS
             "<cost> {int:cost} <min> 0 <max> +infinity <period> {name:period}"},
    Template{Family::kStoreFirst,
             "addnode <type> \"StorageDemand\" <name> {name:node} <x> {int:x} <y> {int:y} "
             "<storagemax> 0 <period> {name:period}"},
    Template{Family::kStoreLater,
             "addnode <type> \"StorageDemand\" <name> {name:node} <storagemax> 0 <period> "
             "{name:period}"},
    Template{Family::kWidthIn,
             "addattach <node> {name:node} <commodity> \"DemandWidth{num:width}\" <in> True"},
    Template{Family::kWidthOut,
             "addattach <node> {name:node} <commodity> \"DemandWidth{num:width}\" <in> False"},
    Template{Family::kNodeToSet, "addnodetoset {name:set} {name:node}"},
    Template{Family::kBlockSet, "blockset {name:set}"},
    Template{Family::kCutterBlock, BLOCK_HEAD " <period> {name:period}"},
    Template{Family::kOrderBlock, BLOCK_HEAD},
    Template{Family::kWasteDemand,
             "addnode <type> \"Demand\" <name> {name:node} <x> {int:x} <y> {int:y} <amount> 0 "
             "<fixed> False <period> {name:period}"},
    Template{Family::kWasteIn, "addattach <node> {name:node} <commodity> \"Waste\" <in> True"},
    Template{Family::kYieldArc, "addarc <commodity> \"DemandWidth{num:width}\"" ARC_ENDS
                                "<cost> 0 <min> 0 <max> +infinity <period> {name:period}"},
    Template{Family::kWasteArc, "addarc <commodity> \"Waste\"" ARC_ENDS
                                "<cost> {num:cost} <min> 0 <max> +infinity <period> {name:period}"},
    Template{Family::kOrderFirst,
             "addnode <type> \"StorageDemand\" <name> {name:node} <x> {int:x} <y> {int:y} "
             "<undercost> 50000 <storagemax> 0 <demandamount> {int:amount} <period> "
             "{name:period}"},
    Template{Family::kOrderLater,
             "addnode <type> \"StorageDemand\" <name> {name:node} <undercost> 50000 <storagemax> 0 "
             "<demandamount> {int:amount} <period> {name:period}"},
    Template{Family::kOrderUndercost,
             "addnode <type> \"StorageDemand\" <name> {name:node} <undercost> 50000 <storagemax> 0 "
             "<period> {name:period}"},
    Template{Family::kDelayFirst,
             "addnode <type> \"Delay\" <name> {name:node} <x> {int:x} <y> {int:y} "
             "<periodstodelay> {num:delay} <period> {name:period}"},
    Template{Family::kDelayLater,
             "addnode <type> \"Delay\" <name> {name:node} <periodstodelay> {num:delay} <period> "
             "{name:period}"},
    Template{Family::kFreightArc,
             "addarc <commodity> \"DemandWidth{num:width}\"" ARC_ENDS
             "<min> 0 <max> +infinity <period> {name:period} <cost> {num:cost}"},
    Template{Family::kTrailer, "# End of Corvane. import file."}};

#undef ROOT_HEAD
#undef ROOT_MIDDLE
#undef BLOCK_HEAD
#undef ARC_ENDS

bool isInteger(const std::string &text) {
  char *end = nullptr;
  const long long value = std::strtoll(text.c_str(), &end, 10);
  return !text.empty() && *end == '\0' && std::to_string(value) == text;
}

// A number stands as general notation writes it: reading and writing it again changes nothing.
bool isGeneralNumber(const std::string &text) {
  char *end = nullptr;
  const double value = std::strtod(text.c_str(), &end);
  std::array<char, 40> written{};
  std::snprintf(written.data(), written.size(), "%g", value);
  return !text.empty() && *end == '\0' && text == written.data();
}

// Length of the value at the start of the line: a name with its quotes, or a number; 0 when there
// is none of this kind. A name may hold quotes of its own, but none that a blank follows: that is
// where names end.
std::size_t valueLength(std::string_view kind, std::string_view line) {
  if (kind == "name") {
    if (line.size() < 2 || line.front() != '"') {
      return 0;
    }
    const std::size_t end = std::min(line.find("\" ", 1), line.size() - 1);
    return line[end] == '"' ? end + 1 : 0;
  }
  const std::string text(line.substr(0, line.find_first_of("\" ")));
  return (kind == "int" ? isInteger(text) : isGeneralNumber(text)) ? text.size() : 0;
}

using Fields = std::map<std::string, std::string, std::less<>>;

// The fields of a line that fits the template.
std::optional<Fields> match(std::string_view pattern, std::string_view line) {
  Fields fields;
  while (true) {
    const std::size_t literal = std::min(pattern.find('{'), pattern.size());
    if (!line.starts_with(pattern.substr(0, literal))) {
      return std::nullopt;
    }
    line.remove_prefix(literal);
    pattern.remove_prefix(literal);
    if (pattern.empty()) {
      return line.empty() ? std::optional(std::move(fields)) : std::nullopt;
    }
    const std::size_t colon = pattern.find(':');
    const std::size_t end = pattern.find('}');
    const std::string_view kind = pattern.substr(1, colon - 1);
    const std::size_t length = valueLength(kind, line);
    if (length == 0) {
      return std::nullopt;
    }
    const std::string_view value = line.substr(0, length);
    fields[std::string(pattern.substr(colon + 1, end - colon - 1))] =
        kind == "name" ? value.substr(1, length - 2) : value;
    line.remove_prefix(length);
    pattern.remove_prefix(end + 1);
  }
}

}  // namespace

std::optional<Command> parseCommand(std::string_view line) {
  for (const Template &candidate : kTemplates) {
    if (std::optional<Fields> fields = match(candidate.text, line)) {
      return Command{candidate.family, std::move(*fields)};
    }
  }
  return std::nullopt;
}

}  // namespace corvane::import_checker
