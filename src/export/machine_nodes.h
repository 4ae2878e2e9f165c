#pragma once

#include "export/import_file.h"
#include "export/model_data.h"

namespace corvane {

// Machines and their processes: one machine for each location and name of the cutters, with its
// time in every period, and one process for each cutter, which turns machine time into deckle.
//
//   addnode <type> "Machine" <name> "M_W1" <x> 10 <y> 210 <period> "1" <fixed> False <min> 0
//           <max> 7 <cost> 0 <overcost> +infinity       (one line; later periods: no coordinates)
//   addattach <node> "M_W1" <commodity> "Machine_Time" <in> False
//   addnode <type> "Process" <name> "Fine_W1_120" <x> 180 <y> 210 <period> "1"
//   addattach <node> "Fine_W1_120" <commodity> "Machine_Time" <in> True
//   addattach <node> "Fine_W1_120" <commodity> "Deckle120" <quantity> 500 <in> False
//   addarc <commodity> "Machine_Time" <from> "M_W1" <to> "Fine_W1_120" <flow> 0 <fixed> False
//          <opportunity> 0 <cost> 0 <min> 0 <max> +infinity

// Cutters of grades without orders are passed over, and a machine without another cutter too.
void writeMachineNodes(const ModelData &data, ImportFile &file);

// One cutter; counts the row of a cutter that is written. machineWritten tells, and is told,
// whether the machine of its group stands.
void writeCutterNodes(const ModelData &data, ImportFile &file, const Cutter &cutter, quint32 &row,
                      bool &machineWritten);

}  // namespace corvane
