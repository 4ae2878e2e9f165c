#include <QSet>
#include <algorithm>
#include <map>
#include <optional>
#include <unordered_map>

#include "checks/mill_checks.h"
#include "checks/period_names.h"
#include "checks/shown_text.h"
#include "core/text.h"

namespace corvane::checks {

PeriodName periodName(const QString &text) {
  constexpr qint64 kLarge = 100'000'000'000'000;
  PeriodName name;
  bool inNumber = false;
  for (const QChar c : text) {
    const bool isDigit = c >= QLatin1Char('0') && c <= QLatin1Char('9');
    if (!isDigit) {
      name.shape += static_cast<char16_t>(c.unicode());
    } else if (!inNumber) {
      name.shape += u'#';
      name.numbers.push_back(0);
    }
    if (isDigit && name.numbers.back() < kLarge) {
      name.numbers.back() = 10 * name.numbers.back() + c.digitValue();
    }
    inNumber = isDigit;
  }
  return name;
}

namespace {

// A period as it is first mentioned.
struct Period {
  TextId text;
  quint32 line;
  PeriodName name;
};

class PeriodChecks {
 public:
  explicit PeriodChecks(const MillView &view) : view_(view) {
    for (const TextId period : view.index.periods) {
      periods_.push_back(
          {period, view.index.lineOfPeriod.at(period), periodName(view.mill.texts.text(period))});
    }
  }

  void run() {
    checkSpelling();
    checkOrder();
    checkMissing();
    checkGrades();
  }

 private:
  // Periods of the same numbers; the later one takes no part in the other checks.
  void checkSpelling() {
    std::map<std::vector<qint64>, const Period *> byNumbers;
    std::vector<Period> kept;
    for (const Period &period : periods_) {
      if (period.name.numbers.empty()) {
        kept.push_back(period);
        continue;
      }
      const auto entry = byNumbers.try_emplace(period.name.numbers, &period);
      const Period &first = *entry.first->second;
      if (entry.second) {
        kept.push_back(period);
        continue;
      }
      view_.sink.add(view_.orderFile(), Code::kPeriodSpelling, [&](Finding &finding) {
        placeAt(finding, view_.orderFile(), period.line, kOrderPeriod);
        finding.detail = view_.mill.quotedName(period.text) + " here and " +
                         view_.mill.quotedName(first.text) + " in line " +
                         std::to_string(first.line) + " are two periods";
        replaceMarked(finding, view_.mill.text(first.text));
      });
    }
    periods_ = std::move(kept);
  }

  void checkOrder() {
    std::map<std::u16string, const Period *> last;
    for (const Period &period : periods_) {
      if (period.name.numbers.empty()) {
        continue;
      }
      const Period *&latest = last[period.name.shape];
      if (latest == nullptr || latest->name.numbers < period.name.numbers) {
        latest = &period;
        continue;
      }
      view_.sink.add(view_.orderFile(), Code::kPeriodOrder, [&](Finding &finding) {
        placeAt(finding, view_.orderFile(), period.line, kOrderPeriod);
        finding.detail = view_.mill.quotedName(period.text) + " is read as coming after " +
                         view_.mill.quotedName(latest->text) + " (line " +
                         std::to_string(latest->line) + ")";
        finding.write = "the orders sorted by period";
        finding.edits.push_back({0, finding.file->bytes().size(), sortedFile()});
      });
    }
  }

