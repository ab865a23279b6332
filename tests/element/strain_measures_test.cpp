// Strains of known motions, and their bookkeeping over construction steps.
#include "element/strain_measures.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zema {
namespace {

void expectNear(const Strain<6>& strain, const Vector<6>& expected, double tolerance = 1e-15) {
  for (int r = 0; r < 6; ++r) EXPECT_NEAR(strain[r], expected[static_cast<std::size_t>(r)], tolerance) << "place " << r;
}

TEST(Strain, OfKnownMotions) {
  const double c = std::cos(0.5), s = std::sin(0.5);
  const StrainMeasure small = StrainMeasure::small, finite = StrainMeasure::finite;

  expectNear(strainOf<6>(Matrix<3>{{1, 2, 4, 8, 16, 32, 64, 128, 256}}, small), {1, 16, 10, 256, 68, 160});
  expectNear(strainOf<6>(Matrix<3>{{0, 1, -2, -1, 0, 3, 2, -3, 0}}, small), {});
  // x = X + 0.5 Y: E = (F^T F - I) / 2
  expectNear(strainOf<6>(Matrix<3>{{1, 0.5, 0, 0, 1, 0, 0, 0, 1}}, finite), {0, 0.125, 0.5, 0, 0, 0});
  expectNear(strainOf<6>(Matrix<3>{{c, -s, 0, s, c, 0, 0, 0, 1}}, finite), {});
}

TEST(Strain, RateIsTheDerivativeOfTheStrainInTime) {
  const Matrix<3> F{{1.2, 0.3, 0, 0.1, 0.9, 0.2, 0, -0.1, 1.1}};
  const Matrix<3> velocityGradient{{0.5, -1, 0.25, 2, 0.75, 0, 1, 0.5, -0.5}};
  constexpr double dt = 1e-6;
  Matrix<3> later = F, earlier = F;
  for (std::size_t k = 0; k < 9; ++k) {
    later.values[k] += dt * velocityGradient.values[k];
    earlier.values[k] -= dt * velocityGradient.values[k];
  }
  for (const StrainMeasure measure : {StrainMeasure::small, StrainMeasure::finite}) {
    const Strain<6> difference = 1.0 / (2.0 * dt) * (strainOf<6>(later, measure) - strainOf<6>(earlier, measure));

    expectNear(strainRate<6>(F, velocityGradient, measure), difference.values, 1e-9);
  }
}

}  // namespace
}  // namespace zema
