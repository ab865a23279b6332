// Hardening: what the curves hold, dissipate and refuse.
#include "constitutive/hardening.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "constitutive/backward_euler.h"
#include "constitutive/hardening_curves.h"
#include "constitutive/law_samples.h"
#include "constitutive/sample_materials.h"
#include "foundation/errors.h"

namespace zema {
namespace {

using Slots = std::vector<std::pair<int, double>>;
constexpr double f = 3.0, R = 1.5, Gf = 2.0e-3, Gc = 6.0e-3, l = 2.0;  // g 1e-3 in tension, 3e-3 in compression

/// A bar under uniaxial plastic flow of either sign.
struct Bar {
  Bar(HardeningVariable variable, const Slots& slots, double sign) : flow{{sign}} {
    material.NHARD = variable;
    const Slots common{{slot::yieldStress, f}, {slot::tensionFractureEnergy, Gf}, {slot::compressionFractureEnergy, Gc},
                       {slot::yieldRatio, R},  {slot::frictionAngle, 0.5},        {slot::dilatancyAngle, 0.2}};
    for (const auto& [place, value] : common) material(place) = value;
    for (const auto& [place, value] : slots) material(place) = value;
    geometry.FRACL = l;
    state.INTVAR[internal::flowScale] = 1.0;
    grow(0.0);
  }
  [[nodiscard]] double F(double stress) const { return stress < 0.0 ? -stress : R * stress; }
  [[nodiscard]] double K() const { return state.INTVAR[internal::yieldStress]; }
  [[nodiscard]] double H() const { return state.INTVAR[internal::hardening]; }
  [[nodiscard]] double phi() const { return state.INTVAR[internal::frictionAngle]; }
  [[nodiscard]] double stress() const { return flow[0] * K() / F(flow[0]); }
  void grow(double plastic, double atStress = 1.0) {
    const Stress<6> SIGMA{{flow[0] * std::abs(atStress)}};
    PLVARI<6>({pass, geometry, where, material, elastic, gradient},
              {SIGMA, plastic * flow, flow, {F(SIGMA[0]), dFdphi}, state.INTVAR[internal::kappa], true}, state);
  }

