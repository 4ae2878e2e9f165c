#include "import_grammar.h"

#include <array>
#include <cstdio>
#include <cstdlib>

namespace corvane::import_checker {
namespace {

using network::ImportLine;

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

// A name may hold quotes of its own, but none that a blank follows: that is where names end.
bool isName(const std::string &text) {
  return text.find("\" ") == std::string::npos;
}

// The label of the line's number and whether it is an integer; an empty label: it has none.
struct NumberRule {
  const char *label = "";
  bool integer = false;
};

NumberRule numberRule(Family family) {
  switch (family) {
    case Family::kMachineFirst:
    case Family::kMachineLater:
      return {"days", true};
    case Family::kDeckleCapacity:
      return {"capacity", false};
    case Family::kPatternYield:
      return {"count", true};
    case Family::kPatternWaste:
      return {"waste", false};
    case Family::kOrderFirst:
    case Family::kOrderLater:
      return {"amount", true};
    case Family::kDelayFirst:
    case Family::kDelayLater:
      return {"delay", false};
    case Family::kDeckleArc:
      return {"cost", true};
    case Family::kTimeArc:
    case Family::kYieldArc:
    case Family::kWasteArc:
    case Family::kFreightArc:
      return {"cost", false};
    default:
      return {};
  }
}

// The width of a commodity, behind the name of its kind.
std::string_view widthOf(std::string_view commodity) {
  for (const std::string_view kind : {"Deckle", "DemandWidth"}) {
    if (commodity.starts_with(kind)) {
      return commodity.substr(kind.size());
    }
  }
  return {};
}

bool isArc(Family family) {
  return family == Family::kTimeArc || family == Family::kDeckleArc ||
         family == Family::kYieldArc || family == Family::kWasteArc ||
         family == Family::kFreightArc;
}

// What the program writes alike in all files.
bool hasUsualValues(const ImportLine &line) {
  const bool freeArc = line.family == Family::kTimeArc || line.family == Family::kYieldArc;
  return (line.storageMax.text.empty() || line.storageMax.text == "0") &&
         (line.undercost.text.empty() || line.undercost.text == "50000") &&
         (line.cost.text.empty() || line.cost.text == "0") && (!freeArc || line.value.text == "0");
}

// The label of the name that a line begins with.
const char *nameLabel(Family family) {
  if (isArc(family)) {
    return "from";
  }
  return family == Family::kPeriod                                     ? "period"
         : family == Family::kNodeToSet || family == Family::kBlockSet ? "set"
                                                                       : "node";
}

class Fields {
 public:
  explicit Fields(const ImportLine &line) : line_(line) { command_.family = line.family; }

  std::optional<Command> make() {
    const bool commodity =
        line_.family <= Family::kTimeCommodity && line_.family >= Family::kDeckleCommodity;
    const std::string_view width = widthOf(commodity ? line_.name : line_.commodity);
    const NumberRule rule = numberRule(line_.family);
    if (!hasUsualValues(line_) || !put("x", line_.x, isInteger) || !put("y", line_.y, isInteger) ||
        !put("width", width, isGeneralNumber) ||
        !put(rule.label, line_.value.text, rule.integer ? isInteger : isGeneralNumber)) {
      return std::nullopt;
    }
    if (!put(commodity ? "commodity" : nameLabel(line_.family), line_.name, isName) ||
        !put(isArc(line_.family) ? "to" : "node", line_.other, isName) ||
        !put("period", line_.period, isName)) {
      return std::nullopt;
    }
    return std::move(command_);
  }

 private:
  // False where the text is there and not of the kind that it must be.
  bool put(std::string_view label, std::string_view text, bool (*isRight)(const std::string &)) {
    if (label.empty() || text.data() == nullptr) {
      return true;
    }
    std::string value(text);
    if (!isRight(value)) {
      return false;
    }
    command_.fields.insert_or_assign(std::string(label), std::move(value));
    return true;
  }

  const ImportLine &line_;
  Command command_;
};

}  // namespace

std::optional<Command> parseCommand(std::string_view text) {
  const std::optional<ImportLine> line = network::parseImportLine(text);
  return line ? Fields(*line).make() : std::nullopt;
}

}  // namespace corvane::import_checker
