#include "report/table.h"

#include <cmath>
#include <ostream>

#include "formats/csv_writer.h"
#include "report/html.h"

namespace corvane::report {

namespace {

Cell numberCell(double number, const QString &text) {
  Cell cell;
  cell.kind = Cell::Kind::kNumber;
  cell.number = number;
  cell.text = text;
  return cell;
}

// End tags that HTML lets out are left out: a page has tens of thousands of cells.
void appendHead(QByteArray &html, const Table &table) {
  html += "<thead><tr>";
  for (const Column &column : table.columns) {
    html += column.isNumber ? "<th scope=col>" : "<th scope=col class=t>";
    html += escaped(column.head);
  }
}

QByteArray contentOf(const Cell &cell) {
  const QByteArray text = escaped(cell.text);
  return cell.picture +
         (cell.link.isEmpty() ? text : "<a href=\"" + cell.link + "\">" + text + "</a>");
}

// Cells of numbers have no class: they are the most.
void appendCell(QByteArray &html, const Cell &cell, bool isPlain) {
  const QByteArray look(cell.look);
  const QByteArray looks = isPlain ? look : look.isEmpty() ? QByteArray("t") : "t " + look;
  html += "<td";
  if (!looks.isEmpty()) {
    html += looks.contains(' ') ? " class=\"" + looks + '"' : " class=" + looks;
  }
  html += '>';
  html += contentOf(cell);
}

void appendRow(QByteArray &html, const Table &table, const Row &row) {
  html += *row.look == '\0' ? QByteArray("\n<tr>") : QByteArray("\n<tr class=") + row.look + '>';
  html += "<th scope=row>" + contentOf(row.cells.front());
  for (std::size_t i = 1; i < row.cells.size(); ++i) {
    appendCell(html, row.cells[i], table.columns[i].isNumber || table.columns[i].isStyled);
  }
}

void appendBody(QByteArray &html, const Table &table, const std::vector<Row> &rows,
                const char *start) {
  if (rows.empty()) {
    return;
  }
  html += start;
  for (const Row &row : rows) {
    appendRow(html, table, row);
  }
}

QByteArray classOf(const Table &table) {
  constexpr std::size_t kSlim = 3;
  const char *const looks[] = {"sorted", "sorted long", "fixed"};
  const QByteArray look = looks[static_cast<int>(table.use)];
  return " class=\"" + look + (table.columns.size() <= kSlim ? " slim\"" : "\"");
}

}  // namespace

Cell Cell::ofText(const QString &text) {
  Cell cell;
  cell.kind = Kind::kText;
  cell.text = text;
  return cell;
}

Cell Cell::ofNumber(double number, int decimals) {
  return numberCell(number, grouped(number, decimals));
}

Cell Cell::ofCount(double number, int decimals) {
  return number == 0 ? Cell() : ofNumber(number, decimals);
}

Cell Cell::ofRolls(double number) {
  return numberCell(number, plain(std::round(10 * number) / 10));
}

Cell Cell::ofRollsIfAny(double number) {
  return number == 0 ? Cell() : ofRolls(number);
}

Cell Cell::ofWidth(double number) {
  return numberCell(number, plain(number));
}

Cell Cell::ofChange(double number, int decimals) {
  return numberCell(number, change(number, decimals));
}

Cell Cell::as(const char *theLook) const {
  Cell cell = *this;
  cell.look = theLook;
  return cell;
}

Cell Cell::with(const QByteArray &thePicture) const {
  Cell cell = *this;
  cell.picture = thePicture;
  return cell;
}

Cell Cell::to(const QByteArray &theLink) const {
  Cell cell = *this;
  cell.link = theLink;
  return cell;
}

QByteArray toHtml(const Table &table) {
  const QByteArray label = table.id + "-caption";
  // A wide table scrolls in a box of its own, which the keyboard reaches.
  QByteArray html = "<div class=box role=region tabindex=0 aria-labelledby=" + label +
                    ">\n<table id=" + table.id + classOf(table) + "><caption id=" + label + ">" +
                    escaped(table.caption) + "</caption>\n";
  appendHead(html, table);
  appendBody(html, table, table.totals, "\n<tbody class=total>");
  appendBody(html, table, table.rows, "\n<tbody>");
  return html + "</table></div>\n";
}

void writeCsv(const Table &table, std::ostream &out) {
  CsvWriter csv(out);
  for (const Column &column : table.columns) {
    csv.field(column.head);
  }
  csv.endRow();
  for (const Row &row : table.rows) {
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
      const Cell cell = i < row.cells.size() ? row.cells[i] : Cell();
      if (cell.kind == Cell::Kind::kNumber) {
        csv.field(cell.number);
      } else {
        csv.field(cell.text);
      }
    }
    csv.endRow();
  }
}

}  // namespace corvane::report
