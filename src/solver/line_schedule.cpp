// Threads take lines of tiles in ascending order.
#include "solver/line_schedule.h"

#include <algorithm>
#include <cstddef>
#include <thread>

#include "solver/blas_threads.h"

namespace zema {

bool LineProgress::waitFor(int line) const {
  while (!finished_[static_cast<std::size_t>(line)].load(std::memory_order_acquire)) {
    if (failed()) return false;
    std::this_thread::yield();
  }
  return true;
}

int firstTile(const BandMatrix& A, int i) {
  return A.firstColumn(i * tileSize) / tileSize;
}

void factoriseLines(const BandMatrix& A, LineMethod& method, WorkerPool& pool) {
  const SingleThreadedBlas oneThread;
  const int lines = tileCount(A.NEQNS());
  LineProgress progress(lines);
  std::atomic<int> next = 0;
  const auto work = [&](int /*first*/, int /*last*/, int /*worker*/) {
    LineScratch scratch;
    try {
      for (int i = next++; i < lines && !progress.failed(); i = next++) {
        method.finishLine(i, scratch, progress);
        progress.finish(i);
      }
    } catch (...) {
      progress.fail();
      throw;
    }
  };
  pool.forEachBlock(std::min(pool.size(), lines), 1, work);
}

}  // namespace zema
