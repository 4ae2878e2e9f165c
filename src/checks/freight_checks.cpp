#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <tuple>

#include "checks/mill_checks.h"
#include "checks/shown_text.h"
#include "core/numbers.h"

namespace corvane::checks {

namespace {

bool isGood(const RateRow &rate, int column) {
  return (rate.badNumbers >> static_cast<unsigned>(column) & 1U) == 0;
}

void checkSecond(const MillView &view) {
  std::map<std::tuple<TextId, TextId, TextId>, const RateRow *> byKey;
  for (const RateRow &rate : view.mill.rates) {
    if (rate.isBroken) {
      continue;
    }
    const auto [first, isNew] = byKey.try_emplace({rate.customer, rate.mill, rate.mode}, &rate);
    if (isNew) {
      continue;
    }
    const RateRow &known = *first->second;
    const bool isSame = known.rate == rate.rate && known.delay == rate.delay;
    view.sink.add(view.rateFile(), Code::kSecondRate,
                  isSame ? Severity::kWarning : Severity::kError, [&](Finding &finding) {
                    placeAt(finding, view.rateFile(), rate.line, kRateMode);
                    finding.detail = "line " + std::to_string(known.line) + " has " +
                                     general(known.rate) + " with a delay of " +
                                     general(known.delay) + ", which counts; this line is dropped";
                    dropLine(finding);
                  });
  }
}

// What is not delivered is the text of the delay that cannot be.
std::string faultOfDelay(const MillView &view, double delay) {
  if (delay < 0) {
    return "goods arrive before they leave";
  }
  if (delay != std::floor(delay)) {
    return "there are no parts of periods";
  }
  const std::size_t periods = view.index.periods.size();
  if (periods > 1 && delay >= static_cast<double>(periods)) {
    return "goods arrive after the last of " + std::to_string(periods) + " periods";
  }
  return {};
}

void checkValues(const MillView &view, const RateRow &rate) {
  if (isGood(rate, kRateRate) && rate.rate <= 0) {
    view.sink.add(view.rateFile(), Code::kFreeFreight, [&](Finding &finding) {
      placeAt(finding, view.rateFile(), rate.line, kRateRate);
      finding.detail = general(rate.rate) + " for 2000 lb";
    });
  }
  if (view.mill.parameters.delay == 0 || !isGood(rate, kRateDelay)) {
    return;
  }
  if (const std::string fault = faultOfDelay(view, rate.delay); !fault.empty()) {
    view.sink.add(view.rateFile(), Code::kDelay, [&](Finding &finding) {
      placeAt(finding, view.rateFile(), rate.line, kRateDelay);
      finding.detail = "a delay of " + general(rate.delay) + ": " + fault;
    });
  }
}

// Whether some grade that the customer orders is made at both mills.
bool meetInAGrade(const MillView &view, const RateRow &a, const RateRow &b) {
  return std::any_of(
      view.index.cutters.begin(), view.index.cutters.end(), [&](const auto &gradeAndCutters) {
        const auto &[grade, cutters] = gradeAndCutters;
        const auto isAt = [&cutters = cutters](TextId mill) {
          return std::any_of(cutters.begin(), cutters.end(),
                             [mill](const CutterRow *cutter) { return cutter->location == mill; });
        };
        return view.index.byCustomerGrade.count(pairKey(a.customer, grade)) > 0 && isAt(a.mill) &&
               isAt(b.mill);
      });
}

void checkSharedDelays(const MillView &view) {
  std::map<std::pair<TextId, TextId>, std::vector<const RateRow *>> byCustomerMode;
  for (const RateRow &rate : view.mill.rates) {
    if (rate.isBroken || !rate.isStored || !isGood(rate, kRateDelay)) {
      continue;
    }
    auto &others = byCustomerMode[{rate.customer, rate.mode}];
    const auto other = std::find_if(others.begin(), others.end(), [&](const RateRow *known) {
      return known->delay != rate.delay && known->mill != rate.mill &&
             meetInAGrade(view, *known, rate);
    });
    if (other != others.end()) {
      view.sink.add(view.rateFile(), Code::kSharedDelay, [&](Finding &finding) {
        placeAt(finding, view.rateFile(), rate.line, kRateMode);
        finding.detail =
            view.mill.quotedName(rate.mode) + " to " + view.mill.quotedName(rate.customer) +
            " takes " + general(rate.delay) + " from " + view.mill.quotedName(rate.mill) + " and " +
            general((*other)->delay) + " from " + view.mill.quotedName((*other)->mill) + " (line " +
            std::to_string((*other)->line) + ")";
        replaceMarked(finding, view.mill.text(rate.mode) + " " + view.mill.text(rate.mill));
      });
    }
    others.push_back(&rate);
  }
}

// Without delay nodes the first mode by name is used.
void checkCheaperModes(const MillView &view) {
  for (const RateRow &rate : view.mill.rates) {
    if (rate.isBroken || !rate.isStored) {
      continue;
    }
    const auto *rates = view.index.ratesOf(rate.customer, rate.mill);
    const RateRow *first = rates->front();
    for (const RateRow *other : *rates) {
      if (view.mill.texts.text(other->mode) < view.mill.texts.text(first->mode)) {
        first = other;
      }
    }
    if (rate.rate < first->rate) {
      view.sink.add(view.rateFile(), Code::kCheaperMode, [&](Finding &finding) {
        placeAt(finding, view.rateFile(), rate.line, kRateRate);
        finding.detail = view.mill.quotedName(rate.mode) + " at " + general(rate.rate) +
                         " is not used, but " + view.mill.quotedName(first->mode) + " at " +
                         general(first->rate) + " (line " + std::to_string(first->line) + ")";
      });
    }
  }
}

}  // namespace

void checkRates(const MillView &view) {
  checkSecond(view);
  for (const RateRow &rate : view.mill.rates) {
    if (!rate.isBroken) {
      checkValues(view, rate);
    }
  }
  if (view.mill.parameters.delay == 0) {
    checkCheaperModes(view);
  } else if (view.hasMachines() && view.hasOrders()) {
    checkSharedDelays(view);
  }
}

}  // namespace corvane::checks
