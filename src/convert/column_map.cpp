#include "convert/column_map.h"

#include <QRegularExpression>
#include <algorithm>

namespace corvane::convert {

namespace {

const TableKind *kindNamed(const QString &name) {
  for (const TableKind &kind : tableKinds()) {
    if (name == QLatin1String(kind.name)) {
      return &kind;
    }
  }
  return nullptr;
}

const Field *fieldNamed(const TableKind &kind, const QString &name) {
  for (const Field &field : kind.fields) {
    if (name == QLatin1String(field.name)) {
      return &field;
    }
  }
  return nullptr;
}

QStringList fieldNames(const TableKind &kind) {
  QStringList names;
  for (const Field &field : kind.fields) {
    names << QLatin1String(field.name);
  }
  return names;
}

using Objection = std::optional<QString>;

Objection setUnit(const Field &field, const QString &value, FieldRule &rule) {
  rule.unit = unitNamed(field.dimension, value);
  if (rule.unit) {
    return std::nullopt;
  }
  const QStringList known = unitNames(field.dimension);
  return known.isEmpty() ? QStringLiteral("this field has no unit")
                         : QStringLiteral("the units are ") + known.join(QLatin1String(", "));
}

Objection setRounding(const QString &value, FieldRule &rule) {
  bool valid = false;
  const double step = value.toDouble(&valid);
  if (!valid || !(step > 0)) {
    return QStringLiteral("a number above 0 is wanted");
  }
  rule.roundTo = step;
  return std::nullopt;
}

// Takes "width", "width.unit", "width.constant" and "width.round".
Objection setFieldRule(const TableKind &kind, const QString &key, const QString &value,
                       TableRules &rules) {
  const QString name = key.section(QLatin1Char('.'), 0, 0);
  const QString what = key.section(QLatin1Char('.'), 1);
  const Field *field = fieldNamed(kind, name);
  if (field == nullptr) {
    return QStringLiteral("the keys are %1 and delimiter, decimal, encoding, header, sheet")
        .arg(fieldNames(kind).join(QLatin1String(", ")));
  }
  FieldRule &rule = rules.fields[name];
  if (what.isEmpty()) {
    rule.column = value;
    return std::nullopt;
  }
  if (what == QLatin1String("constant")) {
    rule.constant = value;
    return std::nullopt;
  }
  if (what == QLatin1String("unit")) {
    return setUnit(*field, value, rule);
  }
  if (what == QLatin1String("round")) {
    return setRounding(value, rule);
  }
  return QStringLiteral("behind a field's name stands .unit, .constant or .round");
}

Objection setDelimiter(const QString &value, TableRules &rules) {
  static const std::map<QString, QChar> kNames = {{QStringLiteral("comma"), QLatin1Char(',')},
                                                  {QStringLiteral("semicolon"), QLatin1Char(';')},
                                                  {QStringLiteral("tab"), QLatin1Char('\t')},
                                                  {QStringLiteral("bar"), QLatin1Char('|')}};
  const auto found = kNames.find(value.toLower());
  if (found == kNames.end()) {
    return QStringLiteral("it is comma, semicolon, tab or bar");
  }
  rules.delimiter = found->second;
  return std::nullopt;
}

Objection setDecimal(const QString &value, TableRules &rules) {
  if (value != QLatin1String("point") && value != QLatin1String("comma")) {
    return QStringLiteral("it is point or comma");
  }
  rules.decimal = value == QLatin1String("point") ? DecimalSign::kPoint : DecimalSign::kComma;
  return std::nullopt;
}

Objection setEncoding(const QString &value, TableRules &rules) {
  rules.encoding = encodingNamed(value);
  return rules.encoding ? Objection() : QStringLiteral("it is UTF-8, UTF-16 or Latin-1");
}

Objection setHeader(const QString &value, TableRules &rules) {
  if (value != QLatin1String("yes") && value != QLatin1String("no")) {
    return QStringLiteral("it is yes or no");
  }
  rules.hasHeader = value == QLatin1String("yes");
  return std::nullopt;
}

Objection setSheet(const QString &value, TableRules &rules) {
  rules.sheet = value.toInt();
  return rules.sheet >= 1 ? Objection() : QStringLiteral("sheets are counted from 1");
}

bool isTableKey(const QString &key) {
  static const QStringList kKeys = {QStringLiteral("delimiter"), QStringLiteral("decimal"),
                                    QStringLiteral("encoding"), QStringLiteral("header"),
                                    QStringLiteral("sheet")};
  return kKeys.contains(key);
}

// Reads a map line by line, within its sections.
class MapReader {
 public:
  MapReading read(const QString &text) {
    for (const QString &line : text.split(QLatin1Char('\n'))) {
      ++number_;
      readLine(line.trimmed());
    }
    return std::move(reading_);
  }

