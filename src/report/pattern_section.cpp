#include <algorithm>
#include <cmath>

#include "report/html.h"
#include "report/sections.h"

namespace corvane::report {

namespace {

// Pictures are so many units wide for the widest deckle of the page, and so high.
constexpr double kPictureWidth = 720;
// Rolls are strokes with a gap between them, so that a run of equal rolls is one path.
constexpr int kGap = 1;
// The width of a digit of a label.
constexpr double kDigit = 10;
// Labels on everything would double a long catalogue.
constexpr std::size_t kMostLabelled = 2000;

// The picture of a pattern: a path for each width in the width's color, then the trim. Rolls carry
// their width where there is room for it.
class PatternPicture {
 public:
  PatternPicture(const std::map<double, int, std::greater<>> &colors, double widestDeckle)
      : colors_(colors), scale_(kPictureWidth / widestDeckle) {}

  QByteArray draw(const record::Pattern &pattern, double deckle, bool hasLabels) const {
    QByteArray paths;
    QByteArray labels;
    double x = 0;
    for (const auto &[width, count] : pattern.rolls) {
      paths += rollPath(x, width, count);
      for (int i = 0; hasLabels && i < count; ++i) {
        labels += label(x + (i + 0.5) * width, width);
      }
      x += width * count;
    }
    if (place(deckle) > place(x)) {
      paths += "<path class=c d=M" + number(place(x)) + ",14h" + number(place(deckle) - place(x)) +
               " />";
    }
    return "<svg viewBox=0,0,720,28 aria-hidden=true>" + paths + labels + "</svg>";
  }

 private:
  int place(double inches) const { return static_cast<int>(std::lround(inches * scale_)); }
  static QByteArray number(int units) { return QByteArray::number(units); }

  // Equal rolls side by side, each from its own place to just before the next one's.
  QByteArray rollPath(double x, double width, int count) const {
    QByteArray path =
        "<path class=c" + number(colors_.at(width)) + " d=M" + number(place(x)) + ",14";
    for (int i = 0; i < count; ++i) {
      const int length = place(x + (i + 1) * width) - place(x + i * width) - kGap;
      path +=
          (i == 0 ? QByteArray() : "m" + number(kGap) + ",0") + "h" + number(std::max(0, length));
    }
    return path + " />";
  }

  QByteArray label(double middle, double width) const {
    const QString text = plain(width);
    return width * scale_ < kDigit * static_cast<double>(text.size())
               ? QByteArray()
               : "<text x=" + number(place(middle)) + ">" + escaped(text) + "</text>";
  }

  const std::map<double, int, std::greater<>> &colors_;
  double scale_;
};

QString rollsText(const record::Pattern &pattern) {
  QStringList parts;
  for (const auto &[width, count] : pattern.rolls) {
    // Does not break within.
    parts << QStringLiteral("%1\u00a0×\u00a0%2").arg(count).arg(plain(width));
  }
  return parts.join(QLatin1String(", "));
}

std::vector<Column> columnsOf(const Subject &subject) {
  std::vector<Column> columns{{QStringLiteral("Machine"), false},
                              {QStringLiteral("Deckle")},
                              {QStringLiteral("Cut, to one scale"), false, true},
                              {QStringLiteral("Rolls, in"), false, true},
                              {QStringLiteral("Trim, in")},
                              {QStringLiteral("Trim %")}};
  if (subject.hasPlan()) {
    columns.push_back({QStringLiteral("Reels")});
    for (const QString &period : subject.record.periods) {
      columns.push_back({QStringLiteral("P\u00a0") + period});
    }
  } else {
    columns.resize(4);  // unweighted, trim misleads
  }
  return columns;
}

// The patterns of a grade: the most used first, then in the order of the record.
std::vector<std::size_t> patternsOf(const Subject &subject, const QString &grade) {
  std::vector<std::size_t> order;
  for (std::size_t i = 0; i < subject.record.patterns.size(); ++i) {
    const auto cutter = static_cast<std::size_t>(subject.record.patterns[i].cutter);
    if (subject.record.cutters[cutter].grade == grade) {
      order.push_back(i);
    }
  }
  std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
    return subject.figures.patterns[a].reels > subject.figures.patterns[b].reels;
  });
  return order;
}

