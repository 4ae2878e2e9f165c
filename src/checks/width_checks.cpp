#include <algorithm>
#include <cmath>
#include <map>
#include <unordered_map>
#include <unordered_set>

#include "checks/mill_checks.h"
#include "checks/shown_text.h"
#include "checks/units.h"
#include "core/numbers.h"

namespace corvane::checks {

namespace {

// Patterns take widths within this for one.
constexpr double kSameWidth = 1e-8;
// Nobody slits more exactly.
constexpr double kNearWidth = 0.005;
// So near to a width in eighths only a calculation comes.
constexpr double kRoundingError = 0.0005;

bool isInEighths(double width) {
  return width * 8 == std::floor(width * 8);
}

class WidthChecks {
 public:
  explicit WidthChecks(const MillView &view) : view_(view) {}

  void run() {
    std::vector<const GradeWidth *> ofGrade;
    for (const GradeWidth &width : view_.index.gradeWidths) {
      if (!ofGrade.empty() && ofGrade.back()->grade != width.grade) {
        takeGrade(ofGrade);
        ofGrade.clear();
      }
      ofGrade.push_back(&width);
    }
    if (!ofGrade.empty()) {
      takeGrade(ofGrade);
    }
    checkCommodityNames();
    checkEighths();
  }

 private:
  // The widths of one grade, widest first.
  void takeGrade(const std::vector<const GradeWidth *> &widths) {
    std::vector<double> others;
    for (std::size_t i = 0; i < widths.size(); ++i) {
      if (i > 0) {
        takePair(*widths[i - 1], *widths[i]);
      }
      checkUnit(*widths[i], others);
      others.push_back(widths[i]->inches);
      checkSmallestDeckle(*widths[i]);
    }
  }

  void takePair(const GradeWidth &a, const GradeWidth &b) {
    const double apart = std::fabs(a.inches - b.inches);
    if (apart > kNearWidth) {
      return;
    }
    // The odd one is told of: what is not in eighths, or what came later.
    const bool firstIsOdd = isInEighths(a.inches) != isInEighths(b.inches)
                                ? isInEighths(b.inches)
                                : a.total.line > b.total.line;
    const GradeWidth &odd = firstIsOdd ? a : b;
    const GradeWidth &other = firstIsOdd ? b : a;
    if (!told_.insert(&odd).second) {
      return;
    }
    const bool isFault = apart <= kSameWidth;
    const bool isSlip = isInEighths(a.inches) != isInEighths(b.inches);
    const bool melts =
        general(a.inches) == general(b.inches) || fixed(a.inches, 3) == fixed(b.inches, 3);
    const Code code = isFault            ? Code::kWidthsTooNear
                      : melts && !isSlip ? Code::kSameWidthName
                                         : Code::kNearWidths;
    view_.sink.add(view_.orderFile(), code, [&](Finding &finding) {
      placeAt(finding, view_.orderFile(), odd.total.line, kOrderWidth);
      finding.detail = view_.mill.quotedName(odd.grade) + " is ordered in " + textOf(odd) +
                       " and in line " + std::to_string(other.total.line) + " in " + textOf(other) +
                       (melts ? "; names of both show " + general(other.inches) : "");
      finding.write = textOf(other);
      finding.fixKind = isSlip && apart <= kRoundingError ? FixKind::kSafe : FixKind::kUnsafe;
      const std::size_t begin = finding.file->begin(finding.line) + finding.offset;
      finding.edits.push_back({begin, begin + finding.length, finding.write});
    });
  }

  // The width as its first line has it.
  std::string textOf(const GradeWidth &width) const {
    return std::string(fieldAt(view_.orderFile(), width.total.line, kOrderWidth));
  }

  void checkUnit(const GradeWidth &width, const std::vector<double> &wider) {
    const auto unit = unitOfNarrowRoll(width.inches, wider);
    if (!unit) {
      return;
    }
    told_.insert(&width);
    view_.sink.add(view_.orderFile(), Code::kOutOfUnit, [&](Finding &finding) {
      placeAt(finding, view_.orderFile(), width.total.line, kOrderWidth);
      finding.detail = general(width.inches) + " inches; " + general(width.inches) + " " +
                       std::string(unit->name) + " are " + general(unit->inches) + " inches";
      replaceMarked(finding, general(unit->inches));
    });
  }

  void checkSmallestDeckle(const GradeWidth &width) {
    const double smallest = view_.index.smallest(width.grade);
    if (smallest == 0 || width.inches <= smallest) {
      return;
    }
    view_.sink.add(view_.orderFile(), Code::kWiderThanSmallestDeckle, [&](Finding &finding) {
      placeAt(finding, view_.orderFile(), width.total.line, kOrderWidth);
      finding.detail = "the smallest deckle of " + view_.mill.quotedName(width.grade) + " is " +
                       general(smallest) + ", and " + general(width.inches) +
                       " fits on a wider one only";
    });
  }

  // Commodities of all grades share one set of names.
  void checkCommodityNames() {
    std::unordered_map<std::string, const GradeWidth *> byName;
    for (const GradeWidth &width : view_.index.gradeWidths) {
      const auto [first, isNew] = byName.try_emplace(general(width.inches), &width);
      if (isNew || first->second->inches == width.inches) {
        continue;
      }
      const bool firstIsLater = first->second->total.line > width.total.line;
      const GradeWidth &odd = firstIsLater ? *first->second : width;
      const GradeWidth &other = firstIsLater ? width : *first->second;
      if (told_.count(&odd) > 0 || told_.count(&other) > 0) {
        continue;
      }
      told_.insert(&odd);
      view_.sink.add(view_.orderFile(), Code::kSameWidthName, [&](Finding &finding) {
        placeAt(finding, view_.orderFile(), odd.total.line, kOrderWidth);
        finding.detail = textOf(odd) + " and " + textOf(other) + " (line " +
                         std::to_string(other.total.line) + ") are both DemandWidth" +
                         general(odd.inches);
      });
    }
  }

  void checkEighths() {
    std::unordered_set<quint32> seen;
    for (const GradeWidth &width : view_.index.gradeWidths) {
      if (isInEighths(width.inches) || told_.count(&width) > 0 ||
          !seen.insert(width.width).second) {
        continue;
      }
      view_.sink.add(view_.orderFile(), Code::kNotEighths, [&](Finding &finding) {
        placeAt(finding, view_.orderFile(), width.total.line, kOrderWidth);
        finding.detail =
            textOf(width) + " is named " + general(width.inches) + " and " + fixed(width.inches, 3);
        replaceMarked(finding, general(std::round(width.inches * 8) / 8));
      });
    }
  }

  const MillView &view_;
  std::unordered_set<const GradeWidth *> told_;
};

}  // namespace

void checkWidths(const MillView &view) {
  WidthChecks(view).run();
}

}  // namespace corvane::checks
