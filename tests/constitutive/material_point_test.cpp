// The update of one material at one point.
#include "constitutive/material_point.h"

#include <gtest/gtest.h>

#include <cmath>

#include "constitutive/elastic_law.h"
#include "constitutive/law_samples.h"
#include "constitutive/sample_materials.h"
#include "foundation/distance.h"

namespace zema {
namespace {

const Strain<6> someStrain{{0.010, -0.004, 0.006, 0.003, -0.005, 0.008}};
constexpr Matrix<3> someGradient{{1.1, 0.3, -0.1, 0.2, 0.9, 0.25, -0.15, 0.05, 1.2}};

Material turnedMaterial() {
  Material material = orthotropicMaterial();
  material(slot::angleAboutY) = 25.0;
  material(slot::angleAboutZ) = 40.0;
  material(slot::angleAboutX) = -70.0;
  return material;
}

/// Tangent by central differences of the stress in layer axes.
Matrix<6> differences(SamplePoint<6>& point, const Strain<6>& at) {
  constexpr double h = 1.0e-6;
  Matrix<6> tangent;
  for (int j = 0; j < 6; ++j) {
    Strain<6> above = at, below = at;
    above[j] += h;
    below[j] -= h;
    const Stress<6> difference = point.update(above).stress - point.update(below).stress;
    for (int i = 0; i < 6; ++i) tangent(i, j) = difference[i] / (2.0 * h);
  }
  return tangent;
}

TEST(MaterialPoint, KeepsTheValuesOfTheStepBefore) {
  SamplePoint<6> point(turnedMaterial(), softeningLaw<6>);
  for (std::size_t i = 0; i < point.committed.size(); ++i) point.committed[i] = 1.0e-4 * static_cast<double>(i);

  (void)point.update({someStrain, someStrain, 2.0 * someStrain});

  constexpr MechanicalPlaces places{6};
  const auto block = [](const std::vector<double>& record, int place) { return Strain<6>::from(record, place); };
  EXPECT_EQ(block(point.trial, places.STRSGT()), block(point.committed, places.STRSG()));
  EXPECT_EQ(block(point.trial, places.STRATT()), block(point.committed, places.STRAT()));
  EXPECT_EQ(block(point.trial, places.VSTRATT()), block(point.committed, places.VSTRAT()));
  EXPECT_EQ(block(point.trial, places.STRFAS()), block(point.committed, places.STRFAS()));
}

TEST(MaterialPoint, PlasticAndInitialStrainCauseNoStress) {
  SamplePoint<6> point(turnedMaterial(), ECUA0<6>);
  Strain<6> local = someStrain;
  ROTV(local, point.elastic.axes, Direction::toLocal);
  const Strain<6> plastic = 0.25 * local, initial = 0.75 * local;
  plastic.copyTo(point.committed, point.places.STRAP());

  const ComponentResult<6> result = point.update({someStrain, someStrain, {}, Matrix<3>::identity(), &initial});

  EXPECT_LT(distance(result.stress, {}), 1.0e-15);
  EXPECT_EQ(Strain<6>::from(point.trial, point.places.STRAP()), plastic);
}

TEST(MaterialPoint, TangentByDifferencesAndOfTheInitialStiffness) {
  SamplePoint<6> point(turnedMaterial(), softeningLaw<6>);
  point.material.NMATX = TangentChoice::perturbed;
  for (const Strain<6>& strain :
       {someStrain, Strain<6>{{0.02, 0.0, 0.0, 0.0, 0.0, 0.0}}, Strain<6>{{-0.02, 0.0, 0.0, 0.0, -0.01, 0.0}}}) {
    (void)point.update(strain);
    const Matrix<6> tangent = point.tangent();

    const Matrix<6> expected = differences(point, strain);

    EXPECT_LT(distance(tangent, expected), 1.0e-4);
    EXPECT_EQ(point.trialInternal[internal::kappa], 1.0);  // the state of the perturbed calls is dropped
  }
  point.pass.KALGO = 1;
  EXPECT_TRUE(point.update(someStrain).elasticMatrix);
  EXPECT_LT(distance(point.tangent(), point.elastic.inLayerAxes), 1.0e-13);
}

TEST(MaterialPoint, TangentByDifferencesMovesTheIncrementWithTheTotal) {
  SamplePoint<6> point(isotropicMaterial(100.0, 0.25), creepingLaw<6>);
  point.material.NMATX = TangentChoice::perturbed;

  (void)point.update(someStrain);

  Matrix<6> expected = point.elastic.D;
  for (double& value : expected.values) value *= 0.9;
  EXPECT_LT(distance(point.tangent(), expected), 1.0e-6);
}

TEST(MaterialPoint, PotentialSevenShowsTheLawTheShearStressesAlone) {
  SamplePoint<6> point(isotropicMaterial(100.0, 0.25), softeningLaw<6>);
  const Stress<6> elastic = CALTEN(point.elastic.D, someStrain);
  const Stress<6> shearAlone{{0.0, 0.0, elastic[2], 0.0, elastic[4], elastic[5]}};
  double squares = 0.0;
  for (const double value : shearAlone.values) squares += value * value;
  point.material.NCRIP = Criterion::damageSimoJu;

  const ComponentResult<6> result = point.update(someStrain);
  const Matrix<6> tangent = point.tangent();

  for (const int i : {0, 1, 3}) EXPECT_EQ(result.stress[i], elastic[i]);
  for (const int i : {2, 4, 5}) EXPECT_DOUBLE_EQ(result.stress[i], elastic[i] / (1.0 + 0.2 * squares));
  for (const int i : {0, 1, 3})
    for (int j = 0; j < 6; ++j) EXPECT_EQ(tangent(i, j), point.elastic.D(i, j));
  EXPECT_LT(distance(tangent, differences(point, someStrain)), 1.0e-6);
}

TEST(MaterialPoint, FiniteStrainTangentWithTheStressPartIsConsistent) {
  Material doubled = isotropicMaterial(10.0, 0.25);
  for (const int place : {slot::mapXX, slot::mapYY, slot::mapXY, slot::mapZZ, slot::mapXZ, slot::mapYZ})
    doubled(place) = 2.0;
  Material mixed = doubled;
  mixed(slot::mapYY) = 0.5;
  mixed(slot::mapXZ) = 1.25;
  for (const Material& material : {isotropicMaterial(10.0, 0.25), doubled, mixed, turnedMaterial()}) {
    SamplePoint<6> point(material, ECUA0<6>);
    point.pass.LARGE = 1;
    point.pass.KPUSH = 2;
    point.pass.KTANP = 2;

    EXPECT_LT(errorAlongMotions(point, someGradient), 1.0e-7);
  }
}

TEST(MaterialPoint, PlasticStrainIsKeptInTheReferenceConfigurationOfTheRealSpace) {
  for (const auto& [material, KTANP] :
       {std::pair{orthotropicMaterial(), 1}, std::pair{isotropicMaterial(100.0, 0.3), 0}}) {
    SamplePoint<6> point(material, creepingLaw<6>);
    point.pass.LARGE = 1;
    point.pass.KPUSH = 2;
    point.pass.KTANP = KTANP;
    const Strain<6> strain = greenLagrange(someGradient);

    const Stress<6> first = point.update(strain, someGradient).stress;
    const auto plastic = Strain<6>::from(point.trial, point.places.STRAP());
    point.commit();
    const Stress<6> held = point.update(strain, someGradient).stress;

    for (int i = 0; i < 6; ++i) EXPECT_NEAR(plastic[i], 0.1 * strain[i], 1.0e-14);
    EXPECT_LT(distance(first, held), 1.0e-12);  // the next step starts where the last one ended
  }
}

TEST(MaterialPoint, FourComponentsGiveThePlaneStrainOfSix) {
  Material material = orthotropicMaterial();
  material(slot::angleAboutZ) = 35.0;
  SamplePoint<4> plane(material, softeningLaw<4>);
  material(slot::angleAboutY) = 35.0;  // in space the first angle is the one about z
  material(slot::angleAboutZ) = 0.0;
  SamplePoint<6> space(material, softeningLaw<6>);

  const Stress<4> inPlane = plane.update(Strain<4>{{0.010, -0.004, 0.006, 0.003}}).stress;
  const Stress<6> inSpace = space.update(Strain<6>{{0.010, -0.004, 0.006, 0.003, 0.0, 0.0}}).stress;

  for (int i = 0; i < 4; ++i) EXPECT_NEAR(inPlane[i], inSpace[i], 1.0e-14);
  const Matrix<4> planeTangent = plane.tangent();
  const Matrix<6> spaceTangent = space.tangent();
  for (int i = 0; i < 4; ++i)
    for (int j = 0; j < 4; ++j) EXPECT_NEAR(planeTangent(i, j), spaceTangent(i, j), 1.0e-12);
}

}  // namespace
}  // namespace zema
