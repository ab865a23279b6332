// Moves between the reference and the current configuration.
#include "tensor/configuration.h"

#include <gtest/gtest.h>

namespace zema {
namespace {

constexpr Matrix<3> someGradient{{1.1, 0.3, -0.1, 0.2, 0.9, 0.25, -0.15, 0.05, 1.2}};
const Stress<6> someStress{{3.0, -1.0, 0.5, 2.0, -0.75, 1.25}};
const Strain<6> someStrain{{1.0, 0.2, -0.6, -0.4, 0.8, 0.3}};

void expectNear(const auto& actual, const auto& expected, double within = 1.0e-13) {
  ASSERT_EQ(actual.size(), expected.size());
  for (std::size_t i = 0; i < actual.size(); ++i) EXPECT_NEAR(actual[i], expected[i], within) << "place " << i;
}

Matrix<6> someMatrix() {
  Matrix<6> C;
  for (int i = 0; i < 6; ++i)
    for (int j = 0; j < 6; ++j) C(i, j) = 1.0 + 3.0 * i - 0.7 * j + (i == j ? 10.0 : 0.0);
  return C;
}

TEST(Configuration, ThereAndBack) {
  Stress<6> stress = someStress;
  Strain<6> strain = someStrain;

  PFB_STR(stress, someGradient, TensorMove::stressForward);
  PFB_STR(stress, someGradient, TensorMove::stressBack);
  PFB_STR(strain, someGradient, TensorMove::strainForward);
  PFB_STR(strain, someGradient, TensorMove::strainBack);

  expectNear(stress.values, someStress.values);
  expectNear(strain.values, someStrain.values);
}

TEST(Configuration, MatrixCodesComeInPairs) {
  for (const auto& [there, back] :
       {std::pair{MatrixMove::forward, MatrixMove::back}, std::pair{MatrixMove::strainForward, MatrixMove::strainBack},
        std::pair{MatrixMove::stressForward, MatrixMove::stressBack}}) {
    Matrix<6> C = someMatrix();

    PFB_C(C, someGradient, there);
    EXPECT_GT(std::abs(C(0, 0) - someMatrix()(0, 0)), 0.1);
    PFB_C(C, someGradient, back);

    expectNear(C.values, someMatrix().values, 1.0e-11);
  }
}

TEST(Configuration, MovedMatrixGivesTheMovedStress) {
  Stress<6> moved = CALTEN(someMatrix(), someStrain);
  PFB_STR(moved, someGradient, TensorMove::stressForward);
  Strain<6> strain = someStrain;
  PFB_STR(strain, someGradient, TensorMove::strainForward);
  Matrix<6> C = someMatrix();

  PFB_C(C, someGradient, MatrixMove::forward);

  expectNear(CALTEN(C, strain).values, moved.values, 1.0e-11);
}

TEST(Configuration, PlaneTensorsMoveLikeThoseInSpace) {
  constexpr Matrix<3> F{{1.1, 0.3, 0.0, 0.2, 0.9, 0.0, 0.0, 0.0, 1.2}};
  Strain<4> plane{{1.0, 0.2, -0.6, -0.4}};
  Strain<6> space{{1.0, 0.2, -0.6, -0.4, 0.0, 0.0}};

  PFB_STR(plane, F, TensorMove::strainForward);
  PFB_STR(space, F, TensorMove::strainForward);

  for (int i = 0; i < 4; ++i) EXPECT_NEAR(plane[i], space[i], 1.0e-14);
}

}  // namespace
}  // namespace zema
