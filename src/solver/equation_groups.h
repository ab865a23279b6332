// Equations that always come together, such as those of a node, and which groups of them share an element.
#pragma once

#include <span>
#include <vector>

#include "solver/element_source.h"
#include "solver/equation_system.h"

namespace zema {

/// Lists of integers of different lengths, one behind the other.
struct IntegerLists {
  std::vector<int> first{0};  ///< first place of each list, and the end
  std::vector<int> entries;

  [[nodiscard]] int size() const { return static_cast<int>(first.size()) - 1; }
  [[nodiscard]] std::span<const int> operator[](int list) const {
    const auto i = static_cast<std::size_t>(list);
    return std::span(entries).subspan(static_cast<std::size_t>(first[i]),
                                      static_cast<std::size_t>(first[i + 1] - first[i]));
  }
  void close() { first.push_back(static_cast<int>(entries.size())); }
};

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
