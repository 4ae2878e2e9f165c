#include "report/sections.h"

namespace corvane::report {

namespace {

Cell percentSeen(const WidthFigures &rolls) {
  return rolls.ordered > 0 ? Cell::ofNumber(100 * rolls.seen / rolls.ordered, 0) : Cell();
}

// The columns that a record has the figures of.
class WidthColumns {
 public:
  explicit WidthColumns(const Subject &subject)
      : hasPlan_(subject.hasPlan()), hasSeen_(!subject.record.seen.empty()) {}

  std::vector<Column> heads() const {
    std::vector<Column> heads{{QStringLiteral("Grade"), false},
                              {QStringLiteral("Width, in")},
                              {QStringLiteral("Ordered")}};
    if (hasPlan_) {
      for (const char *head : {"Made", "Delivered", "Short", "Surplus"}) {
        heads.push_back({QString::fromLatin1(head)});
      }
    }
    if (hasSeen_) {
      heads.push_back({QStringLiteral("Seen")});
      heads.push_back({QStringLiteral("Seen %")});
    }
    return heads;
  }

  Row row(const QString &grade, const Cell &width, const WidthFigures &rolls) const {
    Row row{{Cell::ofText(grade), width, Cell::ofNumber(rolls.ordered, 0)}};
    if (hasPlan_) {
      row.cells.push_back(Cell::ofRolls(rolls.made));
      row.cells.push_back(Cell::ofRolls(rolls.delivered));
      row.cells.push_back(Cell::ofRollsIfAny(rolls.unmet).as("bad"));
      row.cells.push_back(Cell::ofRollsIfAny(rolls.surplus));
    }
    if (hasSeen_) {
      row.cells.push_back(Cell::ofNumber(rolls.seen, 0));
      row.cells.push_back(percentSeen(rolls));
    }
    return row;
  }

 private:
  bool hasPlan_;
  bool hasSeen_;
};

void add(WidthFigures &total, const WidthFigures &rolls) {
  total.ordered += rolls.ordered;
  total.made += rolls.made;
  total.delivered += rolls.delivered;
  total.unmet += rolls.unmet;
  total.surplus += rolls.surplus;
  total.seen += rolls.seen;
}

Table byWidth(const Subject &subject) {
  const WidthColumns columns(subject);
  Table table{"rolls-by-width",
              QStringLiteral("Rolls by grade and width, over all periods") +
                  (subject.record.seen.empty()
                       ? QString()
                       : QStringLiteral("; seen is what pattern generation saw of the demand")),
              columns.heads(),
              {},
              {},
              Table::Use::kLong};
  WidthFigures total;
  for (const auto &[name, grade] : subject.figures.grades) {
    for (const auto &[width, rolls] : grade.widths) {
      table.rows.push_back(columns.row(name, Cell::ofWidth(width), rolls));
      add(total, rolls);
    }
  }
  table.totals = {columns.row(QStringLiteral("All grades"), Cell(), total)};
  return table;
}

Table shortOrders(const Subject &subject) {
  Table table{"short-orders",
              QStringLiteral("Orders that the plan does not meet, and why"),
              {{QStringLiteral("Customer"), false},
               {QStringLiteral("Grade"), false},
               {QStringLiteral("Width, in")},
               {QStringLiteral("Period"), false},
               {QStringLiteral("Ordered")},
               {QStringLiteral("Short")},
               {QStringLiteral("Why"), false}},
              {},
              {},
              Table::Use::kLong};
  for (const record::Delivery &delivery : subject.record.plan->deliveries) {
    if (delivery.unmet > 0) {
      const record::Order &order = subject.record.orders[static_cast<std::size_t>(delivery.order)];
      table.rows.push_back(
          {{Cell::ofText(order.customer), Cell::ofText(order.grade), Cell::ofWidth(order.width),
            Cell::ofText(subject.record.periods[delivery.period]),
            Cell::ofRolls(delivery.delivered + delivery.unmet),
            Cell::ofRolls(delivery.unmet).as("bad"), Cell::ofText(delivery.reason)}});
    }
  }
  return table;
}

}  // namespace

std::vector<Table> widthTables(const Subject &subject) {
  std::vector<Table> tables;
  if (subject.hasPlan()) {
    if (Table table = shortOrders(subject); !table.rows.empty()) {
      tables.push_back(std::move(table));
    }
  }
  tables.push_back(byWidth(subject));
  return tables;
}

Table laneTable(const Subject &subject) {
  Table table{"shipments",
              QStringLiteral("Shipments by mode and lane, over all periods"),
              {{QStringLiteral("Mode"), false},
               {QStringLiteral("From"), false},
               {QStringLiteral("To"), false},
               {QStringLiteral("Rolls")},
               {QStringLiteral("Inches")},
               {QStringLiteral("Freight")},
               {QStringLiteral("A roll")}},
              {},
              {},
              Table::Use::kLong};
  std::map<QString, Freight> modes;
  for (const auto &[lane, freight] : subject.figures.lanes) {
    Freight &mode = modes[lane.mode];
    mode.rolls += freight.rolls;
    mode.inches += freight.inches;
    mode.cost += freight.cost;
  }
  const auto row = [](const QString &mode, const QString &from, const QString &customer,
                      const Freight &freight) {
    return Row{{Cell::ofText(mode), Cell::ofText(from), Cell::ofText(customer),
                Cell::ofRolls(freight.rolls), Cell::ofNumber(freight.inches, 0),
                Cell::ofNumber(freight.cost, 0),
                freight.rolls > 0 ? Cell::ofNumber(freight.cost / freight.rolls, 2) : Cell()}};
  };
  for (const auto &[mode, freight] : modes) {
    table.totals.push_back(row(mode, QStringLiteral("all"), QStringLiteral("all"), freight));
  }
  for (const auto &[lane, freight] : subject.figures.lanes) {
    table.rows.push_back(row(lane.mode, lane.from, lane.customer, freight));
  }
  return table;
}

}  // namespace corvane::report
