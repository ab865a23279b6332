// Neighbours of the nodes, node by node over the elements that hold it.
#include "solver/node_graph.h"

#include <algorithm>
#include <cstdlib>

#include "foundation/errors.h"

namespace zema {

NodeGraph::NodeGraph(const IntegerLists& LNODS, int NPOIN, int most) {
  const IntegerLists elementsOf = transposed(LNODS, NPOIN);
  std::vector<int> seenFrom(static_cast<std::size_t>(NPOIN), -1);
  for (int node = 0; node < NPOIN; ++node) {
    seenFrom[static_cast<std::size_t>(node)] = node;
    for (const int e : elementsOf[node])
      for (const int other : LNODS[e]) {
        if (seenFrom[static_cast<std::size_t>(other)] == node) continue;
        seenFrom[static_cast<std::size_t>(other)] = node;
        neighbours.entries.push_back(other);
        BAND = std::max(BAND, std::abs(node - other));
        const int count = static_cast<int>(neighbours.entries.size()) - neighbours.first.back();
        if (count > most) throw RunEnd("MAX.NUM. CONECTIVITIES PER NODE EXCEEDED", most, count);
      }
    neighbours.close();
  }
}

}  // namespace zema
