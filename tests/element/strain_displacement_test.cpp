// Internal forces and stiffness against the strain-displacement matrix written out and plain matrix products.
#include <gtest/gtest.h>

#include <random>

#include "element/element_stiffness.h"
#include "element/internal_force.h"

namespace zema {
namespace {

template <class Numbers>
Numbers filled(std::mt19937& generator, double size) {
  std::uniform_real_distribution<double> number(-size, size);
  Numbers all;
  for (double& value : all.values) value = number(generator);
  return all;
}

/// BMATX by the rows of the table, xx, yy, xy, zz, xz, yz; the fourth row in the plane is that of the hoop, with
/// N / r in the third row of G.
template <class Kin, int NNODE>
Matrix<Kin::NSTR1, Kin::directions * NNODE> writtenOut(const Matrix<Kin::functions, NNODE>& G, const Matrix<3>& F) {
  Matrix<Kin::NSTR1, Kin::directions * NNODE> B;
  for (int a = 0; a < NNODE; ++a) {
    for (int i = 0; i < Kin::directions; ++i) {
      const int column = Kin::directions * a + i;
      B(0, column) = F(i, 0) * G(0, a);
      B(1, column) = F(i, 1) * G(1, a);
      B(2, column) = F(i, 0) * G(1, a) + F(i, 1) * G(0, a);
      if constexpr (Kin::directions == 3) {
        B(3, column) = F(i, 2) * G(2, a);
        B(4, column) = F(i, 0) * G(2, a) + F(i, 2) * G(0, a);
        B(5, column) = F(i, 1) * G(2, a) + F(i, 2) * G(1, a);
      }
    }
    if constexpr (Kin::hasHoop) B(3, 2 * a) = F(2, 2) * G(2, a);
  }
  return B;
}

/// Adds the geometric stiffness, node pair by node pair.
template <class Kin, int NNODE>
void addGeometric(const Matrix<Kin::functions, NNODE>& G, const Stress<Kin::NSTR1>& S, double dV,
                  Matrix<Kin::directions * NNODE>& K) {
  constexpr int n = Kin::directions;
  const Matrix<3> tensor = tensorOf(S);
  for (int a = 0; a < NNODE; ++a)
    for (int b = 0; b < NNODE; ++b) {
      double g = 0.0;
      for (int k = 0; k < n; ++k)
        for (int l = 0; l < n; ++l) g += dV * G(k, a) * tensor(k, l) * G(l, b);
      for (int d = 0; d < n; ++d) K(n * a + d, n * b + d) += g;
      if (Kin::hasHoop) K(n * a, n * b) += dV * G(n, a) * tensor(2, 2) * G(n, b);
    }
}

/// A deformation gradient that is not symmetric; in the plane without entries out of it.
template <class Kin>
Matrix<3> someGradient() {
  Matrix<3> F{{1.2, 0.3, 0.1, -0.2, 0.9, 0.15, 0.05, -0.1, 1.1}};
  if (Kin::directions == 2) F(0, 2) = F(1, 2) = F(2, 0) = F(2, 1) = 0.0;
  return F;
}

template <class Kin, int NNODE>
void check(StrainMeasure measure, bool symmetricD) {
  constexpr int NEVAB = Kin::directions * NNODE;
  std::mt19937 random(7);
  StiffnessSum<Kin, NNODE> sum;
  NodalForces<Kin, NNODE> force;
  Matrix<NEVAB> K;
  Vector<NEVAB> f{};
  for (int point = 0; point < 3; ++point) {
    const auto G = filled<Matrix<Kin::functions, NNODE>>(random, 2);
    auto D = filled<Matrix<Kin::NSTR1>>(random, 5);
    if (symmetricD) D = PROMAT(D, D);
    const auto S = filled<Stress<Kin::NSTR1>>(random, 5);
    const Matrix<3> F = measure == StrainMeasure::finite ? someGradient<Kin>() : Matrix<3>::identity();
    const double dV = 0.3 + point;
    const auto B = writtenOut<Kin>(G, F);
    const auto product = transposeTimes(B, PROMA1(D, B));
    for (std::size_t k = 0; k < product.values.size(); ++k) K.values[k] += dV * product.values[k];
    for (int r = 0; r < Kin::NSTR1; ++r)
      for (int c = 0; c < NEVAB; ++c) f[static_cast<std::size_t>(c)] += dV * B(r, c) * S[r];
    if (measure == StrainMeasure::finite) {
      addGeometric<Kin, NNODE>(G, S, dV, K);
      sum.add(G, D, F, S, dV);
    } else {
      sum.add(G, D, dV);
    }
    addInternalForce<Kin>(G, someGradient<Kin>(), measure, S, dV, force);
  }

  std::array<double, static_cast<std::size_t>(NEVAB * NEVAB)> ESTIF{};
  sum.writeTo(ESTIF);

  for (std::size_t k = 0; k < ESTIF.size(); ++k) EXPECT_NEAR(ESTIF[k], K.values[k], 1e-11);
  for (int c = 0; c < NEVAB; ++c)
    EXPECT_NEAR(force(c % Kin::directions, c / Kin::directions), f[static_cast<std::size_t>(c)], 1e-12);
}

TEST(StrainDisplacement, ForcesAndStiffnessAreThePlainProducts) {
  using Axisymmetric = Kinematics<2, true>;
  for (const StrainMeasure measure : {StrainMeasure::small, StrainMeasure::finite})
    for (const bool symmetricD : {false, true}) {
      check<Kinematics<3>, 4>(measure, symmetricD);
      check<Kinematics<3>, 8>(measure, symmetricD);
      check<Kinematics<2>, 3>(measure, symmetricD);
      check<Kinematics<2>, 8>(measure, symmetricD);
      check<Axisymmetric, 4>(measure, symmetricD);
    }
}

}  // namespace
}  // namespace zema