 private:
  void readLine(const QString &line) {
    if (line.isEmpty() || line.startsWith(QLatin1Char('#'))) {
      return;
    }
    if (line.startsWith(QLatin1Char('[')) && line.endsWith(QLatin1Char(']'))) {
      openSection(line.mid(1, line.size() - 2).trimmed());
    } else {
      readPair(line);
    }
  }

  void openSection(const QString &name) {
    kind_ = kindNamed(name);
    if (kind_ == nullptr) {
      object(QStringLiteral("there is no section [%1]; they are [machines], [orders], [freight]")
                 .arg(name));
    }
  }

  void readPair(const QString &line) {
    const qsizetype at = line.indexOf(QLatin1Char('='));
    if (at < 0 || kind_ == nullptr) {
      object(at < 0 ? QStringLiteral("no \"=\" in %1").arg(quoted(line))
                    : QStringLiteral("this stands in no section"));
      return;
    }
    const QString key = line.left(at).trimmed();
    const QString value = line.mid(at + 1).trimmed();
    TableRules &rules = reading_.map[QLatin1String(kind_->name)];
    const Objection objection =
        isTableKey(key) ? setTableRule(key, value, rules) : setFieldRule(*kind_, key, value, rules);
    if (objection) {
      object(QStringLiteral("%1: %2").arg(key, *objection));
    }
  }

  void object(const QString &why) {
    reading_.faults << QStringLiteral("line %1: %2").arg(number_).arg(why);
  }

  MapReading reading_;
  const TableKind *kind_ = nullptr;
  int number_ = 0;
};

// A column found for a field, with the unit that its name holds.
struct Match {
  int column;
  std::optional<Unit> unit;
};

// Whether a column's name is one that the field is known by, alone or with a unit behind it.
std::optional<Match> matchKnownName(const Field &field, const QString &name, int column) {
  const QString plain = plainName(name);
  for (const char *known : field.knownAs) {
    if (plain == QLatin1String(known)) {
      return Match{column, std::nullopt};
    }
    for (const QString &unit : unitNames(field.dimension)) {
      if (plain == QLatin1String(known) + plainName(unit)) {
        return Match{column, unitNamed(field.dimension, unit)};
      }
    }
  }
  return std::nullopt;
}

// Resolves the fields of one table, one after the other.
class Resolver {
 public:
  Resolver(const TableRules &rules, const QStringList &header) : rules_(rules), header_(header) {}

  ResolvedColumns resolve(const TableKind &kind) {
    for (const Field &field : kind.fields) {
      FieldSource source;
      source.field = &field;
      if (resolveField(field, source)) {
        ++resolved_.found;
      }
      resolved_.sources.push_back(source);
    }
    return std::move(resolved_);
  }

 private:
  bool resolveField(const Field &field, FieldSource &source) {
    const auto found = rules_.fields.find(QLatin1String(field.name));
    const FieldRule rule = found == rules_.fields.end() ? FieldRule() : found->second;
    source.unit = rule.unit.value_or(Unit());
    source.roundTo = rule.roundTo;
    if (rule.constant) {
      source.constant = *rule.constant;
      return true;
    }
    const auto match = rule.column.isEmpty() ? findKnown(field) : findNamed(field, rule.column);
    if (!match) {
      return false;
    }
    source.column = match->column;
    source.unit = rule.unit.value_or(match->unit.value_or(Unit()));
    return true;
  }

