// The viscous laws at a point.
#include <gtest/gtest.h>

#include <cmath>

#include "constitutive/fatigue.h"
#include "constitutive/kelvin_voigt_law.h"
#include "constitutive/law_samples.h"
#include "constitutive/sample_materials.h"
#include "constitutive/visco_damage_law.h"
#include "foundation/distance.h"
#include "foundation/errors.h"

namespace zema {
namespace {

/// E 30000 of which 18000 relax in 10 s; strength 3 and A = 0.3529412 of the exponential law for a length of 1.
Material viscoDamageMaterial(Criterion criterion) {
  return isotropicMaterial(30.0e3, 0.0, {{49, 18.0e3}, {50, 10.0}, {30, 3.0}, {31, 1.0}, {13, 1.0e-3}}, {criterion});
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

TEST(ViscousLaws, DamageScalesTheStressThatRelaxesAndComesEarlierAfterCycles) {
  for (const Criterion criterion : {Criterion::vonMises, Criterion::lublinerOller}) {
    SamplePoint<4> point(viscoDamageMaterial(criterion), VISDAM<4>);
    point.geometry.FRACL = 1.0;
    double energy = 0.0;
    for (const auto& [share, stress] : {std::pair{0.9, 2.7}, {1.5, 2.514670}, {2.0, 2.107856}, {3.0, 1.481018}}) {
      const ComponentResult<4> result = point.update(Strain<4>{{share * 1.0e-4}});
      EXPECT_NEAR(result.stress[0], stress, 1.0e-6);
      energy += result.sums.work;
      point.commit();
    }
    EXPECT_NEAR(point.committedInternal[internal::damage], 0.835442, 1.0e-6);
    EXPECT_EQ(point.committedInternal[internal::dissipation] * point.geometry.dV, energy);
    const double relaxed = 0.4 + 0.6 * std::exp(-1.0);  // of the damaged stress, held for the relaxation time
    point.pass.DTIME = 0.01;
    for (int i = 0; i < 999; ++i) {
      (void)point.update(Strain<4>{{3.0e-4}});
      point.commit();
    }
    EXPECT_NEAR(point.update(Strain<4>{{3.0e-4}}).stress[0] / 1.481018, relaxed, 1.0e-5);
  }
  SamplePoint<4> cycled(viscoDamageMaterial(Criterion::vonMises), VISDAM<4>);
  cycled.geometry.FRACL = cycled.pass.TCYCL = 1.0;
  cycled.pass.NCYCL = 1.0e6;
  std::array<double, 7> values{};
  const double factor = STRFAT(cycled.pass, values, 3.0, 2.7, 3.0, 1.0);
  (void)cycled.update(Strain<4>{{0.9e-4}});
  const double damage = 1.0 - factor / 0.9 * std::exp((1.0 - 0.9 / factor) * 0.3529412);
  EXPECT_NEAR(cycled.trialInternal[internal::damage], damage, 1.0e-7);
  cycled.geometry.FRACL = 7.0;  // E G / (l f^2) = 0.476
  EXPECT_THROW((void)cycled.update(Strain<4>{{2.0e-4}}), ConstitutiveStop);
}

}  // namespace
}  // namespace zema
