// The worker pool: every item once, the first fault, and the same floating-point mode in every thread.
#include "foundation/parallel.h"

#include <gmock/gmock.h>

#include <limits>
#include <stdexcept>
#include <string>

#include "foundation/floating_point.h"

namespace zema {
namespace {

TEST(WorkerPool, EveryItemIsDoneOnce) {
  for (const int threads : {1, 2, 5}) {
    WorkerPool pool(threads);
    EXPECT_EQ(pool.size(), threads);
    for (const int count : {0, 1, 7, 64, 1001}) {
      std::vector<int> done(static_cast<std::size_t>(count), 0);
      std::atomic<bool> right = true;

      pool.forEachBlock(count, 8, [&](int first, int last, int worker) {
        if (first % 8 != 0 || last > count || last - first > 8 || worker < 0 || worker >= threads) right = false;
        for (int i = first; i < last; ++i) ++done[static_cast<std::size_t>(i)];
      });

      EXPECT_TRUE(right);
      EXPECT_EQ(done, std::vector<int>(static_cast<std::size_t>(count), 1));
    }
  }
}

TEST(WorkerPool, TheFaultOfTheLowestBlockIsThrown) {
  const auto failing = [](int first, int, int) {
    if (first >= 3) throw std::runtime_error(std::to_string(first));
  };
  for (const int threads : {1, 4}) {
    WorkerPool pool(threads);
    for (int round = 0; round < 200; ++round)
      ASSERT_THAT([&] { pool.forEachBlock(100, 1, failing); }, testing::ThrowsMessage<std::runtime_error>("3"));
  }
}

TEST(WorkerPool, WorkersFlushSubnormalsWhenTheirMakerDoes) {
#if defined(__SSE2__)
  std::vector<double> halves(16, 1.0);
  volatile double smallest = std::numeric_limits<double>::min();

  std::thread([&halves, &smallest] {
    flushSubnormals();
    WorkerPool pool(4);
    pool.forEachBlock(16, 1, [&](int i, int, int) { halves[static_cast<std::size_t>(i)] = smallest / 2; });
  }).join();

  EXPECT_EQ(halves, std::vector<double>(16, 0.0));
  EXPECT_GT(smallest / 2, 0.0);
#else
  GTEST_SKIP() << "the processor has no such mode";
#endif
}

}  // namespace
}  // namespace zema
