#pragma once

#include "export/import_file.h"
#include "export/model_data.h"

namespace corvane {

// The patterns: a process for each pattern of each cutter, which turns deckle into demand widths
// and waste; with the batch setting a batch node for each period before it, which models the
// set-up.
//
//   addnode <type> "Batch" <name> "Fine_Batch_0_W1_120" <singlePeriodSetups> True <x> 420 <y> 0
//           <flow> 0 <fixed> False <minrunlength> 0 <batchsize> 1 <setup> 0 <period> "1"
//   addattach <node> "Fine_Batch_0_W1_120" <commodity> "Deckle120" <in> True
//   addattach <node> "Fine_Batch_0_W1_120" <commodity> "Deckle120" <in> False
//   addnode <type> "Process" <name> "Fine_Pattern_0_W1_120" <x> 420 <y> 0 <period> "1"
//   addattach <node> "Fine_Pattern_0_W1_120" <commodity> "Deckle120" <in> True <quantity> -1
//   addattach <node> "Fine_Pattern_0_W1_120" <commodity> "DemandWidth30" <in> False <quantity> 4
//   addattach <node> "Fine_Pattern_0_W1_120" <commodity> "Waste" <in> False <quantity> 0
//   addarc <commodity> "Deckle120" <from> "Fine_W1_120" <to> "Fine_Pattern_0_W1_120" <flow> 0
//          <fixed> False <opportunity> 0 <cost> 10 <min> 0 <max> +infinity <period> "1"
//
// The arc into a pattern runs from its batch node, at no cost and in the first period only, where
// there is one; the batch node is fed from the cutter then. A patterns-only model has neither batch
// nodes nor arcs.

void writePatternNodes(const ModelData &data, ImportFile &file);

// The patterns of one cutter of a planned grade; counts a row for each.
void writeCutterPatterns(const ModelData &data, ImportFile &file, const Cutter &cutter,
                         quint32 &row);

}  // namespace corvane
