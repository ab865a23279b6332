// Cutting the tree into subtrees and stages; first fit for the rests.
#include "solver/front_schedule.h"

#include <algorithm>
#include <functional>
#include <map>

#include "solver/dense_ldl.h"

namespace zema {
namespace {

constexpr double largestSubtree = 1.0 / 64.0;  // shares of the whole work
constexpr double largestStage = 1.0 / 8.0;
constexpr double alwaysSubtree = 1e6;  // multiplications that are not worth the help of other workers

std::size_t index(int i) {
  return static_cast<std::size_t>(i);
}

/// Places in a memory of any size: each request gets the lowest gap that is large enough.
class FirstFit {
 public:
  std::size_t take(std::size_t size) {
    if (size == 0) return 0;
    std::size_t first = 0;
    for (const auto& [begin, end] : taken_) {
      if (begin - first >= size) break;
      first = end;
    }
    taken_[first] = first + size;
    largest_ = std::max(largest_, first + size);
    return first;
  }
  void giveBack(std::size_t first, std::size_t size) {
    if (size != 0) taken_.erase(first);
  }
  [[nodiscard]] std::size_t largest() const { return largest_; }

 private:
  std::map<std::size_t, std::size_t> taken_;  // begin and end
  std::size_t largest_ = 0;
};

std::size_t restSize(const FrontTree& tree, int front) {
  const std::size_t m = tree.rest(front).size();
  return BandedColumns(m, m).size();
}

}  // namespace

FrontSchedule::FrontSchedule(const FrontTree& tree) : places(index(tree.size())) {
  std::vector<double> work(index(tree.size()));  // of the subtree below and with a front
  std::vector<int> lowest(index(tree.size()));   // first front of that subtree
  double all = 0.0;
  for (int front = 0; front < tree.size(); ++front) {
    work[index(front)] = tree.work(front);
    lowest[index(front)] = front;
    for (const int child : tree.children(front)) work[index(front)] += work[index(child)];
    if (!tree.children(front).empty()) lowest[index(front)] = lowest[index(tree.children(front)[0])];
    all += tree.work(front);
  }
  const auto isWithin = [&](int front, double share) {
    return front != -1 && work[index(front)] <= std::max(share * all, alwaysSubtree);
  };
  const auto isRootOf = [&](int front, double share) {
    return isWithin(front, share) && !isWithin(tree.parent(front), share);
  };

  stages.emplace_back();
  for (int front = 0; front < tree.size(); ++front) {
    if (isRootOf(front, largestSubtree)) {
      stages.back().subtrees.push_back({lowest[index(front)], front});
    } else if (!isWithin(front, largestSubtree)) {
      stages.back().fronts.push_back(front);
    }
    if (!isWithin(front, largestSubtree) && !isWithin(tree.parent(front), largestStage)) stages.emplace_back();
  }

  FirstFit shared;
  const auto giveBackRests = [&](FirstFit& memory, int parent) {
    for (const int child : tree.children(parent)) memory.giveBack(places[index(child)].first, restSize(tree, child));
  };
  for (Stage& stage : stages) {
    std::ranges::stable_sort(stage.subtrees, std::ranges::greater(),
                             [&](const Subtree& subtree) { return work[index(subtree.last)]; });
    for (const Subtree& subtree : stage.subtrees) {
      FirstFit own;
      for (int front = subtree.first; front < subtree.last; ++front) {
        places[index(front)] = {false, own.take(restSize(tree, front))};
        giveBackRests(own, front);
      }
      places[index(subtree.last)] = {true, shared.take(restSize(tree, subtree.last))};
      workerSize = std::max(workerSize, own.largest());
    }
    for (const int front : stage.fronts) {
      places[index(front)] = {true, shared.take(restSize(tree, front))};
      giveBackRests(shared, front);
    }
  }
  sharedSize = shared.largest();
}

}  // namespace zema
