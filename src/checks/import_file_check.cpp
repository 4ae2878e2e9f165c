#include "checks/import_file_check.h"

#include <algorithm>
#include <map>
#include <optional>

#include "checks/field_texts.h"
#include "checks/shown_text.h"
#include "core/numbers.h"
#include "core/text.h"
#include "export/names.h"
#include "network/network_builder.h"

namespace corvane::checks {

namespace {

// Rolls by order node and period.
using Demand = std::map<std::pair<std::string, std::string>, qint64>;

Code codeOf(network::Fault fault) {
  switch (fault) {
    case network::Fault::kCut:
      return Code::kImportCut;
    case network::Fault::kSeveralRuns:
      return Code::kImportSeveralRuns;
    case network::Fault::kGrammar:
      return Code::kImportGrammar;
    case network::Fault::kLineEnd:
      return Code::kImportControlCharacter;
    case network::Fault::kUndeclared:
      return Code::kImportUndeclared;
    case network::Fault::kArcEnd:
      return Code::kImportArcEnd;
    case network::Fault::kSense:
      break;
  }
  return Code::kImportSense;
}

void placeLine(Finding &finding, quint64 line) {
  finding.line = std::min(static_cast<quint32>(line), finding.file->lineCount());
  finding.length = finding.file->line(finding.line).size();
}

// The rest of a line, as far as a message has room for it.
std::string shortened(std::string_view text) {
  constexpr std::size_t kRoom = 40;
  return text.size() <= kRoom ? quotedText(text) : quotedText(text.substr(0, kRoom)) + " ...";
}

// Gives the builder of the network the lines of a file, and reports what is wrong with them in
// their order.
class ImportFileReading {
 public:
  ImportFileReading(const SourceFile &file, FindingSink &sink)
      : file_(file),
        sink_(sink),
        builder_([this](const network::Refused &refused) { report(refused); }) {}

  network::Network run() {
    const quint32 whole = file_.lineCount() - (file_.endsWithBreak() ? 0 : 1);
    for (quint32 line = 1; line <= file_.lineCount(); ++line) {
      std::string_view text = file_.bytes().substr(file_.begin(line), length(line));
      reportControlCharacter(line, file_.line(line));
      if (line > whole) {
        builder_.takeCutLine();
      } else {
        text.remove_suffix(1);
        builder_.take(text);
      }
    }
    return builder_.finish(file_.bytes().size());
  }

  // Whether the file is one run from its first line to its last.
  bool isOneRun() const { return isOneRun_; }

 private:
  std::size_t length(quint32 line) const { return file_.end(line) - file_.begin(line); }

  // The first of a line.
  void reportControlCharacter(quint32 line, std::string_view text) {
    const auto at = firstControlCharacter(text);
    if (!at) {
      return;
    }
    sink_.add(file_, Code::kImportControlCharacter, [&](Finding &finding) {
      finding.line = line;
      finding.offset = at->offset;
      finding.length = at->length;
      finding.detail = "what follows " + quotedText(text.substr(at->offset, at->length)) +
                       " may be read as a command of its own";
    });
  }

  void report(const network::Refused &refused) {
    const Code code = codeOf(refused.fault());
    isOneRun_ = isOneRun_ && code != Code::kImportCut && code != Code::kImportSeveralRuns;
    sink_.add(file_, code, [&](Finding &finding) {
      placeLine(finding, refused.line());
      const network::Refused::Part part = refused.part();
      if (part.length > 0) {
        finding.offset = part.offset;
        finding.length = part.length;
      }
      finding.detail = code == Code::kImportGrammar ? describeGrammar(finding) : refused.what();
    });
  }

  static std::string describeGrammar(const Finding &finding) {
    const std::string_view line = finding.file->line(finding.line);
    return finding.offset == 0 ? "no command begins with " + shortened(line)
           : finding.offset >= line.size()
               ? "something is missing at the end"
               : "no command goes on with " + shortened(line.substr(finding.offset));
  }

  const SourceFile &file_;
  FindingSink &sink_;
  network::NetworkBuilder builder_;
  bool isOneRun_ = true;
};

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
  ImportFileReading reading(file, sink);
  const network::Network network = reading.run();
  const bool hasOrders = mill != nullptr && mill->parameters.patternsOnly == 0 &&
                         mill->machineFile.file != nullptr && mill->orderFile.file != nullptr;
  if (reading.isOneRun() && hasOrders) {
    compareDemand(file, network, *mill, sink);
  }
}

}  // namespace corvane::checks
