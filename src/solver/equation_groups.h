// Equations that always come together, such as those of a node, and which groups of them share an element.
#pragma once

#include <vector>

#include "solver/element_source.h"
#include "solver/equation_system.h"
#include "solver/integer_lists.h"

namespace zema {

/// Runs of neighbouring equations that stand in the same elements. Their rows of the global matrix are alike, so that
/// pattern and ordering are found by groups. Equations, groups and elements count from 0.
struct EquationGroups {
  EquationGroups(const ElementSource& source, const EquationSystem& system);

  [[nodiscard]] int size() const { return ofElements.size(); }
  [[nodiscard]] int width(int group) const {
    return first[static_cast<std::size_t>(group) + 1] - first[static_cast<std::size_t>(group)];
  }

  std::vector<int> first;   ///< first equation of each group, and NEQNS
  std::vector<int> of;      ///< group of each equation
  IntegerLists ofElement;   ///< groups of each element
  IntegerLists ofElements;  ///< elements of each group, ascending
};

/// `NEIG_NODES`: for each group the groups that share an element with it, ascending, itself among them. In time
/// proportional to the mesh.
[[nodiscard]] IntegerLists PARD_NEIGHBORNODES(const EquationGroups& groups);

}  // namespace zema
