// Elimination in small full systems, against solutions by hand.
#include "solver/dense_elimination.h"

#include <gmock/gmock.h>

#include "foundation/errors.h"
#include "job/console.h"

namespace zema {
namespace {

TEST(DenseElimination, PrescribedPositionsGetTheirMotionAndAReaction) {
  const std::vector<double> K{4, 1, 0, 1, 3, 1, 0, 1, 2}, load{3, 4, 5};
  DenseSystem system{K, load, {0, 1, 0}, {9, 0.5, 9}, {}, {}};
  GREDUC(system);
  BAKSUB(system);
  EXPECT_EQ(system.ASDIS, (std::vector{0.625, 0.5, 2.25}));        // (3 - 0.5) / 4 and (5 - 0.5) / 2
  EXPECT_EQ(system.REACTM, (std::vector{0.0, 4.375 - 4.0, 0.0}));  // 0.625 + 1.5 + 2.25 less the load

  system = {{0, 1, 1, 0.9e-10}, {1, 1}, {1, 0}, {1, 0}, {}, {}};  // the vanishing pivot of a free position alone counts
  EXPECT_THAT([&] { GREDUC(system); },
              testing::Throws<PlainStop>(testing::Property(&PlainStop::console, "     INCORRECT PIVOT\n")));
}

TEST(DenseElimination, SmallSystemsByColumnsAreSolvedAndAZeroOnTheDiagonalIsSaid) {
  std::vector<double> A{2, 4, 2, 1, 3, 4, 1, 3, 9}, b{5, 13, 19};  // rows 2 1 1, 4 3 3, 2 4 9
  testing::internal::CaptureStdout();
  SOLSYS(A, b, Console{});
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(b, (std::vector{1.0, 2.0, 1.0}));

  A = {1, 1, 1, 1};
  b = {1, 1};
  testing::internal::CaptureStdout();
  SOLSYS(A, b, Console{});
  EXPECT_EQ(testing::internal::GetCapturedStdout(), " Termino 2 de la Diagonal igual a cero\n");
}

}  // namespace
}  // namespace zema
