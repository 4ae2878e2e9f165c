// Ordinary tables, as spreadsheets save them, into the data files of a mill.

#include <QFile>
#include <iostream>
#include <sstream>

#include "checks/check_run.h"
#include "convert/convert_files.h"
#include "core/text.h"
#include "programs/command_line.h"

namespace corvane {
namespace {

using convert::Request;

QString text(const char *words) {
  return QString::fromUtf8(words);
}

CommandLine commandLine() {
  return CommandLine(
      {text("corvane-convert"), text(""),
       text("Turns tables of machines, orders and freight rates (.csv, .txt, .xlsx) into the data\n"
            "files of a mill. Delimiter, decimal sign and encoding are found out where they are "
            "not\n"
            "told. What cannot be taken is an error with its row and column, and nothing is "
            "written."),
       0},
      {{{text("machines")}, text("FILE"), text("the table of cutters")},
       {{text("orders")}, text("FILE"), text("the table of orders")},
       {{text("freight")}, text("FILE"), text("the table of freight rates")},
       {{text("map")}, text("FILE"), text("which column is which field, and in what unit")},
       {{text("o"), text("output")},
        text("FOLDER"),
        text("the mill's folder; default: the folder it is started in")},
       {{text("force")}, {}, text("replace data files that are there already")},
       {{text("delimiter")}, text("NAME"), text("comma, semicolon, tab or bar, for all tables")},
       {{text("decimal")}, text("NAME"), text("point or comma, for all tables")},
       {{text("encoding")}, text("NAME"), text("UTF-8, UTF-16 or Latin-1, for all tables")},
       {{text("map-template")}, {}, text("show a map to start from, with comments")},
       {{text("quiet")}, {}, text("say only what is wrong")}});
}

// The map of the option, or nothing after saying what is wrong with it.
std::optional<convert::ColumnMap> readMapFile(const CommandLine &line) {
  if (!line.has(text("map"))) {
    return convert::ColumnMap();
  }
  const QString name = line.value(text("map"));
  QFile file(name);
  if (!file.open(QIODevice::ReadOnly)) {
    line.refuse(name + text(" cannot be read: ") + file.errorString(), std::cerr);
    return std::nullopt;
  }
  const convert::MapReading reading = convert::readMap(QString::fromUtf8(file.readAll()));
  for (const QString &fault : reading.faults) {
    std::cerr << utf8(name) << ": " << utf8(fault) << std::endl;
  }
  return reading.faults.isEmpty() ? std::optional(reading.map) : std::nullopt;
}

// Takes what the command line says of all tables; false after saying what is wrong with it.
bool takeTableOptions(const CommandLine &line, Request &request) {
  for (const QString &key : {text("delimiter"), text("decimal"), text("encoding")}) {
    for (const auto &[name, file] : request.tables) {
      if (!line.has(key)) {
        continue;
      }
      if (const auto why = convert::setTableRule(key, line.value(key), request.map[name])) {
        line.refuse(QStringLiteral("--%1: %2").arg(key, *why), std::cerr);
        return false;
      }
    }
  }
  return true;
}

std::optional<Request> requestOf(const CommandLine &line) {
  Request request;
  for (const convert::TableKind &kind : convert::tableKinds()) {
    const QString name = text(kind.name);
    if (line.has(name)) {
      request.tables[name] = line.value(name);
    }
  }
  if (request.tables.empty()) {
    line.refuse(text("No table is named."), std::cerr);
    return std::nullopt;
  }
  const auto map = readMapFile(line);
  if (!map) {
    return std::nullopt;
  }
  request.map = *map;
  request.folder = line.has(text("output")) ? line.value(text("output")) : text(".");
  request.force = line.has(text("force"));
  return takeTableOptions(line, request) ? std::optional(request) : std::nullopt;
}

// Lets the checker look at the mill with its new data. What it finds is told, and is no fault of
// the conversion.
void checkResult(const QString &folder, bool quiet) {
  checks::CheckOptions options;
  options.argument = utf8(folder);
  std::ostringstream found;
  std::ostringstream fault;
  const int status = checks::runCheck(options, found, fault);
  if (status == checks::kExitFindings || (status == checks::kExitClean && !quiet)) {
    std::cout << std::endl << found.str();
  } else if (status == checks::kExitNotChecked && !quiet) {
    std::cout << "Not checked yet: " << fault.str();
  }
}

int run(int argc, char **argv) {
  CommandLine line = commandLine();
  if (const auto status = line.parse(argc, argv, std::cout, std::cerr)) {
    return *status;
  }
  if (line.has(text("map-template"))) {
    std::cout << utf8(convert::mapTemplate());
    return 0;
  }
  const auto request = requestOf(line);
  if (!request) {
    return kExitUsage;
  }
  std::ostream silent(nullptr);
  const bool quiet = line.has(text("quiet"));
  if (!convertFiles(*request, quiet ? silent : std::cout, std::cerr)) {
    return 1;
  }
  checkResult(request->folder, quiet);
  return 0;
}

}  // namespace
}  // namespace corvane

int main(int argc, char **argv) {
  return corvane::run(argc, argv);
}
