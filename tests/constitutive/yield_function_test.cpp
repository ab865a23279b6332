// Yield functions, their normals and principal stresses.
#include "constitutive/yield_function.h"

#include <gtest/gtest.h>

#include <numbers>
#include <random>
#include <vector>

#include "constitutive/principal_stresses.h"

namespace zema {
namespace {

constexpr double friction = 30.0 * std::numbers::pi / 180.0;

CriterionData lublinerOller(double R, double alpha, double gamma, double delta) {
  return {Criterion::lublinerOller, 0.0, R, alpha, gamma, delta};
}
const std::vector<CriterionData> surfaces{{Criterion::tresca},
                                          {Criterion::vonMises},
                                          {Criterion::mohrCoulomb, friction, 3.0},
                                          {Criterion::mohrCoulomb, friction, 10.0},
                                          {Criterion::druckerPrager, friction},
                                          lublinerOller(10.0, 0.12, 0.0, 0.0),
                                          lublinerOller(10.0, 0.12, 3.0, 0.4)};

template <int N>
YieldValue valueAt(const Stress<N>& stress, const CriterionData& criterion) {
  return PLINVA(invariantsOf(stress), criterion);
}

/// Random stresses off the corner zone, with a back stress that has no mean.
template <int N>
struct RandomStresses {
  std::mt19937 engine{7};
  Stress<N> next() {
    std::uniform_real_distribution<double> value(-10.0, 10.0);
    for (;;) {
      Stress<N> stress;
      for (double& component : stress.values) component = value(engine);
      const StressInvariants<N> invariants = invariantsOf(stress);
      if (std::abs(invariants.sin3theta) < 0.94 && std::abs(invariants.SGMAX()) > 0.01) return stress;
    }
  }
};

TEST(YieldFunction, OnsetOfYieldOfSimpleStates) {
  const std::vector<std::pair<Stress<6>, std::vector<double>>> multiplierOfYieldStress30{
      {{{-1.0}}, {30.0, 30.0, 30.0, 30.0, 30.0, 30.0}},
      {{{1.0}}, {30.0, 30.0, 10.0, 3.0, 12.857143, 3.0}},
      {{{0.0, 0.0, 1.0}}, {15.0, 17.320508, 7.5, 2.727273, 10.392305, 2.804915}},
      {{{-1.0, -1.0}}, {30.0, 30.0, 30.0, 30.0, 90.0, 34.736842}},
      {{{-1.0, -0.3, 0.0, 0.1}}, {27.272727, 31.108551, 23.076923, 15.0, 37.162052, 16.620864}}};
  for (const auto& [stress, multipliers] : multiplierOfYieldStress30) {
    for (std::size_t i = 0; i < multipliers.size(); ++i) {
      const Stress<4> inPlane{{stress[0], stress[1], stress[2], stress[3]}};
      EXPECT_NEAR(30.0 / valueAt(stress, surfaces[i]).F / multipliers[i], 1.0, 1.0e-7) << stress[0] << " surface " << i;
      EXPECT_NEAR(30.0 / valueAt(inPlane, surfaces[i]).F / multipliers[i], 1.0, 1.0e-7);
    }
  }
}

template <int N>
void compareNormals() {
  RandomStresses<N> random;
  for (int n = 0; n < 200; ++n) {
    const Stress<N> stress = random.next();
    const Stress<N> centre = n % 2 == 0 ? Stress<N>{} : Stress<N>{{0.3, -0.1, 0.05, -0.2}},
                    step = 1.0e-5 * random.next();
    for (std::size_t i = 0; i < surfaces.size(); ++i) {
      Strain<N> normal;
      ASSERT_TRUE(PLYIEL(stress, invariantsOf(stress, centre), surfaces[i], normal));
      if (invariantsOf(stress, centre).atCorner()) continue;
      CriterionData wider = surfaces[i];
      wider.angle += 1.0e-7;
      EXPECT_NEAR(valueAt(stress, surfaces[i]).dFdphi * 1.0e-7,
                  valueAt(stress, wider).F - valueAt(stress, surfaces[i]).F, 1.0e-11);
      const auto F = [&](const Stress<N>& at) { return PLINVA(invariantsOf(at, centre), surfaces[i]).F; };
      EXPECT_NEAR(F(stress + step) - F(stress - step), 2.0 * dot(step, normal), 1.0e-10) << "surface " << i;
    }
  }
}

TEST(YieldFunction, NormalIsTheDerivative) {
  compareNormals<4>();
  compareNormals<6>();
}

TEST(YieldFunction, CornerNormalsDoTheWorkOfTheYieldStress) {
  for (const CriterionData& surface : surfaces) {
    for (const Stress<6>& stress :
         {Stress<6>{{-2.0}}, Stress<6>{{2.0}}, Stress<6>{{-2.0, -2.0}}, Stress<6>{{3.0, 3.0, 0.0, -1.0}}}) {
      Strain<6> normal;
      ASSERT_TRUE(PLYIEL(stress, invariantsOf(stress), surface, normal));
      EXPECT_NEAR(dot(stress, normal), valueAt(stress, surface).F, 1.0e-12);  // F is homogeneous of degree 1
    }
  }
}

TEST(YieldFunction, WithoutADeviatorTheNormalStays) {
  const Stress<6> pressure{{-5.0, -5.0, 0.0, -5.0}}, stress{{1.0, -4.0, 2.0}};
  Strain<6> normal{{1.0}};
  EXPECT_FALSE(PLYIEL(pressure, invariantsOf(pressure), surfaces[1], normal));
  EXPECT_EQ(normal, (Strain<6>{{1.0}}));
  (void)PLYIEL(stress, invariantsOf(stress), {Criterion::damagePlaneStress}, normal);
  EXPECT_EQ(normal, (Strain<6>{{0.0, -1.0}}));
}

TEST(PrincipalStresses, AgreeWithEigenvaluesInSpaceAndInThePlane) {
  RandomStresses<6> random;
  for (int n = 0; n < 50; ++n) {
    const Stress<6> stress = random.next();
    const std::array<double, 3> principal = PRINSI(stress), expected = principalValues(tensorOf(stress));
    for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(principal[i], expected[i], 1.0e-12);
  }
  EXPECT_EQ(PRINSI(Stress<4>{{1.0, 7.0, 4.0, -2.0}}), (std::array{9.0, -1.0, -2.0}));
  EXPECT_EQ(PSTRE3({{-4.0, -4.0, 0.0, -4.0}}), (std::array{-4.0, -4.0, -4.0}));
  const TensionShare share = tensionShare({9.0, -1.0, -2.0});
  EXPECT_EQ((std::array{share.S, share.St, share.Sc, share.r()}), (std::array{12.0, 9.0, 3.0, 0.75}));
}

}  // namespace
}  // namespace zema
