#include "report/html.h"
#include "report/sections.h"

namespace corvane::report {

namespace {

QByteArray bar(double percent, bool isFull) {
  return "<svg class=bar viewBox=\"0 0 100 10\" preserveAspectRatio=none aria-hidden=true>"
         "<path class=track d=\"M0 5h100\"/><path class=" +
         QByteArray(isFull ? "full" : "part") + " d=\"M0 5h" +
         coordinate(std::clamp(percent, 0.0, 100.0)) + "\"/></svg>";
}

Cell timeCell(const Subject &subject, const record::MachineTime &time) {
  const double percent = time.available > 0 ? 100 * time.used / time.available : 0;
  const bool full = time.available > 0 && isFull(subject.record, time);
  return Cell::ofNumber(percent, 0).with(bar(percent, full)).as(full ? "b" : "");
}

}  // namespace

Table machineTable(const Subject &subject) {
  Table table{"machine-time",
              QStringLiteral("Machine time used, in percent of the days of each period"),
              {{QStringLiteral("Machine"), false}, {QStringLiteral("Mill"), false}},
              {},
              {},
              Table::Use::kShort};
  for (const QString &period : subject.record.periods) {
    table.columns.push_back({QStringLiteral("Period ") + period});
  }
  table.columns.push_back({QStringLiteral("Days used")});
  const auto columns = table.columns.size();
  for (const record::Machine &machine : subject.record.machines) {
    Row row{{Cell::ofText(machine.name), Cell::ofText(machine.mill)}};
    row.cells.resize(columns);
    table.rows.push_back(row);
  }
  for (const record::MachineTime &time : subject.record.plan->machineTime) {
    std::vector<Cell> &cells = table.rows[static_cast<std::size_t>(time.machine)].cells;
    cells[static_cast<std::size_t>(time.period) + 2] = timeCell(subject, time);
    cells.back() = Cell::ofNumber(cells.back().number + time.used, 1);
  }
  return table;
}

}  // namespace corvane::report
