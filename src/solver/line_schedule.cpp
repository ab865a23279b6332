// Threads take lines of tiles in ascending order.
#include "solver/line_schedule.h"

#include <algorithm>
#include <cstddef>
#include <thread>

#include "solver/blas_threads.h"

namespace zema {

bool LineProgress::waitFor(int line) const {
  while (!finished_[static_cast<std::size_t>(line)].load(std::memory_order_acquire)) {
    if (!reaches(line)) return false;
    std::this_thread::yield();
  }
  return true;
}

void LineProgress::fail(int line) {
  const std::lock_guard lock(mutex_);
  if (reaches(line)) {
    failure_ = std::current_exception();
    failedLine_.store(line, std::memory_order_release);
  }
}

void LineProgress::rethrow() const {
  if (failure_) std::rethrow_exception(failure_);
}

int firstTile(const BandMatrix& A, int i) {
  return A.firstColumn(i * tileSize) / tileSize;
}

void factoriseLines(const BandMatrix& A, LineMethod& method, WorkerPool& pool) {
  const BlasThreads oneThread(1);
  const int lines = tileCount(A.NEQNS());
  LineProgress progress(lines);
  std::atomic<int> next = 0;
  const auto work = [&](int /*first*/, int /*last*/, int /*worker*/) {
    LineScratch scratch;
    for (int i = next++; i < lines && progress.reaches(i); i = next++) {
      try {
        if (method.finishLine(i, scratch, progress)) progress.finish(i);
      } catch (...) {
        progress.fail(i);
      }
    }
  };
  pool.forEachBlock(std::min(pool.size(), lines), 1, work);
  progress.rethrow();
}

}  // namespace zema
