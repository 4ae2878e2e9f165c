#include <QDir>
#include <QUrl>
#include <ostream>

#include "checks/report.h"
#include "checks/shown_text.h"
#include "formats/json_writer.h"

namespace corvane::checks {

namespace {

std::string uriOf(const std::string &name) {
  const QString path = QString::fromStdString(name);
  if (QDir::isAbsolutePath(path)) {
    return QUrl::fromLocalFile(path).toEncoded().toStdString();
  }
  return QUrl::toPercentEncoding(path, "/").toStdString();
}

class SarifReport : public Report {
 public:
  explicit SarifReport(std::ostream &out) : out_(out), json_(out) {
    json_.beginObject();
    json_.member("version", "2.1.0");
    json_.key("runs");
    json_.beginArray();
    json_.beginObject();
    json_.key("tool");
    json_.beginObject();
    json_.key("driver");
    json_.beginObject();
    json_.member("name", "corvane-check");
    json_.member("version", CORVANE_VERSION);
    json_.key("rules");
    json_.beginArray();
    for (const Check &check : allChecks()) {
      writeRule(check);
    }
    json_.endArray();
    json_.endObject();
    json_.endObject();
    json_.member("columnKind", "unicodeCodePoints");
    json_.key("results");
    json_.beginArray();
  }

  void show(const Finding &finding) override {
    json_.beginObject(JsonWriter::kOneLine);
    json_.member("ruleId", codeText(finding.code));
    json_.member("ruleIndex", static_cast<qint64>(&checkOf(finding.code) - allChecks().data()));
    json_.member("level", severityWord(finding.severity));
    writeText("message", messageOf(finding) + "; write " +
                             shown(finding.write.empty() ? checkOf(finding.code).fix
                                                         : std::string_view(finding.write)));
    json_.key("locations");
    json_.beginArray();
    json_.beginObject();
    json_.key("physicalLocation");
    json_.beginObject();
    json_.key("artifactLocation");
    json_.beginObject();
    json_.member("uri", uriOf(finding.file->name()));
    json_.endObject();
    if (finding.line > 0) {
      writeRegion(finding);
    }
    json_.endObject();
    json_.endObject();
    json_.endArray();
    json_.key("partialFingerprints");
    json_.beginObject();
    json_.member("corvaneCheck/v1", keyOf(finding));
    json_.endObject();
    json_.endObject();
  }

  void end(const Totals & /*totals*/, const CheckSummary & /*summary*/) override {
    json_.endArray();
    json_.endObject();
    json_.endArray();
    json_.endObject();
    out_ << std::endl;
  }

 private:
  void writeText(const char *key, const std::string &text) {
    json_.key(key);
    json_.beginObject(JsonWriter::kOneLine);
    json_.member("text", text);
    json_.endObject();
  }

  void writeRule(const Check &check) {
    json_.beginObject(JsonWriter::kOneLine);
    json_.member("id", codeText(check.code));
    writeText("shortDescription", std::string(check.title));
    writeText("fullDescription", std::string(check.why));
    writeText("help", "Example: " + std::string(check.example) +
                          ". Write: " + std::string(check.fix) + ".");
    json_.key("defaultConfiguration");
    json_.beginObject();
    json_.member("level", severityWord(check.severity));
    json_.endObject();
    json_.endObject();
  }

  void writeRegion(const Finding &finding) {
    const auto column = static_cast<qint64>(columnOf(finding));
    json_.key("region");
    json_.beginObject();
    json_.member("startLine", static_cast<qint64>(finding.line));
    json_.member("startColumn", column);
    json_.member("endColumn", column + static_cast<qint64>(widthOf(finding)));
    json_.endObject();
  }

  std::ostream &out_;
  JsonWriter json_;
};

}  // namespace

std::unique_ptr<Report> makeSarifReport(std::ostream &out) {
  return std::make_unique<SarifReport>(out);
}

}  // namespace corvane::checks
