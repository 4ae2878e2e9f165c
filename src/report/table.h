#pragma once

#include <QByteArray>
#include <QString>
#include <iosfwd>
#include <vector>

namespace corvane::report {

// A table that is shown on the page and written as a CSV file, from the same values.

struct Cell {
  enum class Kind { kEmpty, kText, kNumber };

  Kind kind = Kind::kEmpty;
  QString text;           // as it is shown; also of a number
  double number = 0;      // in full, for the file
  QByteArray picture;     // markup before the text
  QByteArray link;        // where the text leads; empty for nowhere
  const char *look = "";  // a class of the style

  static Cell ofText(const QString &text);
  static Cell ofNumber(double number, int decimals);
  // Empty for 0: where most are 0, the others are seen.
  static Cell ofCount(double number, int decimals);
  // To a tenth, whole numbers without decimals; empty for 0 where that is asked for.
  static Cell ofRolls(double number);
  static Cell ofRollsIfAny(double number);
  // With as many decimals as it has.
  static Cell ofWidth(double number);
  static Cell ofChange(double number, int decimals);
  Cell as(const char *theLook) const;
  Cell with(const QByteArray &thePicture) const;
  Cell to(const QByteArray &theLink) const;
};

struct Column {
  QString head;
  bool isNumber = true;
  // The style knows by the column's place that it is one of texts, so that no cell has to say it.
  bool isStyled = false;
};

struct Row {
  std::vector<Cell> cells;  // may be fewer than there are columns
  const char *look = "";
};

struct Table {
  QByteArray id;    // also the CSV file's name
  QString caption;  // says what the figures are
  std::vector<Column> columns;
  std::vector<Row> totals;  // stand first and stay there
  std::vector<Row> rows;
  enum class Use {
    kShort,    // can be sorted
    kLong,     // and filtered, and saved
    kInOrder,  // neither: its rows follow from each other
  };
  Use use = Use::kShort;
};

// The first column heads its row. A row of totals stands before the others.
QByteArray toHtml(const Table &table);

// One header line, totals left out: they can be made from the rows.
void writeCsv(const Table &table, std::ostream &out);

}  // namespace corvane::report
