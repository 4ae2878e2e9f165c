#include <algorithm>
#include <ostream>

#include "checks/report.h"
#include "checks/shown_text.h"
#include "core/numbers.h"

namespace corvane::checks {

namespace {

std::string padded(std::string text, std::size_t width) {
  const std::size_t length = characterCount(text, 0, text.size());
  return length < width ? text + std::string(width - length, ' ') : text;
}

std::string paddedLeft(const std::string &text, std::size_t width) {
  return text.size() < width ? std::string(width - text.size(), ' ') + text : text;
}

std::string listOf(const std::vector<std::string> &names, std::size_t most) {
  std::string list;
  for (std::size_t i = 0; i < std::min(names.size(), most); ++i) {
    list += (i > 0 ? ", " : "") + shown(names[i]);
  }
  return names.size() > most ? list + ", and " + std::to_string(names.size() - most) + " more"
                             : list;
}

class TextReport : public Report {
 public:
  explicit TextReport(std::ostream &out) : out_(out) {}

  void show(const Finding &finding) override {
    out_ << placeText(finding) << severityWord(finding.severity) << " " << codeText(finding.code)
         << ": " << messageOf(finding) << "\n";
    if (finding.line > 0) {
      const MarkedText text = markedText(finding);
      const MarkedLine marked = markedLine(text.line, text.begin, text.length);
      out_ << "    " << marked.text << "\n    " << marked.mark << "\n";
    }
    const std::string_view write =
        finding.write.empty() ? checkOf(finding.code).fix : std::string_view(finding.write);
    out_ << "    write: " << shown(write) << "\n";
  }

  void end(const Totals &totals, const CheckSummary &summary) override {
    writeTotals(totals);
    if (summary.files.empty()) {
      return;
    }
    out_ << "\n";
    writeFiles(summary);
    writePlan(summary);
    if (!summary.machines.empty()) {
      writeDays(summary);
    }
    out_.flush();
  }

 private:
  static constexpr std::size_t kMostNames = 12;

  void writeTotals(const Totals &totals) {
    for (const auto &[code, count] : totals.notShown) {
      out_ << codeText(code) << ": " << count
           << " more of these are not shown (--max-per-code 0)\n";
    }
    if (totals.all() > 0) {
      out_ << "\n" << totalsText(totals);
    } else {
      out_ << "Nothing found: " << totalsText(totals);
    }
    if (totals.known > 0) {
      out_ << "; " << totals.known << " known in the baseline";
    }
    if (totals.below > 0) {
      out_ << "; " << totals.below << " below the level (--level info shows all)";
    }
    out_ << ".\n";
  }

  void writeFiles(const CheckSummary &summary) {
    std::size_t width = 0;
    for (const CheckSummary::File &file : summary.files) {
      width = std::max(width, characterCount(file.name, 0, file.name.size()));
    }
    const auto row = [&](const std::string &name, const std::string &lines,
                         const std::string &accepted, const std::string &dropped) {
      out_ << padded(name, width) << paddedLeft(lines, 10) << paddedLeft(accepted, 10)
           << paddedLeft(dropped, 10) << "\n";
    };
    row("Read", "lines", "accepted", "dropped");
    for (const CheckSummary::File &file : summary.files) {
      row(file.name, std::to_string(file.lines), std::to_string(file.accepted),
          std::to_string(file.dropped()));
    }
  }

  void writePlan(const CheckSummary &summary) {
    const auto row = [&](const std::string &title, const std::string &text) {
      out_ << padded(title, 30) << (text.empty() ? "none" : text) << "\n";
    };
    row("Grades", listOf(summary.grades, kMostNames));
    row("Periods, in this order", listOf(summary.periods, kMostNames));
    row("Ordered inches", fixed(summary.inches, 4));
    row("Customers without a way", summary.customersWithoutWay.empty()
                                       ? ""
                                       : std::to_string(summary.customersWithoutWay.size()) + ": " +
                                             listOf(summary.customersWithoutWay, kMostNames));
  }

  void writeDays(const CheckSummary &summary) {
    constexpr std::size_t kMostPeriods = 8;
    const std::size_t periods = std::min(kMostPeriods, summary.periods.size());
    out_ << "\nDays needed at least, of " << summary.availableDays
         << " in a period (full deckles, no trim)";
    if (periods < summary.periods.size()) {
      out_ << "; the first " << periods << " of " << summary.periods.size() << " periods";
    }
    out_ << "\n";
    const auto row = [&](const CheckSummary::Machine &machine) {
      out_ << "  " << padded(machine.name, 28);
      for (std::size_t period = 0; period < periods; ++period) {
        out_ << paddedLeft(fixed(machine.days[period], 1), 8);
      }
      out_ << "\n";
    };
    out_ << "  " << padded("period", 28);
    for (std::size_t period = 0; period < periods; ++period) {
      out_ << paddedLeft(shown(summary.periods[period]), 8);
    }
    out_ << "\n";
    constexpr std::size_t kMostMachines = 20;
    for (std::size_t i = 0; i < std::min(kMostMachines, summary.machines.size()); ++i) {
      row(summary.machines[i]);
    }
    if (summary.machines.size() > kMostMachines) {
      out_ << "  and " << summary.machines.size() - kMostMachines << " more machines\n";
    }
    row({"all " + std::to_string(summary.machines.size()) + ", of " +
             std::to_string(static_cast<qint64>(summary.availableDays) *
                            static_cast<qint64>(summary.machines.size())),
         summary.all.days});
  }

  std::ostream &out_;
};

class GccReport : public Report {
 public:
  explicit GccReport(std::ostream &out) : out_(out) {}

  void show(const Finding &finding) override {
    const std::string_view write =
        finding.write.empty() ? checkOf(finding.code).fix : std::string_view(finding.write);
    out_ << placeText(finding) << severityWord(finding.severity) << ": " << messageOf(finding)
         << "; write " << shown(write) << " [" << codeText(finding.code) << "]\n";
  }

  void end(const Totals & /*totals*/, const CheckSummary & /*summary*/) override { out_.flush(); }

 private:
  std::ostream &out_;
};

std::string counted(qint64 count, const std::string &what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

}  // namespace

std::string placeText(const Finding &finding) {
  const std::string name = finding.file->name();
  return finding.line == 0 ? name + ": "
                           : name + ":" + std::to_string(finding.line) + ":" +
                                 std::to_string(columnOf(finding)) + ": ";
}

std::string totalsText(const Totals &totals) {
  std::string text;
  for (const Severity severity : {Severity::kError, Severity::kWarning, Severity::kNote}) {
    const qint64 count = totals.bySeverity.at(static_cast<std::size_t>(severity));
    if (count > 0) {
      text += (text.empty() ? "" : ", ") + counted(count, std::string(severityWord(severity)));
    }
  }
  return text.empty() ? "no errors and no warnings" : text;
}

std::unique_ptr<Report> makeTextReport(std::ostream &out) {
  return std::make_unique<TextReport>(out);
}

std::unique_ptr<Report> makeGccReport(std::ostream &out) {
  return std::make_unique<GccReport>(out);
}

std::unique_ptr<Report> makeReport(const std::string &format, std::ostream &out) {
  if (format == "text") {
    return makeTextReport(out);
  }
  if (format == "gcc") {
    return makeGccReport(out);
  }
  if (format == "json") {
    return makeJsonReport(out);
  }
  return format == "sarif" ? makeSarifReport(out) : nullptr;
}

}  // namespace corvane::checks
