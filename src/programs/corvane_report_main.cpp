#include <iostream>

#include "programs/command_line.h"
#include "report/make_report.h"

namespace {

using namespace corvane;

CommandLine commandLine() {
  return {
      {QStringLiteral("corvane-report"), QStringLiteral("[FOLDER]"),
       QStringLiteral("Makes one page of a run and its plan that works offline.\n"
                      "FOLDER is that of the run, by default the present one; a run record or a "
                      "page\nwill do in its place. Of a study, all runs on one page."),
       1},
      {{{QStringLiteral("o"), QStringLiteral("output")},
        QStringLiteral("PAGE"),
        QStringLiteral("the page (default: report.html beside the import file)")},
       {{QStringLiteral("plan")},
        QStringLiteral("FILE"),
        QStringLiteral("the plan (default: plan/plan.json beside the import file)")},
       {{QStringLiteral("with")},
        QStringLiteral("RUN"),
        QStringLiteral("compare with another run: a folder, a record or a page")},
       {{QStringLiteral("record")},
        QStringLiteral("FILE"),
        QStringLiteral("write the run record to a file too")},
       {{QStringLiteral("csv")},
        QStringLiteral("DIR"),
        QStringLiteral("write the tables as CSV files too")},
       {{QStringLiteral("extract")},
        QStringLiteral("PAGE"),
        QStringLiteral("write the record in a page to standard output, or to the --record file")},
       {{QStringLiteral("used-only")},
        QString(),
        QStringLiteral("leave out patterns that the plan does not use")}}};
}

}  // namespace

int main(int argc, char **argv) {
  CommandLine line = commandLine();
  if (const auto status = line.parse(argc, argv, std::cout, std::cerr)) {
    return *status;
  }
  const auto value = [&](const char *option) { return line.value(QLatin1String(option)); };
  if (line.has(QStringLiteral("extract"))) {
    if (!line.arguments().isEmpty()) {
      return line.refuse(QStringLiteral("--extract takes no folder."), std::cerr);
    }
    return report::extractRecord(value("extract"), value("record"), std::cout, std::cerr);
  }
  const report::Request request{line.arguments().value(0),
                                value("output"),
                                value("plan"),
                                value("with"),
                                value("record"),
                                value("csv"),
                                line.has(QStringLiteral("used-only"))};
  return report::makeReport(request, QStringLiteral(CORVANE_VERSION), std::cout, std::cerr);
}
