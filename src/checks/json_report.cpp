// {"program": ..., "findings": [...], "notShown": {...}, "counts": {...}, "read": {...}}

#include <ostream>

#include "checks/report.h"
#include "checks/shown_text.h"
#include "formats/json_writer.h"

namespace corvane::checks {

namespace {

class JsonReport : public Report {
 public:
  explicit JsonReport(std::ostream &out) : out_(out), json_(out) {
    json_.beginObject();
    json_.member("program", "corvane-check");
    json_.member("version", CORVANE_VERSION);
    json_.key("findings");
    json_.beginArray();
  }

  void show(const Finding &finding) override {
    json_.beginObject(JsonWriter::kOneLine);
    json_.member("file", finding.file->name());
    if (finding.line > 0) {
      json_.member("line", static_cast<qint64>(finding.line));
      json_.member("column", static_cast<qint64>(columnOf(finding)));
      json_.member("length", static_cast<qint64>(widthOf(finding)));
    }
    json_.member("code", codeText(finding.code));
    json_.member("severity", severityWord(finding.severity));
    json_.member("message", messageOf(finding));
    json_.member("write", shown(finding.write.empty() ? checkOf(finding.code).fix
                                                      : std::string_view(finding.write)));
    if (finding.line > 0) {
      json_.member("text", shown(finding.file->line(finding.line)));
    }
    json_.member("key", keyOf(finding));
    json_.endObject();
  }

  void end(const Totals &totals, const CheckSummary &summary) override {
    json_.endArray();
    json_.key("notShown");
    json_.beginObject(JsonWriter::kOneLine);
    for (const auto &[code, count] : totals.notShown) {
      json_.member(codeText(code), count);
    }
    json_.endObject();
    json_.key("counts");
    json_.beginObject(JsonWriter::kOneLine);
    json_.member("errors", countOf(totals, Severity::kError));
    json_.member("warnings", countOf(totals, Severity::kWarning));
    json_.member("notes", countOf(totals, Severity::kNote));
    json_.member("known", totals.known);
    json_.member("belowLevel", totals.below);
    json_.endObject();
    writeSummary(summary);
    json_.endObject();
    out_ << std::endl;
  }

 private:
  static qint64 countOf(const Totals &totals, Severity severity) {
    return totals.bySeverity.at(static_cast<std::size_t>(severity));
  }

  void writeNames(const char *key, const std::vector<std::string> &names) {
    json_.key(key);
    json_.beginArray(JsonWriter::kOneLine);
    for (const std::string &name : names) {
      json_.value(shown(name));
    }
    json_.endArray();
  }

  void writeDays(const CheckSummary::Machine &machine) {
    json_.beginObject(JsonWriter::kOneLine);
    json_.member("machine", shown(machine.name));
    json_.key("days");
    json_.beginArray(JsonWriter::kOneLine);
    for (const double days : machine.days) {
      json_.value(days);
    }
    json_.endArray();
    json_.endObject();
  }

  void writeSummary(const CheckSummary &summary) {
    json_.key("read");
    json_.beginObject();
    json_.key("files");
    json_.beginArray();
    for (const CheckSummary::File &file : summary.files) {
      json_.beginObject(JsonWriter::kOneLine);
      json_.member("file", file.name);
      json_.member("lines", file.lines);
      json_.member("accepted", file.accepted);
      json_.member("dropped", file.dropped());
      json_.endObject();
    }
    json_.endArray();
    writeNames("grades", summary.grades);
    writeNames("periods", summary.periods);
    json_.member("orderedInches", summary.inches);
    writeNames("customersWithoutWay", summary.customersWithoutWay);
    json_.member("availableDays", summary.availableDays);
    json_.key("neededDays");
    json_.beginArray();
    for (const CheckSummary::Machine &machine : summary.machines) {
      writeDays(machine);
    }
    json_.endArray();
    json_.key("neededDaysOfAll");
    json_.beginArray(JsonWriter::kOneLine);
    for (const double days : summary.all.days) {
      json_.value(days);
    }
    json_.endArray();
    json_.endObject();
  }

  std::ostream &out_;
  JsonWriter json_;
};

}  // namespace

std::unique_ptr<Report> makeJsonReport(std::ostream &out) {
  return std::make_unique<JsonReport>(out);
}

}  // namespace corvane::checks
