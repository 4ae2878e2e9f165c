#include "record/plan_reader.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>

#include "plan/plan_problem.h"
#include "record/flows.h"
#include "record/name_index.h"

namespace corvane::record {

namespace {

constexpr const char *kPlanSchema = "corvane-plan/1";

template <typename List>
NameIndex indexOf(const List &list) {
  NameIndex index;
  bool isNew = false;
  for (const auto &element : list) {
    index.add(element.name, isNew);
  }
  return index;
}

// The plan's own word for the reason as a sentence.
QString reasonSentence(const QString &name) {
  using plan::Reason;
  for (const Reason reason : {Reason::kNoRoute, Reason::kNoPattern, Reason::kNoCapacity,
                              Reason::kTooEarly, Reason::kMachineTime, Reason::kWholeReels}) {
    if (name == text(std::string(plan::reasonName(reason)))) {
      return text(std::string(plan::reasonText(reason)));
    }
  }
  return name;
}

class PlanReader {
 public:
  PlanReader(Record &record, const QJsonObject &json)
      : record_(record),
        json_(json),
        machines_(indexOf(record.machines)),
        cutters_(indexOf(record.cutters)),
        stores_(indexOf(record.stores)),
        orders_(indexOf(record.orders)),
        patterns_(indexOf(record.patterns)) {
    bool isNew = false;
    for (const QString &period : record.periods) {
      periods_.add(period, isNew);
    }
  }

  // The first fault; empty for a plan that fits the record.
  QString read() {
    readHead();
    readPatterns();
    readMachines();
    readOrders();
    readShipments();
    readStores("surplus", plan_.surplus);
    readStores("stock", plan_.stock);
    record_.plan = std::move(plan_);
    if (fault_.isEmpty()) {
      record_.plan->flows = flowsOf(record_);
    }
    return fault_;
  }

 private:
  QJsonArray list(const char *key) const { return json_.value(QLatin1String(key)).toArray(); }

  // The place of the name that stands under the key.
  int place(const QJsonObject &object, const char *key, const NameIndex &index) {
    const QString name = object.value(QLatin1String(key)).toString();
    const int found = index.find(name);
    if (found < 0 && fault_.isEmpty()) {
      fault_ = QStringLiteral("it names the %1 \"%2\", which is not in the import file")
                   .arg(QLatin1String(key), name);
    }
    return std::max(found, 0);
  }
  int period(const QJsonObject &object, const char *key = "period") {
    return place(object, key, periods_);
  }
  static double number(const QJsonObject &object, const char *key) {
    return object.value(QLatin1String(key)).toDouble();
  }
  static QString string(const QJsonObject &object, const char *key) {
    return object.value(QLatin1String(key)).toString();
  }

  void readHead() {
    const QJsonObject totals = json_.value(QLatin1String("totals")).toObject();
    readCosts(totals.value(QLatin1String("cost")).toObject());
    plan_.wholeReels = json_.value(QLatin1String("options"))
                           .toObject()
                           .value(QLatin1String("whole_reels"))
                           .toBool();
    const QJsonValue bound =
        json_.value(QLatin1String("solver")).toObject().value(QLatin1String("lp_cost"));
    if (bound.isDouble()) {
      plan_.boundCost = bound.toDouble();
    }
    for (const QJsonValue value : list("warnings")) {
      const QJsonObject warning = value.toObject();
      plan_.warnings.push_back({string(warning, "kind"),
                                static_cast<qint64>(number(warning, "line")),
                                string(warning, "text")});
    }
    for (const QJsonValue value : list("advice")) {
      plan_.advice.push_back(
          {string(value.toObject(), "kind"), 0, string(value.toObject(), "text")});
    }
    for (const QJsonValue fault : list("faults")) {
      fault_ = QStringLiteral("it has a fault: %1").arg(fault.toString());
    }
  }

  void readCosts(const QJsonObject &cost) {
    for (const char *kind : {"freight", "waste", "feed", "surplus", "machine_time"}) {
      plan_.cost.push_back({QLatin1String(kind), number(cost, kind)});
      plan_.cost.back().name.replace(QLatin1Char('_'), QLatin1Char(' '));
    }
    plan_.totalCost = number(cost, "total");
  }

