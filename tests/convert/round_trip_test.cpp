// Random tables, written in every way that spreadsheets write them, read back to the same values by
// the functions by which the planner reads its data files.

#include <gtest/gtest.h>

#include <QStringEncoder>
#include <cmath>
#include <random>

#include "convert/conversion.h"
#include "core/line_reader.h"
#include "core/numbers.h"
#include "core/text.h"
#include "formats/number_text.h"

namespace corvane::convert {
namespace {

struct Cell {
  QString text;       // what the table shows
  QString name;       // what a text field holds
  double number = 0;  // what a numeric field holds
};

// How one table is written.
struct Style {
  QChar delimiter;
  DecimalSign decimal;
  QString groupMark;
  QStringConverter::Encoding encoding;
  bool withMark;
  bool quotesAll;
  QString lineEnd;
};

class TableWriter {
 public:
  explicit TableWriter(unsigned seed) : random_(seed) {
    const QString delimiters = QStringLiteral(",;\t|");
    style_.delimiter = delimiters[pick(4)];
    style_.decimal = pick(2) == 0 ? DecimalSign::kPoint : DecimalSign::kComma;
    const QStringList marks = {
        QString(), QStringLiteral(" "), QStringLiteral("'"),
        style_.decimal == DecimalSign::kPoint ? QStringLiteral(",") : QStringLiteral(".")};
    style_.groupMark = marks[pick(4)];
    const std::array encodings = {QStringConverter::Utf8, QStringConverter::Utf16LE,
                                  QStringConverter::Utf16BE, QStringConverter::Latin1};
    style_.encoding = encodings.at(static_cast<std::size_t>(pick(4)));
    style_.withMark = style_.encoding != QStringConverter::Latin1 && pick(2) == 0;
    style_.quotesAll = pick(2) == 0;
    const QStringList ends = {QStringLiteral("\n"), QStringLiteral("\r\n"), QStringLiteral("\r")};
    style_.lineEnd = ends[pick(3)];
  }

  int pick(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }

  DecimalSign decimal() const { return style_.decimal; }

  Cell randomCell(const Field &field) {
    if (field.dimension == Dimension::kText) {
      return randomText();
    }
    return field.dimension == Dimension::kCount ? numberCell(1 + pick(2000000), 0)
                                                : numberCell(pick(1 << 20) + 1, pick(5));
  }

  QByteArray write(const std::vector<QStringList> &rows) {
    QString text;
    for (const QStringList &row : rows) {
      QStringList cells;
      for (const QString &cell : row) {
        cells << quotedAsNeeded(cell);
      }
      text += cells.join(style_.delimiter) + style_.lineEnd;
    }
    QStringEncoder encoder(style_.encoding, style_.withMark ? QStringConverter::Flag::WriteBom
                                                            : QStringConverter::Flag::Default);
    return encoder.encode(text);
  }

 private:
  Cell randomText() {
    static const QString kLetters = QStringLiteral("abcXYZ0189 .;|_-'/&\u00fc\u00e9\u00df");
    QString text;
    for (int length = 1 + pick(12); length > 0; --length) {
      text += kLetters[pick(static_cast<int>(kLetters.size()))];
    }
    text = text.trimmed();
    text = text.isEmpty() ? QStringLiteral("x") : text;
    const QString blanks = QStringLiteral(" ").repeated(pick(3));
    return {blanks + text + blanks, text, 0};
  }

  // whole / 10^decimals
  Cell numberCell(int whole, int decimals) {
    const QString digits = QString::number(whole).rightJustified(decimals + 1, QLatin1Char('0'));
    QString text = grouped(digits.left(digits.size() - decimals));
    const QString part = digits.right(decimals);
    text += decimals == 0 ? QString() : characterOf(style_.decimal) + part;
    const QString plain = digits.left(digits.size() - decimals) + QLatin1Char('.') + part + "0";
    return {text, {}, plain.toDouble()};
  }

