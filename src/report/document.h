#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

namespace corvane::report {

// A part of a page that its head links to.
struct Section {
  QByteArray id;
  QByteArray name;  // of the link to it
  QByteArray html;
};

// What makes a page, around which all else is the same on every page.
struct Document {
  QString title;
  QString subtitle;
  QString version;  // of the program that made it
  int colors = 1;   // of roll widths
  QByteArray top;   // before the sections
  std::vector<Section> sections;
  QByteArray data;  // a block of data behind all that is shown, or nothing
};

// One HTML file that asks for nothing besides itself. Its content security policy allows only its
// own style and script, by their hashes.
QByteArray toHtml(const Document &document);

// One of the figures on top of a page. The look is a class of the style: plain, good, warn, bad.
QByteArray tile(const char *look, const QString &figure, const char *what, const QString &detail);

// A name of a folder as a title: "small_mill" is shown as "Small mill".
QString titleOf(const QString &name);

}  // namespace corvane::report
