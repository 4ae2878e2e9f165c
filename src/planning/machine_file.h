#pragma once

#include <QString>
#include <fstream>
#include <iosfwd>

#include "core/line_reader.h"
#include "planning/planning_data.h"

namespace corvane {

// The machine file: one cutter a line, "Location,Name,Grade,Width,Capacity,Lbs/Inch,WasteCost".
// Runs of commas count as one; there is no header and no comment.

// Opens the file on the unopened stream, fills the cutters, the cutter widths and the widest
// cutters, and closes it. A file that cannot be opened, or not be read to its
// end, ends the run. A cutter that is there already
// (location, name and grade) is dropped without a word, but its width still counts.
void readMachineFile(PlanningData &data, const QString &fileName, std::ifstream &file,
                     std::ostream &log);

// Reads the line that the reader stands on into the cutter. Each missing field gets a message on
// standard error and stays unset; an empty line leaves the cutter as it is.
void readCutter(LineReader &line, Cutter &cutter);

}  // namespace corvane
