#include "checks/import_file_check.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>

#include "checks/field_texts.h"
#include "checks/shown_text.h"
#include "core/numbers.h"
#include "core/text.h"
#include "export/names.h"
#include "network/network_reader.h"

namespace corvane::checks {

namespace {

// Rolls by order node and period.
using Demand = std::map<std::pair<std::string, std::string>, qint64>;

// Which code a refusal of the reader belongs to, by its words.
Code codeOfRefusal(const std::string &text) {
  struct Word {
    const char *part;
    Code code;
  };
  constexpr std::array<Word, 7> kWords = {{
      {"no end line", Code::kImportCut},
      {"no line break", Code::kImportCut},
      {"is empty", Code::kImportCut},
      {"two runs", Code::kImportSeveralRuns},
      {"is not declared", Code::kImportUndeclared},
      {" gives no ", Code::kImportArcEnd},
      {" takes no ", Code::kImportArcEnd},
  }};
  for (const Word &word : kWords) {
    if (text.find(word.part) != std::string::npos) {
      return word.code;
    }
  }
  return Code::kImportGrammar;
}

void placeLine(Finding &finding, quint64 line) {
  finding.line = std::min(static_cast<quint32>(line), finding.file->lineCount());
  finding.length = finding.file->line(finding.line).size();
}

// True when there is none.
bool reportControlCharacters(const SourceFile &file, FindingSink &sink) {
  bool isClean = true;
  for (quint32 line = 1; line <= file.lineCount(); ++line) {
    const std::string_view text = file.line(line);
    const auto odd =
        std::find_if(text.begin(), text.end(), [](char c) { return c < ' ' || c > '~'; });
    if (odd == text.end() || !hasControlCharacter(text)) {
      continue;
    }
    isClean = false;
    sink.add(file, Code::kImportControlCharacter, [&](Finding &finding) {
      placeLine(finding, line);
      finding.detail = "what follows it may be read as a command of its own";
    });
  }
  return isClean;
}

std::optional<network::Network> readNetwork(const SourceFile &file, FindingSink &sink) {
  try {
    return network::readNetworkText(file.bytes());
  } catch (const network::Refused &refused) {
    const std::string why = refused.what();
    sink.add(file, codeOfRefusal(why), [&](Finding &finding) {
      placeLine(finding, refused.line());
      finding.detail = why;
    });
    return std::nullopt;
  }
}

// The same texts as in the file, without their quotes.
std::string withoutQuotes(const QString &name) {
  return utf8(name.mid(1, name.size() - 2));
}

Demand demandOf(const MillRecords &mill) {
  Demand demand;
  for (const OrderRow &row : mill.orders) {
    Order order;
    order.grade = mill.texts.text(row.grade);
    order.customerName = mill.texts.text(row.customer);
    order.width = mill.widths[row.width];
    demand[{withoutQuotes(orderNodeName(order)), mill.text(row.period)}] += row.quantity;
  }
  return demand;
}

void compareDemand(const SourceFile &file, const network::Network &network, const MillRecords &mill,
                   FindingSink &sink) {
  Demand demand = demandOf(mill);
  for (const network::Node &node : network.nodes) {
    for (std::size_t period = 0; period < node.amount.size(); ++period) {
      const network::Datum &amount = node.amount[period];
      if (amount.line == 0) {
        continue;
      }
      const auto ordered = demand.find({node.name, network.periods[period]});
      const qint64 rolls = ordered != demand.end() ? ordered->second : 0;
      // The file keeps six digits.
      if (general(static_cast<double>(rolls)) != general(amount.value)) {
        sink.add(file, Code::kImportDemand, [&](Finding &finding) {
          placeLine(finding, amount.line);
          finding.detail = general(amount.value) + " here, " + std::to_string(rolls) +
                           " in the orders of " + quotedText(node.name) + " in period " +
                           quotedText(network.periods[period]);
        });
      }
      if (ordered != demand.end()) {
        demand.erase(ordered);
      }
    }
  }
  for (const auto &[place, rolls] : demand) {
    sink.add(file, Code::kImportDemand, [&, name = place, count = rolls](Finding &finding) {
      finding.detail = "nothing here, " + std::to_string(count) + " in the orders of " +
                       quotedText(name.first) + " in period " + quotedText(name.second);
    });
  }
}

}  // namespace

void checkImportFile(const SourceFile &file, const MillRecords *mill, FindingSink &sink) {
  if (!reportControlCharacters(file, sink)) {
    return;
  }
  const auto network = readNetwork(file, sink);
  const bool hasOrders = mill != nullptr && mill->parameters.patternsOnly == 0 &&
                         mill->machineFile.file != nullptr && mill->orderFile.file != nullptr;
  if (network && hasOrders) {
    compareDemand(file, *network, *mill, sink);
  }
}

}  // namespace corvane::checks
