// Internal forces against the work of the stresses, and stiffness against differences of the forces.
#include <gtest/gtest.h>

#include <random>

#include "element/element_stiffness.h"
#include "element/internal_force.h"
#include "foundation/distance.h"

namespace zema {
namespace {

template <class Numbers>
Numbers filled(std::mt19937& generator, double size) {
  std::uniform_real_distribution<double> number(-size, size);
  Numbers all;
  for (double& value : all.values) value = number(generator);
  return all;
}

/// A deformation gradient that is not symmetric; in the plane without entries out of it.
template <class Kin>
Matrix<3> someGradient() {
  Matrix<3> F{{1.2, 0.3, 0.1, -0.2, 0.9, 0.15, 0.05, -0.1, 1.1}};
  if (Kin::directions == 2) F(0, 2) = F(1, 2) = F(2, 0) = F(2, 1) = 0.0;
  return F;
}

/// The gradient F + dF, dF by displacements u of the nodes of an element with gradient functions G; the last function
/// of the hoop is N / r.
template <class Kin, int NNODE>
Matrix<3> moved(Matrix<3> F, const Matrix<Kin::functions, NNODE>& G, const NodalForces<Kin, NNODE>& u) {
  for (int a = 0; a < NNODE; ++a) {
    for (int i = 0; i < Kin::directions; ++i)
      for (int k = 0; k < Kin::directions; ++k) F(i, k) += G(k, a) * u(i, a);
    if (Kin::hasHoop) F(2, 2) += G(Kin::directions, a) * u(0, a);
  }
  return F;
}

template <class Kin, int NNODE>
void check(StrainMeasure measure, bool symmetricD) {
  constexpr int NEVAB = Kin::directions * NNODE, NSTR1 = Kin::NSTR1;
  constexpr double h = 1e-5;
  const Matrix<3> F = someGradient<Kin>();
  std::mt19937 random(7);
  StiffnessSum<Kin, NNODE> sum;
  NodalForces<Kin, NNODE> force;
  Vector<NEVAB> virtualWork{};
  Matrix<NEVAB> K;
  for (const double dV : {0.3, 1.3, 2.3}) {
    const auto G = filled<Matrix<Kin::functions, NNODE>>(random, 2);
    auto D = filled<Matrix<NSTR1>>(random, 5);
    if (symmetricD) D = PROMAT(D, D);
    const auto S = filled<Stress<NSTR1>>(random, 5);
    measure == StrainMeasure::finite ? sum.add(G, D, F, S, dV) : sum.add(G, D, dV);
    addInternalForce<Kin>(G, F, measure, S, dV, force);
    for (int c = 0; c < NEVAB; ++c)
      for (const double step : {h, -h}) {
        NodalForces<Kin, NNODE> u, f;
        u(c % Kin::directions, c / Kin::directions) = step;
        const Matrix<3> there = moved<Kin>(F, G, u);
        const Strain<NSTR1> change = strainOf<NSTR1>(there, measure) - strainOf<NSTR1>(F, measure);
        virtualWork[static_cast<std::size_t>(c)] += dV * dot(S, change) / (2.0 * step);
        addInternalForce<Kin>(G, there, measure, S + CALTEN(D, change), dV, f);
        for (int r = 0; r < NEVAB; ++r) K(r, c) += f(r % Kin::directions, r / Kin::directions) / (2.0 * step);
      }
  }

  std::array<double, static_cast<std::size_t>(NEVAB * NEVAB)> ESTIF{};
  sum.writeTo(ESTIF);

  for (std::size_t k = 0; k < ESTIF.size(); ++k) EXPECT_NEAR(ESTIF[k], K.values[k], 1e-6);
  for (int c = 0; c < NEVAB; ++c)
    EXPECT_NEAR(force(c % Kin::directions, c / Kin::directions), virtualWork[static_cast<std::size_t>(c)], 1e-7);
}

TEST(StrainDisplacement, ForcesDoTheWorkOfTheStressesAndTheStiffnessIsTheirDerivative) {
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

TEST(Strain, RateIsTheDerivativeOfTheStrainInTime) {
  const Matrix<3> F{{1.2, 0.3, 0, 0.1, 0.9, 0.2, 0, -0.1, 1.1}}, L{{0.5, -1, 0.25, 2, 0.75, 0, 1, 0.5, -0.5}};
  constexpr double dt = 1e-6;
  Matrix<3> later = F, earlier = F;
  for (std::size_t k = 0; k < 9; ++k) {
    later.values[k] += dt * L.values[k];
    earlier.values[k] -= dt * L.values[k];
  }
  for (const StrainMeasure measure : {StrainMeasure::small, StrainMeasure::finite}) {
    const Strain<6> change = strainOf<6>(later, measure) - strainOf<6>(earlier, measure);
    EXPECT_LT(distance(strainRate<6>(F, L, measure), 0.5 / dt * change), 1e-9);
  }
}

}  // namespace
}  // namespace zema