  QString grouped(QString digits) const {
    for (qsizetype at = digits.size() - 3; at > 0; at -= 3) {
      digits.insert(at, style_.groupMark);
    }
    return digits;
  }

  QString quotedAsNeeded(const QString &cell) {
    if (!style_.quotesAll && !cell.contains(style_.delimiter)) {
      return cell;
    }
    return QLatin1Char('"') + QString(cell).replace("\"", "\"\"") + QLatin1Char('"');
  }

  std::mt19937 random_;
  Style style_;
};

// One random table of a kind, its columns in any order.
struct RandomTable {
  QByteArray bytes;
  std::vector<std::vector<Cell>> rows;
  DecimalSign decimal;
};

RandomTable makeTable(const TableKind &kind, unsigned seed) {
  TableWriter writer(seed);
  std::vector<std::size_t> order(kind.fields.size());
  for (std::size_t i = 0; i < order.size(); ++i) {
    order[i] = i;
    std::swap(order[i], order[static_cast<std::size_t>(writer.pick(static_cast<int>(i) + 1))]);
  }
  RandomTable table{{}, {}, writer.decimal()};
  std::vector<QStringList> written(1);
  for (const std::size_t field : order) {
    written[0] << QLatin1String(kind.fields[field].name);
  }
  for (int rows = 1 + writer.pick(8); rows > 0; --rows) {
    std::vector<Cell> cells;
    for (const Field &field : kind.fields) {
      cells.push_back(writer.randomCell(field));
    }
    QStringList row;
    for (const std::size_t field : order) {
      row << cells[field].text;
    }
    written.push_back(row);
    table.rows.push_back(cells);
  }
  table.bytes = writer.write(written);
  return table;
}

void expectField(const Field &field, const Cell &cell, std::string_view read) {
  const std::string text(read);
  if (field.dimension == Dimension::kText) {
    EXPECT_EQ(textFromBytes(text), cell.name);
  } else if (field.dimension == Dimension::kCount) {
    EXPECT_EQ(leadingInteger(text.c_str()), static_cast<qint32>(cell.number));
  } else {
    EXPECT_EQ(leadingNumber(text.c_str()), cell.number);
  }
}

void expectReadBack(const TableKind &kind, const RandomTable &table, QByteArray data) {
  QList<QByteArray> lines = data.split('\n');
  ASSERT_EQ(lines.size(), static_cast<qsizetype>(table.rows.size()) + 1);
  for (std::size_t i = 0; i < table.rows.size(); ++i) {
    FieldSplitter fields(lines[static_cast<qsizetype>(i)].data(), ',');
    for (std::size_t k = 0; k < kind.fields.size(); ++k) {
      const auto field = fields.next();
      ASSERT_TRUE(field);
      expectField(kind.fields[k], table.rows[i][k], *field);
    }
    EXPECT_FALSE(fields.next());
  }
}

class RandomTables : public testing::TestWithParam<std::size_t> {};

TEST_P(RandomTables, ReadBackToTheSameValues) {
  TableKind kind = tableKinds()[GetParam()];
  kind.sortedBy = -1;
  for (unsigned seed = 0; seed < 100; ++seed) {
    SCOPED_TRACE(seed);
    const RandomTable table = makeTable(kind, seed);
    TableRules rules;
    Conversion conversion = convertTable(table.bytes, kind, rules);
    if (!conversion.problems.empty()) {
      // Whoever cannot tell the sign asks; told, it must do.
      ASSERT_TRUE(conversion.problems[0].text.contains("name the sign"))
          << conversion.problems[0].text.toStdString();
      rules.decimal = table.decimal;
      conversion = convertTable(table.bytes, kind, rules);
    }
    ASSERT_TRUE(conversion.problems.empty()) << conversion.problems[0].text.toStdString();
    expectReadBack(kind, table, conversion.data);
  }
}

INSTANTIATE_TEST_SUITE_P(OfEveryKind, RandomTables, testing::Values(0, 1, 2));

}  // namespace
}  // namespace corvane::convert
