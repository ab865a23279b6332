// The viscous laws at a point.
#include <gtest/gtest.h>

#include <cmath>

#include "constitutive/fatigue.h"
#include "constitutive/kelvin_voigt_law.h"
#include "constitutive/law_samples.h"
#include "constitutive/sample_materials.h"
#include "constitutive/visco_damage_law.h"
#include "constitutive/viscoelastic_law.h"
#include "foundation/distance.h"
#include "foundation/errors.h"

namespace zema {
namespace {

Material viscousMaterial(double E, double Ep, double t) {
  Material material = isotropicMaterial(E, 0.0);
  material(slot::parallelSpring) = Ep;
  material(slot::relaxationTime) = t;
  return material;
}

/// Strength 3 and A = 0.3529412 of the exponential law for a length of 1.
Material viscoDamageMaterial(Criterion criterion) {
  Material material = viscousMaterial(30.0e3, 18.0e3, 10.0);
  material.NCRIT = criterion;
  material(slot::damageStress) = 3.0;
  material(slot::damageRatio) = 1.0;
  material(slot::tensionFractureEnergy) = 1.0e-3;
  return material;
}

double stressAfterHold(SamplePoint<4>& point, double strain, double dt, double T) {
  point.pass.DTIME = dt;
  double stress = 0.0;
  for (int i = 0; i < std::lround(T / dt); ++i) {
    stress = point.update(Strain<4>{{strain}}).stress[0];
    point.commit();
  }
  return stress;
}

TEST(ViscousLaws, HeldStrainRelaxesFromEToEMinusEp) {
  const std::vector<std::array<double, 3>> targets{
      {0.1, 0.1, 0.9970000},  {0.1, 5.0, 0.7657360}, {0.1, 10.0, 0.6218281}, {0.1, 20.0, 0.4816029},
      {0.1, 50.0, 0.4040580}, {1.0, 1.0, 0.97},      {1.0, 5.0, 0.7819176},  {1.0, 10.0, 0.6314480},
      {1.0, 20.0, 0.4848290}, {1.0, 50.0, 0.4037484}};
  for (const auto& [dt, T, stress] : targets) {
    SamplePoint<4> point(viscousMaterial(1000.0, 600.0, 10.0), VISCOE<4>);
    EXPECT_NEAR(stressAfterHold(point, 1.0e-3, dt, T), stress, 5.1e-8) << dt << ' ' << T;
  }
  SamplePoint<4> noTime(viscousMaterial(1000.0, 600.0, 0.0), VISCOE<4>);
  EXPECT_THROW(stressAfterHold(noTime, 1.0e-3, 0.1, 0.1), ConstitutiveStop);
}

TEST(ViscousLaws, DamperStressFollowsTheRateInDynamicRunsOnly) {
  SamplePoint<6> point(orthotropicMaterial(), VISCOK<6>);
  point.material(slot::relaxationTime) = 0.25;
  point.pass.DTIME = 0.01;
  const Strain<6> strain{{1e-3, 2e-3, -1e-3, 3e-3, 0.0, 1e-3}}, rate{{0.2, -0.1, 0.3, 0.1, 0.2, -0.3}};
  const ComponentStrain<6> moving{strain, strain, rate};
  const auto D = [&](const Strain<6>& e) { return CALTEN(point.elastic.record.VDMANX, e); };

  EXPECT_THROW((void)point.update(moving), ConstitutiveStop);
  point.pass.dynamic = true;
  const ComponentResult<6> first = point.update(moving);
  point.commit();
  const ComponentResult<6> second = point.update(moving);

  EXPECT_LT(distance(first.stress, D(strain) + 0.25 * D(rate)), 1.0e-14);
  const Strain<6> mapped{CALTEN(point.elastic.record.AEMX, rate.values)};
  const double power = 0.25 * dot(CALTEN(point.elastic.D, mapped), mapped);
  EXPECT_NEAR(first.sums.work, 0.01 * 0.125 * power, 1.0e-12);  // the rate has just begun
  EXPECT_NEAR(second.sums.work, 0.01 * 0.125 * 0.5 * power, 1.0e-12);
}

TEST(ViscousLaws, DamageScalesTheStressThatRelaxes) {
  for (const Criterion criterion : {Criterion::vonMises, Criterion::lublinerOller, Criterion::damagePlaneStress}) {
    SamplePoint<4> point(viscoDamageMaterial(criterion), VISDAM<4>);
    point.geometry.FRACL = 1.0;
    const std::vector<std::pair<double, double>> fast{{0.9, 2.7}, {1.5, 2.514670}, {2.0, 2.107856}, {3.0, 1.481018}};
    double energy = 0.0;
    for (const auto& [share, stress] : fast) {
      EnergySums sums;
      for (int i = 99; i >= 0; --i) {
        const auto result = point.update(Strain<4>{{(share - 0.005 * i) * 1.0e-4}});
        if (i == 0) {
          EXPECT_NEAR(result.stress[0], stress, 1.0e-6);
        }
        energy += result.sums.work;
        sums = result.sums;
        point.commit();
      }
      EXPECT_EQ(sums.volume, share < 1.0 ? 0.0 : 0.125);
    }
    const double d = point.committedInternal[internal::damage];
    EXPECT_NEAR(d, 0.835442, 1.0e-6);
    EXPECT_EQ(point.committedInternal[internal::dissipation] * 0.125, energy);
    // then the held stress relaxes like that of the undamaged solid, from its elastic value
    const double asymptote = 0.4 + 0.6 * std::exp(-1.0);
    EXPECT_NEAR(stressAfterHold(point, 3.0e-4, 0.01, 10.0) / 1.481018, asymptote, 1.0e-5);
  }
}

TEST(ViscousLaws, DamageComesEarlierAfterCyclesAndStopsWithTooLittleEnergy) {
  SamplePoint<4> point(viscoDamageMaterial(Criterion::vonMises), VISDAM<4>);
  point.pass.TCYCL = 1.0;
  point.pass.NCYCL = 1.0e6;
  point.geometry.FRACL = 1.0;
  const auto damageAt = [&](double strain) {
    (void)point.update(Strain<4>{{strain}});
    return point.trialInternal[internal::damage];
  };
  std::array<double, 7> values{};
  const double factor = STRFAT(point.pass, values, 3.0, 2.7, 3.0, 1.0);

  EXPECT_LT(factor, 0.9);
  EXPECT_NEAR(damageAt(0.9e-4), 1.0 - factor / 0.9 * std::exp((1.0 - 0.9 / factor) * 0.3529412), 1.0e-7);
  EXPECT_NEAR(point.trialInternal[internal::reducedYieldStress] / point.trialInternal[internal::yieldStress], factor,
              1.0e-12);
  point.geometry.FRACL = 7.0;  // E G / (l f^2) = 0.476
  EXPECT_THROW(damageAt(2.0e-4), ConstitutiveStop);
}

}  // namespace
}  // namespace zema
