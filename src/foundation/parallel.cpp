// Fork and join over blocks of a range.
#include "foundation/parallel.h"

#include <algorithm>
#include <cassert>
#include <system_error>
#include <utility>

namespace zema {

WorkerPool::WorkerPool(int threads) {
  const int workers = threads > 0 ? threads : static_cast<int>(std::max(1U, std::thread::hardware_concurrency()));
  threads_.reserve(static_cast<std::size_t>(workers - 1));
  try {
    for (int worker = 1; worker < workers; ++worker) threads_.emplace_back([this, worker] { serve(worker); });
  } catch (const std::system_error&) {
    // the system grants no more threads: the pool works with those it has
  }
}

WorkerPool::~WorkerPool() {
  {
    const std::lock_guard lock(mutex_);
    ending_ = true;
  }
  start_.notify_all();
  for (std::thread& thread : threads_) thread.join();
}

void WorkerPool::run(int count, int blockSize, Body body, void* object) {
  assert(blockSize > 0 && "a block holds at least one item");
  if (count <= 0) return;
  const int blocks = (count - 1) / blockSize + 1;
  if (threads_.empty() || blocks == 1) {
    for (int block = 0; block < blocks; ++block) {
      const int first = block * blockSize;
      body(object, first, first + std::min(count - first, blockSize), 0);
    }
    return;
  }
  {
    const std::lock_guard lock(mutex_);
    assert(busy_ == 0 && "a pool's work may not call the pool");
    body_ = body;
    object_ = object;
    count_ = count;
    blockSize_ = blockSize;
    blocks_ = blocks;
    next_ = 0;
    busy_ = static_cast<int>(threads_.size());
    ++round_;
  }
  start_.notify_all();
  takeBlocks(0);
  std::unique_lock lock(mutex_);
  done_.wait(lock, [this] { return busy_ == 0; });
  if (failure_) std::rethrow_exception(std::exchange(failure_, nullptr));
}

void WorkerPool::takeBlocks(int worker) {
  // Blocks are handed out in ascending order, so when one fails every lower one has been begun and will report as well.
  for (int block = next_++; block < blocks_; block = next_++) {
    const int first = block * blockSize_;
    try {
      body_(object_, first, first + std::min(count_ - first, blockSize_), worker);
    } catch (...) {
      const std::lock_guard lock(mutex_);
      if (!failure_ || block < failedBlock_) {
        failure_ = std::current_exception();
        failedBlock_ = block;
      }
      next_ = blocks_;
    }
  }
}

void WorkerPool::serve(int worker) {
  for (unsigned seen = 0;;) {
    {
      std::unique_lock lock(mutex_);
      start_.wait(lock, [this, seen] { return ending_ || round_ != seen; });
      if (ending_) return;
      seen = round_;
    }
    takeBlocks(worker);
    const std::lock_guard lock(mutex_);
    if (--busy_ == 0) done_.notify_one();
  }
}

}  // namespace zema
