// Node numbers that narrow the band: Cuthill-McKee from every node.
#pragma once

#include <vector>

#include "solver/node_graph.h"

namespace zema {

class WorkerPool;

/// `LCONE`: the neighbours of each node, sorted by their own numbers of neighbours (`NUMCO`). Equal numbers stay in the
/// order that the exchanges leave.
[[nodiscard]] IntegerLists sortByDegree(const IntegerLists& neighbours);

/// Numbers the nodes from every start by levels (Cuthill and McKee 1969) and takes the numbering with the narrowest
/// band, of the lowest start among equals. On entry BAND is the band of the deck's numbering (largest difference of
/// two neighbours), on return the best found. LPNINV: the old node at each new number, from 0; the identity when no
/// start is better than the deck. A mesh in pieces goes on from its lowest unnumbered node. Does not depend on the
/// number of threads in the pool.
[[nodiscard]] std::vector<int> OPTBAN(const IntegerLists& LCONE, int& BAND, WorkerPool& pool);

}  // namespace zema
