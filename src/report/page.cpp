#include "report/page.h"

#include <algorithm>

#include "record/record_writer.h"
#include "report/document.h"
#include "report/html.h"
#include "report/sections.h"

namespace corvane::report {

namespace {

constexpr QByteArrayView kRecordStart = "<script type=\"application/json\" id=\"corvane-run\">";
constexpr QByteArrayView kRecordEnd = "</script>";

class Page {
 public:
  Page(const record::Record &record, const PageOptions &options)
      : record_(record),
        options_(options),
        figures_(figuresOf(record)),
        subject_{record_, figures_} {}

  QByteArray html() const {
    return toHtml(
        {titleOf(record_.name), subtitle(), record_.version, mostWidths(), top(), allSections(),
         kRecordStart.toByteArray() + record::toJson(record_) + kRecordEnd.toByteArray()});
  }

  std::vector<Table> tables() const {
    std::vector<Table> tables = trimTables(subject_);
    const auto append = [&](std::vector<Table> more) {
      std::move(more.begin(), more.end(), std::back_inserter(tables));
    };
    if (subject_.hasPlan()) {
      append({machineTable(subject_)});
    }
    append(widthTables(subject_));
    for (GradePatterns &grade : patternTables(subject_, options_.usedOnly)) {
      append({std::move(grade.table)});
    }
    append(networkTables(subject_));
    if (subject_.hasPlan()) {
      append({laneTable(subject_)});
    }
    if (options_.with != nullptr) {
      append(comparison().tables);
    }
    append(recordTables(subject_));
    return tables;
  }

 private:
  // Of the grade that has the most.
  int mostWidths() const {
    std::size_t widths = 1;
    for (const auto &grade : figures_.grades) {
      widths = std::max(widths, grade.second.widths.size());
    }
    return static_cast<int>(widths);
  }

  QString subtitle() const {
    QStringList parts;
    QStringList mills;
    for (const record::Machine &machine : record_.machines) {
      if (!machine.mill.isEmpty() && !mills.contains(machine.mill)) {
        mills << machine.mill;
      }
    }
    if (!mills.isEmpty()) {
      parts << listed(mills);
    }
    if (record_.periods.size() == 1) {
      parts << QStringLiteral("period ") + record_.periods.front();
    } else if (!record_.periods.isEmpty()) {
      parts << QStringLiteral("periods %1–%2").arg(record_.periods.front(), record_.periods.back());
    }
    if (record_.log.seed) {
      parts << QStringLiteral("seed %1").arg(*record_.log.seed);
    }
    if (!record_.log.started.isEmpty()) {
      parts << record_.log.started;
    }
    return parts.join(QStringLiteral(" · "));
  }

  QByteArray top() const {
    QByteArray html = "<section id=figures aria-label=\"The plan in figures\">\n" +
                      tiles(subject_) +
                      "</section>\n<section id=attention><h2>What needs attention</h2>\n";
    const std::vector<Attention> points = attention(subject_);
    if (points.empty()) {
      return html + "<p>Nothing: all is delivered, and no machine is full.</p></section>\n";
    }
    html += "<ul class=points>\n";
    for (const Attention &point : points) {
      constexpr const char *kLooks[] = {"bad", "warn", "note"};
      html += QByteArray("<li class=") + kLooks[static_cast<int>(point.weight)] + "><b>" +
              escaped(point.head) + "</b> " + escaped(point.text) + "\n";
    }
    return html + "</ul></section>\n";
  }

  static QByteArray join(const std::vector<Table> &tables) {
    QByteArray html;
    for (const Table &table : tables) {
      html += toHtml(table);
    }
    return html;
  }

  std::vector<Section> allSections() const {
    std::vector<Section> sections;
    if (subject_.hasPlan()) {
      sections.push_back({"trim", "Trim", trimSection()});
      sections.push_back(
          {"machines", "Machines", "<h2>Machine time</h2>\n" + toHtml(machineTable(subject_))});
    }
    sections.push_back(
        {"rolls", "Rolls", "<h2>Rolls ordered and made</h2>\n" + join(widthTables(subject_))});
    sections.push_back({"patterns", "Patterns", patternSection()});
    sections.push_back(
        {"network", "Network",
         "<h2>Network</h2>\n" + networkSection(subject_) + join(networkTables(subject_))});
    if (subject_.hasPlan()) {
      sections.push_back(
          {"freight", "Shipments", "<h2>Shipments</h2>\n" + toHtml(laneTable(subject_))});
    }
    if (options_.with != nullptr) {
      const Comparison other = comparison();
      sections.push_back({"compare", "Compare",
                          "<h2>Compared with another run</h2>\n<p>" + escaped(other.summary) +
                              "</p>\n" + join(other.tables)});
    }
    sections.push_back({"record", "Record", recordSection()});
    return sections;
  }

  QByteArray trimSection() const {
    return "<h2>Trim</h2>\n<p>Trim is weighted by how often the plan cuts each pattern. The ground "
           "of "
           "a figure tells it too: <span class=key><span class=h0>below 0.25 %</span> <span "
           "class=h1>0.5</span> <span class=h2>1</span> <span class=h3>2</span> <span "
           "class=h4>more</span></span></p>\n" +
           join(trimTables(subject_));
  }

  QByteArray patternSection() const {
    QByteArray html =
        "<h2>Cutting patterns</h2>\n<p>All to one scale. A color is one width "
        "throughout a grade";
    html += subject_.hasPlan()
                ? QByteArray(
                      "; <span class=trim>red</span> is trim. What the plan uses comes first, "
                      "pale rows are offered and not used.</p>\n")
                : QByteArray("; <span class=trim>red</span> is what is left of the deckle.</p>\n");
    for (const GradePatterns &grade : patternTables(subject_, options_.usedOnly)) {
      html += "<details open><summary><h3>" + escaped(grade.grade) + "</h3> " +
              escaped(grade.summary) + "</summary>\n" + toHtml(grade.table) + "</details>\n";
    }
    return html;
  }

  QByteArray recordSection() const {
    return "<h2>The record</h2>\n<p>All that this page shows is in it as JSON too. "
           "<code>corvane-report "
           "--extract</code> takes it out, and <code>--with</code> compares another run with this "
           "page.</p>\n" +
           join(recordTables(subject_));
  }

  Comparison comparison() const {
    const Figures other = figuresOf(*options_.with);
    return compare(subject_, {*options_.with, other});
  }

  const record::Record &record_;
  const PageOptions &options_;
  Figures figures_;
  Subject subject_;
};

}  // namespace

QByteArray page(const record::Record &record, const PageOptions &options) {
  return Page(record, options).html();
}

std::vector<Table> allTables(const record::Record &record, const PageOptions &options) {
  return Page(record, options).tables();
}

std::optional<QByteArray> recordIn(const QByteArray &page) {
  const qsizetype start = page.indexOf(kRecordStart);
  if (start < 0) {
    return std::nullopt;
  }
  const qsizetype from = start + kRecordStart.size();
  const qsizetype to = page.indexOf(kRecordEnd, from);
  return to < 0 ? std::nullopt : std::optional(page.mid(from, to - from));
}

}  // namespace corvane::report
