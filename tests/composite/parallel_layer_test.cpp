// Parallel layers of components that are not elastic.
#include <gtest/gtest.h>

#include "composite/layer_mixer.h"
#include "constitutive/elastic_law.h"
#include "constitutive/law_samples.h"
#include "constitutive/sample_materials.h"

namespace zema {
namespace {

const Strain<6> someStrain{{0.010, -0.004, 0.006, 0.003, -0.005, 0.008}};

TEST(ParallelLayer, MixesStressStateTangentAndEnergy) {
  Material turned = orthotropicMaterial();
  turned(slot::angleAboutY) = 30.0;
  const std::vector<Material> materials{isotropicMaterial(100.0, 0.3), turned};
  const std::vector<ElasticMaterial<6>> elastic{MODPS<6>(materials[0], 1, std::nullopt),
                                                MODPS<6>(materials[1], 2, std::nullopt)};
  LayerPlan<6> layer;
  layer.components = {{1, 1, 0.4, ECUA0<6>}, {2, 2, 0.6, softeningLaw<6>}};
  PointStore points(6, std::vector{1}, std::vector{3});
  points.internal(StateSlot::committed, 0, 0, 1)[internal::kappa] = 10.0;
  PassContext pass;
  pass.KALGO = 2;
  const PointGeometry geometry{.dV = 0.125, .NTYPE = 6};
  SamplePoint<6> alone(turned, softeningLaw<6>);
  const Stress<6> inelastic = alone.update(someStrain).stress;

  const MixedPoint<6> mixed =
      P_MNGER(layer, LayerInput<6>{pass, geometry, points, 0, 0, 0, materials, elastic, {someStrain, someStrain, {}}});

  const Stress<6> expected = 0.4 * CALTEN(elastic[0].D, someStrain) + 0.6 * inelastic;
  for (int i = 0; i < 6; ++i) EXPECT_NEAR(mixed.stress[i], expected[i], 1.0e-14);
  EXPECT_DOUBLE_EQ(mixed.INTVAR[internal::kappa], 0.4 * 10.0 + 0.6 * 1.0);
  EXPECT_FALSE(mixed.elastic);
  EXPECT_DOUBLE_EQ(mixed.sums.work, 0.6 * 0.125);
  const Matrix<6> tangent = alone.tangent();
  for (int i = 0; i < 6; ++i)
    for (int j = 0; j < 6; ++j)
      EXPECT_NEAR(mixed.tangent(i, j), 0.4 * elastic[0].D(i, j) + 0.6 * tangent(i, j), 1.0e-12);
}

}  // namespace
}  // namespace zema
