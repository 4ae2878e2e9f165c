#include "checks/parameter_values.h"

#include <QStringList>
#include <cmath>

#include "checks/field_texts.h"
#include "checks/number_form.h"
#include "core/text.h"
#include "formats/number_text.h"

namespace corvane::checks {

namespace {

std::string numberText(double number) {
  return std::string(NumberText(number).view());
}

// The value without blanks and quotes, in lower case.
QString plainWord(std::string_view value) {
  return textFromBytes(value)
      .remove(QLatin1Char('"'))
      .remove(QLatin1Char('\''))
      .trimmed()
      .toLower();
}

ValueFault faultOfWord(std::string_view value, const QStringList &words) {
  if (words.contains(textFromBytes(value))) {
    return {};
  }
  const QString plain = plainWord(value);
  for (const QString &word : words) {
    if (plain == word.toLower()) {
      return {Code::kNotAWord, utf8(word), FixKind::kSafe};
    }
  }
  static const QStringList kYes = {"yes", "y", "1", "on", "t", "ja", "oui", "wahr"};
  static const QStringList kNo = {"no", "n", "0", "off", "f", "nein", "non", "falsch"};
  if (words.contains(QStringLiteral("True"))) {
    const std::string guess = kYes.contains(plain) ? "True" : kNo.contains(plain) ? "False" : "";
    return {Code::kNotAWord, guess, FixKind::kUnsafe};
  }
  return {Code::kNotAWord, {}, FixKind::kNone};
}

// What a value that is no number of the right kind was meant as.
ValueFault faultOfText(const ParameterRule &rule, std::string_view value) {
  const std::string_view text = withoutOuterBlanks(value);
  const QString plain = plainWord(value);
  if (plain == QLatin1String("none")) {
    const bool hasNone = rule.low < 0;
    return {Code::kLogForm, hasNone ? "-1" : "", hasNone ? FixKind::kSafe : FixKind::kNone};
  }
  if (!text.empty() && text.back() == '%') {
    const std::string_view number = withoutOuterBlanks(text.substr(0, text.size() - 1));
    const bool isNumber = isPlainNumber(number);
    return {Code::kLogForm, isNumber ? std::string(number) : "", FixKind::kSafe};
  }
  const bool isInteger = rule.kind == ParameterRule::Kind::kInteger;
  if (isInteger && isPlainNumber(text)) {
    const double number = textFromBytes(text).toDouble();
    const bool isWhole = number == std::floor(number) && std::fabs(number) < 1e9;
    return {Code::kNotANumber, numberText(std::round(number)),
            isWhole ? FixKind::kSafe : FixKind::kUnsafe};
  }
  std::string meant = formOfNumber(text).meant;
  if (!isInteger && text.find(',') != std::string_view::npos) {
    std::string point(text);
    point[point.find(',')] = '.';
    meant = isPlainNumber(point) ? point : meant;
  }
  return {Code::kNotANumber, meant, FixKind::kUnsafe};
}

ValueFault faultOfNumberValue(const ParameterRule &rule, std::string_view value) {
  bool isNumber = false;
  const QString text = textFromBytes(value);
  double number = 0;
  if (rule.kind == ParameterRule::Kind::kInteger) {
    number = text.toInt(&isNumber);
  } else {
    number = static_cast<double>(text.toFloat(&isNumber));
    isNumber = isNumber && std::isfinite(number);
  }
  if (!isNumber) {
    return faultOfText(rule, value);
  }
  const bool isBelow = rule.isLowExcluded ? number <= rule.low : number < rule.low;
  if (isBelow || number > rule.high) {
    const double bound = isBelow ? (rule.isMoved ? rule.lowBound : rule.low) : rule.high;
    return {Code::kOutOfRange, numberText(bound), rule.isMoved ? FixKind::kSafe : FixKind::kUnsafe};
  }
  if (std::string_view(rule.key) == "time limit" && number == 0) {
    return {Code::kNoTime, "-1", FixKind::kUnsafe};
  }
  return {};
}

ValueFault faultOfPath(std::string_view value) {
  const auto code = faultOfName(value);
  if (!code || *code == Code::kNotUtf8) {
    return {};
  }
  return {*code == Code::kOuterBlank ? Code::kValueBlank : *code, cleanedName(value),
          FixKind::kSafe};
}

}  // namespace

ValueFault faultOfValue(const ParameterRule &rule, std::string_view value) {
  switch (rule.kind) {
    case ParameterRule::Kind::kFlag:
      return faultOfWord(value, {QStringLiteral("True"), QStringLiteral("False")});
    case ParameterRule::Kind::kSolver:
      return faultOfWord(value, {QStringLiteral("Dual"), QStringLiteral("Barrier")});
    case ParameterRule::Kind::kText:
      return faultOfPath(value);
    default:
      return faultOfNumberValue(rule, value);
  }
}

}  // namespace corvane::checks
