// Cuthill-McKee from all starts, in parallel: a search ends as soon as its band can no longer be the best.
#include "solver/narrow_band.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <numeric>

#include "foundation/parallel.h"

namespace zema {
namespace {

std::size_t index(int i) {
  return static_cast<std::size_t>(i);
}

// A band and the start that it comes from, so ordered that the lower start wins among equal bands.
std::uint64_t rank(int band, int start) {
  return static_cast<std::uint64_t>(band) << 32 | static_cast<std::uint64_t>(start);
}

// The numbering from one start node at a time.
class Search {
 public:
  explicit Search(const IntegerLists& LCONE)
      : LCONE_(LCONE), LOLNE_(index(LCONE.size()), 0), LNEOL_(index(LCONE.size())) {}

  // Numbers all nodes; false as soon as the band shows that this start does not come before `best`.
  bool run(int start, const std::atomic<std::uint64_t>& best) {
    const int NPOIN = LCONE_.size();
    band_ = 0;
    count_ = 0;
    ++run_;
    number(start);
    int lowest = 0;  // no node below is unnumbered
    for (int i = 0; count_ < NPOIN; ++i) {
      if (i == count_) {
        while (LOLNE_[index(lowest)] == run_) ++lowest;
        number(lowest);
      }
      for (const int neighbour : LCONE_[LNEOL_[index(i)]]) {
        if (LOLNE_[index(neighbour)] == run_) continue;
        band_ = std::max(band_, count_ - i);
        number(neighbour);
      }
      if (rank(band_, start) >= best.load(std::memory_order_relaxed)) return false;
    }
    return true;
  }

  [[nodiscard]] int band() const { return band_; }
  [[nodiscard]] const std::vector<int>& LNEOL() const { return LNEOL_; }

 private:
  void number(int node) {
    LOLNE_[index(node)] = run_;
    LNEOL_[index(count_++)] = node;
  }

  const IntegerLists& LCONE_;
  std::vector<int> LOLNE_;  // the last run that gave a node its number
  std::vector<int> LNEOL_;  // the node at each new number
  int run_ = 0;
  int band_ = 0;
  int count_ = 0;
};

// Tries a start, and makes it the best if it is.
void attempt(Search& search, int start, std::atomic<std::uint64_t>& best) {
  if (!search.run(start, best)) return;
  const std::uint64_t mine = rank(search.band(), start);
  std::uint64_t known = best.load();
  while (mine < known && !best.compare_exchange_weak(known, mine)) {
  }
}

}  // namespace

IntegerLists sortByDegree(const IntegerLists& neighbours) {
  IntegerLists sorted = neighbours;
  const auto NUMCO = [&](int node) { return neighbours[node].size(); };
  for (int node = 0; node < sorted.size(); ++node) {
    const std::span<int> list(sorted.entries.data() + sorted.first[index(node)], neighbours[node].size());
    for (std::size_t i = 0; i < list.size(); ++i)
      for (std::size_t j = i + 1; j < list.size(); ++j)
        if (NUMCO(list[i]) > NUMCO(list[j])) std::swap(list[i], list[j]);
  }
  return sorted;
}

std::vector<int> OPTBAN(const IntegerLists& LCONE, int& BAND, WorkerPool& pool) {
  constexpr int startsAtATime = 8;
  const int NPOIN = LCONE.size();
  std::atomic<std::uint64_t> best = rank(BAND, 0);
  std::vector<Search> searches(index(pool.size()), Search(LCONE));
  // Nodes that lie far from each other are good starts: with their band the other searches end early.
  int far = 0;
  for (int hop = 0; hop < 3 && NPOIN > 0; ++hop) {
    const std::atomic<std::uint64_t> noLimit = rank(NPOIN, NPOIN);
    searches[0].run(far, noLimit);
    const int next = searches[0].LNEOL().back();
    attempt(searches[0], far, best);
    far = next;
  }
  pool.forEachBlock(NPOIN, startsAtATime, [&](int first, int last, int worker) {
    for (int start = first; start < last; ++start) attempt(searches[index(worker)], start, best);
  });
  std::vector<int> LPNINV(index(NPOIN));
  std::iota(LPNINV.begin(), LPNINV.end(), 0);
  const int found = static_cast<int>(best >> 32), start = static_cast<int>(best & 0xffffffffU);
  if (found < BAND) {
    const std::atomic<std::uint64_t> noLimit = rank(NPOIN, NPOIN);
    Search last(LCONE);
    last.run(start, noLimit);
    LPNINV = last.LNEOL();
    BAND = found;
  }
  return LPNINV;
}

}  // namespace zema
