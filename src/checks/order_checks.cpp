// Orders that are dropped, and those whose quantity has decimals.

#include <algorithm>
#include <cmath>
#include <unordered_map>

#include "checks/mill_checks.h"
#include "checks/near_names.h"
#include "checks/shown_text.h"
#include "checks/units.h"
#include "core/numbers.h"

namespace corvane::checks {

namespace {

// What is known of the widths and grades beside the orders in question.
class DroppedOrders {
 public:
  explicit DroppedOrders(const MillView &view) : view_(view) {
    for (const GradeWidth &width : view.index.gradeWidths) {
      widths_[width.grade].push_back(width.inches);
    }
    for (const auto &[grade, cutters] : view.index.cutters) {
      grades_.push_back(view.mill.texts.text(grade));
    }
    std::sort(grades_.begin(), grades_.end());
  }

  void look(const DroppedOrder &order) {
    const std::vector<double> &others = widths_[order.grade];
    const double deckle = view_.index.widest(order.grade);
    if (isSwapped(order, others, deckle)) {
      reportSwapped(order);
    } else if (order.quantity != std::floor(order.quantity)) {
      reportDecimals(order);
    }
    if (order.isAccepted || isSwapped(order, others, deckle)) {
      return;
    }
    if (view_.index.cuttersOf(order.grade) == nullptr) {
      reportUnknownGrade(order);
    } else if (const auto unit = unitOfWideRoll(order.width, deckle, others)) {
      reportUnit(order, *unit);
    } else {
      reportTooWide(order, deckle);
    }
  }

 private:
  static bool isOneOf(double width, const std::vector<double> &widths) {
    return std::find(widths.begin(), widths.end(), width) != widths.end();
  }

  // The number under quantity is a width of the grade, or looks like one and the width does not;
  // and the width is a whole number that the grade does not have, or does not fit.
  static bool isSwapped(const DroppedOrder &order, const std::vector<double> &others,
                        double deckle) {
    const bool isCount = order.width == std::floor(order.width) && order.width >= 1;
    const double eighths = order.quantity * 8;
    const bool hasDecimals = order.quantity != std::floor(order.quantity);
    const bool looksLikeWidth = hasDecimals && eighths == std::floor(eighths);
    if (!isCount || order.quantity > deckle) {
      return false;
    }
    if (isOneOf(order.quantity, others)) {
      return hasDecimals || order.width > deckle;
    }
    return looksLikeWidth && (order.width > deckle || !isOneOf(order.width, others));
  }

  void reportSwapped(const DroppedOrder &order) {
    view_.sink.add(view_.orderFile(), Code::kSwapped, [&](Finding &finding) {
      Finding quantity = finding;
      const SourceFile &file = view_.orderFile();
      placeAt(quantity, file, order.line, kOrderQuantity);
      placeAt(finding, file, order.line, kOrderWidth);
      const std::string_view line = file.line(order.line);
      const std::string width(line.substr(finding.offset, finding.length));
      const std::string count(line.substr(quantity.offset, quantity.length));
      finding.length = quantity.offset + quantity.length - finding.offset;
      finding.detail = quotedText(line.substr(finding.offset, finding.length)) +
                       " is read as a width of " + general(order.width) + " and " +
                       std::to_string(static_cast<qint64>(order.quantity)) + " rolls" +
                       (order.isAccepted ? "" : ", and dropped");
      finding.write = count + "," + width;
      const std::size_t begin = file.begin(order.line) + finding.offset;
      finding.edits.push_back({begin, begin + finding.length, finding.write});
    });
  }

  void reportDecimals(const DroppedOrder &order) {
    view_.sink.add(view_.orderFile(), Code::kQuantityDecimals, [&](Finding &finding) {
      place(finding, order, kOrderQuantity);
      describeField(finding, textAt(finding), "quantity", FieldKind::kQuantity);
    });
  }

  void reportUnknownGrade(const DroppedOrder &order) {
    const std::string grade = view_.mill.text(order.grade);
    if (!view_.hasMachines() || view_.mill.machineFile.mayHave(grade) || grades_.empty()) {
      return;
    }
    view_.sink.add(view_.orderFile(), Code::kNoCutter, [&](Finding &finding) {
      place(finding, order, kOrderGrade);
      finding.detail = "no cutter runs " + quotedText(grade) + "; the order is dropped";
      const auto nearest = nearestName(view_.mill.texts.text(order.grade), grades_);
      if (nearest) {
        finding.write = nearest->toStdString();
        finding.detail += "; the nearest grade is " + quotedText(finding.write);
        replace(finding);
      }
    });
  }

  void reportTooWide(const DroppedOrder &order, double deckle) {
    // Of a deckle that is no number a finding tells already.
    const auto &cutters = *view_.index.cuttersOf(order.grade);
    if (std::any_of(cutters.begin(), cutters.end(), [](const CutterRow *cutter) {
          return (cutter->badNumbers >> static_cast<unsigned>(kMachineWidth) & 1U) != 0;
        })) {
      return;
    }
    view_.sink.add(view_.orderFile(), Code::kNoCutter, [&](Finding &finding) {
      place(finding, order, kOrderWidth);
      finding.detail = "the widest deckle of " + view_.mill.quotedName(order.grade) + " is " +
                       general(deckle) + "; the order is dropped";
    });
  }

  void reportUnit(const DroppedOrder &order, const OtherUnit &unit) {
    view_.sink.add(view_.orderFile(), Code::kOutOfUnit, [&](Finding &finding) {
      place(finding, order, kOrderWidth);
      finding.detail = general(order.width) +
                       " inches fit on no cutter, and the order is dropped; " +
                       general(order.width) + " " + std::string(unit.name) + " are " +
                       general(unit.inches) + " inches";
      finding.write = general(unit.inches);
      replace(finding);
    });
  }

  void place(Finding &finding, const DroppedOrder &order, int column) const {
    placeAt(finding, view_.orderFile(), order.line, column);
  }
  static std::string_view textAt(const Finding &finding) {
    return finding.file->line(finding.line).substr(finding.offset, finding.length);
  }
  static void replace(Finding &finding) {
    const std::size_t begin = finding.file->begin(finding.line) + finding.offset;
    finding.edits.push_back({begin, begin + finding.length, finding.write});
  }

  const MillView &view_;
  std::unordered_map<TextId, std::vector<double>> widths_;
  std::vector<QString> grades_;
};

}  // namespace

void checkDroppedOrders(const MillView &view) {
  DroppedOrders dropped(view);
  for (const DroppedOrder &order : view.mill.droppedOrders) {
    dropped.look(order);
  }
  const bool hasCause = view.mill.orderFile.scan.broken > 0;
  if (view.mill.orders.empty() && !hasCause && view.hasMachines()) {
    view.sink.add(view.orderFile(), Code::kNoOrders, [&](Finding &finding) {
      finding.detail = view.index.cutters.empty()
                           ? "the machine file has no cutter"
                           : "of " + std::to_string(view.mill.orderFile.scan.lines) + " lines";
    });
  }
}

}  // namespace corvane::checks
