#include "convert/table.h"

#include <algorithm>

namespace corvane::convert {

namespace {

constexpr QLatin1Char kQuote('"');

bool isLineEnd(QChar character) {
  return character == QLatin1Char('\n') || character == QLatin1Char('\r');
}

class Parser {
 public:
  Parser(const QString &text, QChar delimiter) : text_(text), delimiter_(delimiter) {}

  Table parse() {
    while (!atEnd() && !table_.fault) {
      parseRow();
    }
    return std::move(table_);
  }

 private:
  bool atEnd() const { return at_ == text_.size(); }
  QChar here() const { return text_[at_]; }

  void parseRow() {
    TableRow row;
    row.line = line_;
    bool isMore = true;
    while (isMore && !table_.fault) {
      row.cells.append(parseCell());
      isMore = !atEnd() && here() == delimiter_;
      at_ += isMore ? 1 : 0;
    }
    takeLineEnd();
    const bool isEmpty = std::all_of(row.cells.begin(), row.cells.end(),
                                     [](const QString &cell) { return cell.trimmed().isEmpty(); });
    if (!isEmpty && !table_.fault) {
      table_.rows.push_back(std::move(row));
    }
  }

  QString parseCell() { return !atEnd() && here() == kQuote ? parseQuoted() : parsePlain(); }

  QString parsePlain() {
    const qsizetype begin = at_;
    while (!atEnd() && here() != delimiter_ && !isLineEnd(here())) {
      ++at_;
    }
    return text_.mid(begin, at_ - begin);
  }

  QString parseQuoted() {
    const int openedAt = line_;
    QString cell;
    for (++at_; !atEnd(); ++at_) {
      if (here() == kQuote) {
        ++at_;
        if (atEnd() || here() != kQuote) {
          return closed(std::move(cell));
        }
      }
      line_ += here() == QLatin1Char('\n') ? 1 : 0;
      cell += here();
    }
    table_.fault = {openedAt, QStringLiteral("a quote is opened and never closed")};
    return cell;
  }

  // Behind a closing quote.
  QString closed(QString cell) {
    if (!atEnd() && here() != delimiter_ && !isLineEnd(here())) {
      table_.fault = {line_, QStringLiteral("text stands behind a closing quote")};
    }
    return cell;
  }

  void takeLineEnd() {
    if (!atEnd() && here() == QLatin1Char('\r')) {
      ++at_;
      if (!atEnd() && here() == QLatin1Char('\n')) {
        ++at_;
      }
    } else if (!atEnd() && here() == QLatin1Char('\n')) {
      ++at_;
    }
    ++line_;
  }

  const QString &text_;
  QChar delimiter_;
  qsizetype at_ = 0;
  int line_ = 1;
  Table table_;
};

}  // namespace

Table parseTable(const QString &text, QChar delimiter) {
  return Parser(text, delimiter).parse();
}

}  // namespace corvane::convert
