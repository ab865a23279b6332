// Fork and join over blocks of a range, with results that do not depend on the number of threads.
#pragma once

#include <atomic>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace zema {

/// Threads that are made once and work on blocks of a range together with the caller.
///
/// What a block computes must depend on its range alone; `worker` may choose scratch memory only. Then a run gives the
/// same bits with any number of threads.
class WorkerPool {
 public:
  /// threads: workers with the calling thread; 0 takes one per processor, fewer
  /// when the system grants no more. A pool of 1 runs everything in the caller.
  explicit WorkerPool(int threads = 0);
  ~WorkerPool();
  WorkerPool(const WorkerPool&) = delete;
  WorkerPool& operator=(const WorkerPool&) = delete;

  /// Number of workers, the calling thread included.
  [[nodiscard]] int size() const { return static_cast<int>(threads_.size()) + 1; }

  /// Calls f(first, last, worker) for the blocks [first, last) of 0..count-1, worker from 0 to size()-1, and returns
  /// when all are done. When blocks throw, the exception of the lowest block is thrown again here and blocks that were
  /// not begun are left out. Not to be called from inside f.
  template <class F>
  void forEachBlock(int count, int blockSize, F&& f) {
    auto call = [&f](int first, int last, int worker) { f(first, last, worker); };
    const Body body = [](void* object, int first, int last, int worker) {
      (*static_cast<decltype(call)*>(object))(first, last, worker);
    };
    run(count, blockSize, body, &call);
  }

 private:
  using Body = void (*)(void*, int first, int last, int worker);

  void run(int count, int blockSize, Body body, void* object);
  void takeBlocks(int worker);
  void serve(int worker);

  std::vector<std::thread> threads_;
  std::mutex mutex_;
  std::condition_variable start_;
  std::condition_variable done_;
  unsigned round_ = 0;  // number of the present call
  int busy_ = 0;        // threads that still work on it
  bool ending_ = false;

  Body body_ = nullptr;
  void* object_ = nullptr;
  int count_ = 0;
  int blockSize_ = 1;
  int blocks_ = 0;
  std::atomic<int> next_ = 0;
  std::exception_ptr failure_;
  int failedBlock_ = 0;
};

}  // namespace zema
