#include "convert/conversion.h"

#include <algorithm>

#include "convert/cell_conversion.h"
#include "convert/delimiter.h"
#include "convert/natural_order.h"

namespace corvane::convert {

namespace {

// The program skips lines that are longer.
constexpr qsizetype kLongestLine = 1023;

// One row as it goes into the data file.
struct OutputRow {
  QByteArray line;
  QString sortKey;
};

// Converts one table, keeping what it finds out and what stands in the way.
class TableConversion {
 public:
  TableConversion(const TableKind &kind, const TableRules &rules) : kind_(kind), rules_(rules) {}

  Conversion convert(const QByteArray &bytes) {
    if (const auto text = decodeBytes(bytes); text && splitText(*text) && findDecimalSign()) {
      convertRows();
      writeRows();
    }
    if (!result_.problems.empty()) {
      result_.data.clear();
    }
    return std::move(result_);
  }

 private:
  void object(int line, int column, const QString &text) {
    result_.problems.push_back({line, column, text});
  }

  std::optional<QString> decodeBytes(const QByteArray &bytes) {
    const auto decoded = decode(bytes, rules_.encoding);
    if (!decoded) {
      object(0, 0, QStringLiteral("the bytes are no text in this encoding"));
      return std::nullopt;
    }
    if (decoded->encoding != Encoding::kUtf8) {
      result_.notes << QStringLiteral("encoding %1").arg(nameOf(decoded->encoding));
    }
    return decoded->text;
  }

  // False when the columns cannot be found.
  bool splitText(const QString &text) {
    auto split = splitTable(text, kind_, rules_);
    if (!split) {
      object(0, 0, QStringLiteral("the delimiter cannot be told from the rows; name it"));
      return false;
    }
    split_ = std::move(*split);
    result_.notes << QStringLiteral("delimiter %1").arg(nameOfDelimiter(split_.delimiter));
    if (split_.table.fault) {
      object(split_.table.fault->line, 0, split_.table.fault->text);
    }
    if (split_.table.rows.empty()) {
      object(0, 0, QStringLiteral("the table is empty"));
    } else if (!split_.columns.faults.isEmpty()) {
      objectToColumns();
    }
    noteConversions();
    return result_.problems.empty();
  }

  void noteConversions() {
    if (split_.headerRow > 0) {
      result_.notes
          << QStringLiteral("header in line %1").arg(split_.table.rows[split_.headerRow].line);
    }
    for (const FieldSource &source : split_.columns.sources) {
      if (!source.unit.isOwn) {
        result_.notes << QStringLiteral("%1 converted").arg(QLatin1String(source.field->name));
      }
    }
  }

  void objectToColumns() {
    const TableRow &header = split_.table.rows[split_.headerRow];
    for (const QString &fault : split_.columns.faults) {
      object(header.line, 0, QStringLiteral("no column for ") + fault);
    }
    if (rules_.hasHeader) {
      object(header.line, 0,
             QStringLiteral("the columns are: ") + header.cells.join(QLatin1String(" | ")));
    }
  }

  std::size_t firstRow() const { return rules_.hasHeader ? split_.headerRow + 1 : 0; }

  DecimalEvidence gatherFromNumbers() const {
    DecimalEvidence evidence;
    for (std::size_t i = firstRow(); i < split_.table.rows.size(); ++i) {
      const TableRow &row = split_.table.rows[i];
      for (const FieldSource &source : split_.columns.sources) {
        if (isNumeric(source.field->dimension) && source.column >= 0) {
          gatherEvidence({cellOf(row, source), row.line, source.column + 1}, evidence);
        }
      }
    }
    return evidence;
  }

  static QString cellOf(const TableRow &row, const FieldSource &source) {
    if (source.column < 0) {
      return source.constant;
    }
    return source.column < row.cells.size() ? row.cells[source.column] : QString();
  }

  // False when the numbers do not tell.
  bool findDecimalSign() {
    if (rules_.decimal) {
      decimal_ = *rules_.decimal;
      return true;
    }
    const DecimalEvidence evidence = gatherFromNumbers();
    if (evidence.forPoint && evidence.forComma) {
      objectToSign(*evidence.forPoint, QStringLiteral("needs a decimal point, and others a comma"));
      objectToSign(*evidence.forComma, QStringLiteral("needs a decimal comma, and others a point"));
      return false;
    }
    if (!evidence.forPoint && !evidence.forComma && evidence.ambiguous) {
      objectToSign(*evidence.ambiguous, QStringLiteral("can have a decimal point or comma"));
      return false;
    }
    takeDecimalSign(evidence);
    return true;
  }

  void objectToSign(const SeenNumber &number, const QString &why) {
    object(number.line, number.column,
           QStringLiteral("\"%1\" %2; name the sign").arg(number.text, why));
  }

  void takeDecimalSign(const DecimalEvidence &evidence) {
    decimal_ = evidence.forComma ? DecimalSign::kComma : DecimalSign::kPoint;
    if (evidence.forComma || evidence.forPoint) {
      result_.notes << (evidence.forComma ? QStringLiteral("decimal comma")
                                          : QStringLiteral("decimal point"));
    }
  }

  void convertRows() {
    for (std::size_t i = firstRow(); i < split_.table.rows.size(); ++i) {
      convertRow(split_.table.rows[i]);
    }
    if (rows_.empty() && result_.problems.empty()) {
      object(0, 0, QStringLiteral("there is no row below the header"));
    }
  }

  void convertRow(const TableRow &row) {
    QByteArrayList fields;
    for (const FieldSource &source : split_.columns.sources) {
      // Constants come from the map, which has its own sign.
      const DecimalSign sign = source.column < 0 ? DecimalSign::kPoint : decimal_;
      const ConvertedCell cell = convertCell(cellOf(row, source), source, sign);
      if (!cell.problem.isEmpty()) {
        object(row.line, source.column + 1,
               QStringLiteral("%1 %2").arg(QLatin1String(source.field->name), cell.problem));
      }
      fields.append(cell.text);
    }
    const QByteArray line = fields.join(',');
    if (line.size() > kLongestLine) {
      object(row.line, 0, QStringLiteral("the row has more than %1 bytes").arg(kLongestLine));
    }
    rows_.push_back(
        {line, kind_.sortedBy < 0 ? QString() : QString::fromUtf8(fields[kind_.sortedBy])});
  }

  void writeRows() {
    const auto inOrder = [](const OutputRow &a, const OutputRow &b) {
      return compareNaturally(a.sortKey, b.sortKey) < 0;
    };
    if (!std::is_sorted(rows_.begin(), rows_.end(), inOrder)) {
      std::stable_sort(rows_.begin(), rows_.end(), inOrder);
      result_.notes << QStringLiteral("sorted by %1")
                           .arg(QLatin1String(
                               kind_.fields[static_cast<std::size_t>(kind_.sortedBy)].name));
    }
    for (const OutputRow &row : rows_) {
      result_.data += row.line;
      result_.data += '\n';
    }
    result_.rows = static_cast<int>(rows_.size());
  }

  const TableKind &kind_;
  const TableRules &rules_;
  SplitTable split_;
  DecimalSign decimal_ = DecimalSign::kPoint;
  std::vector<OutputRow> rows_;
  Conversion result_;
};

}  // namespace

Conversion convertTable(const QByteArray &bytes, const TableKind &kind, const TableRules &rules) {
  return TableConversion(kind, rules).convert(bytes);
}

}  // namespace corvane::convert
