// Order of elimination that keeps the factors of a sparse matrix small.
#pragma once

#include <vector>

#include "solver/equation_groups.h"

namespace zema {

/// Place of each equation in the order of elimination, from 1, by nested dissection of the graph of the groups (Karypis
/// and Kumar 1998), each group as heavy as it has equations. Throws std::bad_alloc.
[[nodiscard]] std::vector<int> nestedDissection(const EquationGroups& groups, const IntegerLists& NEIG_NODES);

}  // namespace zema