  void readPatterns() {
    for (const QJsonValue value : list("patterns")) {
      const QJsonObject object = value.toObject();
      if (object.value(QLatin1String("offered")).toBool()) {
        addOffered(object);
      }
      plan_.reels.push_back(
          {place(object, "pattern", patterns_), period(object), number(object, "reels")});
    }
  }

  // A pattern of another run or of pricing, which the import file does not have.
  void addOffered(const QJsonObject &object) {
    bool isNew = false;
    patterns_.add(string(object, "pattern"), isNew);
    if (!isNew) {
      return;
    }
    Pattern pattern{
        string(object, "pattern"), place(object, "cutter", cutters_), {}, number(object, "trim")};
    const QJsonObject rolls = object.value(QLatin1String("rolls")).toObject();
    for (auto roll = rolls.begin(); roll != rolls.end(); ++roll) {
      pattern.rolls.emplace_back(roll.key().toDouble(), roll.value().toInt());
    }
    std::sort(pattern.rolls.rbegin(), pattern.rolls.rend());
    addPatternNode(record_, pattern);
    record_.patterns.push_back(std::move(pattern));
  }

  void readMachines() {
    for (const QJsonValue value : list("machines")) {
      QJsonObject object = value.toObject();
      QString name = string(object, "machine");
      if (name.startsWith(QLatin1String("M_"))) {
        name.remove(0, 2);
      }
      object.insert(QLatin1String("machine"), name);
      plan_.machineTime.push_back({place(object, "machine", machines_), period(object),
                                   number(object, "used"), number(object, "available")});
    }
  }

  void readOrders() {
    for (const QJsonValue value : list("orders")) {
      const QJsonObject object = value.toObject();
      plan_.deliveries.push_back({place(object, "order", orders_), period(object),
                                  number(object, "delivered"), number(object, "unmet"),
                                  reasonOf(object)});
    }
  }

  static QString reasonOf(const QJsonObject &order) {
    const QString reason = reasonSentence(string(order, "reason"));
    QStringList full;
    for (const QJsonValue value : order.value(QLatin1String("full")).toArray()) {
      QString machine = string(value.toObject(), "machine");
      if (machine.startsWith(QLatin1String("M_"))) {
        machine.remove(0, 2);
      }
      full << QStringLiteral("%1 in period %2").arg(machine, string(value.toObject(), "period"));
    }
    return full.isEmpty() ? reason : reason + QLatin1String(": ") + full.join(QLatin1String(", "));
  }

  void readShipments() {
    NameIndex modes;
    for (const QJsonValue value : list("shipments")) {
      const QJsonObject object = value.toObject();
      bool isNew = false;
      const int mode = modes.add(string(object, "mode"), isNew);
      if (isNew) {
        plan_.modes << string(object, "mode");
      }
      plan_.shipments.push_back({mode, place(object, "from", stores_), place(object, "to", orders_),
                                 period(object, "leaves"), period(object, "arrives"),
                                 number(object, "rolls"), number(object, "cost")});
    }
  }

  void readStores(const char *key, std::vector<StoreRolls> &rolls) {
    for (const QJsonValue value : list(key)) {
      const QJsonObject object = value.toObject();
      rolls.push_back({place(object, "store", stores_), period(object), number(object, "rolls")});
    }
  }

  Record &record_;
  const QJsonObject &json_;
  NameIndex machines_;
  NameIndex cutters_;
  NameIndex stores_;
  NameIndex orders_;
  NameIndex patterns_;
  NameIndex periods_;
  Plan plan_;
  QString fault_;
};

}  // namespace

bool readPlan(Record &record, const QByteArray &json, QString &fault) {
  QJsonParseError error{};
  const QJsonDocument document = QJsonDocument::fromJson(json, &error);
  const QJsonObject object = document.object();
  const QString schema = object.value(QLatin1String("schema")).toString();
  if (document.isNull()) {
    fault = error.errorString();
  } else if (schema != QLatin1String(kPlanSchema)) {
    fault =
        QStringLiteral("its schema is \"%1\", not \"%2\"").arg(schema, QLatin1String(kPlanSchema));
  } else {
    fault = PlanReader(record, object).read();
  }
  return fault.isEmpty();
}

}  // namespace corvane::record