  static constexpr double dFdphi = 0.4;
  Material material = isotropicMaterial(30.0e3, 0.0);
  Strain<6> flow;
  PassContext pass;
  PointGeometry geometry;
  PointPlace where;
  ElasticMaterial<6> elastic;
  Matrix<3> gradient;
  LawState state;
};

using enum HardeningVariable;
const Slots peaked{{9, 0.2}, {10, 4.5}, {15, 0.3}, {16, 4.0}};
Slots with(int code, const Slots& more) {
  Slots slots{{slot::tensionCurve, code}, {slot::compressionCurve, code}};
  slots.insert(slots.end(), more.begin(), more.end());
  return slots;
}

TEST(Hardening, EveryCurveDissipatesTheFractureEnergyAndKnowsItsSlope) {
  const Slots straight{{9, 1.0}, {10, 1.0}, {16, 1.0}}, parabola{{9, 1.0e-4}, {10, 2.5}, {15, 1.5e-4}, {16, 4.0}};
  const std::vector<std::pair<HardeningVariable, Slots>> cases{
      {work, with(1, {})},
      {work, with(2, {{slot::frictionLaw, 1.0}, {slot::dilatancyLaw, 1.0}})},
      {work, with(3, peaked)},
      {work, with(4, peaked)},
      {unlabelled, with(2, {})},
      {equivalentStrain, with(1, straight)},
      {equivalentStrain, with(2, {})},
      {equivalentStrain, with(3, parabola)},
      {strain, with(1, {{9, 1.0}, {10, R}})},
      {strain, with(2, {})}};
  for (const double sign : {1.0, -1.0}) {
    for (const auto& [variable, slots] : cases) {
      const std::string name = std::to_string(static_cast<int>(variable)) + " curve " + std::to_string(slots[0].second);
      Bar bar(variable, slots, sign);
      const double g = (sign > 0.0 || variable == strain ? Gf : Gc) / l;
      const double step = g / f / 400.0;
      double energy = 0.0;
      for (int i = 0; i < 40 * 400 && (bar.H() != 0.0 || i < 2); ++i) {
        const double before = bar.stress();
        if (i % 97 == 50 && bar.K() > 0.1 * f) {
          Bar middle = bar, end = bar;
          middle.grow(0.01 * step, before);
          end.grow(0.02 * step, before);
          const double slope = (end.K() - bar.K() - Bar::dFdphi * (end.phi() - bar.phi())) / (0.02 * step);
          EXPECT_NEAR(middle.H() / slope, 1.0, 1.0e-3) << name << " step " << i;
        }
        bar.grow(step, before);
        energy += std::abs(before + bar.stress()) / 2.0 * step;
      }
      EXPECT_NEAR(energy / g, 1.0, 0.01) << name << " sign " << sign;
    }
  }
}

/// Uniaxial stress of law 8 after a plastic strain, reached in equal steps from the elastic limit on.
double stressOfReturn(HardeningVariable variable, int code, double plastic, double target, int steps) {
  Material material = isotropicMaterial(30.0e3, 0.0);
  material.NCRIP = Criterion::damagePlaneStress;  // flow along x alone
  material.NHARD = variable;
  material.NTINT = Law::backwardEuler;
  const Slots slots = with(code, {{slot::yieldStress, f},
                                  {slot::yieldRatio, 1.0},
                                  {slot::frictionAngle, 0.0},
                                  {slot::tensionFractureEnergy, 1.0e-3},
                                  {slot::compressionFractureEnergy, 1.0e-3}});
  for (const auto& [place, value] : slots) material(place) = value;
  SamplePoint<6> point(material, ECUAD<6>);
  point.geometry.FRACL = 1.0;
  point.pass.TOLER = 1.0e-6;
  const double E = 30.0e3, limit = f / E, end = plastic + target / E;
  double stress = 0.0;
  for (int i = 0; i <= steps; ++i) {
    stress = point.update(Strain<6>{{limit + (end - limit) * i / steps}}).stress[0];
    point.commit();
  }
  return stress;
}

TEST(Hardening, ReturnFollowsTheCurvesInTheLimitOfSmallSteps) {
  struct Case {
    HardeningVariable variable;
    int code;
    double plastic, stress, tolerance;
  };
  const std::vector<Case> cases{{work, 2, 1.0e-4, 2.222455, 2e-5},
                                {work, 2, 2.0e-4, 1.646435, 2e-5},
                                {work, 2, 4.0e-4, 0.903583, 2e-5},
                                {work, 1, 1.0e-4, 2.55, 2e-5},
                                {work, 1, 2.0e-4, 2.1, 2e-5},
                                {work, 1, 4.0e-4, 1.2, 2e-5},
                                {strain, 2, 1.0e-4, 2.222455, 1e-6},
                                {strain, 2, 4.0e-4, 0.903583, 1e-6},
                                {equivalentStrain, 2, 2.0e-4, 1.646435, 1e-6}};
  for (const Case& c : cases) {
    const double coarse = stressOfReturn(c.variable, c.code, c.plastic, c.stress, 200);
    const double fine = stressOfReturn(c.variable, c.code, c.plastic, c.stress, 400);
    EXPECT_NEAR(2.0 * fine - coarse, c.stress, c.tolerance) << c.code << ' ' << c.plastic;  // error of first order
  }
}

TEST(Hardening, CurvesPassThroughTheirPoints) {
  const HardeningCurve peak{0, 3.0, 4.5, 0.2, -2.0, true, 1.0e-3}, automatic{0, 3.0, 4.5, 1.0e-4, 0.0, false, 2.0e-3};
  const HardeningCurve root{0, 3.0, 0.75, 4.0, 10.0, true, 1.0e-3};  // 3 + 10 (4 kappa)^(0.75/1.5)
  const TemperatureCurve table{{0.1, 0.2, 0.4}, {3.0, 5.0, 4.0}};
  const auto expect = [](CurveValue value, double c, double h) {
    EXPECT_NEAR(value.c, c, 1.0e-12);
    EXPECT_NEAR(value.h, h, 1.0e-9);
  };

  expect(PLEQF2(peak, 0.2), 4.5, PLEQF2(peak, 0.2).h);
  expect(PLEQF2(peak, 0.0), 3.0, PLEQF2(peak, 0.0).h);
  expect(PLEQF3(peak, 0.0), 3.0, 15.0);
  expect(PLEQF3(peak, 0.2), 4.5, 0.0);
  expect(PLEQF3(peak, 0.6), 2.25, -8.4375);
  expect(PLEQF4({0, 3.0, 0.0, 0.0, 6000.0, true, 1.0e-3}, 0.5), std::sqrt(15.0), 6.0 / std::sqrt(15.0));
  expect(PLEQF4(automatic, 1.0), 1.0e-11, 0.0);
  for (const auto curve : {PLEQF1, PLEQF4}) EXPECT_EQ(curve(automatic, 1.01).c, 1.0e-11);
  for (const auto curve : {PLEQF2, PLEQF3}) EXPECT_EQ(curve(automatic, 1.01).c, -1.0e-11);
  expect(PLEQS3_E(automatic, 1.0e-4), 4.5, 0.0);
  expect(PLEQS3_E(automatic, 2.0e-4), 3.0, -9.0 / (2.0e-3 - 8.0e-4));
  expect(PLEQS1_E({0, 3.0, 1.0, 0.0, -10.0, true}, 0.5), 1.0e-11, 0.0);
  expect(PLEQS1(root, 1.5, 0.25), 13.0, 20.0);
  expect(PLEQS1(root, 1.5, 0.0), 3.0, 0.0);
  expect(PLEQS1({0, 3.0, 1.0, 1.0, -10.0, true}, 1.0, 0.5), 3.0 * 0.019999999552965164, 0.0);
  const std::vector<std::array<double, 3>> points{
      {0.0, 3.0, 0.0}, {0.15, 4.0, 20.0}, {0.3, 4.5, -5.0}, {0.5, 4.0, 0.0}};
  for (const auto& [kappa, c, h] : points) expect(PLEQS3(table, kappa), c, h);
}

TEST(Hardening, StopsWithItsWords) {
  struct Case {
    HardeningVariable variable;
    Slots slots;
    std::string words;
  };
  const double flag = 1.0;
  const std::vector<Case> cases{
      {work, with(5, {}), "NINDI MUST HAVE VALUES FROM 1 TO 4, ERROR IN PLCURV"},
      {work, with(1, {{11, -5000.0}, {12, flag}}), " >>>>  ERROR !!! -- pend. impuesta debe ser > "},
      {work, with(2, {{19, 3.0e-4}}), "  >>>> CHARACTERISTIC LENGTH OF THE ELEMENT BEYOND LIMIT"},
      {unlabelled, with(2, {{19, 3.0e-4}}), "  >>>> LONG. CARACTERISTICA DEL ELEMENTO MAYOR QUE EL LIMITE"},
      {work, with(3, {{9, 0.2}, {10, 2.9}, {15, 0.2}, {16, 4.0}}), "  >>>> HARDENING IS NOT FINITE"},
      {equivalentStrain, with(4, {}), "NINDI MUST HAVE VALUES FROM 1 TO 4, ERROR IN PLCURV_E"},
      {equivalentStrain, with(1, {}), "  >>>> ERROR AT PLEQS1_E  *** Q RATIO MUST BE HIGHER THAN ZERO"},
      {equivalentStrain, with(2, {{12, flag}}), "  >>>>  ERROR AT PLEQS2_E SLOPE MUST BE EVALUATED AUTOMATICALLY"},
      {equivalentStrain, with(3, {{18, flag}}), "  >>>>  ERROR AT PLEQS3_E SLOPE MUST BE EVALUATED AUTOMATICALLY"},
      {equivalentStrain, with(3, {{9, 1.0e-3}, {10, 4.0}}), "  >>>> CHARACTERISTIC LENGTH OF THE ELEMENT BEYOND LIMIT"},
      {strain, with(1, {}), "  >>>> ERROR AT PLEQS1  *** Q RATIO MUST BE HIGHER THAN ZERO"},
      {strain, with(2, {{12, flag}}), "  >>>>  ERROR AT PLEQS2 SLOPE MUST BE EVALUATED AUTOMATICALLY"},
      {strain, with(3, {}), "  >>>> CURVE OF STRAIN HARDENING MUST BE 1, 2 OR 5"}};
  for (const Case& c : cases) {
    try {
      Bar(c.variable, c.slots, 1.0).grow(1.0e-5);
      ADD_FAILURE() << "no stop: " << c.words;
    } catch (const ConstitutiveStop& stop) {
      EXPECT_EQ(stop.what(), c.words);
    }
  }
}

}  // namespace
}  // namespace zema
