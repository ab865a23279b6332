// Hardening: what the curves hold, dissipate and refuse.
#include "constitutive/hardening.h"

#include <gmock/gmock.h>

#include <cmath>
#include <functional>
#include <tuple>

#include "constitutive/backward_euler.h"
#include "constitutive/characteristic_length.h"
#include "constitutive/hardening_curves.h"
#include "constitutive/law_samples.h"
#include "constitutive/sample_materials.h"
#include "foundation/ends.h"

namespace zema {
namespace {

using enum HardeningVariable;
constexpr double E = 30.0e9, f = 3.0e6, R = 3.0, l = 2.0, gc = 1.0e3, gf = gc / R;
const Slots noMore, peaked{{9, 0.2}, {10, 1.5 * f}, {15, 0.3}, {16, 1.3 * f}};

/// Law 8 under uniaxial stress of either sign: Mohr-Coulomb, flow along x alone.
struct Bar : SamplePoint<6> {
  Bar(HardeningVariable variable, int code, const Slots& more) : SamplePoint<6>(make(variable, code, more), ECUAD<6>) {
    geometry.FRACL = l;
    pass.TOLER = 1.0e-6;
  }
  static Material make(HardeningVariable variable, double code, const Slots& more) {
    const Slots curves{{6, 0.5}, {7, f}, {8, code}, {13, gf * l}, {14, code}, {19, gc * l}, {20, R}};
    const LawCodes codes{.NCRIT = Criterion::mohrCoulomb, .NCRIP = Criterion::damagePlaneStress, .NHARD = variable};
    return with(isotropicMaterial(E, 0.0, curves, codes), more);
  }
  double pull(double strain) {
    const double stress = update(Strain<6>{{strain}}).stress[0];
    commit();
    return stress;
  }
};

TEST(Hardening, EveryCurveDissipatesTheFractureEnergy) {
  const auto straight = [](double x) { return 1.0 - x / 2.0; };
  const auto exponential = [](double x) { return std::exp(-x); };
  struct Case {
    HardeningVariable variable;
    int code;
    Slots more;
    std::function<double(double)> closedForm;  // stress / strength over f (plastic strain) / g; none: with a peak
    double tolerance = 0.0, last = 5e-4;
  };
  const Slots parabola{{9, 8e-5}, {10, 1.1 * f / R}, {15, 5e-5}, {16, 1.1 * f}};
  const std::vector<Case> cases{{work, 1, noMore, straight, 5e-3},
                                {work, 2, noMore, exponential, 5e-3},
                                {work, 3, peaked, nullptr},
                                {work, 4, peaked, nullptr},
                                {unlabelled, 2, noMore, exponential, 5e-3},
                                {equivalentStrain, 1, {{10, 1.0}, {16, 1.0}}, straight, 1e-6},
                                {equivalentStrain, 2, noMore, exponential, 1e-6},
                                {equivalentStrain, 3, parabola, nullptr},
                                {strain, 1, {{9, 1.0}, {10, R}, {13, gc * l}}, straight, 1e-6, 0.0201},
                                {strain, 2, {{13, gc * l}}, exponential, 1e-6}};
  for (const double sign : {1.0, -1.0}) {
    for (const Case& c : cases) {
      SCOPED_TRACE(testing::Message() << static_cast<int>(c.variable) << " curve " << c.code << " sign " << sign);
      const double g = sign > 0.0 && c.variable != strain ? gf : gc, strength = sign > 0.0 ? f / R : f;
      Bar bar(c.variable, c.code, c.more);
      const auto &K = bar.committedInternal[internal::yieldStress], &H = bar.committedInternal[internal::hardening];
      double energy = 0.0, stress = 0.0, strain = 0.0;
      while (stress > c.last * strength || strain < 1e-4) {
        const double before = stress, lastK = K, lastH = H;
        strain += 1e-6;
        stress = std::abs(bar.pull(sign * strain));
        energy += (before + stress) / 2.0 * 1e-6;
        const double plastic = 1e-6 - (stress - before) / E;
        if (before > 0.05 * strength && lastH != 0.0 && plastic > 5e-7) {
          EXPECT_NEAR((K - lastK) / plastic / E, (H + lastH) / 2.0 / E, 0.08) << strain;
        }
        const double x = strength * (strain - stress / E) / g;
        if (c.closedForm && x > 1e-9 && stress > 0.02 * strength) {
          EXPECT_NEAR(stress / strength, c.closedForm(x), c.tolerance) << x;
        }
      }
      EXPECT_NEAR(energy / g, 1.0, 0.01);
    }
  }
}

TEST(Hardening, CurvesEndAndPeakWhereTheyAreToldTo) {
  const HardeningCurve peak{0, 3.0, 4.5, 0.2, -2.0, true, 1.0e-3}, automatic{0, 3.0, 4.5, 1.0e-4, 0.0, false, 2.0e-3};
  const HardeningCurve root{0, 3.0, 0.75, 4.0, 10.0, true}, falling{0, 3.0, 1.0, 1.0, -10.0, true};
  const TemperatureCurve table{{0.1, 0.2, 0.4}, {3.0, 5.0, 4.0}};
  const std::vector<std::array<CurveValue, 2>> pairs{
      {PLEQF1(peak, 1.01), {1e-11, 0.0}},    {PLEQF2(peak, 0.2), {4.5, PLEQF2(peak, 0.2).h}},
      {PLEQF2(peak, 1.01), {-1e-11, 0.0}},   {PLEQF3(peak, 0.6), {2.25, -8.4375}},
      {PLEQF4(automatic, 1.0), {1e-11, 0}},  {PLEQS1_E(falling, 0.5), {1e-11, 0.0}},
      {PLEQS3_E(automatic, 1e-4), {4.5, 0}}, {PLEQS3_E(automatic, 2e-4), {3.0, -7500.0}},
      {PLEQS1(root, 1.5, 0.25), {13, 20}},   {PLEQS1(root, 1.5, 0.0), {3.0, 0.0}},
      {PLEQS3(table, 0.0), {3.0, 0.0}},      {PLEQS1(falling, 1.0, 0.5), {3.0 * 0.019999999552965164, 0.0}},
      {PLEQS3(table, 0.3), {4.5, -5.0}},     {PLEQS3(table, 0.5), {4.0, 0.0}}};
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    EXPECT_NEAR(pairs[i][0].c, pairs[i][1].c, 1.0e-12) << i;
    EXPECT_NEAR(pairs[i][0].h, pairs[i][1].h, 1.0e-9) << i;
  }
}

TEST(Hardening, FrictionAndDilatancyFollowTheVariable) {
  Bar bar(work, 2, {{5, 0.2}, {21, 1.0}, {22, 1.0}});
  (void)bar.pull(-2.0e-4);
  const auto& INTVAR = bar.committedInternal;
  const double kappa = INTVAR[internal::kappa], S = std::sin(0.5), Sd = std::sin(0.2);

  EXPECT_GT(kappa, 0.1);
  const double phi = std::asin(2.0 * S * std::sqrt(0.8 * kappa) / (0.8 + kappa));
  EXPECT_NEAR(INTVAR[internal::frictionAngle], phi, 1.0e-12);
  EXPECT_NEAR(INTVAR[internal::dilatancyAngle], std::max(0.0, phi - std::asin((S - Sd) / (1.0 - S * Sd))), 1.0e-12);
}

TEST(Hardening, StopsWithItsWords) {
  using Case = std::tuple<HardeningVariable, int, Slots, std::string>;
  const std::vector<Case> cases{
      {work, 5, noMore, "NINDI MUST HAVE VALUES FROM 1 TO 4, ERROR IN PLCURV"},
      {work, 1, {{11, -E}, {12, 1}}, " >>>>  ERROR !!! -- pend. impuesta debe ser > "},
      {unlabelled, 2, {{19, 200.0}}, "  >>>> LONG. CARACTERISTICA DEL ELEMENTO MAYOR QUE EL LIMITE"},
      {work, 3, {{9, 0.2}, {10, 0.9 * f}, {15, 0.2}, {16, 2.0 * f}}, "  >>>> HARDENING IS NOT FINITE"},
      {equivalentStrain, 3, {{18, 1}}, "  >>>>  ERROR AT PLEQS3_E SLOPE MUST BE EVALUATED AUTOMATICALLY"},
      {equivalentStrain, 3, {{9, 1.0e-3}, {10, f}}, std::string(beyondLimit)},
      {strain, 1, noMore, "  >>>> ERROR AT PLEQS1  *** Q RATIO MUST BE HIGHER THAN ZERO"},
      {strain, 3, noMore, "  >>>> CURVE OF STRAIN HARDENING MUST BE 1, 2 OR 5"}};
  for (const auto& [variable, code, more, words] : cases) {
    Bar bar(variable, code, more);
    EXPECT_THAT(endOf([&bar] { return bar.pull(1.0e-3); }), testing::StartsWith("law stop " + words + ' '));
  }
}

}  // namespace
}  // namespace zema
