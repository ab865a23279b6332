// Node numbers that narrow the profile and the front: the numbering of the plane solids with KRENU = 2.
#pragma once

#include <vector>

#include "solver/node_graph.h"

namespace zema {

/// Levels of the nodes around a start: level 1 the start, each level the neighbours of the one before.
struct LevelStructure {
  int depth = 0;          ///< number of levels
  int width = 0;          ///< nodes of the most populous level
  std::vector<int> last;  ///< nodes of the last level, in the order of their discovery
};

/// `RENUM4`: the level structure of a node. Nodes of other pieces of the mesh are left out.
[[nodiscard]] LevelStructure RENUM4(const IntegerLists& NODAD, int start);

/// `RENUM2`: a node at the end of the mesh. From the first node on, goes to a node of the last level whose level
/// structure is deeper, or as deep and narrower, as long as there is one (Gibbs, Poole and Stockmeyer 1976).
[[nodiscard]] int RENUM2(const IntegerLists& NODAD);

/// `RENUM3` and `RENUM5`: numbers from the start, next always the active node that adds the fewest active nodes; among
/// equals the one with the lowest numbered neighbour, then the one met first (Hoit and Wilson 1983). Goes on from the
/// lowest unnumbered node when no node is active. Gives LPNTN, the new number of each node; both from 0.
[[nodiscard]] std::vector<int> RENUM3(const IntegerLists& NODAD, int start);

/// `RENUM0`: the whole method on the neighbours of the nodes, in the order of the element sweep (`RENUM1`).
[[nodiscard]] std::vector<int> RENUM0(const IntegerLists& NODAD);

}  // namespace zema
