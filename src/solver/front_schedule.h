// Who eliminates which front when, and where the rests of fronts wait for their parents.
#pragma once

#include <cstddef>
#include <vector>

#include "solver/front_tree.h"

namespace zema {

/// A plan that depends on the tree alone, so that the factors do not depend on the number of workers: small subtrees,
/// each for one worker, side by side; the fronts above them one after the other, each by all workers. A large subtree
/// is finished before the next one is begun, which keeps the number of waiting rests small.
struct FrontSchedule {
  FrontSchedule() = default;
  explicit FrontSchedule(const FrontTree& tree);

  /// A subtree: its fronts from first to last, last its root.
  struct Subtree {
    int first;
    int last;
  };
  /// First the subtrees, in any order; then the fronts, in this order, by all workers.
  struct Stage {
    std::vector<Subtree> subtrees;
    std::vector<int> fronts;
  };
  std::vector<Stage> stages;

  /// Where the rest of a front lies: in the memory that all share, or in that of the worker who has its subtree.
  struct Place {
    bool shared = true;
    std::size_t first = 0;
  };
  std::vector<Place> places;   ///< by front
  std::size_t sharedSize = 0;  ///< reals for the rests that all share
  std::size_t workerSize = 0;  ///< reals for those of one worker
};

}  // namespace zema
