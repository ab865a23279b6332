// The update of one material at one point.
#include "constitutive/material_point.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>
#include <tuple>

#include "constitutive/elastic_law.h"
#include "constitutive/law_samples.h"
#include "constitutive/sample_materials.h"
#include "foundation/distance.h"

namespace zema {
namespace {

const Strain<6> someStrain{{0.010, -0.004, 0.006, 0.003, -0.005, 0.008}};
constexpr Matrix<3> someGradient{{1.1, 0.3, -0.1, 0.2, 0.9, 0.25, -0.15, 0.05, 1.2}};

const Material turnedMaterial = orthotropicMaterial({{72, 25.0}, {44, 40.0}, {73, -70.0}});

/// Tangent by central differences of the stress in layer axes.
Matrix<6> differences(SamplePoint<6>& point, const Strain<6>& at) {
  return differences<6>([&point](const Strain<6>& strain) { return point.update(strain).stress; }, at, 1.0e-6);
}

TEST(MaterialPoint, StartsFromThePropertiesWithThresholdsThatDependOnTheLaw) {
  const auto stateOf = [](Law law) {
    Material numbered;
    std::iota(numbered.PROPS.begin(), numbered.PROPS.end(), 0.0);
    numbered.NTINT = law;
    return initialInternalVariables(numbered);
  };
  EXPECT_EQ(stateOf(Law::backwardEuler), (std::array<double, 16>{0, 6, 5, 7, 33, 0, 0, 30, 1, 0, 1, 7, 0, 0, 30, 30}));
  const double compression = std::sqrt(10.0 * 0.371028691109907);
  for (const auto& [law, first, second] : {std::tuple{Law::generalDamage, 7.0, 0.0},
                                           {Law::tensionCompressionDamage, 30.0, 30.0},
                                           {Law::tensionCompressionDamageAlternative, 10.0, compression}}) {
    EXPECT_DOUBLE_EQ(stateOf(law)[7], first);
    EXPECT_DOUBLE_EQ(stateOf(law)[13], second);
  }
}

TEST(MaterialPoint, KeepsTheValuesOfTheStepBefore) {
  SamplePoint<6> point(turnedMaterial, softeningLaw<6>);
  for (std::size_t i = 0; i < point.committed.size(); ++i) point.committed[i] = 1.0e-4 * static_cast<double>(i);

  (void)point.update({someStrain, someStrain, 2.0 * someStrain});

  constexpr MechanicalPlaces at{6};
  for (const auto& [now, before] : {std::pair{at.STRSGT(), at.STRSG()}, std::pair{at.STRATT(), at.STRAT()},
                                    std::pair{at.VSTRATT(), at.VSTRAT()}, std::pair{at.STRFAS(), at.STRFAS()}})
    EXPECT_EQ(Strain<6>::from(point.trial, now), Strain<6>::from(point.committed, before));
}

TEST(MaterialPoint, PlasticAndInitialStrainCauseNoStress) {
  SamplePoint<6> point(turnedMaterial, ECUA0<6>);
  Strain<6> local = someStrain;
  ROTV(local, point.elastic.axes, Direction::toLocal);
  const Strain<6> plastic = 0.25 * local, initial = 0.75 * local;
  plastic.copyTo(point.committed, point.places.STRAP());

  const ComponentResult<6> result = point.update({someStrain, someStrain, {}, Matrix<3>::identity(), &initial});

  EXPECT_LT(distance(result.stress, {}), 1.0e-15);
  EXPECT_EQ(Strain<6>::from(point.trial, point.places.STRAP()), plastic);
}

TEST(MaterialPoint, TangentByDifferencesAndOfTheInitialStiffness) {
  SamplePoint<6> point(turnedMaterial, softeningLaw<6>);
  point.material.NMATX = TangentChoice::perturbed;
  for (const Strain<6>& strain :
       {someStrain, Strain<6>{{0.02, 0.0, 0.0, 0.0, 0.0, 0.0}}, Strain<6>{{-0.02, 0.0, 0.0, 0.0, -0.01, 0.0}}}) {
    (void)point.update(strain);
    const Matrix<6> tangent = point.tangent();
    EXPECT_LT(distance(tangent, differences(point, strain)), 1.0e-4);
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
  const double squares =
      std::inner_product(shearAlone.values.begin(), shearAlone.values.end(), shearAlone.values.begin(), 0.0);
  point.material.NCRIP = Criterion::damageSimoJu;

  const Stress<6> stress = point.update(someStrain).stress;

  for (const int i : {0, 1, 3}) EXPECT_EQ(stress[i], elastic[i]);
  for (const int i : {2, 4, 5}) EXPECT_DOUBLE_EQ(stress[i], elastic[i] / (1.0 + 0.2 * squares));
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
  SamplePoint<4> plane(orthotropicMaterial({{slot::angleAboutZ, 35.0}}), softeningLaw<4>);
  SamplePoint<6> space(orthotropicMaterial({{slot::angleAboutY, 35.0}}), softeningLaw<6>);  // the first turns about z

  const Stress<4> inPlane = plane.update(Strain<4>{{0.010, -0.004, 0.006, 0.003}}).stress;
  const Stress<6> inSpace = space.update(Strain<6>{{0.010, -0.004, 0.006, 0.003}}).stress;

  for (int i = 0; i < 4; ++i) {
    EXPECT_NEAR(inPlane[i], inSpace[i], 1.0e-14);
    for (int j = 0; j < 4; ++j) EXPECT_NEAR(plane.tangent()(i, j), space.tangent()(i, j), 1.0e-12);
  }
}

}  // namespace
}  // namespace zema
