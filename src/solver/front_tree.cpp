// Elimination tree of blocks of equations, its postorder, the rows of the factor, and the merging of small fronts.
#include "solver/front_tree.h"

#include <algorithm>
#include <utility>

namespace zema {
namespace {

std::size_t index(int i) {
  return static_cast<std::size_t>(i);
}

/// Equations of one group that follow each other in the order of elimination.
struct Blocks {
  Blocks(const SparsePattern& pattern, std::span<const int> order) : equations(order.size()), of(order.size()) {
    for (std::size_t e = 0; e < order.size(); ++e) equations[index(order[e]) - 1] = static_cast<int>(e);
    int last = -1;
    for (std::size_t place = 0; place < order.size(); ++place) {
      const int group = pattern.group(equations[place]);
      if (group != last) first.push_back(static_cast<int>(place));
      last = group;
      of[index(equations[place])] = static_cast<int>(first.size()) - 1;
    }
    first.push_back(static_cast<int>(order.size()));
  }

  [[nodiscard]] int count() const { return static_cast<int>(first.size()) - 1; }
  [[nodiscard]] int width(int block) const { return first[index(block) + 1] - first[index(block)]; }

  std::vector<int> equations;  // by place
  std::vector<int> first;      // first place of each block, and the end
  std::vector<int> of;         // block of each equation
};

/// For each block the blocks before it, or behind it, that share an entry with it, in no order.
IntegerLists neighbours(const SparsePattern& pattern, const Blocks& blocks, bool behind) {
  IntegerLists lists;
  std::vector<int> seenFor(index(blocks.count()), -1);
  for (int block = 0; block < blocks.count(); ++block) {
    for (const int column : pattern.JA_PARD(blocks.equations[index(blocks.first[index(block)])])) {
      const int other = blocks.of[index(column)];
      if ((behind ? other <= block : other >= block) || seenFor[index(other)] == block) continue;
      seenFor[index(other)] = block;
      lists.entries.push_back(other);
    }
    lists.close();
  }
  return lists;
}

/// Parent of each block in the elimination tree, -1 for a root (Liu 1986, with compressed paths).
std::vector<int> eliminationTree(const IntegerLists& before) {
  std::vector<int> parent(index(before.size()), -1), ancestor(parent);
  for (int block = 0; block < before.size(); ++block) {
    for (int i : before[block]) {
      while (i != -1 && i != block) {
        const int next = std::exchange(ancestor[index(i)], block);
        if (next == -1) parent[index(i)] = block;
        i = next;
      }
    }
  }
  return parent;
}

/// Children of each node, ascending; those of the last list are the roots.
IntegerLists childrenOf(std::span<const int> parent) {
  const int size = static_cast<int>(parent.size());
  IntegerLists above;
  for (const int p : parent) {
    above.entries.push_back(p == -1 ? size : p);
    above.close();
  }
  return transposed(above, size + 1);
}

/// Nodes in an order where children stand directly before their parent.
std::vector<int> postorder(std::span<const int> parent) {
  const IntegerLists children = childrenOf(parent);
  const int top = static_cast<int>(parent.size());
  std::vector<int> order, path{top};
  order.reserve(parent.size());
  std::vector<std::size_t> next(parent.size() + 1, 0);
  while (!path.empty()) {
    const int node = path.back();
    const std::span<const int> below = children[node];
    if (next[index(node)] < below.size()) {
      path.push_back(below[next[index(node)]++]);
      continue;
    }
    path.pop_back();
    if (node != top) order.push_back(node);
  }
  return order;
}

/// Places of the equations, from 1, when the blocks of an order come in a new order.
std::vector<int> reordered(const Blocks& blocks, std::span<const int> newOrder) {
  std::vector<int> order(blocks.equations.size());
  int place = 0;
  for (const int block : newOrder)
    for (int old = blocks.first[index(block)]; old < blocks.first[index(block) + 1]; ++old)
      order[index(blocks.equations[index(old)])] = ++place;
  return order;
}

/// A run of blocks that is eliminated as one front.
struct Run {
  int first = 0;          // first block
  int end = 0;            // block behind the last
  int parent = -1;        // run number
  int columns = 0;        // equations
  int restRows = 0;       // equations
  double zeros = 0.0;     // entries that merging has put into the factor
  std::vector<int> rest;  // blocks, ascending
};

/// Runs of blocks with one list of rows, and these lists.
class RunFinder {
 public:
  RunFinder(const Blocks& blocks, const IntegerLists& behind, std::span<const int> parent)
      : blocks_(blocks), behind_(behind), parent_(parent), children_(childrenOf(parent)), rows_(parent.size()) {}

  std::vector<Run> find() {
    std::vector<int> seenFor(parent_.size(), -1);
    for (int block = 0; block < blocks_.count(); ++block) {
      std::vector<int>& mine = rows_[index(block)];
      const auto take = [&](std::span<const int> others) {
        for (const int other : others) {
          if (other == block || std::exchange(seenFor[index(other)], block) == block) continue;
          mine.push_back(other);
        }
      };
      take(behind_[block]);
      for (const int child : children_[block]) take(rows_[index(child)]);
      std::ranges::sort(mine);
      close(block);
    }
    return std::move(runs_);
  }

