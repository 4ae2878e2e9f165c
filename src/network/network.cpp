#include "network/network.h"

#include <algorithm>

namespace corvane::network {

namespace {

bool hasAttachment(const Node &node, Index commodity, bool in) {
  return std::any_of(node.attachments.begin(), node.attachments.end(),
                     [&](const Attachment &a) { return a.commodity == commodity && a.in == in; });
}

}  // namespace

bool Node::takes(Index commodity) const {
  return hasAttachment(*this, commodity, true);
}

bool Node::gives(Index commodity) const {
  return hasAttachment(*this, commodity, false);
}

Adjacency::Adjacency(const Network &network)
    : from_(group(network, &Arc::from)), into_(group(network, &Arc::to)) {}

// A counting sort, which keeps the order of the file.
Adjacency::Lists Adjacency::group(const Network &network, Index Arc::*end) {
  Lists lists;
  lists.start.assign(network.nodes.size() + 1, 0);
  for (const Arc &arc : network.arcs) {
    ++lists.start[arc.*end + 1];
  }
  for (std::size_t node = 0; node < network.nodes.size(); ++node) {
    lists.start[node + 1] += lists.start[node];
  }
  std::vector<Index> next(lists.start.begin(), lists.start.end() - 1);
  lists.arcs.resize(network.arcs.size());
  for (Index arc = 0; arc < network.arcs.size(); ++arc) {
    lists.arcs[next[network.arcs[arc].*end]++] = arc;
  }
  return lists;
}

}  // namespace corvane::network
