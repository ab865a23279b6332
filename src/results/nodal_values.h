// Displacements and reactions of nodes as the results show them.
#pragma once

#include <span>
#include <vector>

#include "model/model.h"

namespace zema {

/// The values of a node in one column (from 1) of TDISP: displacement, velocity, acceleration.
[[nodiscard]] std::span<const double> nodalMotion(const Model& model, DeckNode node, int column);

/// The accumulated reactions by node. A node that stands several times in the list has all in its first row.
class Reactions {
 public:
  explicit Reactions(const Model& model);

  [[nodiscard]] bool has(DeckNode node) const { return rowOf(node) >= 0; }
  /// MDOFN values of a node of the list.
  [[nodiscard]] std::span<const double> of(DeckNode node) const;

 private:
  [[nodiscard]] int rowOf(DeckNode node) const { return firstRow_[static_cast<std::size_t>(node.number - 1)]; }

  std::span<const double> values_;
  std::size_t width_;
  std::vector<int> firstRow_;  // by node; -1 where it is not in the list
};

}  // namespace zema
