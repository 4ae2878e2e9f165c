// Names that are likely to be meant as one.

#include <map>

#include "checks/mill_checks.h"
#include "checks/near_names.h"
#include "checks/shown_text.h"

namespace corvane::checks {

namespace {

// The names of one kind, each with the place where it stands first and the files that know it.
class NameSet {
 public:
  NameSet(const MillView &view, std::string kind) : view_(view), kind_(std::move(kind)) {}

  // source tells files apart that should know the same names.
  void add(TextId name, const SourceFile &file, quint32 line, int column, int source) {
    const auto [known, isNew] = byName_.try_emplace(name, places_.size());
    if (isNew) {
      places_.push_back({name, &file, line, column, 0, 0});
    }
    Place &place = places_[known->second];
    place.sources |= 1 << source;
    ++place.count;
  }

  // isSure(sources, count) tells whether a name is known for sure.
  template <typename IsSure>
  void report(IsSure isSure) {
    std::vector<KnownName> names;
    for (const Place &place : places_) {
      names.push_back({view_.mill.texts.text(place.name), isSure(place.sources, place.count)});
    }
    forEachNearName(names, [&](std::size_t odd, std::size_t other) {
      const Place &place = places_[odd];
      view_.sink.add(*place.file, Code::kNearNames, [&](Finding &finding) {
        placeAt(finding, *place.file, place.line, place.column);
        finding.detail = kind_ + " " + view_.mill.quotedName(place.name) + " and " +
                         view_.mill.quotedName(places_[other].name) + " are two";
        replaceMarked(finding, view_.mill.text(places_[other].name));
      });
    });
  }

 private:
  struct Place {
    TextId name;
    const SourceFile *file;
    quint32 line;
    int column;
    int sources;
    int count;
  };

  const MillView &view_;
  std::string kind_;
  std::vector<Place> places_;
  std::unordered_map<TextId, std::size_t> byName_;
};

constexpr int kMachineSource = 0;
constexpr int kOrderSource = 1;
constexpr int kRateSource = 2;

}  // namespace

void checkNearNames(const MillView &view) {
  NameSet grades(view, "grade");
  NameSet cutters(view, "cutter");
  NameSet mills(view, "mill");
  NameSet customers(view, "customer");
  NameSet modes(view, "mode");
  for (const CutterRow &cutter : view.mill.cutters) {
    if (!cutter.isBroken) {
      const SourceFile &file = view.machineFile();
      grades.add(cutter.grade, file, cutter.line, kMachineGrade, kMachineSource);
      cutters.add(cutter.name, file, cutter.line, kMachineName, kMachineSource);
      mills.add(cutter.location, file, cutter.line, kMachineLocation, kMachineSource);
    }
  }
  for (const OrderRow &order : view.mill.orders) {
    if (!order.isBroken) {
      customers.add(order.customer, view.orderFile(), order.line, kOrderCustomer, kOrderSource);
    }
  }
  for (const RateRow &rate : view.mill.rates) {
    if (!rate.isBroken) {
      const SourceFile &file = view.rateFile();
      customers.add(rate.customer, file, rate.line, kRateCustomer, kRateSource);
      mills.add(rate.mill, file, rate.line, kRateMill, kRateSource);
      modes.add(rate.mode, file, rate.line, kRateMode, kRateSource);
    }
  }
  const auto inTwoFiles = [](int sources, int /*count*/) { return (sources & (sources - 1)) != 0; };
  const auto always = [](int /*sources*/, int /*count*/) { return true; };
  grades.report(always);
  cutters.report(always);
  mills.report(inTwoFiles);
  customers.report(inTwoFiles);
  modes.report([](int /*sources*/, int count) { return count > 1; });
}

}  // namespace corvane::checks
