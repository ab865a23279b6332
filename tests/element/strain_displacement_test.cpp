// Internal forces and stiffness against the strain-displacement matrix written out and plain matrix products.
#include <gtest/gtest.h>

#include <random>

#include "element/element_stiffness.h"
#include "element/internal_force.h"

namespace zema {
namespace {

std::size_t at(int i) {
  return static_cast<std::size_t>(i);
}

struct Random {
  std::mt19937 generator{7};
  template <class Numbers>
  Numbers fill(double low, double high) {
    std::uniform_real_distribution<double> number(low, high);
    Numbers all;
    for (double& value : all.values) value = number(generator);
    return all;
  }
};

/// BMATX of a solid, by the rows of the table: xx, yy, xy, zz, xz, yz.
template <int NNODE>
Matrix<6, 3 * NNODE> inSpace(const Matrix<3, NNODE>& CARTD, const Matrix<3>& F) {
  Matrix<6, 3 * NNODE> B;
  for (int a = 0; a < NNODE; ++a) {
    const double Nx = CARTD(0, a), Ny = CARTD(1, a), Nz = CARTD(2, a);
    for (int i = 0; i < 3; ++i) {
      const int column = 3 * a + i;
      B(0, column) = F(i, 0) * Nx;
      B(1, column) = F(i, 1) * Ny;
      B(2, column) = F(i, 0) * Ny + F(i, 1) * Nx;
      B(3, column) = F(i, 2) * Nz;
      B(4, column) = F(i, 0) * Nz + F(i, 2) * Nx;
      B(5, column) = F(i, 1) * Nz + F(i, 2) * Ny;
    }
  }
  return B;
}

/// BMATX in the plane; the third row of G, when there is one, is N / r.
template <int rows, int NNODE>
Matrix<4, 2 * NNODE> inPlane(const Matrix<rows, NNODE>& G, const Matrix<3>& F) {
  Matrix<4, 2 * NNODE> B;
  for (int a = 0; a < NNODE; ++a) {
    for (int i = 0; i < 2; ++i) {
      const int column = 2 * a + i;
      B(0, column) = F(i, 0) * G(0, a);
      B(1, column) = F(i, 1) * G(1, a);
      B(2, column) = F(i, 0) * G(1, a) + F(i, 1) * G(0, a);
    }
    if (rows == 3) B(3, 2 * a) = F(2, 2) * G(2, a);
  }
  return B;
}

template <class Kin, int NNODE>
auto writtenOut(const Matrix<Kin::functions, NNODE>& G, const Matrix<3>& F) {
  if constexpr (Kin::directions == 3)
    return inSpace(G, F);
  else
    return inPlane(G, F);
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
void checkInternalForce(StrainMeasure measure) {
  Random random;
  const auto G = random.fill<Matrix<Kin::functions, NNODE>>(-2, 2);
  const auto sigma = random.fill<Stress<Kin::NSTR1>>(-5, 5);
  const Matrix<3> F = someGradient<Kin>();
  const auto B = writtenOut<Kin>(G, measure == StrainMeasure::finite ? F : Matrix<3>::identity());

  NodalForces<Kin, NNODE> f;
  addInternalForce<Kin>(G, F, measure, sigma, 0.7, f);

  for (int a = 0; a < NNODE; ++a)
    for (int i = 0; i < Kin::directions; ++i) {
      double expected = 0.0;
      for (int r = 0; r < Kin::NSTR1; ++r) expected += 0.7 * B(r, Kin::directions * a + i) * sigma[r];
      EXPECT_NEAR(f(i, a), expected, 1e-13);
    }
}

template <class Kin, int NNODE>
void checkStiffness(StrainMeasure measure, bool symmetricD) {
  constexpr int NEVAB = Kin::directions * NNODE;
  Random random;
  StiffnessSum<Kin, NNODE> sum;
  Matrix<NEVAB> expected;
  for (int point = 0; point < 3; ++point) {
    const auto G = random.fill<Matrix<Kin::functions, NNODE>>(-2, 2);
    auto D = random.fill<Matrix<Kin::NSTR1>>(-5, 5);
    if (symmetricD) D = PROMAT(D, D);
    const auto S = random.fill<Stress<Kin::NSTR1>>(-5, 5);
    const Matrix<3> F = measure == StrainMeasure::finite ? someGradient<Kin>() : Matrix<3>::identity();
    const double dV = 0.3 + point;
    const auto B = writtenOut<Kin>(G, F);
    const auto product = transposeTimes(B, PROMA1(D, B));
    for (std::size_t k = 0; k < product.values.size(); ++k) expected.values[k] += dV * product.values[k];
    if (measure == StrainMeasure::finite) {
      addGeometric<Kin, NNODE>(G, S, dV, expected);
      sum.add(G, D, F, S, dV);
    } else {
      sum.add(G, D, dV);
    }
  }

  std::array<double, static_cast<std::size_t>(NEVAB * NEVAB)> ESTIF{};
  sum.writeTo(ESTIF);

  for (int r = 0; r < NEVAB; ++r)
    for (int c = 0; c < NEVAB; ++c) {
      EXPECT_NEAR(ESTIF[at(r * NEVAB + c)], expected(r, c), 1e-11);
      if (symmetricD) {
        EXPECT_NEAR(ESTIF[at(r * NEVAB + c)], ESTIF[at(c * NEVAB + r)], 1e-11);
      }
    }
}

using Solid = Kinematics<3>;
using Plane = Kinematics<2>;
using Axisymmetric = Kinematics<2, true>;

TEST(StrainDisplacement, InternalForcesAreBTransposedTimesStress) {
  for (const StrainMeasure measure : {StrainMeasure::small, StrainMeasure::finite}) {
    checkInternalForce<Solid, 4>(measure);
    checkInternalForce<Solid, 8>(measure);
    checkInternalForce<Plane, 4>(measure);
    checkInternalForce<Axisymmetric, 6>(measure);
  }
}

TEST(StrainDisplacement, StiffnessIsTheTripleProductAndTheGeometricTerm) {
  for (const StrainMeasure measure : {StrainMeasure::small, StrainMeasure::finite})
    for (const bool symmetricD : {false, true}) {
      checkStiffness<Solid, 4>(measure, symmetricD);
      checkStiffness<Solid, 8>(measure, symmetricD);
      checkStiffness<Plane, 3>(measure, symmetricD);
      checkStiffness<Plane, 8>(measure, symmetricD);
      checkStiffness<Axisymmetric, 4>(measure, symmetricD);
      checkStiffness<Axisymmetric, 3>(measure, symmetricD);
    }
}

/// Work of the internal forces of a stress on u = H x, in a tetrahedron on the axes of volume 1/6.
double workOn(const Matrix<3>& H, const Stress<6>& sigma) {
  const Matrix<3, 4> CARTD{{-1, 1, 0, 0, -1, 0, 1, 0, -1, 0, 0, 1}};
  const Matrix<3, 4> nodes{{0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};
  const Matrix<3, 4> u = PROMA1(H, nodes);
  Matrix<3, 4> f;
  addInternalForce<Solid>(CARTD, {}, StrainMeasure::small, sigma, 1.0 / 6.0, f);
  double work = 0.0;
  for (std::size_t k = 0; k < f.values.size(); ++k) work += f.values[k] * u.values[k];
  return work;
}

TEST(StrainDisplacement, WorkOfTensionShearAndRotation) {
  const Stress<6> sigma{{1, 2, 4, 8, 16, 32}};

  EXPECT_NEAR(workOn({{0, 0, 0, 0, 0, 0, 0, 0, 1}}, sigma), 8.0 / 6.0, 1e-15);       // tension along z
  EXPECT_NEAR(workOn({{0, 0, 0, 0, 0, 0.5, 0, 0.5, 0}}, sigma), 32.0 / 6.0, 1e-15);  // shear yz of 1
  EXPECT_NEAR(workOn({{0, -1, 0.5, 1, 0, -2, -0.5, 2, 0}}, sigma), 0.0, 1e-15);      // rotation
}

}  // namespace
}  // namespace zema
