#pragma once

#include "export/import_file.h"
#include "export/model_data.h"

namespace corvane {

// The storage of every cutter: a node for each demand width of its grade, grouped in a set with a
// block; then the waste nodes and the arcs that lead to both.
//
//   addnode <type> "StorageDemand" <name> "Fine_W1_30.000" <x> 710 <y> 0 <storagemax> 0
//           <period> "1"              (one line a period; later ones: no coordinates)
//   addattach <node> "Fine_W1_30.000" <commodity> "DemandWidth30" <in> True
//   addattach <node> "Fine_W1_30.000" <commodity> "DemandWidth30" <in> False
//   addnodetoset "Fine_W1" "Fine_W1_30.000"
//   blockset "Fine_W1"
//   addnode <type> "Block" <name> "Fine_W1" <capMan> False <openAtStart> True <shutdownBenefit> 0
//           <startupCost> 0 <x> 710 <y> 0 <fixedCost> 0 <operational> Ignore <capManFixed> False
//           <singlesource> False <sourcingChange> True <node> "None" <period> "1"

void writeStorageDemand(const ModelData &data, ImportFile &file);

// One cutter of a planned grade; counts the storage row.
void writeCutterStorage(const ModelData &data, ImportFile &file, const Cutter &cutter,
                        quint32 &storageRow);

// The line of a block node, for cutters and for orders; the period (quoted) may be empty.
void writeBlockNode(ImportFile &file, const std::string &name, int x, quint32 y,
                    const std::string &period);

}  // namespace corvane
