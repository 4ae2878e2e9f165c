#include "convert/number_format.h"

#include <QRegularExpression>
#include <algorithm>
#include <array>
#include <utility>

namespace corvane::convert {

namespace {

// Between groups of digits beside the comma and the point: blanks of several widths, apostrophes.
const QString kGroupMarks = QStringLiteral(" \u00a0\u2009\u202f'\u2019");

constexpr std::array<std::pair<char16_t, double>, 15> kVulgarFractions = {{
    {u'\u00bc', 1.0 / 4},
    {u'\u00bd', 1.0 / 2},
    {u'\u00be', 3.0 / 4},
    {u'\u2153', 1.0 / 3},
    {u'\u2154', 2.0 / 3},
    {u'\u2155', 1.0 / 5},
    {u'\u2156', 2.0 / 5},
    {u'\u2157', 3.0 / 5},
    {u'\u2158', 4.0 / 5},
    {u'\u2159', 1.0 / 6},
    {u'\u215a', 5.0 / 6},
    {u'\u215b', 1.0 / 8},
    {u'\u215c', 3.0 / 8},
    {u'\u215d', 5.0 / 8},
    {u'\u215e', 7.0 / 8},
}};

QString withoutCurrency(QString text) {
  static const QString kSigns = QStringLiteral("$\u20ac\u00a3");
  text = text.trimmed();
  if (!text.isEmpty() && kSigns.contains(text.front())) {
    text.remove(0, 1);
  } else if (!text.isEmpty() && kSigns.contains(text.back())) {
    text.chop(1);
  }
  return text.trimmed();
}

// Takes one sign in front off the text.
double takeSign(QString &text) {
  if (text.isEmpty()) {
    return 1;
  }
  const QChar first = text.front();
  const bool isMinus = first == QLatin1Char('-') || first == QChar(u'\u2212');
  if (isMinus || first == QLatin1Char('+')) {
    text = text.mid(1);
  }
  return isMinus ? -1 : 1;
}

bool areDigits(const QString &text) {
  return std::all_of(text.begin(), text.end(), [](QChar character) {
    return character >= QLatin1Char('0') && character <= QLatin1Char('9');
  });
}

// One to three digits, then three behind each mark.
bool areGroups(const QStringList &parts) {
  return parts.size() > 1 && !parts[0].isEmpty() && parts[0].size() <= 3 && areDigits(parts[0]) &&
         std::all_of(parts.begin() + 1, parts.end(),
                     [](const QString &part) { return part.size() == 3 && areDigits(part); });
}

// Whole digits, in groups of three with one kind of mark or without marks. Digits alone come back.
std::optional<QString> readGroups(const QString &text, const QString &marks) {
  if (areDigits(text)) {
    return text;
  }
  for (const QChar mark : marks) {
    const QStringList parts = text.split(mark);
    if (areGroups(parts)) {
      return parts.join(QString());
    }
  }
  return std::nullopt;
}

std::optional<double> readDecimal(const QString &text, DecimalSign sign) {
  const QChar decimal = characterOf(sign);
  const QChar other =
      characterOf(sign == DecimalSign::kPoint ? DecimalSign::kComma : DecimalSign::kPoint);
  const qsizetype at = text.indexOf(decimal);
  const QString whole = at < 0 ? text : text.left(at);
  const QString part = at < 0 ? QString() : text.mid(at + 1);
  if (!areDigits(part) || (whole.isEmpty() && part.isEmpty())) {
    return std::nullopt;
  }
  const auto digits =
      whole.isEmpty() ? QStringLiteral("0") : readGroups(whole, other + kGroupMarks);
  if (!digits) {
    return std::nullopt;
  }
  bool valid = false;
  const double number = (*digits + QLatin1Char('.') + part + QLatin1Char('0')).toDouble(&valid);
  return valid ? std::optional(number) : std::nullopt;
}

// "1/2" and the one-character fractions.
std::optional<double> readFraction(const QString &text) {
  static const QRegularExpression kRatio(QStringLiteral("^([0-9]{1,4})[/\u2044]([0-9]{1,4})$"));
  for (const auto &[character, value] : kVulgarFractions) {
    if (text.size() == 1 && text.front() == QChar(character)) {
      return value;
    }
  }
  const auto ratio = kRatio.match(text);
  const double part = ratio.captured(1).toDouble();
  const double whole = ratio.captured(2).toDouble();
  // "421/2" is more often 42 1/2 than 210 1/2.
  if (!ratio.hasMatch() || part >= whole) {
    return std::nullopt;
  }
  return part / whole;
}

// A whole number, a blank or a dash, and a fraction below one.
std::optional<double> readMixed(const QString &text) {
  static const QRegularExpression kMixed(
      QStringLiteral("^([0-9]+)(?:\\s+|\\s*-\\s*)?([0-9]+[/\u2044][0-9]+|[^0-9\\s])$"));
  static const QRegularExpression kBareRatio(QStringLiteral("^[0-9]+[/\u2044]"));
  const auto mixed = kMixed.match(text);
  if (!mixed.hasMatch() || kBareRatio.match(text).hasMatch()) {
    return std::nullopt;
  }
  const auto fraction = readFraction(mixed.captured(2));
  if (!fraction) {
    return std::nullopt;
  }
  return mixed.captured(1).toDouble() + *fraction;
}

}  // namespace

QChar characterOf(DecimalSign sign) {
  return sign == DecimalSign::kPoint ? QLatin1Char('.') : QLatin1Char(',');
}

void gatherEvidence(const SeenNumber &number, DecimalEvidence &evidence) {
  const auto withPoint = readNumber(number.text, DecimalSign::kPoint);
  const auto withComma = readNumber(number.text, DecimalSign::kComma);
  const auto note = [&number](std::optional<SeenNumber> &first) {
    first = first ? first : std::optional(number);
  };
  if (withPoint && !withComma) {
    note(evidence.forPoint);
  } else if (withComma && !withPoint) {
    note(evidence.forComma);
  } else if (withPoint && *withPoint != *withComma) {
    note(evidence.ambiguous);
  }
}

std::optional<double> readNumber(const QString &cell, DecimalSign sign) {
  QString text = withoutCurrency(cell);
  const double factor = takeSign(text);
  auto number = readDecimal(text, sign);
  if (!number) {
    number = readFraction(text);
  }
  if (!number) {
    number = readMixed(text);
  }
  if (!number) {
    return std::nullopt;
  }
  return factor * *number;
}

}  // namespace corvane::convert
