#pragma once

#include <string>
#include <vector>

#include "checks/mill_index.h"

namespace corvane::checks {

// What was read, whatever was found.
struct CheckSummary {
  struct File {
    std::string name;
    qint64 lines;     // with a line break
    qint64 accepted;  // stored, or merged into one that is
    qint64 comments;  // and empty lines, of the parameter file
    qint64 dropped() const { return lines - accepted - comments; }
  };
  // A machine, or all of them together.
  struct Machine {
    std::string name;
    std::vector<double> days;  // that it needs at least, by period
  };

  std::vector<File> files;  // that could be opened
  std::vector<std::string> grades;
  std::vector<std::string> periods;
  double inches = 0;  // ordered: the log's "Total demand in inches"

  // Days of full deckles without any trim: a bound. A machine needs at least what the others cannot
  // make though they run nothing else; all together need at least what the grades take on their
  // best machines.
  int availableDays = 0;  // of one machine in a period
  std::vector<Machine> machines;
  Machine all;
  std::vector<std::string> customersWithoutWay;
};

CheckSummary summarize(const MillRecords &mill, const MillIndex &index);

}  // namespace corvane::checks
