#pragma once

#include <QByteArray>
#include <vector>

#include "record/record.h"
#include "report/figures.h"
#include "report/table.h"

namespace corvane::report {

// What the sections are made of: the record and what is reckoned from it. Both must outlive it.
struct Subject {
  const record::Record &record;
  const Figures &figures;

  bool hasPlan() const { return record.plan.has_value(); }
};

// The tables of the page by section, in its order. Those that need a plan are left out without one.
std::vector<Table> trimTables(const Subject &subject);
Table machineTable(const Subject &subject);
std::vector<Table> widthTables(const Subject &subject);
Table laneTable(const Subject &subject);
std::vector<Table> recordTables(const Subject &subject);

// One table of patterns for each grade, to one scale; `usedOnly` leaves out what the plan does not
// use.
struct GradePatterns {
  QString grade;
  QString summary;
  Table table;
};
std::vector<GradePatterns> patternTables(const Subject &subject, bool usedOnly);

// The six figures on top; three without a plan.
QByteArray tiles(const Subject &subject);

// Sentences on what a planner should look at, worst first.
struct Attention {
  enum class Weight { kBad, kWarning, kNote };
  Weight weight = Weight::kNote;
  QString head;
  QString text;
};
std::vector<Attention> attention(const Subject &subject);

// The drawing's place in the page, with the nodes by kind and the largest flows in words.
QByteArray networkSection(const Subject &subject);
std::vector<Table> networkTables(const Subject &subject);

// This run beside the other: what a plan of `other` costs and uses more or less than one of `here`.
struct Comparison {
  QString summary;
  std::vector<Table> tables;
};
Comparison compare(const Subject &here, const Subject &other);

// "1" or "1, 2 and 4"
QString listed(const QStringList &names);

}  // namespace corvane::report
