// Order and dependencies of the lines of tiles in a band factorisation, on any number of threads.
#pragma once

#include <atomic>
#include <vector>

#include "foundation/parallel.h"
#include "solver/tile.h"

namespace zema {

/// Which lines of tiles are finished. Every line needs only lines before it, so the first unfinished line can always
/// go on, with any number of threads.
class LineProgress {
 public:
  explicit LineProgress(int lines) : finished_(static_cast<std::size_t>(lines)) {}

  /// Waits until a line is finished; false if the factorisation has failed meanwhile.
  [[nodiscard]] bool waitFor(int line) const;

  void finish(int line) { finished_[static_cast<std::size_t>(line)].store(true, std::memory_order_release); }
  void fail() { failed_.store(true, std::memory_order_relaxed); }
  [[nodiscard]] bool failed() const { return failed_.load(std::memory_order_relaxed); }

 private:
  std::vector<std::atomic<bool>> finished_;
  std::atomic<bool> failed_ = false;
};

/// Working memory of one thread: the tiles of one line in order.
struct LineScratch {
  std::vector<Tile> left;   ///< finished tiles left of the diagonal, transposed
  std::vector<Tile> above;  ///< finished tiles above the diagonal, or a second form of those on the left
  Tile triangle;            ///< a finished diagonal tile
  TileScales scales{};      ///< factors of the lines of a tile
};

/// What a factorisation does with line i: the tiles left of (and above) the diagonal tile i, and that tile itself.
class LineMethod {
 public:
  virtual ~LineMethod() = default;

  /// Finishes line i; waits for each line before it whose tiles it needs, and gives up when that wait fails. Which
  /// thread comes by must not matter. May throw: the factorisation ends.
  virtual void finishLine(int i, LineScratch& scratch, const LineProgress& progress) = 0;
};

/// Number of tiles in a row of `lines` rows or columns.
[[nodiscard]] constexpr int tileCount(int lines) {
  return (lines + tileSize - 1) / tileSize;
}

/// First tile of line i that holds a part of the band.
[[nodiscard]] int firstTile(const BandMatrix& A, int i);

/// Runs a method over all lines of a band matrix.
void factoriseLines(const BandMatrix& A, LineMethod& method, WorkerPool& pool);

}  // namespace zema
