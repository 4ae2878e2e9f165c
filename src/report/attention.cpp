#include <algorithm>
#include <cmath>

#include "report/html.h"
#include "report/sections.h"

namespace corvane::report {

namespace {

using Weight = Attention::Weight;

constexpr double kDemandTolerance = 0.01;  // inches

QString count(double number, const char *one, const char *many) {
  return plain(number) + QLatin1Char(' ') + QLatin1String(number == 1 ? one : many);
}

class AttentionList {
 public:
  explicit AttentionList(const Subject &subject) : subject_(subject) {}

  std::vector<Attention> list() {
    lookAtRun();
    if (subject_.hasPlan()) {
      lookAtShort();
      lookAtBalance();
    } else {
      add(Weight::kWarning, QStringLiteral("There is no plan of this run."),
          QStringLiteral(
              "How good its patterns are cannot be told before they are weighted by their "
              "use. corvane-plan makes a plan; then make this page again."));
    }
    lookAtSeen();
    lookAtFindings();
    if (subject_.hasPlan()) {
      lookAtTrim();
      lookAtMachines();
      lookAtWarnings();
      lookAtSurplus();
      lookAtUnused();
    }
    lookAtMessages();
    std::stable_sort(list_.begin(), list_.end(),
                     [](const Attention &a, const Attention &b) { return a.weight < b.weight; });
    return std::move(list_);
  }

 private:
  void add(Weight weight, const QString &head, const QString &text) {
    list_.push_back({weight, head, text});
  }

  void lookAtRun() {
    const record::LogSection &log = record().log;
    if (log.started.isEmpty()) {
      add(Weight::kWarning, QStringLiteral("There is no log of this run."),
          QStringLiteral("Its seed, demand and messages are not known."));
    } else if (!log.isComplete) {
      add(Weight::kBad, QStringLiteral("The run did not finish."),
          QStringLiteral("The last section of its log has no end banner."));
    }
    if (log.demandInches &&
        std::abs(*log.demandInches - figures().ordered.inches) > kDemandTolerance) {
      add(Weight::kBad, QStringLiteral("The files are not of one run."),
          QStringLiteral("The log tells of %1 inches of demand, the import file of %2.")
              .arg(grouped(*log.demandInches, 2), grouped(figures().ordered.inches, 2)));
    }
  }

  void lookAtShort() {
    if (figures().unmet.rolls <= 0) {
      return;
    }
    std::map<QString, double> reasons;
    for (const record::Delivery &delivery : plan().deliveries) {
      if (delivery.unmet > 0) {
        reasons[delivery.reason.isEmpty() ? QStringLiteral("no reason is told")
                                          : delivery.reason] += delivery.unmet;
      }
    }
    const auto worst =
        std::max_element(reasons.begin(), reasons.end(),
                         [](const auto &a, const auto &b) { return a.second < b.second; });
    QString text = QStringLiteral("Together %1 inches. Why, for %2 of them: %3.")
                       .arg(grouped(figures().unmet.inches, 0),
                            plain(std::round(10 * worst->second) / 10), worst->first);
    if (reasons.size() > 1) {
      text += QStringLiteral(" The orders below tell the other reasons.");
    }
    add(Weight::kBad,
        QStringLiteral("%1 short.")
            .arg(count(std::round(10 * figures().unmet.rolls) / 10, "roll is", "rolls are")),
        text);
  }

  void lookAtBalance() {
    const double difference = figures().reckonedDemand() - figures().ordered.inches;
    if (std::abs(difference) > kDemandTolerance) {
      add(Weight::kBad, QStringLiteral("The plan does not add up."),
          QStringLiteral(
              "Paper less trim less surplus plus what is short differs from the demand by "
              "%1 inches.")
              .arg(grouped(difference, 2)));
    }
  }

  void lookAtSeen() {
    if (figures().partlySeenGroups == 0) {
      return;
    }
    add(Weight::kWarning,
        QStringLiteral("Patterns were made for %1 % of the ordered inches.")
            .arg(grouped(100 * figures().seenInches / figures().ordered.inches, 1)),
        QStringLiteral(
            "For %1 of %2 groups of a grade, a period and a width the order file has demands of "
            "several quantities, and pattern generation sees the first one only (code CV402). "
            "Least "
            "was seen of %3.")
            .arg(grouped(figures().partlySeenGroups, 0), grouped(figures().demandGroups, 0),
                 leastSeen()));
  }

  QString leastSeen() const {
    double least = 2;
    QString where;
    for (const auto &[name, grade] : figures().grades) {
      for (std::size_t i = 0; i < grade.orderedInches.size(); ++i) {
        const double share =
            grade.orderedInches[i] > 0 ? grade.seenInches[i] / grade.orderedInches[i] : 2;
        if (share < least) {
          least = share;
          where = QStringLiteral("%1, period %2").arg(name, periodName(i));
        }
      }
    }
    return QStringLiteral("%1: %2 %").arg(where, grouped(100 * least, 1));
  }

