#include "convert/cell_conversion.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace corvane::convert {

namespace {

ConvertedCell taken(QByteArray text) {
  return {std::move(text), {}};
}

ConvertedCell refused(const QString &why) {
  return {{}, why};
}

// The name of a character that must not stand in a text, or nothing.
std::optional<QString> unwritable(QChar character) {
  if (character == QLatin1Char(',')) {
    return QStringLiteral("a comma, which separates the fields of a data file");
  }
  if (character == QLatin1Char('"')) {
    return QStringLiteral("a double quote, which would break the names of the model");
  }
  if (character.category() == QChar::Other_Control || character == QChar(QChar::LineSeparator) ||
      character == QChar(QChar::ParagraphSeparator)) {
    return QStringLiteral("a line end or another control character");
  }
  if (character.category() == QChar::Other_Format) {
    return QStringLiteral("an invisible character (U+%1)")
        .arg(static_cast<int>(character.unicode()), 4, 16, QLatin1Char('0'));
  }
  return std::nullopt;
}

ConvertedCell convertText(const QString &cell) {
  QString text = cell.trimmed();
  if (text.isEmpty()) {
    return refused(QStringLiteral("is empty"));
  }
  for (QChar &character : text) {
    if (character.category() == QChar::Separator_Space || character == QLatin1Char('\t')) {
      character = QLatin1Char(' ');
    }
    if (const auto what = unwritable(character)) {
      return refused(QStringLiteral("%1 holds %2").arg(quoted(text), *what));
    }
  }
  return taken(text.toUtf8());
}

QByteArray digitsOf(double number) {
  // The largest double has 309 digits, the smallest one 324 zeros and 17 digits.
  std::array<char, 400> buffer{};
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number + 0.0,
                                    std::chars_format::fixed);
  return {buffer.data(), result.ptr - buffer.data()};
}

// The nearest multiple. Multiples of a power of ten are the doubles nearest to their decimals, so
// that few digits are written.
double roundedTo(double number, double step) {
  const double inverse = std::round(1 / step);
  const bool dividesOne = std::abs(inverse * step - 1) < 1e-9;
  return dividesOne ? std::round(number * inverse) / inverse : std::round(number / step) * step;
}

double inOwnUnit(double number, const FieldSource &source) {
  if (!source.unit.isOwn) {
    number *= source.unit.factor;
  }
  if (source.roundTo) {
    return roundedTo(number, *source.roundTo);
  }
  return source.unit.isOwn ? number : roundedTo(number, defaultStep(source.field->dimension));
}

ConvertedCell convertCount(double number, const QString &cell) {
  if (number != std::floor(number)) {
    return refused(QStringLiteral("%1 is not a whole number").arg(quoted(cell)));
  }
  if (number < 1 || number > std::numeric_limits<qint32>::max()) {
    return refused(QStringLiteral("%1 is not between 1 and %2")
                       .arg(quoted(cell))
                       .arg(std::numeric_limits<qint32>::max()));
  }
  return taken(QByteArray::number(static_cast<qint32>(number)));
}

ConvertedCell convertNumber(const QString &cell, const FieldSource &source, DecimalSign sign) {
  if (cell.trimmed().isEmpty()) {
    return refused(QStringLiteral("is empty"));
  }
  const auto read = readNumber(cell, sign);
  if (!read) {
    return refused(QStringLiteral("%1 is not a number (the decimal sign is %2)")
                       .arg(quoted(cell), quoted(characterOf(sign))));
  }
  const double number = inOwnUnit(*read, source);
  if (source.field->dimension == Dimension::kCount) {
    return convertCount(number, cell);
  }
  if (source.field->dimension == Dimension::kLength && !(number > 0)) {
    return refused(QStringLiteral("%1 is not above 0").arg(quoted(cell)));
  }
  return std::isfinite(number) ? taken(digitsOf(number))
                               : refused(QStringLiteral("%1 is too large").arg(quoted(cell)));
}

}  // namespace

bool isNumeric(Dimension dimension) {
  return dimension != Dimension::kText;
}

ConvertedCell convertCell(const QString &cell, const FieldSource &source, DecimalSign sign) {
  return isNumeric(source.field->dimension) ? convertNumber(cell, source, sign) : convertText(cell);
}

}  // namespace corvane::convert
