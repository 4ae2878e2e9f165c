#pragma once

#include <QString>
#include <fstream>
#include <iosfwd>

#include "core/line_reader.h"
#include "planning/planning_data.h"

namespace corvane {

// The freight rate file: one rate a line, "customer,mill,mode,rate,delay". Runs of commas count as
// one; there is no header and no comment.

// Opens the file on the unopened stream, fills the freight rates, and closes it. A file that cannot
// be opened, or not be read to its end, ends the run. Of two rates for the same customer, mill and
// mode the first stays, and the other is reported on standard output.
void readFreightRateFile(PlanningData &data, const QString &fileName, std::ifstream &file,
                         std::ostream &log);

// Reads the line that the reader stands on into the rate. Missing fields stay unset, in silence.
void readFreightRate(LineReader &line, FreightRate &rate);

}  // namespace corvane
