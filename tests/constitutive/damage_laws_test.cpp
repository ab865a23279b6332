// Damage laws at a point: closed forms, dissipation, stops.
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <tuple>

#include "constitutive/law_samples.h"
#include "constitutive/law_table.h"
#include "constitutive/sample_materials.h"
#include "constitutive/spectral_split.h"
#include "foundation/distance.h"
#include "foundation/errors.h"

namespace zema {
namespace {

constexpr double E = 30.0e3, f = 3.0, g = 1.0e-3;  // f / E = 1e-4

Material damageMaterial(Law law, Criterion criterion) {
  Material material = isotropicMaterial(E, 0.0);
  material.NTINT = law;
  material.NCRIT = criterion;
  material(slot::damageStress) = criterion == Criterion::damageSimoJu ? f / std::sqrt(E) : f;
  material(slot::damageRatio) = material(slot::yieldRatio) = 1.0;
  material(slot::damageFractureEnergy) = g;
  material(slot::frictionAngle) = 0.5;
  material(slot::yieldAlpha) = 0.12;
  material(slot::yieldGamma) = 2.0;
  return material;
}

/// The third criterion with a strength of 30 in compression and 3 in tension.
Material mohrCoulombMaterial(Law law) {
  Material material = damageMaterial(law, Criterion::mohrCoulomb);
  material(slot::damageStress) = 10.0 * f;
  material(slot::damageRatio) = material(slot::yieldRatio) = 10.0;
  return material;
}

Material generalMaterial(int curve) {
  Material material = damageMaterial(Law::generalDamage, Criterion::vonMises);
  material(slot::yieldStress) = f;
  material(slot::tensionCurve) = material(slot::compressionCurve) = curve;
  material(slot::tensionFractureEnergy) = material(slot::compressionFractureEnergy) = g;
  return material;
}

Material twoMeasureMaterial() {
  Material material = damageMaterial(Law::tensionCompressionDamageAlternative, Criterion::vonMises);
  material(slot::damageStress) = 30.0;
  material(slot::tensionPeakStress) = f;
  material(slot::compressionFractureEnergy) = 1.0;
  return material;
}

Material oneMeasureMaterial(int tensionCode, int compressionCode) {
  Material material = mohrCoulombMaterial(Law::tensionCompressionDamage);
  material(slot::damageSoftening) = tensionCode;
  material(slot::compressionSoftening) = compressionCode;
  for (const int place : {slot::tensionParameters, slot::compressionParameters}) {
    material(place) = 0.6;
    material(place + 1) = 0.9;
    material(place + 2) = 0.3;
  }
  return material;
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

struct SofteningCase {
  const char* name;
  Material material;
  int place;          // that is strained
  double peakStrain;  // where it softens
  bool dissipates;    // its work to the end is g
};

std::vector<SofteningCase> softeningCases() {
  const Law simple = Law::simpleDamage;
  return {{"von Mises", damageMaterial(simple, Criterion::vonMises), 0, 1.0e-4, true},
          {"Tresca, yy", damageMaterial(simple, Criterion::tresca), 1, 1.0e-4, true},
          {"principal stresses", damageMaterial(simple, Criterion::damagePlaneStress), 0, 1.0e-4, true},
          {"energy norm, zz", damageMaterial(simple, Criterion::damageSimoJu), 3, 1.0e-4, true},
          {"Mohr-Coulomb", mohrCoulombMaterial(simple), 0, 1.0e-4, true},
          {"shear", damageMaterial(simple, Criterion::shear), 4, 2.0e-4, false},
          {"two measures", twoMeasureMaterial(), 0, 1.0e-4, true}};
}

TEST(DamageLaws, SoftenExponentiallyUnloadOnTheSecantAndDissipateTheFractureEnergy) {
  for (const SofteningCase& row : softeningCases()) {
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
  Material bySlope = damageMaterial(Law::simpleDamage, Criterion::vonMises);
  bySlope(slot::damageSlopeFlag) = 1.0;
  bySlope(slot::damageSlope) = (0.352941176 - 2.470588235) / 4.0e-4;
  for (Material material : {bySlope, mohrCoulombMaterial(Law::simpleDamage), oneMeasureMaterial(1, 1)}) {
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
  SamplePoint<6> point = pointOf(oneMeasureMaterial(3, 3));
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
  for (const auto& [strain, stress] : {std::pair{1.44e-3, 41.58192},
                                       {2.25e-3, 53.79082},
                                       {3.252572e-3, 58.11073},
                                       {4.0e-3, 56.29376},
                                       {9.0e-3, 0.0}}) {
    EXPECT_NEAR(point.update(along(-strain)).stress[0], -stress, 2.0e-5);
    EXPECT_EQ(point.trialInternal[internal::damage], 0.0);
  }
}

TEST(SpectralSplit, DerivativeIsFiniteAtEqualPrincipalStresses) {
  constexpr double h = 1.0e-6;
  for (const Stress<6>& stress : {Stress<6>{{2.0, 2.0, 0.0, 2.0, 0.0, 0.0}}, Stress<6>{{2.0, 2.0, 0.0, -1.0, 0.0, 0.0}},
                                  Stress<6>{{-2.0, 0.0, 1.0, 1.0, 0.5, -0.5}}}) {
    const Matrix<6> Q = SpectralSplit<6>(stress).positiveDerivative();
    for (int j = 0; j < 6; ++j) {
      Stress<6> above = stress, below = stress;
      above[j] += h;
      below[j] -= h;
      const Stress<6> column = (0.5 / h) * (SpectralSplit<6>(above).positive - SpectralSplit<6>(below).positive);
      for (int i = 0; i < 6; ++i) EXPECT_NEAR(Q(i, j), column[i], 1.0e-7);
    }
  }
}

// ---- stops and refusals ----

TEST(DamageLaws, StopWithTheirWords) {
  const std::string beyond = "  >>>> CHARACTERISTIC LENGTH OF THE ELEMENT BEYOND LIMIT";
  const double low = 0.5 * f * f / E * 0.999;
  const Material simple = damageMaterial(Law::simpleDamage, Criterion::vonMises);
  const std::vector<std::tuple<Material, std::map<int, double>, std::string>> stops{
      {simple, {{slot::damageFractureEnergy, low}}, beyond},
      {damageMaterial(Law::simpleDamage, Criterion::damageSimoJu), {{slot::damageFractureEnergy, low}}, beyond},
      {mohrCoulombMaterial(Law::simpleDamage), {{slot::damageFractureEnergy, low}}, beyond},
      {oneMeasureMaterial(1, 1), {{54, low}}, "  >>>> LONG. CARCTERISTICA DEL ELEMENTO MAYOR QUE EL LIMITE"},
      {twoMeasureMaterial(), {{slot::damageFractureEnergy, low}}, beyond},
      {twoMeasureMaterial(), {{slot::compressionFractureEnergy, 0.01}}, beyond},
      {generalMaterial(1), {{slot::compressionFractureEnergy, low}}, beyond},
      {simple, {{slot::damageSlopeFlag, 1.0}}, "  >>>> IT IS NOT POSSIBLE WITH AN PROPS(NUMAT,53)=0"},
      {generalMaterial(2),
       {{slot::tensionSlopeFlag, 1.0}, {slot::tensionSlope, 1.0}},
       " >>>>  ERROR !!! sigma-lim incorrecto -- parado en DAEQF1_V3D > "}};
  for (const auto& [sound, changes, words] : stops) {
    Material material = sound;
    EXPECT_NO_THROW((void)pointOf(material).update(along(1.5e-4)));
    for (const auto& [place, value] : changes) material(place) = value;
    SamplePoint<6> point = pointOf(material);
    try {
      (void)point.update(along(1.5e-4));
      ADD_FAILURE() << words;
    } catch (const ConstitutiveStop& caught) {
      EXPECT_EQ(caught.what(), words);
      EXPECT_EQ(caught.A(), 1.0);
      EXPECT_LE(caught.B(), 1.0);
    }
  }
}

TEST(DamageLaws, RefuseMaterialsThatTheyCannotWorkWith) {
  Material noThreshold = damageMaterial(Law::simpleDamage, Criterion::vonMises);
  noThreshold(slot::damageStress) = 0.0;
  Material steep = damageMaterial(Law::simpleDamage, Criterion::vonMises);
  steep(slot::damageSoftening) = steep(slot::damageSlopeFlag) = 1.0;
  steep(slot::damageSlope) = E;
  Material noStrength = twoMeasureMaterial();
  noStrength(slot::tensionPeakStress) = 0.0;
  for (const Material& material :
       {noThreshold, steep, noStrength, generalMaterial(3), damageMaterial(Law::generalDamage, Criterion::shear),
        damageMaterial(Law::tensionCompressionDamage, Criterion::damageSimoJu)}) {
    EXPECT_THROW((void)lawOf<6>(material, 1), InputFault);
  }
}

}  // namespace
}  // namespace zema
