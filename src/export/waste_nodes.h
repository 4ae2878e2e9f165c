#pragma once

#include "export/import_file.h"
#include "export/model_data.h"

namespace corvane {

// Where the yields of the patterns go: the waste of a grade to its waste node, at the waste cost of
// the cutter, and each demand width to the cutter's storage node of that width.
//
//   addnode <type> "Demand" <name> "Fine_Waste" <x> 710 <y> 80 <amount> 0 <fixed> False
//           <period> "1"
//   addattach <node> "Fine_Waste" <commodity> "Waste" <in> True
//   addarc <commodity> "DemandWidth30" <from> "Fine_Pattern_0_W1_120" <to> "Fine_W1_30.000"
//          <flow> 0 <fixed> False <opportunity> 0 <cost> 0 <min> 0 <max> +infinity <period> "1"
//   addarc <commodity> "Waste" <from> "Fine_Pattern_0_W1_120" <to> "Fine_Waste" <flow> 0
//          <fixed> False <opportunity> 0 <cost> 0.5 <min> 0 <max> +infinity <period> "1"
//
// The arcs of the demand widths stand in the first period only, those of the waste in every one.

// The waste node of one grade; counts the storage row.
void writeWasteDemandNode(const ModelData &data, ImportFile &file, const QString &grade,
                          quint32 &storageRow);

// The arcs of all patterns of one cutter of a planned grade.
void writeCutterArcs(const ModelData &data, ImportFile &file, const Cutter &cutter);

}  // namespace corvane