 private:
  // Ends the runs below a block, whose rows are complete, or goes on with the only one.
  void close(int block) {
    const std::span<const int> below = children_[block];
    const bool goesOn = below.size() == 1 && rows_[index(below[0])].size() == rows_[index(block)].size() + 1;
    if (goesOn) {
      runs_.back().end = block + 1;
    } else {
      runs_.emplace_back().first = block;
      runs_.back().end = block + 1;
    }
    Run& run = runs_.back();
    run.columns += blocks_.width(block);
    run.restRows = 0;
    for (const int row : rows_[index(block)]) run.restRows += blocks_.width(row);
    for (const int child : below) rows_[index(child)] = {};
    run.rest = rows_[index(block)];
  }

  const Blocks& blocks_;
  const IntegerLists& behind_;
  std::span<const int> parent_;
  IntegerLists children_;
  std::vector<std::vector<int>> rows_;  // by block, until its parent has taken them
  std::vector<Run> runs_;
};

void linkRuns(std::vector<Run>& runs, int blocks) {
  std::vector<int> runOf(index(blocks));
  for (std::size_t r = 0; r < runs.size(); ++r)
    for (int block = runs[r].first; block < runs[r].end; ++block) runOf[index(block)] = static_cast<int>(r);
  for (Run& run : runs) run.parent = run.rest.empty() ? -1 : runOf[index(run.rest[0])];
}

/// Whether a child, the run directly before its parent, is better eliminated together with it: the smaller the front
/// that results, the more zeros it may hold (Ashcraft and Grimes 1989).
bool isWorthMerging(const Run& child, const Run& parent, double& zeros) {
  struct Limit {
    double columns;
    double share;
  };
  static constexpr Limit limits[] = {{24.0, 0.8}, {96.0, 0.2}};
  constexpr double shareOfLargest = 0.05;
  const double columns = child.columns + parent.columns, rest = parent.restRows;
  const double added = child.columns * (parent.columns + rest - child.restRows);
  zeros = child.zeros + parent.zeros + added;
  if (added <= 0.0) return true;
  const double share = zeros / (columns * (columns + 1.0) / 2.0 + columns * rest);
  for (const Limit& limit : limits)
    if (columns <= limit.columns) return share <= limit.share;
  return share <= shareOfLargest;
}

/// Merges runs into their parents, upwards from the leaves. Run r becomes part of run into[r].
std::vector<Run> merged(std::vector<Run> runs) {
  std::vector<int> into(runs.size()), place(runs.size());
  const auto wholeOf = [&](int r) {
    while (into[index(r)] != r) r = into[index(r)];
    return r;
  };
  std::vector<int> kept;
  for (int r = 0; r < static_cast<int>(runs.size()); ++r) {
    into[index(r)] = r;
    Run& run = runs[index(r)];
    double zeros = 0.0;
    while (!kept.empty() && isWorthMerging(runs[index(kept.back())], run, zeros)) {
      const Run& child = runs[index(kept.back())];
      if (child.parent == -1 || child.parent > r || wholeOf(child.parent) != r) break;
      run.first = child.first;
      run.columns += child.columns;
      run.zeros = zeros;
      into[index(kept.back())] = r;
      kept.pop_back();
    }
    kept.push_back(r);
  }
  for (std::size_t k = 0; k < kept.size(); ++k) place[index(kept[k])] = static_cast<int>(k);
  std::vector<Run> whole;
  whole.reserve(kept.size());
  for (const int r : kept) {
    whole.push_back(std::move(runs[index(r)]));
    Run& run = whole.back();
    if (run.parent != -1) run.parent = place[index(wholeOf(run.parent))];
  }
  return whole;
}

}  // namespace

FrontTree::FrontTree(const SparsePattern& pattern, std::span<const int> order) {
  const std::vector<int> postordered = [&] {
    const Blocks blocks(pattern, order);
    return reordered(blocks, postorder(eliminationTree(neighbours(pattern, blocks, false))));
  }();
  const Blocks blocks(pattern, postordered);
  const std::vector<int> parent = eliminationTree(neighbours(pattern, blocks, false));
  std::vector<Run> runs = RunFinder(blocks, neighbours(pattern, blocks, true), parent).find();
  linkRuns(runs, blocks.count());
  runs = merged(std::move(runs));

  equations_ = blocks.equations;
  places_.resize(equations_.size());
  for (std::size_t place = 0; place < equations_.size(); ++place)
    places_[index(equations_[place])] = static_cast<int>(place);
  parent_.reserve(runs.size());
  for (const Run& run : runs) {
    first_.push_back(blocks.first[index(run.end)]);
    parent_.push_back(run.parent);
    for (const int block : run.rest)
      for (int place = blocks.first[index(block)]; place < blocks.first[index(block) + 1]; ++place)
        rest_.entries.push_back(place);
    rest_.close();
  }
  children_ = childrenOf(parent_);
}

double FrontTree::work(int front) const {
  const double n = columns(front), m = rows(front) - n;
  return n * n * n / 6.0 + n * n * m / 2.0 + n * m * m / 2.0;
}

}  // namespace zema
