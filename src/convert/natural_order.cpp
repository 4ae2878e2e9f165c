#include "convert/natural_order.h"

namespace corvane::convert {

namespace {

bool isDigit(QChar character) {
  return character >= QLatin1Char('0') && character <= QLatin1Char('9');
}

// The digits from there on, without zeros in front; moves behind them.
QStringView takeDigits(const QString &text, qsizetype &at) {
  while (at < text.size() && text[at] == QLatin1Char('0')) {
    ++at;
  }
  const qsizetype begin = at;
  while (at < text.size() && isDigit(text[at])) {
    ++at;
  }
  return QStringView(text).mid(begin, at - begin);
}

int sign(qsizetype difference) {
  return difference < 0 ? -1 : (difference > 0 ? 1 : 0);
}

int compareNumbers(QStringView a, QStringView b) {
  return a.size() != b.size() ? sign(a.size() - b.size()) : a.compare(b);
}

}  // namespace

int compareNaturally(const QString &a, const QString &b) {
  qsizetype i = 0;
  qsizetype j = 0;
  while (i < a.size() && j < b.size()) {
    if (isDigit(a[i]) && isDigit(b[j])) {
      const int order = compareNumbers(takeDigits(a, i), takeDigits(b, j));
      if (order != 0) {
        return order;
      }
    } else if (a[i] != b[j]) {
      return a[i] < b[j] ? -1 : 1;
    } else {
      ++i;
      ++j;
    }
  }
  return sign((a.size() - i) - (b.size() - j));
}

}  // namespace corvane::convert
