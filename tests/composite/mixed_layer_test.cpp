// Serial-parallel and short-fibre layers: elastic constants, reductions, axes.
#include <gmock/gmock.h>

#include <cmath>

#include "composite/composite_elasticity.h"
#include "composite/point_model.h"
#include "composite/serial_parallel_layer.h"
#include "composite/short_fibre_layer.h"
#include "composite/short_fibre_share.h"
#include "constitutive/elastic_moduli.h"
#include "constitutive/sample_materials.h"
#include "foundation/distance.h"
#include "foundation/ends.h"

namespace zema {
namespace {

constexpr std::array<double, 3> noAngles{};
const Strain<6> someStrain{{0.010, -0.004, 0.006, 0.003, -0.005, 0.008}};
const std::vector<int> alongX{1, 0, 0, 0, 0, 0};

/// E1, E2, nu12, nu23, G12, G23 and density of composite 1, with the stress of a point checked against its matrix.
std::vector<double> constantsOf(const Composite& composite, const std::vector<Material>& materials) {
  Model model = pointModel<6>(materials, {composite}, {{1, noAngles}});
  ConstitutiveBlock<6> block(model);
  block.ZERO(model);
  block.IMPORTINFON1(model);
  const Stress<6> stress = block.RESI2D(model, {.STRAT = someStrain, .STRAN = someStrain, .VSTRAT = {}}).STRSG;
  EXPECT_LT(distance(stress, CALTEN(block.elasticMatrix(0), someStrain)), 1.0e-11);
  const Matrix<6>& S = block.compositeRecord(1).VDMANXI;
  return {1.0 / S(0, 0), 1.0 / S(1, 1), -S(1, 0) / S(0, 0), -S(3, 1) / S(1, 1),
          1.0 / S(2, 2), 1.0 / S(5, 5), block.DENSV(1)};
}

TEST(SerialParallelLayer, ElasticConstants) {
  const std::vector<Material> materials{isotropicMaterial(3500.0, 0.35, {{slot::density, 1.0}}),
                                        isotropicMaterial(72000.0, 0.22, {{slot::density, 2.5}})};
  Composite parallel = plainComposite(1);
  parallel.layers[0].components = {{1, 0.4, 1}, {2, 0.6, 2}};
  parallel.NUMAT = 3;
  const std::vector<double> voigt{44710.7832, 44710.7832, 0.226739, 0.226739, 18223.4366, 18223.4366, 1.9};
  const std::vector<std::pair<Composite, std::vector<double>>> cases{
      {serialParallel(1, 2, 0.4, alongX), {44600.0, 9101.2888, 0.272, 0.496729, 3040.3938, 3040.3938, 1.9}},
      {serialParallel(1, 2, 0.4, std::vector(6, 1)), voigt},
      {parallel, voigt},
      {serialParallel(1, 2, 0.4, std::vector(6, 0)),
       {8155.3398, 8155.3398, 0.341165, 0.341165, 3040.3938, 3040.3938, 1.9}}};
  for (const auto& [composite, expected] : cases) {
    const std::vector<double> found = constantsOf(composite, materials);
    for (std::size_t i = 0; i < 7; ++i) EXPECT_NEAR(found[i], expected[i], i == 2 || i == 3 ? 5.1e-7 : 5.1e-5) << i;
  }
}

TEST(ShortFibreLayer, ElasticConstants) {
  struct Case {
    double length, N, E, nu, G;
  };
  const Material matrix = isotropicMaterial(3000.0, 0.35);
  const Composite composite = shortFibre(1, 2, 0.5, 0.2, 0.3);
  const auto fibre = [](double length) {
    return isotropicMaterial(500.0e3, 0.2, {{slot::fibreRadius, 1.0}, {slot::fibreLength, length}});
  };
  for (const Case& expected :
       {Case{50.0, 0.7768307, 80725.2107, 0.2088828, 33388.353}, Case{1000.0, 0.9888458, 101559.7318, 0.0, 0.0}}) {
    const double transfers = transferLengths(composite.layers[0], fibre(expected.length), matrix);
    const std::vector<double> found = constantsOf(composite, {matrix, fibre(expected.length)});

    EXPECT_NEAR(transfers / expected.length, 0.09849339, 5.0e-9);
    EXPECT_NEAR(NPARORI(transfers), expected.N, 5.0e-8);
    EXPECT_NEAR(found[0], expected.E, 5.0e-5);
    if (expected.nu != 0.0) {
      EXPECT_NEAR(found[2], expected.nu, 5.0e-8);
      EXPECT_NEAR(found[4], expected.G, 5.0e-4);
    }
  }
  EXPECT_THROW(constantsOf(composite, {matrix, fibre(10.0)}), InputFault);
  EXPECT_NEAR(NPARORI(700.1), NPARORI(699.9), 1.0e-6);
  EXPECT_NEAR(NPARORI(800.0), 1.0 - std::log(3.0) / 800.0, 1.0e-15);
}

/// A law that always carries its yield stress, in all components: two of them never agree.
void stubbornLaw(const LawInput<6>& input, LawState& state, LawResult<6>& result) {
  result.SGTOT.values.fill(input.at.material(slot::yieldStress));
  state.INTVAR[internal::elasticFlag] = 1.0;
}

TEST(MixedLayers, StopWithTheirWordsAndBothComponentsWhenNoStressIsCommon) {
  const std::vector<Material> materials{isotropicMaterial(3000.0, 0.3, {{slot::yieldStress, 1.0}}),
                                        isotropicMaterial(70.0e3, 0.2, {{slot::yieldStress, 2.0}})};
  const std::vector<ElasticMaterial<6>> elastic{MODPS<6>(materials[0], 1, std::nullopt),
                                                MODPS<6>(materials[1], 2, std::nullopt)};
  PointStore points(6, std::vector{2, 2, 2}, std::vector{6, 6, 6});
  const PassContext pass;
  const PointGeometry geometry{.dV = 0.125, .NTYPE = 6};
  const LawFunction<6> law = stubbornLaw;
  CompositePlan<6> plan;
  plan.layers.resize(2);
  plan.layers[0].kind = LayerKind::serialParallel;
  plan.layers[0].components = {{1, 1, 0.4, law}, {2, 2, 0.6, law}};
  plan.layers[0].rule = SerialParallelRule<6>(alongX, 0.4, 0.6);
  plan.layers[1].kind = LayerKind::shortFibre;
  plan.layers[1].components = {
      {1, 1, 0.5, law}, {2, 2, 0.2, law}, {1, 3, 0.3, law}, {2, 4, 0.2, law}, {1, 5, 0.3, law}};
  plan.layers[1].rule = SerialParallelRule<6>::serial(0.6, 0.4);
  (void)elasticMeanOf<6>(plan, elastic, materials);
  const LayerInput<6> input{pass, geometry, points, 2, 1, 3, materials, elastic, {someStrain, someStrain, {}}};

  const std::array words{"NO CONVERGENCE REACHED IN SP RoM", "NO CONVERGENCE REACHED IN NT RoM"};
  const std::array ends{endOf([&] { return SP_MNGER(plan.layers[0], input); }),
                        endOf([&] { return NT_MNGER(plan.layers[1], input); })};
  for (const std::size_t i : {0U, 1U}) {
    const std::string place = " 3.0 2.0element 3, point 2, layer 4: after 160 iterations";
    EXPECT_THAT(ends[i], testing::StartsWith(std::string("run end ") + words[i] + place));
    EXPECT_THAT(ends[i], testing::HasSubstr("\n  matrix, material 1, law 0 \"ELASTIC\":"));
    EXPECT_THAT(ends[i], testing::HasSubstr("\n  fibre, material 2, law 0 \"ELASTIC\":"));
  }
}

}  // namespace
}  // namespace zema
