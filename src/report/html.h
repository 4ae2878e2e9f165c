#pragma once

#include <QByteArray>
#include <QString>

namespace corvane::report {

// Text as it stands in a page, between tags or in a double-quoted attribute. Every text of the data
// goes through this.
QByteArray escaped(const QString &text);

// Numbers for readers: a comma between thousands, so many decimals, a minus sign as wide as a plus,
// and no minus before 0.
QString grouped(double number, int decimals);
// As many decimals as the number has, at most three: widths and trim.
QString plain(double number);
// With its sign; 0 has none.
QString change(double number, int decimals);

// A place in a picture, to a tenth of a unit.
QByteArray coordinate(double number);

}  // namespace corvane::report
