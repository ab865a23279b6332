// Threads take tiles in a fixed order and wait for what each needs. Every tile needs only tiles that come before it in
// that order, so the earliest unfinished tile can always go on, with any number of threads.
#include "solver/tile_schedule.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <thread>

namespace zema {
namespace {

// How many leading tiles of each line are finished; tiles of a line finish in order.
class Progress {
 public:
  explicit Progress(const TileGrid& grid) : finished_(static_cast<std::size_t>(grid.tiles)) {
    for (int line = 0; line < grid.tiles; ++line)
      finished_[static_cast<std::size_t>(line)].store(std::max(0, line - grid.reach), std::memory_order_relaxed);
  }

  void advance(int line, int finished) {
    finished_[static_cast<std::size_t>(line)].store(finished, std::memory_order_release);
  }

  // Waits for the leading tiles of a line; false if the factorisation ended before.
  [[nodiscard]] bool reached(int line, int needed, const std::atomic<bool>& ended) const {
    const std::atomic<int>& finished = finished_[static_cast<std::size_t>(line)];
    while (finished.load(std::memory_order_acquire) < needed) {
      if (ended.load(std::memory_order_relaxed)) return false;
      std::this_thread::yield();
    }
    return true;
  }

 private:
  std::vector<std::atomic<int>> finished_;
};

class Schedule {
 public:
  Schedule(const TileGrid& grid, TileMethod& method)
      : grid_(grid),
        method_(method),
        perStep_((grid.bothHalves ? 2 : 1) * grid.reach + 1),
        rows_(grid),
        columns_(grid) {}

  // One thread's share: tiles until none is left.
  void work() {
    TileScratch scratch;
    const long all = static_cast<long>(grid_.tiles) * perStep_;
    for (long task = next_++; task < all && !ended_; task = next_++) {
      const int step = static_cast<int>(task / perStep_);
      const int place = static_cast<int>(task % perStep_);
      const int distance = grid_.bothHalves ? (place + 1) / 2 : place;
      if (step + distance >= grid_.tiles) continue;
      if (grid_.bothHalves && place % 2 == 0)
        run(step, step + distance, scratch);
      else
        run(step + distance, step, scratch);
    }
  }

 private:
  void run(int i, int j, TileScratch& scratch) try {
    const int step = std::min(i, j);
    Progress& up = grid_.bothHalves ? columns_ : rows_;
    if (!rows_.reached(i, step, ended_) || !up.reached(j, step, ended_)) return;
    method_.update(i, j, scratch);
    if (i != j && !rows_.reached(step, step + 1, ended_)) return;
    method_.finish(i, j, scratch);
    if (i >= j) rows_.advance(i, step + 1);
    if (i <= j) columns_.advance(j, step + 1);
  } catch (...) {
    ended_ = true;
    throw;
  }

  TileGrid grid_;
  TileMethod& method_;
  int perStep_;  // tiles that one step of the elimination finishes
  Progress rows_;
  Progress columns_;
  std::atomic<long> next_ = 0;
  std::atomic<bool> ended_ = false;
};

}  // namespace

TileGrid tileGrid(const BandMatrix& A) {
  const auto tiles = [](int lines) { return (lines + tileSize - 1) / tileSize; };
  return {tiles(A.NEQNS()), tiles(A.NBAND() - 1), A.part() == BandPart::whole};
}

void factoriseTiles(const TileGrid& grid, TileMethod& method, WorkerPool& pool) {
  Schedule schedule(grid, method);
  const int threads = std::min(pool.size(), grid.reach + 1);
  pool.forEachBlock(threads, 1, [&schedule](int, int, int) { schedule.work(); });
}

}  // namespace zema
