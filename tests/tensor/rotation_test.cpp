// Tensors and constitutive matrices in turned axes, and between the reference and the current configuration.
#include "tensor/rotation.h"

#include <gtest/gtest.h>

#include <cmath>

#include "foundation/near.h"
#include "tensor/configuration.h"

namespace zema {
namespace {

constexpr double tolerance = 1.0e-13;
const std::array<double, 3> skewAngles{25.0, 40.0, -70.0};
constexpr Matrix<3> someGradient{{1.1, 0.3, -0.1, 0.2, 0.9, 0.25, -0.15, 0.05, 1.2}};
const Strain<6> someStrain{{1.0, 0.2, -0.6, -0.4, 0.8, 0.3}};

/// An elastic matrix without any symmetry.
Matrix<6> someMatrix() {
  Matrix<6> C;
  for (int i = 0; i < 6; ++i)
    for (int j = 0; j < 6; ++j) C(i, j) = 1.0 + 3.0 * i - 0.7 * j + (i == j ? 10.0 : 0.0) + 0.3 * i * j;
  return C;
}

TEST(Rotation, EulerAnglesTurnAboutZThenTheNewXThenTheNewZ) {
  const double c = std::sqrt(3.0) / 2.0;
  expectNear(CALRME({30.0, 0.0, 0.0}).values, Vector<9>{c, -0.5, 0.0, 0.5, c, 0.0, 0.0, 0.0, 1.0});
  expectNear(CALRME({0.0, 30.0, 0.0}).values, Vector<9>{1.0, 0.0, 0.0, 0.0, c, -0.5, 0.0, 0.5, c});
  // x goes to y and stays; then z goes to x; then the new x to the new y, which is global z.
  expectNear(CALRME({90.0, 90.0, 90.0}).values, Vector<9>{0.0, 0.0, 1.0, 0.0, -1.0, 0.0, 1.0, 0.0, 0.0});
}

TEST(Rotation, TurnsTensorsBothWaysAndTheMatrixBetweenThem) {
  const Rotation<6> rotation(skewAngles);
  for (const Direction direction : {Direction::toGlobal, Direction::toLocal}) {
    const Matrix<3> R = direction == Direction::toGlobal ? rotation.R() : transpose(rotation.R());
    Strain<6> strain = someStrain;
    Matrix<6> C = someMatrix();
    Stress<6> stress = CALTEN(C, strain);
    const Matrix<3> turnedStress = PROMA1(R, PROMAT(tensorOf(stress), R));

    ROTV(stress, rotation, direction);
    ROTV(strain, rotation, direction);
    ROTM(C, rotation, direction);

    expectNear(tensorOf(stress).values, turnedStress.values);
    expectNear(tensorOf(strain).values, PROMA1(R, PROMAT(tensorOf(someStrain), R)).values);
    expectNear(CALTEN(C, strain).values, stress.values, 1.0e-12);
  }
}

TEST(Rotation, TinyAnglesAreNoRotation) {
  EXPECT_TRUE(Rotation<6>({3.0e-5, 0.0, 0.0}).none());
  EXPECT_FALSE(Rotation<6>({4.0e-5, 0.0, 0.0}).none());
}

TEST(Configuration, MovedMatrixGivesTheMovedStressAndEveryMoveHasItsBack) {
  Stress<6> stress = CALTEN(someMatrix(), someStrain);
  Strain<6> strain = someStrain;
  Matrix<6> C = someMatrix();
  PFB_STR(stress, someGradient, TensorMove::stressForward);
  PFB_STR(strain, someGradient, TensorMove::strainForward);
  PFB_C(C, someGradient, MatrixMove::forward);
  expectNear(CALTEN(C, strain).values, stress.values, 1.0e-11);

  PFB_STR(stress, someGradient, TensorMove::stressBack);
  PFB_STR(strain, someGradient, TensorMove::strainBack);
  expectNear(stress.values, CALTEN(someMatrix(), someStrain).values, 1.0e-12);
  expectNear(strain.values, someStrain.values);
  for (const auto& [there, back] :
       {std::pair{MatrixMove::forward, MatrixMove::back}, std::pair{MatrixMove::strainForward, MatrixMove::strainBack},
        std::pair{MatrixMove::stressForward, MatrixMove::stressBack}}) {
    C = someMatrix();
    PFB_C(C, someGradient, there);
    EXPECT_GT(std::abs(C(0, 0) - someMatrix()(0, 0)), 0.1);
    PFB_C(C, someGradient, back);
    expectNear(C.values, someMatrix().values, 1.0e-11);
  }
}

TEST(PlaneTensors, TurnAndMoveLikeThoseInSpace) {
  const std::array<double, 3> angles{35.0, 0.0, 0.0};
  constexpr Matrix<3> F{{1.1, 0.3, 0.0, 0.2, 0.9, 0.0, 0.0, 0.0, 1.2}};
  Strain<4> plane{{1.0, 0.2, -0.6, -0.4}};
  Strain<6> space{{1.0, 0.2, -0.6, -0.4, 0.0, 0.0}};

  ROTV(plane, Rotation<4>(angles), Direction::toLocal);
  ROTV(space, Rotation<6>(angles), Direction::toLocal);
  PFB_STR(plane, F, TensorMove::strainForward);
  PFB_STR(space, F, TensorMove::strainForward);

  for (int i = 0; i < 4; ++i) EXPECT_NEAR(plane[i], space[i], 1.0e-13);
}

}  // namespace
}  // namespace zema
