#include "report/html.h"
#include "report/sections.h"

namespace corvane::report {

namespace {

Table findingTable(const record::Record &record) {
  Table table{"findings",
              QStringLiteral("What the check of the input files found"),
              {{QStringLiteral("Code"), false},
               {QStringLiteral("Severity"), false},
               {QStringLiteral("File"), false},
               {QStringLiteral("Line")},
               {QStringLiteral("What"), false}},
              {},
              {},
              Table::Use::kLong};
  for (const record::Finding &finding : record.findings) {
    table.rows.push_back(
        {{Cell::ofText(finding.code), Cell::ofText(finding.severity), Cell::ofText(finding.file),
          Cell::ofCount(static_cast<double>(finding.line), 0), Cell::ofText(finding.text)}});
  }
  return table;
}

Table warningTable(const record::Plan &plan) {
  Table table{
      "plan-warnings",
      QStringLiteral("Warnings of the planner, with lines of the import file"),
      {{QStringLiteral("Kind"), false}, {QStringLiteral("Line")}, {QStringLiteral("What"), false}},
      {},
      {},
      Table::Use::kLong};
  for (const record::Note &note : plan.warnings) {
    table.rows.push_back(
        {{Cell::ofText(note.kind), Cell::ofCount(static_cast<double>(note.line), 0),
          Cell::ofText(note.text)}});
  }
  return table;
}

Table messageTable(const record::Record &record) {
  Table table{"messages",
              QStringLiteral("Messages of the log's last section"),
              {{QStringLiteral("Message"), false}},
              {},
              {},
              Table::Use::kLong};
  for (const QString &message : record.log.messages) {
    table.rows.push_back({{Cell::ofText(message)}});
  }
  return table;
}

Table parameterTable(const record::Record &record) {
  Table table{"parameters",
              QStringLiteral("Parameters, and where they come from"),
              {{QStringLiteral("Parameter"), false},
               {QStringLiteral("Value"), false},
               {QStringLiteral("From"), false}},
              {},
              {},
              Table::Use::kShort};
  for (const record::Parameter &parameter : record.parameters) {
    table.rows.push_back({{Cell::ofText(parameter.key), Cell::ofText(parameter.value),
                           Cell::ofText(parameter.origin)}});
  }
  return table;
}

Table fileTable(const record::Record &record) {
  Table table{"files",
              QStringLiteral("Files as they were when this page was made"),
              {{QStringLiteral("File"), false},
               {QStringLiteral("Name"), false},
               {QStringLiteral("Bytes")},
               {QStringLiteral("SHA-256"), false}},
              {},
              {},
              Table::Use::kShort};
  for (const record::File &file : record.files) {
    table.rows.push_back(
        {{Cell::ofText(file.role), Cell::ofText(file.name),
          file.isThere ? Cell::ofNumber(static_cast<double>(file.bytes), 0) : Cell(),
          Cell::ofText(file.isThere ? file.sha256 : QStringLiteral("not there")).as("hash")}});
  }
  return table;
}

// In order, the best first as the planner has it.
Table adviceTable(const record::Plan &plan) {
  Table table{"advice",
              QStringLiteral("What would make the plan better"),
              {{QStringLiteral("Kind"), false}, {QStringLiteral("What"), false}},
              {},
              {},
              Table::Use::kInOrder};
  for (const record::Note &note : plan.advice) {
    table.rows.push_back({{Cell::ofText(note.kind), Cell::ofText(note.text)}});
  }
  return table;
}

}  // namespace

std::vector<Table> recordTables(const Subject &subject) {
  const record::Record &record = subject.record;
  std::vector<Table> tables{findingTable(record), messageTable(record)};
  if (subject.hasPlan()) {
    tables.insert(tables.begin(), adviceTable(*record.plan));
    tables.insert(tables.begin() + 2, warningTable(*record.plan));
  }
  std::erase_if(tables, [](const Table &table) { return table.rows.empty(); });
  tables.push_back(parameterTable(record));
  tables.push_back(fileTable(record));
  return tables;
}

}  // namespace corvane::report
