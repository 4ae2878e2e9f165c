#include <algorithm>

#include "report/html.h"
#include "report/sections.h"

namespace corvane::report {

namespace {

constexpr std::size_t kFlowsInWords = 40;

// Names of nodes by their number.
QStringList nodeNames(const record::Record &record) {
  const auto append = [](QStringList &names, const auto &list) {
    for (const auto &element : list) {
      names << element.name;
    }
  };
  QStringList names;
  for (const record::NodeGroup &group : record.network.groups) {
    if (group.kind == QLatin1String("machine")) {
      append(names, record.machines);
    } else if (group.kind == QLatin1String("cutter")) {
      append(names, record.cutters);
    } else if (group.kind == QLatin1String("pattern")) {
      append(names, record.patterns);
    } else if (group.kind == QLatin1String("store")) {
      append(names, record.stores);
    } else if (group.kind == QLatin1String("order")) {
      append(names, record.orders);
    } else {
      names << group.names;
    }
  }
  return names;
}

Table kindTable(const Subject &subject) {
  Table table{
      "network-nodes",
      QStringLiteral("Nodes of the network, and on how many places the file puts them"),
      {{QStringLiteral("Kind"), false}, {QStringLiteral("Nodes")}, {QStringLiteral("Places")}},
      {},
      {},
      Table::Use::kInOrder};
  for (const record::NodeGroup &group : subject.record.network.groups) {
    std::vector<std::pair<double, double>> places;
    for (std::size_t i = 0; i + 1 < group.places.size(); i += 2) {
      places.emplace_back(group.places[i], group.places[i + 1]);
    }
    const auto nodes = static_cast<double>(places.size());
    std::sort(places.begin(), places.end());
    places.erase(std::unique(places.begin(), places.end()), places.end());
    table.rows.push_back({{Cell::ofText(group.kind), Cell::ofNumber(nodes, 0),
                           Cell::ofNumber(static_cast<double>(places.size()), 0)}});
  }
  return table;
}

Table flowTable(const Subject &subject) {
  Table table{
      "network-flows",
      QStringLiteral("The largest flows of the plan, inches over all periods"),
      {{QStringLiteral("From"), false}, {QStringLiteral("To"), false}, {QStringLiteral("Inches")}},
      {},
      {},
      Table::Use::kLong};
  std::vector<record::Flow> flows = subject.record.plan->flows;
  std::stable_sort(flows.begin(), flows.end(), [](const record::Flow &a, const record::Flow &b) {
    return a.inches > b.inches;
  });
  flows.resize(std::min(flows.size(), kFlowsInWords));
  const QStringList names = nodeNames(subject.record);
  for (const record::Flow &flow : flows) {
    table.rows.push_back({{Cell::ofText(names[flow.from]), Cell::ofText(names[flow.to]),
                           Cell::ofNumber(flow.inches, 0)}});
  }
  return table;
}

}  // namespace

// The script fills the canvas and offers the choices; without it the tables tell the network.
QByteArray networkSection(const Subject &subject) {
  const QString what =
      subject.hasPlan()
          ? QStringLiteral(
                "Machines on the left, then cutters, patterns, stores, freight and orders. "
                "A line is as wide as the paper that flows along it; what carries nothing "
                "is not drawn.")
          : QStringLiteral(
                "Machines on the left, then cutters, patterns, stores, freight and orders. "
                "Without a plan all ways are drawn alike.");
  return "<p>" + escaped(what) +
         (subject.hasPlan() ? "</p>\n<div id=drawing data-plan hidden></div>\n"
                            : "</p>\n<div id=drawing hidden></div>\n") +
         "<noscript><p>The drawing needs the page's own script; the tables below tell the same."
         "</p></noscript>\n";
}

std::vector<Table> networkTables(const Subject &subject) {
  std::vector<Table> tables{kindTable(subject)};
  if (subject.hasPlan()) {
    tables.push_back(flowTable(subject));
  }
  return tables;
}

}  // namespace corvane::report
