#pragma once

#include <QLinkedList>
#include <iosfwd>

#include "export/import_file.h"
#include "export/model_data.h"

namespace corvane {

// The demand of the customers: a node for each grade, customer and width, with the ordered amount
// in its period, grouped for each grade and customer in a set with a block; between them the
// freight (see freight_arcs.h).
//
//   addnode <type> "StorageDemand" <name> "Fine_Acme_30.000" <x> 1200 <y> 0 <undercost> 50000
//           <storagemax> 0 <demandamount> 12 <period> "1"      (later periods: no coordinates)
//   addattach <node> "Fine_Acme_30.000" <commodity> "DemandWidth30" <in> True
//   addnodetoset "Fine_Acme" "Fine_Acme_30.000"
//   addnode <type> "StorageDemand" <name> "Fine_Acme_30.000" <undercost> 50000 <storagemax> 0
//           <period> "1"                                       (once for every period)
//   blockset "Fine_Acme"
//   addnode <type> "Block" <name> "Fine_Acme" ... <node> "None"          (no period)

// An ordered set of names, which it owns. The names have their quotes, and sort so.
class NameSet {
 public:
  explicit NameSet(StrComp &order);

  // False when the name is there already.
  bool insert(const QString &name);
  const skipList<QString> &names() const { return names_; }

 private:
  QLinkedList<QString> storage_;
  skipList<QString> names_;
};

// The log takes the freight rates that are missing. Gives the demanded inches: quantity times width
// of every order.
double writeBlocks(const ModelData &data, ImportFile &file, std::ostream &log);

// The demand of one order; true when its node is new.
bool writeOrderStorage(const ModelData &data, ImportFile &file, const Order &order,
                       NameSet &orderNodes, NameSet &orderSets, quint32 blockRow);

}  // namespace corvane
