// The order in which a symmetric matrix is eliminated front by front, and the equations of each front.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "solver/integer_lists.h"
#include "solver/sparse_pattern.h"

namespace zema {

/// Fronts of the multifrontal method (Duff and Reid 1983; Liu 1992): runs of neighbouring columns of the factor with
/// the same rows below them. Places count from 0 in the order of elimination, which is a postorder of the elimination
/// tree: children of a front come before it, and a subtree is a run of fronts.
class FrontTree {
 public:
  FrontTree() = default;
  /// order: place of each equation, from 1. The tree keeps the fill of that order but not the order itself.
  FrontTree(const SparsePattern& pattern, std::span<const int> order);

  [[nodiscard]] int size() const { return static_cast<int>(first_.size()) - 1; }
  /// First place of a front; that of front size() is the number of equations.
  [[nodiscard]] int first(int front) const { return first_[static_cast<std::size_t>(front)]; }
  /// Columns that a front eliminates.
  [[nodiscard]] int columns(int front) const { return first(front + 1) - first(front); }
  /// Places below the columns of a front whose rows it changes, ascending.
  [[nodiscard]] std::span<const int> rest(int front) const { return rest_[front]; }
  /// Rows of a front: its columns and its rest.
  [[nodiscard]] int rows(int front) const { return columns(front) + static_cast<int>(rest(front).size()); }
  /// The front that the rest goes to; -1 for a root.
  [[nodiscard]] int parent(int front) const { return parent_[static_cast<std::size_t>(front)]; }
  /// Fronts whose rest goes to this one, ascending.
  [[nodiscard]] std::span<const int> children(int front) const { return children_[front]; }

  /// Equation at a place, place of an equation, both from 0.
  [[nodiscard]] std::span<const int> equations() const { return equations_; }
  [[nodiscard]] std::span<const int> places() const { return places_; }

  /// Multiplications that a front takes, about.
  [[nodiscard]] double work(int front) const;

 private:
  std::vector<int> first_{0};
  std::vector<int> parent_;
  IntegerLists rest_;
  IntegerLists children_;
  std::vector<int> equations_;
  std::vector<int> places_;
};

}  // namespace zema
