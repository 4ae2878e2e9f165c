#pragma once

#include <QtGlobal>
#include <span>
#include <string>
#include <vector>

#include "network/warning.h"

namespace corvane::network {

// The network that an import file describes.
//
// Every node, arc and attachment exists in all periods. A period of a line says for which period
// its *data* hold: a period without a line of its own has the data of the last one before it that
// has one, else of the first that has one. A demanded amount alone is never carried over. A later
// line of the same thing and period replaces what an earlier one said.

// Nodes, arcs, commodities and periods are known by their place in the lists below.
using Index = quint32;
inline constexpr Index kNone = ~Index{0};

enum class CommodityKind { kDeckle, kWidth, kWaste, kMachineTime };

struct Commodity {
  std::string name;  // "Deckle121.5"
  CommodityKind kind{};
  double width = 0.0;  // in inches, of deckles and rolls
  Index line = 0;
};

enum class NodeType { kMachine, kProcess, kBatch, kStorage, kDelay, kDemand };

// What a node takes in (or gives) of a commodity; the quantity is for one run of a process, >= 0.
struct Attachment {
  Index commodity = kNone;
  bool in = false;
  double quantity = 1.0;
};

// A datum and the line that said it; line 0: it was carried over or is a default.
struct Datum {
  double value = 0.0;
  Index line = 0;
};
// One for each period.
using Series = std::vector<Datum>;

struct Node {
  std::string name;
  NodeType type{};
  Index line = 0;                       // where it was declared first
  Index set = kNone;                    // the last set it was put into, of setNames
  std::vector<Attachment> attachments;  // the yields of one width are one attachment
  Series days;                          // of a machine: the time it has
  Series dayCost;                       // of a machine: money a day
  Series storageMax;                    // of stores and orders: rolls kept from period to period
  Series undercost;                     // of orders: money for a roll that is not delivered
  Series amount;                        // of orders: rolls demanded; line 0: none
  Series delay;                         // of delays: periods from entering to leaving

  bool takes(Index commodity) const;
  bool gives(Index commodity) const;
};

// The data of an arc in a period.
struct ArcDatum {
  double cost = 0.0;
  // What the node that the arc leads to said of its delay where the arc's line stands.
  double delayWhenWritten = 0.0;
  Index line = 0;
};

struct Arc {
  Index commodity = kNone;
  Index from = kNone;
  Index to = kNone;
  Index line = 0;
};

struct Network {
  bool batch = false;  // the file asks for whole reels
  std::vector<Commodity> commodities;
  std::vector<std::string> periods;  // in the order of the file, which is that of time
  std::vector<std::string> setNames;
  std::vector<Node> nodes;
  std::vector<Arc> arcs;
  std::vector<ArcDatum> arcData;  // of arc a in period t at a * periods.size() + t
  std::vector<Warning> warnings;  // by line
  quint64 bytes = 0;              // of the file
  quint64 lines = 0;

  std::size_t periodCount() const { return periods.size(); }
  const ArcDatum &arcDatum(Index arc, std::size_t period) const {
    return arcData[arc * periods.size() + period];
  }
  double arcCost(Index arc, std::size_t period) const { return arcDatum(arc, period).cost; }
};

// The arcs of a network by the nodes that they leave and lead to. It is not kept in step: make it
// anew where arcs were added.
class Adjacency {
 public:
  explicit Adjacency(const Network &network);

  // In the order of the file. REQUIRES: a node that there was when this was made.
  std::span<const Index> from(Index node) const { return slice(from_, node); }
  std::span<const Index> into(Index node) const { return slice(into_, node); }

 private:
  struct Lists {
    std::vector<Index> start;
    std::vector<Index> arcs;
  };
  static Lists group(const Network &network, Index Arc::*end);
  static std::span<const Index> slice(const Lists &lists, Index node) {
    return {lists.arcs.data() + lists.start[node], lists.arcs.data() + lists.start[node + 1]};
  }

  Lists from_;
  Lists into_;
};

}  // namespace corvane::network
