#include "report/document.h"
#include "report/html.h"
#include "report/sections.h"

namespace corvane::report {

namespace {

QByteArray trimTile(const Subject &subject) {
  const Paper &all = subject.figures.all;
  return tile("plain", grouped(all.trimPercent(), 2) + QStringLiteral(" %"), "trim of the plan",
              QStringLiteral("%1 of %2 in").arg(grouped(all.trim, 0), grouped(all.inches, 0)));
}

QByteArray deliveredTile(const Subject &subject) {
  const Figures &figures = subject.figures;
  // 99.96 % is not all.
  const double percent = figures.deliveredPercent();
  const QString text =
      figures.unmet.rolls > 0 ? grouped(std::min(percent, 99.9), 1) : grouped(percent, 1);
  return tile(figures.unmet.rolls > 0 ? "bad" : "good", text + QStringLiteral(" %"),
              "of the rolls delivered",
              QStringLiteral("%1 ordered, %2 short")
                  .arg(grouped(figures.ordered.rolls, 0), plain(figures.unmet.rolls)));
}

QByteArray costTile(const record::Plan &plan) {
  QStringList parts;
  for (const record::Named &cost : plan.cost) {
    if (cost.value != 0) {
      parts << cost.name + QLatin1Char(' ') + grouped(cost.value, 0);
    }
  }
  return tile("plain", grouped(plan.totalCost, 0), "cost of the plan",
              parts.join(QStringLiteral(" · ")));
}

QByteArray usedTile(const Subject &subject) {
  return tile("plain",
              QStringLiteral("%1 of %2")
                  .arg(grouped(subject.figures.usedPatterns, 0),
                       grouped(static_cast<double>(subject.record.patterns.size()), 0)),
              "patterns used",
              grouped(subject.figures.all.reels, 0) + QStringLiteral(" reels cut"));
}

// How far the paper lies above the least that any patterns need for what is delivered; else the
// cost above the bound that the planner proved.
QByteArray boundTile(const Subject &subject) {
  const record::Plan &plan = *subject.record.plan;
  double bound = 0;
  for (const record::PaperBound &grade : plan.paperBounds) {
    bound += grade.inches;
  }
  if (bound > 0) {
    const double above = 100 * (subject.figures.all.inches - bound) / bound;
    return tile("plain", grouped(std::max(0.0, above), 2) + QStringLiteral(" %"),
                "paper above the bound",
                QStringLiteral("%1 in, with whatever patterns").arg(grouped(bound, 0)));
  }
  if (plan.boundCost.has_value() && *plan.boundCost > 0) {
    const double above = 100 * (plan.totalCost - *plan.boundCost) / *plan.boundCost;
    return tile("plain", grouped(std::max(0.0, above), 2) + QStringLiteral(" %"),
                "cost above the bound",
                grouped(*plan.boundCost, 0) + QStringLiteral(", with these patterns"));
  }
  return tile("plain", QStringLiteral("–"), "distance to the bound",
              QStringLiteral("no bound is known"));
}

QByteArray machineTile(const Subject &subject) {
  std::vector<bool> isFullOnce(subject.record.machines.size());
  for (const record::MachineTime &time : subject.record.plan->machineTime) {
    if (isFull(subject.record, time)) {
      isFullOnce[static_cast<std::size_t>(time.machine)] = true;
    }
  }
  const auto full = std::count(isFullOnce.begin(), isFullOnce.end(), true);
  return tile(full > 0 ? "warn" : "plain",
              QStringLiteral("%1 of %2").arg(full).arg(isFullOnce.size()), "machines full",
              QStringLiteral("in at least one period"));
}

}  // namespace

QByteArray tiles(const Subject &subject) {
  QByteArray html = "<ul class=tiles>\n";
  if (subject.hasPlan()) {
    html += trimTile(subject) + deliveredTile(subject) + costTile(*subject.record.plan) +
            usedTile(subject) + boundTile(subject) + machineTile(subject);
  } else {
    const auto count = [](std::size_t number) { return grouped(static_cast<double>(number), 0); };
    html += tile("plain", grouped(subject.figures.ordered.rolls, 0), "rolls ordered",
                 grouped(subject.figures.ordered.inches, 0) + QStringLiteral(" in"));
    html += tile("plain", count(subject.record.patterns.size()), "patterns offered",
                 count(subject.figures.grades.size()) + QStringLiteral(" grades"));
    html += tile("plain", count(subject.record.machines.size()), "machines",
                 count(subject.record.cutters.size()) + QStringLiteral(" deckles"));
  }
  return html + "</ul>\n";
}

}  // namespace corvane::report
