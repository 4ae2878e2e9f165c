#include "report/html.h"

#include <cmath>

namespace corvane::report {

namespace {

const QChar kMinus(0x2212);

QString withoutTrailingZeros(QString digits) {
  if (digits.contains(QLatin1Char('.'))) {
    while (digits.endsWith(QLatin1Char('0'))) {
      digits.chop(1);
    }
    if (digits.endsWith(QLatin1Char('.'))) {
      digits.chop(1);
    }
  }
  return digits;
}

bool isZero(const QString &digits) {
  for (const QChar sign : digits) {
    if (sign != QLatin1Char('0') && sign != QLatin1Char('.')) {
      return false;
    }
  }
  return true;
}

QString groupedDigits(double number, int decimals) {
  QString digits = QString::number(std::abs(number), 'f', decimals);
  qsizetype point = digits.indexOf(QLatin1Char('.'));
  point = point < 0 ? digits.size() : point;
  for (qsizetype at = point - 3; at > 0; at -= 3) {
    digits.insert(at, QLatin1Char(','));
  }
  return digits;
}

}  // namespace

QByteArray escaped(const QString &text) {
  const QByteArray bytes = text.toUtf8();
  QByteArray result;
  result.reserve(bytes.size() + 8);
  for (const char sign : bytes) {
    switch (sign) {
      case '&':
        result += "&amp;";
        break;
      case '<':
        result += "&lt;";
        break;
      case '>':
        result += "&gt;";
        break;
      case '"':
        result += "&quot;";
        break;
      case '\0':
        result += "\xEF\xBF\xBD";  // a page may hold no zero byte
        break;
      default:
        result += sign;
    }
  }
  return result;
}

QString grouped(double number, int decimals) {
  const QString digits = groupedDigits(number, decimals);
  return number < 0 && !isZero(digits) ? kMinus + digits : digits;
}

QString plain(double number) {
  const QString digits = withoutTrailingZeros(groupedDigits(number, 3));
  return number < 0 && !isZero(digits) ? kMinus + digits : digits;
}

QString change(double number, int decimals) {
  const QString digits = groupedDigits(number, decimals);
  if (isZero(digits)) {
    return QStringLiteral("0");
  }
  return (number < 0 ? kMinus : QLatin1Char('+')) + digits;
}

QByteArray coordinate(double number) {
  return withoutTrailingZeros(QString::number(number, 'f', 1)).toLatin1();
}

}  // namespace corvane::report
