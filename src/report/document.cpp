#include "report/document.h"

#include <QCryptographicHash>

#include "report/html.h"
#include "report/page_assets.h"
#include "report/palette.h"

namespace corvane::report {

namespace {

QByteArray hashOf(const QByteArray &text) {
  return "'sha256-" + QCryptographicHash::hash(text, QCryptographicHash::Sha256).toBase64() + "'";
}

// The style with so many colors of widths.
QByteArray style(int colors) {
  QByteArray css(kPageStyle);
  int number = 0;
  for (const Color &color : widthColors(colors)) {
    css += ".c" + QByteArray::number(number++) + "{stroke:" + toHex(color) + "}\n";
  }
  return css;
}

QByteArray header(const Document &document) {
  QByteArray html = "<a class=skip href=#main>Skip to the figures</a>\n<header><h1>" +
                    escaped(document.title) + "</h1><p>" + escaped(document.subtitle) +
                    "</p>\n<nav aria-label=Sections><ul>\n";
  for (const Section &section : document.sections) {
    html += "<li><a href=#" + section.id + ">" + section.name + "</a>\n";
  }
  return html + "</ul></nav></header>\n";
}

QByteArray body(const Document &document) {
  QByteArray html = document.top;
  for (const Section &section : document.sections) {
    html += "<section id=" + section.id + ">" + section.html + "</section>\n";
  }
  return html;
}

}  // namespace

QByteArray tile(const char *look, const QString &figure, const char *what, const QString &detail) {
  return QByteArray("<li class=") + look + "><b>" + escaped(figure) + "</b><span>" + what +
         "</span><small>" + escaped(detail) + "</small>\n";
}

QString titleOf(const QString &name) {
  QString title = name.isEmpty() ? QStringLiteral("Run") : name;
  title.replace(QLatin1Char('_'), QLatin1Char(' '));
  return title.left(1).toUpper() + title.mid(1);
}

QByteArray toHtml(const Document &document) {
  const QByteArray css = style(document.colors);
  const QByteArray script(kPageScript);
  const QByteArray version = escaped(document.version);
  return "<!DOCTYPE html>\n<html lang=en>\n<head>\n<meta charset=utf-8>\n"
         "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src " +
         hashOf(css) + "; script-src " + hashOf(script) +
         "; base-uri 'none'; form-action 'none'\">\n"
         "<meta name=viewport content=\"width=device-width, initial-scale=1\">\n"
         "<meta name=color-scheme content=\"light dark\">\n"
         "<meta name=generator content=\"corvane-report " +
         version + "\">\n<title>" + escaped(document.title) + "</title>\n<style>" + css +
         "</style>\n</head>\n<body>\n" + header(document) + "<main id=main>\n" + body(document) +
         "</main>\n<footer><p>Made by corvane-report " + version +
         ". This page asks for nothing from anywhere; all it shows is in this "
         "file.</p></footer>\n" +
         document.data + "\n<script>" + script + "</script>\n</body>\n</html>\n";
}

}  // namespace corvane::report
