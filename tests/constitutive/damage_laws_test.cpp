// Damage laws at a point: closed forms, dissipation, stops.
#include <gmock/gmock.h>

#include <cmath>
#include <tuple>

#include "constitutive/law_samples.h"
#include "constitutive/law_table.h"
#include "constitutive/sample_materials.h"
#include "constitutive/spectral_split.h"
#include "foundation/distance.h"
#include "foundation/ends.h"

namespace zema {
namespace {

constexpr double E = 30.0e3, f = 3.0, g = 1.0e-3;  // f / E = 1e-4

Material damageMaterial(Law law, Criterion criterion, const Slots& more = {}) {
  const double strength = criterion == Criterion::damageSimoJu ? f / std::sqrt(E) : f;
  const Slots slots{{6, 0.5}, {20, 1.0}, {23, 0.12}, {24, 2.0}, {30, strength}, {31, 1.0}, {54, g}};
  return with(isotropicMaterial(E, 0.0, slots, {.NCRIT = criterion, .NCRIP = Criterion::vonMises, .NTINT = law}), more);
}

/// The third criterion with a strength of 30 in compression and 3 in tension.
Material mohrCoulombMaterial(Law law, const Slots& more = {}) {
  return with(damageMaterial(law, Criterion::mohrCoulomb, {{30, 10.0 * f}, {31, 10.0}, {20, 10.0}}), more);
}

/// Its two strengths follow hardening curves.
Material generalMaterial(double curve) {
  const Slots curves{{7, f}, {8, curve}, {14, curve}, {13, g}, {19, g}};
  return damageMaterial(Law::generalDamage, Criterion::vonMises, curves);
}

Material twoMeasureMaterial(const Slots& more = {}) {
  const Slots strengths{{slot::damageStress, 30.0}, {slot::tensionPeakStress, f}, {19, 1.0}};
  return with(damageMaterial(Law::tensionCompressionDamageAlternative, Criterion::vonMises, strengths), more);
}

Material oneMeasureMaterial(double code) {
  const Slots curves{{51, code}, {95, 0.6}, {96, 0.9}, {97, 0.3}, {94, code}, {98, 0.6}, {99, 0.9}, {100, 0.3}};
  return mohrCoulombMaterial(Law::tensionCompressionDamage, curves);
}

SamplePoint<6> pointOf(const Material& material) {
  SamplePoint<6> point(material, lawOf<6>(material, 1));
  point.geometry.FRACL = 1.0;
  return point;
}

Strain<6> along(double strain) {
  return {{strain, 0.0, 0.0, 0.0, 0.0, 0.0}};
}

/// Strains a place in many small steps from one value to another, commits each, and gives the work done.
double drive(SamplePoint<6>& point, int place, double from, double to, double step) {
  double work = 0.0, last = 0.0;
  const int steps = static_cast<int>(std::ceil(std::abs(to - from) / step));
  for (int i = 0; i <= steps; ++i) {
    Strain<6> strain;
    strain[place] = from + (to - from) * i / steps;
    const double stress = point.update(strain).stress[place];
    if (i > 0) work += 0.5 * (stress + last) * (to - from) / steps;
    last = stress;
    point.commit();
  }
  return work;
}

TEST(DamageLaws, SoftenExponentiallyUnloadOnTheSecantAndDissipateTheFractureEnergy) {
  struct Row {
    const char* name;
    Material material;
    int place;  // that is strained
    double peakStrain = 1.0e-4;
    bool dissipates = true;  // its work to the end is g
  };
  const Law simple = Law::simpleDamage;
  for (const Row& row : {Row{"von Mises", damageMaterial(simple, Criterion::vonMises), 0},
                         Row{"Tresca, yy", damageMaterial(simple, Criterion::tresca), 1},
                         Row{"principal stresses", damageMaterial(simple, Criterion::damagePlaneStress), 0},
                         Row{"energy norm, zz", damageMaterial(simple, Criterion::damageSimoJu), 3},
                         Row{"Mohr-Coulomb", mohrCoulombMaterial(simple), 0},
                         Row{"shear", damageMaterial(simple, Criterion::shear), 4, 2.0e-4, false},
                         Row{"two measures", twoMeasureMaterial(), 0}}) {
    SCOPED_TRACE(row.name);
    SamplePoint<6> point = pointOf(row.material);
    const int at = row.place;
    const double stiffness = f / row.peakStrain;
    const auto stressAt = [&](double ratio) {
      Strain<6> strain;
      strain[at] = ratio * row.peakStrain;
      return point.update(strain).stress[at];
    };

    EXPECT_NEAR(stressAt(0.999), 0.999 * f, 1.0e-12);
    EXPECT_EQ(point.trialInternal[internal::elasticFlag], 1.0);
    for (const auto& [ratio, stress] : {std::pair{1.5, 2.514670}, {2.0, 2.107856}, {5.0, 0.731138}, {10.0, 0.125198}})
      EXPECT_NEAR(stressAt(ratio), stress, 1.0e-6);
    double work = drive(point, at, 0.0, 3.0 * row.peakStrain, 1.0e-3 * row.peakStrain);
    const double secant = std::exp(-2.0 * 6.0 / 17.0) / 3.0 * stiffness;
    for (const double ratio : {2.9, 1.0, -2.0}) {
      const bool closed = ratio < 0.0 && row.material.NTINT == Law::tensionCompressionDamageAlternative;
      EXPECT_NEAR(stressAt(ratio), ratio * row.peakStrain * (closed ? stiffness : secant), 1.0e-6);
      EXPECT_NEAR(point.tangent()(at, at), closed ? stiffness : secant, 1.0e-3);
      EXPECT_EQ(point.trialInternal[internal::elasticFlag], 0.0);
      point.commit();
    }
    EXPECT_NEAR(stressAt(3.0), 1.481018, 1.0e-6);
    work += drive(point, at, 3.0 * row.peakStrain, 60.0 * row.peakStrain, 1.0e-3 * row.peakStrain);
    if (!row.dissipates) continue;
    EXPECT_NEAR(work, g, 1.0e-4 * g);
    EXPECT_NEAR(point.committedInternal[internal::dissipation], g, 1.0e-3 * g);
  }
}

TEST(DamageLaws, SoftenLinearlyAndGiveTheSameLineByItsSlope) {
  const Slots slope{{slot::damageSlopeFlag, 1.0}, {slot::damageSlope, (0.352941176 - 2.470588235) / 4.0e-4}};
  for (Material material : {damageMaterial(Law::simpleDamage, Criterion::vonMises, slope),
                            mohrCoulombMaterial(Law::simpleDamage), oneMeasureMaterial(1)}) {
    material(slot::damageSoftening) = 1.0;
    SamplePoint<6> point = pointOf(material);
    for (const auto& [ratio, stress] : {std::pair{2.0, 2.470588}, {4.0, 1.411765}, {6.0, 0.352941}, {20.0, 0.0}}) {
      EXPECT_NEAR(point.update(along(ratio * 1.0e-4)).stress[0], stress, ratio == 20.0 ? 2.0e-3 : 1.0e-6);
    }
    EXPECT_LT(point.trialInternal[internal::damage], 1.0);
    EXPECT_NEAR(point.trialInternal[internal::threshold], material(slot::damageRatio) * 60.0, 1.0e-9);
    EXPECT_NEAR(drive(point, 0, 0.0, 7.0e-4, 1.0e-7), g, 1.0e-3 * g);
  }
}

TEST(GeneralDamage, StressFollowsTheStrengthAndTheStraightCurveDissipatesTheFractureEnergy) {
  SamplePoint<6> point = pointOf(generalMaterial(1));

  double work = 0.0;
  for (const double ratio : {1.0, 3.0, 5.0, 7.0}) {
    work += drive(point, 0, std::max(0.0, ratio - 2.0) * 1.0e-4, ratio * 1.0e-4, 1.0e-7);
    // dv = W dd / g with stress = (1 - v) f is a line to 0 at the strain 2 g / f
    EXPECT_NEAR(point.committed[0], ratio < 6.0 ? f * (20.0 / 3.0 - ratio) / (20.0 / 3.0 - 1.0) : 0.0, 1.0e-3);
  }

  EXPECT_NEAR(work, g, 1.0e-3 * g);
  EXPECT_NEAR(point.committedInternal[internal::dissipation], g * point.committedInternal[internal::secondVariable],
              1.0e-7 * g);
  EXPECT_NEAR(point.committed[0], point.committedInternal[internal::yieldStress], 1.0e-8);
}

TEST(OneMeasureDamage, DamageInTensionFollowsThatInCompression) {
  SamplePoint<6> point = pointOf(oneMeasureMaterial(3));
  (void)drive(point, 0, 0.0, 3.0e-4, 1.0e-5);
  const double tension = point.committedInternal[internal::damage];
  EXPECT_NEAR(tension, 1.0 - 0.6 * std::exp(-2.0 * 0.9) - 0.4 / 3.0, 1.0e-9);
  EXPECT_EQ(point.committedInternal[internal::compressionDamage], 0.0);
  EXPECT_NEAR(point.update(along(-5.0e-4)).stress[0], -15.0, 1.0e-12);  // the crack closes

  const double crushed = 1.0 - 0.6 * std::exp(-4.0 * 0.9) - 0.4 / 5.0;
  EXPECT_NEAR(point.update(along(-5.0e-3)).stress[0], (1.0 - crushed) * -150.0, 1.0e-9);
  EXPECT_NEAR(point.trialInternal[internal::compressionDamage], crushed, 1.0e-12);
  EXPECT_NEAR(point.trialInternal[internal::damage], crushed, 1.0e-12);
}

TEST(TwoMeasureDamage, GivesTheHumpOfConcreteInCompression) {
  SamplePoint<6> point = pointOf(twoMeasureMaterial());
  const std::pair<double, double> hump[] = {
      {1.44e-3, 41.58192}, {2.25e-3, 53.79082}, {3.252572e-3, 58.11073}, {4.0e-3, 56.29376}, {9.0e-3, 0.0}};
  for (const auto& [strain, stress] : hump) {
    EXPECT_NEAR(point.update(along(-strain)).stress[0], -stress, 2.0e-5);
    EXPECT_EQ(point.trialInternal[internal::damage], 0.0);
  }
}

TEST(SpectralSplit, DerivativeIsFiniteAtEqualPrincipalStresses) {
  const auto positive = [](const Stress<6>& stress) { return SpectralSplit<6>(stress).positive; };
  for (const Stress<6>& stress : {Stress<6>{{2.0, 2.0, 0.0, 2.0, 0.0, 0.0}}, Stress<6>{{2.0, 2.0, 0.0, -1.0, 0.0, 0.0}},
                                  Stress<6>{{-2.0, 0.0, 1.0, 1.0, 0.5, -0.5}}})
    EXPECT_LT(distance(SpectralSplit<6>(stress).positiveDerivative(), differences<6>(positive, stress, 1.0e-6)),
              1.0e-7);
}

// ---- stops and refusals ----

TEST(DamageLaws, StopWithTheirWords) {
  const std::string beyond = "  >>>> CHARACTERISTIC LENGTH OF THE ELEMENT BEYOND LIMIT";
  const double low = 0.5 * f * f / E * 0.999;
  const Material simple = damageMaterial(Law::simpleDamage, Criterion::vonMises);
  const std::vector<std::tuple<Material, Slots, std::string>> stops{
      {simple, {{slot::damageFractureEnergy, low}}, beyond},
      {damageMaterial(Law::simpleDamage, Criterion::damageSimoJu), {{slot::damageFractureEnergy, low}}, beyond},
      {mohrCoulombMaterial(Law::simpleDamage), {{slot::damageFractureEnergy, low}}, beyond},
      {oneMeasureMaterial(1), {{54, low}}, "  >>>> LONG. CARCTERISTICA DEL ELEMENTO MAYOR QUE EL LIMITE"},
      {twoMeasureMaterial(), {{slot::damageFractureEnergy, low}}, beyond},
      {twoMeasureMaterial(), {{slot::compressionFractureEnergy, 0.01}}, beyond},
      {generalMaterial(1), {{slot::compressionFractureEnergy, low}}, beyond},
      {simple, {{slot::damageSlopeFlag, 1.0}}, "  >>>> IT IS NOT POSSIBLE WITH AN PROPS(NUMAT,53)=0"},
      {generalMaterial(2),
       {{slot::tensionSlopeFlag, 1.0}, {slot::tensionSlope, 1.0}},
       " >>>>  ERROR !!! sigma-lim incorrecto -- parado en DAEQF1_V3D > "}};
  for (const auto& [sound, changes, words] : stops) {
    const auto end = [](const Material& material) {
      return endOf([&] { return pointOf(material).update(along(1.5e-4)); });
    };
    EXPECT_EQ(end(sound), "goes on");
    EXPECT_THAT(end(with(sound, changes)), testing::StartsWith("law stop " + words + " 1.0 "));
  }
}

TEST(DamageLaws, RefuseMaterialsThatTheyCannotWorkWith) {
  const Law simple = Law::simpleDamage;
  for (const Material& material :
       {damageMaterial(simple, Criterion::vonMises, {{slot::damageStress, 0.0}}),
        damageMaterial(simple, Criterion::vonMises, {{51, 1.0}, {slot::damageSlopeFlag, 1.0}, {slot::damageSlope, E}}),
        twoMeasureMaterial({{slot::tensionPeakStress, 0.0}}), generalMaterial(3),
        damageMaterial(Law::generalDamage, Criterion::shear),
        damageMaterial(Law::tensionCompressionDamage, Criterion::damageSimoJu)}) {
    EXPECT_THROW((void)lawOf<6>(material, 1), InputFault);
  }
}

}  // namespace
}  // namespace zema
