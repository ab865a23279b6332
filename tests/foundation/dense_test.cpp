// Small dense matrices: products, inverses with their limits, principal values.
#include "foundation/dense.h"

#include <gmock/gmock.h>

#include <limits>

#include "foundation/distance.h"
#include "foundation/ends.h"

namespace zema {
namespace {

/// A regular matrix whose first diagonal entry is 0, so that elimination needs a row exchange.
constexpr Matrix<3> A3{{0.0, 2.0, 1.0, 1.0, 1.0, 0.0, 3.0, 0.0, 2.0}};

TEST(Dense, DeterminantsAndInversesOfAnySize) {
  const Matrix<5> A5{{4, 1, 0, 0, 2, 1, 5, 1, 0, 0, 0, 1, 6, 1, 0, 0, 0, 1, 7, 1, 2, 0, 0, 1, 8}};
  Matrix<2> B2;
  Matrix<3> B3;
  Matrix<5> B5;

  EXPECT_EQ(DETERM3D(Matrix<2>{{1, 2, 3, 4}}), -2.0);
  EXPECT_EQ(DETERM3D(A3), -7.0);
  ASSERT_TRUE(INVERT3D(Matrix<2>{{1, 2, 3, 4}}, B2));
  EXPECT_EQ(B2, (Matrix<2>{{-2.0, 1.0, 1.5, -0.5}}));
  for (const bool byPivots : {false, true}) {
    ASSERT_TRUE(byPivots ? INVMTX(A3, B3) && INVMTX(A5, B5) : INVERT3D(A3, B3) && INVERT3D(A5, B5));
    EXPECT_LT(distance(PROMA1(A3, B3), Matrix<3>::identity()), 1e-15);
    EXPECT_LT(distance(PROMA1(A5, B5), Matrix<5>::identity()), 1e-15);
  }
}

TEST(Dense, SingularMatricesLeaveTheOutputAsItStood) {
  const Matrix<3> before{{1, 2, 3, 4, 5, 6, 7, 8, 9}};
  Matrix<3> B = before;

  EXPECT_FALSE(INVERT3D(Matrix<3>{{1, 2, 3, 2, 4, 6, 0, 0, 1}}, B));
  EXPECT_FALSE(INVMTX(Matrix<3>{{1, 2, 3, 2, 4, 6, 0, 0, 1}}, B));
  EXPECT_FALSE(INVMTX(Matrix<3>{{std::numeric_limits<double>::quiet_NaN()}}, B));

  EXPECT_EQ(B, before);
}

TEST(Dense, GaussJordanReplacesZerosOfTheDiagonalAtTheStartOnly) {
  Matrix<2> A{{0, 2, 4, 0}}, singular{{1, 1, 1, 1}}, B;

  INGAUS(A, B);  // both zeros become 1e-15

  EXPECT_LT(distance(B, Matrix<2>{{0, 0.25, 0.5, 0}}), 1e-14);
  EXPECT_DOUBLE_EQ(B(1, 1), -single(1.0e-15F) / 8.0);
  EXPECT_EQ(endOf([&] { INGAUS(singular, B); }),
            "run end   >>>> ERROR EN LA RUTINA DE INVERSION DE MATRICES 0.0 1.0000000031710769E-30");
}

TEST(Dense, PrincipalValues) {
  EXPECT_EQ(principalValues(Matrix<3>{{1, 0, 0, 0, 3, 0, 0, 0, 2}}), (Vector<3>{3, 2, 1}));
  EXPECT_EQ(principalValues(Matrix<3>{}), (Vector<3>{0, 0, 0}));
  const auto near = [](const Vector<3>& values) { return testing::Pointwise(testing::DoubleNear(1e-14), values); };
  EXPECT_THAT(principalValues(Matrix<3>{{0, 5, 0, 5, 0, 0, 0, 0, 0}}), near({5, 0, -5}));
  EXPECT_THAT(principalValues(Matrix<3>{{1, 1, 1, 1, 1, 1, 1, 1, 1}}), near({3, 0, 0}));
}

TEST(Dense, PrincipalAxesRebuildTheMatrix) {
  const Matrix<3> A{{40, -12, 7e-6, -12, 3, 25, 7e-6, 25, -18}};

  const auto [values, Q] = principalAxes(A);

  const Matrix<3> D{{values[0], 0, 0, 0, values[1], 0, 0, 0, values[2]}};
  EXPECT_LT(distance(transposeTimes(Q, Q), Matrix<3>::identity()), 1e-15);
  EXPECT_LT(distance(PROMAT(PROMA1(Q, D), Q), A), 1e-13);
  EXPECT_TRUE(values[0] > values[1] && values[1] > values[2]);
}

}  // namespace
}  // namespace zema