  void lookAtFindings() {
    std::map<QString, int> bySeverity;
    for (const record::Finding &finding : record().findings) {
      ++bySeverity[finding.severity];
    }
    const int errors = bySeverity[QStringLiteral("error")];
    const int warnings = bySeverity[QStringLiteral("warning")];
    if (errors + warnings > 0) {
      add(errors > 0 ? Weight::kBad : Weight::kWarning,
          QStringLiteral("The input files have %1 and %2.")
              .arg(count(errors, "error", "errors"), count(warnings, "warning", "warnings")),
          (record().findingsLeftOut > 0
               ? QStringLiteral("%1 more are of the same codes. ")
                     .arg(grouped(static_cast<double>(record().findingsLeftOut), 0))
               : QString()) +
              QStringLiteral("The record at the end of the page lists them with their lines."));
    }
  }

  // A grade's period with far more trim than the plan as a whole.
  void lookAtTrim() {
    double highest = 0;
    QString where;
    for (const auto &[name, grade] : figures().grades) {
      for (std::size_t i = 0; i < grade.byPeriod.size(); ++i) {
        if (grade.byPeriod[i].trimPercent() > highest) {
          highest = grade.byPeriod[i].trimPercent();
          where = QStringLiteral("%1 in period %2").arg(name, periodName(i));
        }
      }
    }
    if (highest > 2 * figures().all.trimPercent() && highest >= 0.5) {
      add(Weight::kNote, QStringLiteral("Trim is highest on %1.").arg(where),
          QStringLiteral("There it is %1 % of the paper, in the whole plan %2 %.")
              .arg(grouped(highest, 2), grouped(figures().all.trimPercent(), 2)));
    }
  }

  void lookAtMachines() {
    std::map<int, QStringList> full;
    for (const record::MachineTime &time : plan().machineTime) {
      if (isFull(record(), time)) {
        full[time.machine] << record().periods[time.period];
      }
    }
    if (full.empty()) {
      return;
    }
    QStringList parts;
    for (const auto &[machine, periods] : full) {
      const QString when =
          periods.size() == record().periods.size() && periods.size() > 1
              ? QStringLiteral("every period")
              : QStringLiteral("%1 %2").arg(
                    QLatin1String(periods.size() == 1 ? "period" : "periods"), listed(periods));
      parts << QStringLiteral("%1 in %2")
                   .arg(record().machines[static_cast<std::size_t>(machine)].name, when);
    }
    add(Weight::kWarning,
        QStringLiteral("%1 no time left.")
            .arg(count(static_cast<double>(full.size()), "machine has", "machines have")),
        parts.join(QStringLiteral("; ")) + QStringLiteral("."));
  }

  void lookAtWarnings() {
    if (!plan().warnings.empty()) {
      add(Weight::kWarning,
          QStringLiteral("The planner has %1.")
              .arg(count(static_cast<double>(plan().warnings.size()), "warning", "warnings")),
          QStringLiteral("The first: %1").arg(plan().warnings.front().text));
    }
  }

  void lookAtSurplus() {
    if (figures().surplus.rolls > 0) {
      add(Weight::kNote,
          QStringLiteral("%1 that nobody ordered.")
              .arg(count(std::round(10 * figures().surplus.rolls) / 10, "roll is cut",
                         "rolls are cut")),
          QStringLiteral("Together %1 inches, which cost as much as trim.")
              .arg(grouped(figures().surplus.inches, 0)));
    }
  }

  void lookAtUnused() {
    const auto offered = static_cast<int>(record().patterns.size());
    if (figures().usedPatterns < offered) {
      add(Weight::kNote,
          QStringLiteral("%1 of %2 patterns are not used.")
              .arg(grouped(offered - figures().usedPatterns, 0), grouped(offered, 0)),
          QStringLiteral("They stand below the others of their grade."));
    }
  }

  void lookAtMessages() {
    const QStringList &messages = record().log.messages;
    if (!messages.isEmpty()) {
      add(Weight::kNote,
          QStringLiteral("The log has %1.")
              .arg(count(static_cast<double>(messages.size()), "message", "messages")),
          QStringLiteral("See the record at the end of the page."));
    }
  }

  QString periodName(std::size_t period) const {
    return record().periods[static_cast<qsizetype>(period)];
  }
  const record::Record &record() const { return subject_.record; }
  const record::Plan &plan() const { return *subject_.record.plan; }
  const Figures &figures() const { return subject_.figures; }

  const Subject &subject_;
  std::vector<Attention> list_;
};

}  // namespace

std::vector<Attention> attention(const Subject &subject) {
  return AttentionList(subject).list();
}

QString listed(const QStringList &names) {
  if (names.size() < 2) {
    return names.join(QString());
  }
  return names.mid(0, names.size() - 1).join(QStringLiteral(", ")) + QStringLiteral(" and ") +
         names.back();
}

}  // namespace corvane::report