  std::optional<Match> findNamed(const Field &field, const QString &column) {
    static const QRegularExpression kNumber(QStringLiteral("^#([0-9]{1,4})$"));
    if (const auto number = kNumber.match(column); number.hasMatch()) {
      const int index = number.captured(1).toInt() - 1;
      return index >= 0 ? std::optional(Match{index, std::nullopt})
                        : fail(field, QStringLiteral("columns are counted from 1"));
    }
    std::vector<int> columns;
    for (int i = 0; i < header_.size(); ++i) {
      if (header_[i].simplified().compare(column.simplified(), Qt::CaseInsensitive) == 0) {
        columns.push_back(i);
      }
    }
    if (columns.size() == 1) {
      return Match{columns.front(), std::nullopt};
    }
    return fail(field, columns.empty()
                           ? QStringLiteral("no column is called %1").arg(quoted(column))
                           : QStringLiteral("several columns are called %1").arg(quoted(column)));
  }

  std::optional<Match> findKnown(const Field &field) {
    std::vector<Match> matches;
    QStringList names;
    for (int i = 0; rules_.hasHeader && i < header_.size(); ++i) {
      if (const auto match = matchKnownName(field, header_[i], i)) {
        matches.push_back(*match);
        names << quoted(header_[i]);
      }
    }
    if (matches.size() == 1) {
      return matches.front();
    }
    return fail(field, matches.empty()
                           ? QStringLiteral("no column has a name that is known for it")
                           : QStringLiteral("it could be ") + names.join(QLatin1String(" or ")));
  }

  std::optional<Match> fail(const Field &field, const QString &why) {
    resolved_.faults << QStringLiteral("%1: %2").arg(QLatin1String(field.name), why);
    return std::nullopt;
  }

  const TableRules &rules_;
  const QStringList &header_;
  ResolvedColumns resolved_;
};

QString templateOf(const TableKind &kind) {
  QString text = QStringLiteral("\n[%1]\n").arg(QLatin1String(kind.name));
  for (const Field &field : kind.fields) {
    const QStringList units = unitNames(field.dimension);
    text += QStringLiteral("# %1").arg(QLatin1String(field.meaning));
    text +=
        units.isEmpty() ? QString() : QStringLiteral("; units: ") + units.join(QLatin1String(", "));
    text += QStringLiteral("\n#%1 = %1\n").arg(QLatin1String(field.name));
    text += units.isEmpty()
                ? QString()
                : QStringLiteral("#%1.unit = %2\n").arg(QLatin1String(field.name), units.front());
  }
  return text;
}

}  // namespace

MapReading readMap(const QString &text) {
  return MapReader().read(text);
}

std::optional<QString> setTableRule(const QString &key, const QString &value, TableRules &rules) {
  static const std::map<QString, Objection (*)(const QString &, TableRules &)> kSetters = {
      {QStringLiteral("delimiter"), setDelimiter}, {QStringLiteral("decimal"), setDecimal},
      {QStringLiteral("encoding"), setEncoding},   {QStringLiteral("header"), setHeader},
      {QStringLiteral("sheet"), setSheet},
  };
  return kSetters.at(key)(value, rules);
}

QString mapTemplate() {
  QString text = QStringLiteral(
      "# Which column of a table becomes which field of a data file. What is not said here is "
      "found\n"
      "# in the header line; take the \"#\" from a line's beginning to say it.\n"
      "#\n"
      "#   FIELD = COLUMN        the column of that name; \"#3\" is the third column\n"
      "#   FIELD.unit = UNIT     what the column's numbers are in; they are converted\n"
      "#   FIELD.round = 0.125   numbers are rounded to a multiple of this\n"
      "#   FIELD.constant = X    X in every row, and no column\n"
      "#\n"
      "# For a whole table, found out where it is not said:\n"
      "#   delimiter = comma     or semicolon, tab, bar\n"
      "#   decimal = point       or comma\n"
      "#   encoding = UTF-8      or UTF-16, Latin-1\n"
      "#   header = yes          or no: then every field needs a column number or a constant\n"
      "#   sheet = 1             which sheet of a workbook (.xlsx)\n");
  for (const TableKind &kind : tableKinds()) {
    text += templateOf(kind);
  }
  return text;
}

QString quoted(const QString &text) {
  return QLatin1Char('"') + text + QLatin1Char('"');
}

ResolvedColumns resolveColumns(const TableKind &kind, const TableRules &rules,
                               const QStringList &header) {
  return Resolver(rules, header).resolve(kind);
}

}  // namespace corvane::convert