class PatternRows {
 public:
  PatternRows(const Subject &subject, const GradeFigures &grade, double scale)
      : subject_(subject), picture_(colors_, scale) {
    int color = 0;
    for (const auto &width : grade.widths) {
      colors_[width.first] = color++;
    }
  }

  Row row(std::size_t index) {
    const record::Pattern &pattern = subject_.record.patterns[index];
    const PatternFigures &use = subject_.figures.patterns[index];
    const record::Cutter &cutter =
        subject_.record.cutters[static_cast<std::size_t>(pattern.cutter)];
    for (const auto &[width, count] : pattern.rolls) {
      // A roll that nobody ordered has a color too.
      colors_.try_emplace(width, static_cast<int>(colors_.size()));
    }
    const bool isUsed = use.reels > 0 || !subject_.hasPlan();
    const bool hasLabels =
        use.reels > 0 || (isUsed && subject_.record.patterns.size() <= kMostLabelled);
    Row row{{Cell::ofText(subject_.record.machines[static_cast<std::size_t>(cutter.machine)].name),
             Cell::ofWidth(cutter.deckle),
             Cell().with(picture_.draw(pattern, cutter.deckle, hasLabels)),
             Cell::ofText(rollsText(pattern))},
            isUsed ? "" : "u"};
    if (subject_.hasPlan()) {
      addUse(row, pattern, cutter, use);
    }
    return row;
  }

 private:
  static void addUse(Row &row, const record::Pattern &pattern, const record::Cutter &cutter,
                     const PatternFigures &use) {
    row.cells.push_back(Cell::ofWidth(pattern.trim));
    row.cells.push_back(cutter.deckle > 0 ? Cell::ofNumber(100 * pattern.trim / cutter.deckle, 2)
                                          : Cell());
    if (use.reels > 0) {
      row.cells.push_back(Cell::ofNumber(use.reels, 1));
    }
    for (const double reels : use.byPeriod) {
      row.cells.push_back(Cell::ofCount(reels, 1));
    }
  }

  const Subject &subject_;
  std::map<double, int, std::greater<>> colors_;
  PatternPicture picture_;
};

QString summaryOf(const Subject &subject, const GradeFigures &grade) {
  QString text = QStringLiteral("%1 patterns").arg(grouped(grade.patterns, 0));
  if (subject.hasPlan()) {
    text += QStringLiteral(", %1 used, %2 reels")
                .arg(grouped(grade.usedPatterns, 0), grouped(grade.all.reels, 0));
  }
  return text;
}

}  // namespace

std::vector<GradePatterns> patternTables(const Subject &subject, bool usedOnly) {
  double scale = 1;
  for (const record::Cutter &cutter : subject.record.cutters) {
    scale = std::max(scale, cutter.deckle);
  }
  std::vector<GradePatterns> result;
  for (const auto &[name, grade] : subject.figures.grades) {
    GradePatterns patterns{name, summaryOf(subject, grade), {}};
    patterns.table = {"patterns-" + QByteArray::number(static_cast<int>(result.size()) + 1),
                      QStringLiteral("Patterns of %1").arg(name),
                      columnsOf(subject),
                      {},
                      {},
                      Table::Use::kLong};
    PatternRows rows(subject, grade, scale);
    for (const std::size_t index : patternsOf(subject, name)) {
      if (subject.figures.patterns[index].reels > 0 || !usedOnly) {
        patterns.table.rows.push_back(rows.row(index));
      }
    }
    result.push_back(std::move(patterns));
  }
  return result;
}

}  // namespace corvane::report