  // The lines of the file by the numbers of their periods, otherwise as they stand; what has no
  // period keeps to the line before it. Made once, when the first finding asks for it.
  const std::string &sortedFile() {
    if (sorted_) {
      return *sorted_;
    }
    const SourceFile &file = view_.orderFile();
    std::map<std::vector<qint64>, std::string> linesByNumbers;
    // Periods are few and lines many: each text is looked at once.
    std::unordered_map<std::string_view, std::string *> linesByText;
    std::string *current = &linesByNumbers[{}];
    for (quint32 line = 1; line <= file.lineCount(); ++line) {
      const std::size_t mark = file.markLength(line);
      const std::size_t begin = file.begin(line) + mark;
      const std::string_view text = file.line(line).substr(mark);
      const auto [known, isNew] = linesByText.try_emplace(text.substr(0, text.find(',')), nullptr);
      if (isNew) {
        const PeriodName name = periodName(textFromBytes(known->first));
        known->second = name.numbers.empty() ? nullptr : &linesByNumbers[name.numbers];
      }
      current = known->second == nullptr ? current : known->second;
      *current += file.bytes().substr(begin, file.end(line) - begin);
      if (current->back() != '\n') {
        *current += '\n';
      }
    }
    sorted_.emplace(file.bytes().substr(0, file.markLength(1)));
    for (const auto &[numbers, lines] : linesByNumbers) {
      *sorted_ += lines;
    }
    return *sorted_;
  }

  // Steps between numbers of one shape that are larger than the usual one.
  void checkMissing() {
    std::map<std::u16string, std::map<qint64, const Period *>> byShape;
    for (const Period &period : periods_) {
      if (period.name.numbers.size() == 1) {
        byShape[period.name.shape].emplace(period.name.numbers[0], &period);
      }
    }
    for (const auto &[shape, periods] : byShape) {
      checkSteps(periods);
    }
  }

  void checkSteps(const std::map<qint64, const Period *> &periods) {
    // Week 52 of a year and week 1 of the next are no gap.
    constexpr qint64 kMostMissing = 12;
    if (periods.size() < 3) {
      return;
    }
    qint64 step = std::numeric_limits<qint64>::max();
    for (auto at = periods.begin(); std::next(at) != periods.end(); ++at) {
      step = std::min(step, std::next(at)->first - at->first);
    }
    for (auto at = periods.begin(); std::next(at) != periods.end(); ++at) {
      const auto next = std::next(at);
      const qint64 missing = (next->first - at->first) / step - 1;
      const bool isStep = (next->first - at->first) % step == 0;
      if (missing > 0 && missing <= kMostMissing && isStep) {
        reportMissing(*next->second, *at->second, at->first + step, missing);
      }
    }
  }

  void reportMissing(const Period &period, const Period &before, qint64 first, qint64 count) {
    QString name = view_.mill.texts.text(before.text);
    name.replace(QString::number(before.name.numbers[0]), QString::number(first));
    if (view_.mill.orderFile.mayHave(name.toStdString())) {
      return;
    }
    view_.sink.add(view_.orderFile(), Code::kPeriodMissing, [&](Finding &finding) {
      placeAt(finding, view_.orderFile(), period.line, kOrderPeriod);
      finding.detail = "between " + view_.mill.quotedName(before.text) + " and " +
                       view_.mill.quotedName(period.text) + ": " + quotedText(name.toStdString()) +
                       (count > 1 ? " and " + std::to_string(count - 1) + " more" : "");
    });
  }

  void checkGrades() {
    for (const auto &[grade, total] : byFirstLine(view_.index.byGrade)) {
      std::string missing;
      int count = 0;
      for (const Period &period : periods_) {
        if (view_.index.byGradePeriod.count(pairKey(grade, period.text)) == 0) {
          constexpr int kShown = 5;
          if (count < kShown) {
            missing += (count > 0 ? ", " : "") + view_.mill.text(period.text);
          }
          ++count;
        }
      }
      if (count == 0 || view_.mill.orderFile.mayHave(view_.mill.text(grade))) {
        continue;
      }
      view_.sink.add(view_.orderFile(), Code::kPeriodWithoutGrade,
                     [&, id = grade, line = total->line](Finding &finding) {
                       placeAt(finding, view_.orderFile(), line, kOrderGrade);
                       finding.detail = view_.mill.quotedName(id) + " is not ordered in " +
                                        std::to_string(count) + " of " +
                                        std::to_string(periods_.size()) +
                                        " periods: " + shown(missing);
                     });
    }
  }

  const MillView &view_;
  std::vector<Period> periods_;
  std::optional<std::string> sorted_;
};

}  // namespace

void checkPeriods(const MillView &view) {
  PeriodChecks(view).run();
}

}  // namespace corvane::checks
