#pragma once

#include <QByteArray>
#include <vector>

#include "report/study_record.h"
#include "report/table.h"

namespace corvane::report {

// The page of a study: all runs, best first, what each setting is worth, and the best run beside
// the worst and the pooled patterns. It leads to the folders of the runs and to the pages that
// compare two of them, beside which it must stand.
QByteArray studyPage(const StudyRecord &study, const QString &version);

// Every table of the page, for CSV files.
std::vector<Table> studyTables(const StudyRecord &study);

}  // namespace corvane::report
