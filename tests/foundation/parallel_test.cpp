// The worker pool: every item once, the first fault, and the same floating-point mode in every thread.
#include "foundation/parallel.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>
#include <string>

#include "foundation/clock.h"
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
  for (const int threads : {1, 4}) {
    WorkerPool pool(threads);
    for (int round = 0; round < 200; ++round) {
      std::string message;

      try {
        pool.forEachBlock(100, 1, [](int first, int, int) {
          if (first >= 3) throw std::runtime_error(std::to_string(first));
        });
      } catch (const std::runtime_error& fault) {
        message = fault.what();
      }

      ASSERT_EQ(message, "3");
    }
    int sum = 0;
    pool.forEachBlock(4, 4, [&sum](int first, int last, int) { sum += last - first; });
    EXPECT_EQ(sum, 4);
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

TEST(Clock, StartsAtItsFirstCall) {
  Clock clock;
  std::this_thread::sleep_for(std::chrono::milliseconds(20));

  const double first = clock.TIMUSE();
  std::this_thread::sleep_for(std::chrono::milliseconds(5));
  const double second = clock.TIMUSE();
  clock.CPUTIM(first, second);
  clock.CPUTIM(1.0, 3.0);

  EXPECT_EQ(first, 0.0);
  EXPECT_GE(second, 0.005);
  EXPECT_EQ(clock.TCPUT, second + 2.0);
  EXPECT_EQ(clock.TCPUX, clock.TCPUT);
}

}  // namespace
}  // namespace zema
