// Which nodes share an element, as the renumbering methods need it.
#pragma once

#include "solver/integer_lists.h"

namespace zema {

/// Nodes and elements of a mesh, both from 0.
struct NodeGraph {
  /// LNODS: the nodes of each element. Throws RunEnd when a node has more than `most` neighbours.
  NodeGraph(const IntegerLists& LNODS, int NPOIN, int most);

  /// Neighbours of each node without itself, in the order in which the sweep over the elements and over the ordered
  /// pairs of their nodes first meets them.
  IntegerLists neighbours;
  int BAND = 0;  ///< largest difference of the numbers of two neighbours
};

}  // namespace zema
