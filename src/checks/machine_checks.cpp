#include <algorithm>
#include <map>
#include <tuple>

#include "checks/mill_checks.h"
#include "checks/shown_text.h"
#include "checks/units.h"
#include "core/numbers.h"

namespace corvane::checks {

namespace {

using CutterKey = std::tuple<TextId, TextId, TextId>;

bool isGood(const CutterRow &cutter, int column) {
  return (cutter.badNumbers >> static_cast<unsigned>(column) & 1U) == 0;
}

void reportSecond(const MillView &view, const CutterRow &cutter, const CutterRow &first) {
  view.sink.add(view.machineFile(), Code::kSecondCutter, [&](Finding &finding) {
    const SourceFile &file = view.machineFile();
    placeAt(finding, file, cutter.line, kMachineName);
    finding.detail = view.mill.quotedName(cutter.name) + " runs " +
                     view.mill.quotedName(cutter.grade) + " in line " + std::to_string(first.line) +
                     " already, with a deckle of " + general(first.width) +
                     "; this line is dropped, its deckle of " + general(cutter.width) + " stays";
    finding.edits.push_back({file.begin(cutter.line), file.end(cutter.line), ""});
  });
}

void checkKeys(const MillView &view) {
  std::map<CutterKey, const CutterRow *> byKey;
  std::map<TextId, const CutterRow *> byName;
  std::map<std::pair<TextId, TextId>, bool> isTold;
  for (const CutterRow &cutter : view.mill.cutters) {
    if (cutter.isBroken) {
      continue;
    }
    const auto [first, isNew] =
        byKey.try_emplace(CutterKey(cutter.location, cutter.name, cutter.grade), &cutter);
    if (!isNew) {
      reportSecond(view, cutter, *first->second);
      continue;
    }
    const CutterRow &named = *byName.try_emplace(cutter.name, &cutter).first->second;
    if (named.location != cutter.location &&
        !std::exchange(isTold[{cutter.name, cutter.location}], true)) {
      view.sink.add(view.machineFile(), Code::kCutterAtTwoMills, [&](Finding &finding) {
        placeAt(finding, view.machineFile(), cutter.line, kMachineName);
        finding.detail = view.mill.quotedName(cutter.name) + " of " +
                         view.mill.quotedName(cutter.location) + " and of " +
                         view.mill.quotedName(named.location) + " (line " +
                         std::to_string(named.line) + ") are one machine";
      });
    }
  }
}

void checkValues(const MillView &view, const CutterRow &cutter) {
  const auto report = [&](Code code, int column, double value) {
    if (isGood(cutter, column) && value <= 0) {
      view.sink.add(view.machineFile(), code, [&](Finding &finding) {
        placeAt(finding, view.machineFile(), cutter.line, column);
        finding.detail = general(value) + " is exported as it is";
      });
    }
  };
  report(Code::kDeckleNotPositive, kMachineWidth, cutter.width);
  report(Code::kCapacityNotPositive, kMachineCapacity, cutter.capacity);
  report(Code::kPoundsNotPositive, kMachinePounds, cutter.lbsPerInch);
  report(Code::kWasteCostNotPositive, kMachineWasteCost, cutter.wasteCost);
}

// A deckle beside those of the other cutters.
void checkUnit(const MillView &view, const CutterRow &cutter) {
  std::vector<double> others;
  for (const CutterRow &other : view.mill.cutters) {
    if (&other != &cutter && !other.isBroken && isGood(other, kMachineWidth) && other.width > 0) {
      others.push_back(other.width);
    }
  }
  if (!isGood(cutter, kMachineWidth) || cutter.width <= 0) {
    return;
  }
  const auto unit = unitOfDeckle(cutter.width, std::move(others));
  if (!unit) {
    return;
  }
  view.sink.add(view.machineFile(), Code::kOutOfUnit, [&](Finding &finding) {
    placeAt(finding, view.machineFile(), cutter.line, kMachineWidth);
    finding.detail = "a deckle of " + general(cutter.width) + " inches; " + general(cutter.width) +
                     " " + std::string(unit->name) + " are " + general(unit->inches) + " inches";
    replaceMarked(finding, general(unit->inches));
  });
}

void checkOrdered(const MillView &view) {
  std::map<TextId, bool> isTold;
  for (const DroppedOrder &order : view.mill.droppedOrders) {
    isTold[order.grade] = true;
  }
  for (const CutterRow &cutter : view.mill.cutters) {
    if (cutter.isBroken || view.index.byGrade.count(cutter.grade) > 0 ||
        view.mill.orderFile.mayHave(view.mill.text(cutter.grade)) ||
        std::exchange(isTold[cutter.grade], true)) {
      continue;
    }
    view.sink.add(view.machineFile(), Code::kGradeNotOrdered, [&](Finding &finding) {
      placeAt(finding, view.machineFile(), cutter.line, kMachineGrade);
      finding.detail = "nobody orders " + view.mill.quotedName(cutter.grade);
    });
  }
}

}  // namespace

void checkMachines(const MillView &view) {
  // Deckles of very many cutters are not compared with each other.
  constexpr std::size_t kMany = 2000;
  checkKeys(view);
  for (const CutterRow &cutter : view.mill.cutters) {
    if (!cutter.isBroken) {
      checkValues(view, cutter);
      if (view.mill.cutters.size() <= kMany) {
        checkUnit(view, cutter);
      }
    }
  }
  if (view.hasOrders()) {
    checkOrdered(view);
  }
}

}  // namespace corvane::checks
