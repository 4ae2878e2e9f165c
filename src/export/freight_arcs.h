#pragma once

#include <iosfwd>

#include "export/import_file.h"
#include "export/model_data.h"

namespace corvane {

// The freight of an order: arcs from a cutter's storage node of its width to its own node, priced
// by the freight rate from the cutter's mill to the customer. With the delay setting every mode of
// transport has a node on the way that holds the goods for its delay.
//
//   addnode <type> "Delay" <name> "Rail_Fine_Acme_30.000" <x> 910 <y> 0 <periodstodelay> 1
//           <period> "1"                                  (later periods: no coordinates)
//   addattach <node> "Rail_Fine_Acme_30.000" <commodity> "DemandWidth30" <in> True
//   addattach <node> "Rail_Fine_Acme_30.000" <commodity> "DemandWidth30" <in> False
//   addarc <commodity> "DemandWidth30" <from> "Fine_W1_30.000" <to> "Rail_Fine_Acme_30.000"
//          <flow> 0 <fixed> False <opportunity> 0 <min> 0 <max> +infinity <period> "1" <cost> 1.5
//   addarc <commodity> "DemandWidth30" <from> "Rail_Fine_Acme_30.000" <to> "Fine_Acme_30.000" ...
//
// All five lines are repeated for every period. Without delays there is one arc a period, priced by
// the first mode.

// One cutter and one order; writes nothing unless their grades agree. Without a freight rate for
// customer and mill the log says so. Counts the delay row where delay nodes are written.
void writeOrderFreight(const ModelData &data, ImportFile &file, const Cutter &cutter,
                       const Order &order, quint32 &delayRow, std::ostream &log);

// The cost of shipping one roll of the order from the cutter's mill: the rate is per 2000 pounds. 0
// when there is no rate for the mode.
double freightCost(const ModelData &data, const Cutter &cutter, const Order &order,
                   const QString &mode);

}  // namespace corvane
