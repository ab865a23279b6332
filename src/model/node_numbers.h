// Two kinds of node numbers that must never be mixed: those of the deck and those of the equations.
#pragma once

#include <vector>

namespace zema {

/// A node number as the deck gives it, 1 to NPOIN.
struct DeckNode {
  int number = 0;
  friend bool operator==(DeckNode, DeckNode) = default;
};

/// A node's place in the order of the equations, 0 to NPOIN - 1.
struct WorkNode {
  int index = 0;
  friend bool operator==(WorkNode, WorkNode) = default;
};

/// The two maps between deck numbers and places in the equations; the identity unless nodes are renumbered.
class NodeNumbering {
 public:
  NodeNumbering() = default;
  explicit NodeNumbering(int NPOIN);
  /// LPNINV: the node of the deck at each place, every node once.
  explicit NodeNumbering(const std::vector<DeckNode>& LPNINV);

  /// Place of a node of the deck in the equations.
  [[nodiscard]] WorkNode LPNTN(DeckNode node) const { return toWork_[static_cast<std::size_t>(node.number - 1)]; }
  /// The node of the deck at a place of the equations: the inverse of LPNTN.
  [[nodiscard]] DeckNode LPNINV(WorkNode node) const { return toDeck_[static_cast<std::size_t>(node.index)]; }
  [[nodiscard]] int size() const { return static_cast<int>(toWork_.size()); }

 private:
  std::vector<WorkNode> toWork_;
  std::vector<DeckNode> toDeck_;
};

}  // namespace zema
