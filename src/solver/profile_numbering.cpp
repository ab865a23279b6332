// Start at the end of the mesh, then grow the front as little as possible.
#include "solver/profile_numbering.h"

#include <algorithm>

namespace zema {
namespace {

constexpr int sentinel = 3125;  // above the new numbers of the meshes that the method was made for

std::size_t index(int i) {
  return static_cast<std::size_t>(i);
}

// The nodes that are numbered, active or untouched, and the next choice among the active ones.
class Front {
 public:
  explicit Front(const IntegerLists& NODAD)
      : NODAD_(NODAD), NEWNN_(index(NODAD.size()), 0), NODA_(index(NODAD.size()), 0) {}

  // Gives the number k (from 1) to a node that is not active.
  void open(int node, int k) {
    NEWNN_[index(node)] = k;
    NODA_[index(node)] = sentinel;
    activateNeighbours(node);
  }

  // `RENUM5`: gives the number k to an active node, or to the lowest unnumbered one.
  void RENUM5(int k) {
    if (NACT_.empty()) {
      open(static_cast<int>(std::ranges::find(NEWNN_, 0) - NEWNN_.begin()), k);
      return;
    }
    std::size_t chosen = 0;
    Choice best = judge(NACT_[0]);
    for (std::size_t place = 1; place < NACT_.size(); ++place)
      if (const Choice choice = judge(NACT_[place]); choice < best) {
        best = choice;
        chosen = place;
      }
    const int node = NACT_[chosen];
    NEWNN_[index(node)] = k;
    NACT_[chosen] = NACT_.back();
    NODA_[index(NACT_[chosen])] = static_cast<int>(chosen) + 1;
    NACT_.pop_back();
    if (best.growth != -1) activateNeighbours(node);
  }

  [[nodiscard]] const std::vector<int>& NEWNN() const { return NEWNN_; }

 private:
  struct Choice {
    int growth;  // of the active list
    int lowest;  // number of a numbered neighbour
    bool operator<(const Choice& other) const {
      return growth < other.growth || (growth == other.growth && lowest < other.lowest);
    }
  };

  [[nodiscard]] Choice judge(int node) const {
    Choice choice{-1, sentinel};
    for (const int neighbour : NODAD_[node]) {
      if (NODA_[index(neighbour)] == 0) ++choice.growth;
      if (NEWNN_[index(neighbour)] != 0) choice.lowest = std::min(choice.lowest, NEWNN_[index(neighbour)]);
    }
    return choice;
  }

  void activateNeighbours(int node) {
    for (const int neighbour : NODAD_[node]) {
      if (NODA_[index(neighbour)] != 0) continue;
      NACT_.push_back(neighbour);
      NODA_[index(neighbour)] = static_cast<int>(NACT_.size());
    }
  }

  const IntegerLists& NODAD_;
  std::vector<int> NEWNN_;  // new number of each node, from 1; 0 while it has none
  std::vector<int> NACT_;   // active nodes: neighbours of numbered ones
  std::vector<int> NODA_;   // 0 for an untouched node
};

}  // namespace

LevelStructure RENUM4(const IntegerLists& NODAD, int start) {
  LevelStructure found;
  std::vector<char> levelled(index(NODAD.size()), 0);
  levelled[index(start)] = 1;
  std::vector<int> level{start};
  while (!level.empty()) {
    ++found.depth;
    found.width = std::max(found.width, static_cast<int>(level.size()));
    std::vector<int> next;
    for (const int node : level)
      for (const int neighbour : NODAD[node])
        if (levelled[index(neighbour)] == 0) {
          levelled[index(neighbour)] = 1;
          next.push_back(neighbour);
        }
    found.last = std::move(level);
    level = std::move(next);
  }
  return found;
}

int RENUM2(const IntegerLists& NODAD) {
  int start = 0;
  LevelStructure best = RENUM4(NODAD, start);
  for (bool replaced = true; replaced;) {
    replaced = false;
    const std::vector<int> candidates = best.last;
    for (const int candidate : candidates) {
      LevelStructure levels = RENUM4(NODAD, candidate);
      if (levels.depth < best.depth || (levels.depth == best.depth && levels.width >= best.width)) continue;
      start = candidate;
      best = std::move(levels);
      replaced = true;
    }
  }
  return start;
}

std::vector<int> RENUM3(const IntegerLists& NODAD, int start) {
  Front front(NODAD);
  front.open(start, 1);
  for (int k = 2; k <= NODAD.size(); ++k) front.RENUM5(k);
  std::vector<int> LPNTN = front.NEWNN();
  for (int& number : LPNTN) --number;
  return LPNTN;
}

std::vector<int> RENUM0(const IntegerLists& NODAD) {
  return RENUM3(NODAD, RENUM2(NODAD));
}

}  // namespace zema
