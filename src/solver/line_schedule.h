// Order and dependencies of the lines of tiles in a band factorisation, on any number of threads.
#pragma once

#include <atomic>
#include <exception>
#include <limits>
#include <mutex>
#include <vector>

#include "foundation/parallel.h"
#include "solver/tile.h"

namespace zema {

/// Which lines of tiles are finished. Every line needs only lines before it, so the first unfinished line can always
/// go on, with any number of threads.
class LineProgress {
 public:
  explicit LineProgress(int lines) : finished_(static_cast<std::size_t>(lines)) {}

  /// Waits until a line is finished; false if it never will be, because it or a line before it has failed.
  [[nodiscard]] bool waitFor(int line) const;

  void finish(int line) { finished_[static_cast<std::size_t>(line)].store(true, std::memory_order_release); }
  /// Keeps the exception in flight as that of a line, unless an earlier line has failed.
  void fail(int line);
  /// Whether it still makes sense to begin a line.
  [[nodiscard]] bool reaches(int line) const { return line < failedLine_.load(std::memory_order_acquire); }
  /// Throws the exception of the first line that failed, if one did.
  void rethrow() const;

 private:
  std::vector<std::atomic<bool>> finished_;
  std::atomic<int> failedLine_ = std::numeric_limits<int>::max();
  std::mutex mutex_;
  std::exception_ptr failure_;
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

  /// Finishes line i; waits for each line before it whose tiles it needs, and returns false when that wait fails.
  /// Which thread comes by must not matter. May throw: the factorisation ends.
  [[nodiscard]] virtual bool finishLine(int i, LineScratch& scratch, const LineProgress& progress) = 0;
};

/// Number of tiles in a row of `lines` rows or columns.
[[nodiscard]] constexpr int tileCount(int lines) {
  return (lines + tileSize - 1) / tileSize;
}

/// First tile of line i that holds a part of the band.
[[nodiscard]] int firstTile(const BandMatrix& A, int i);

/// Runs a method over all lines of a band matrix. When lines throw, the exception of the first of them comes out, with
/// any number of threads.
void factoriseLines(const BandMatrix& A, LineMethod& method, WorkerPool& pool);

}  // namespace zema
