// Whole jobs with serial-parallel and short-fibre layers.
#include <gtest/gtest.h>

#include <tuple>

#include "jobs/job_runner.h"
#include "jobs/solid_deck.h"

namespace zema::test {
namespace {

/// A serial-parallel layer of materials 1 (matrix) and 2 (fibre), whose strains along x are parallel or not.
LayerCards ply(int along) {
  return {.components = {{1, 0.4}, {2, 0.6}}, .word = "SP", .flags = {along, 0, 0, 0, 0, 0}};
}

/// A cube of one layer of materials 1 and 2, drawn along x.
SolidDeck cubeOf(const LayerCards& layer, const Material& first, const Material& second, double drawn, int repeat) {
  SolidDeck deck = symmetricCube(first, drawn / repeat);
  deck.materials.push_back(second);
  deck.composites = {{layer}};
  deck.NSOLV = 2;
  deck.steps[0].increments.assign(static_cast<std::size_t>(repeat), Increment{});
  return deck;
}

TEST(MixedLayerJob, PlasticMatrixAlongAndAcrossTheFibreAndHalfElasticHalfDamaged) {
  const Material plastic = MaterialCards::plastic(3500.0, 0.0, 35.0), fibre = MaterialCards::isotropic(72000.0, 0.0);
  const Material damaging = MaterialCards::damaging(30.0e3, 0.0, 3.0, 1.0e-3),
                 elastic = MaterialCards::isotropic(30.0e3, 0.0);
  const LayerCards halves{.components = {{1, 0.5}, {2, 0.5}}};
  using Case = std::tuple<LayerCards, Material, Material, double, double>;
  for (const auto& [layer, first, second, strain, stress] :
       {Case{ply(1), plastic, fibre, 0.01, 446.0}, Case{ply(1), plastic, fibre, 0.02, 878.0},
        Case{ply(0), plastic, fibre, 0.004, 0.004 * 8155.3398058252}, Case{ply(0), plastic, fibre, 0.02, 35.0},
        Case{halves, damaging, elastic, 3.0e-4, 5.240509}, Case{halves, damaging, elastic, 5.0e-4, 7.865569}}) {
    const auto results = solve(cubeOf(layer, first, second, strain, 4).text());

    expectRows(lastBlock(results, "STRESSES"), std::array{stress}, 1e-8 * stress + 5e-7);
  }
}

TEST(SerialParallelJob, NewtonIsQuadraticInAPlyWhoseMatrixDamages) {
  SolidDeck deck =
      cubeOf(ply(1), MaterialCards::damaging(3500.0, 0.35, 60.0, 2.0), MaterialCards::isotropic(72000.0, 0.22), 1.0, 1);
  deck.composites[0][0].angles = {30, 0, 0};
  std::erase_if(deck.steps[0].fixities, [](FixityCard& card) {  // the ends stay plane, the sides may shear
    if (card.node != 1 && card.code % 100 / 10 == 1) card.code -= 10;
    return card.code == 0;
  });
  // From just below the first damage far into it at once; the residuals are 29.7 %, 0.14 %, 3e-5 %, below 1e-9 %.
  deck.steps[0].increments = {{.factor = 0.004, .iterations = 1},
                              {.factor = 0.007, .tolerance = 1e-9, .iterations = 4}};

  const auto results = solve(deck.text());

  EXPECT_LT(lastBlock(results, "STRESSES//COMPOSITE").rows[0][0], 0.011 * 12000.0);  // it is damaged
}

}  // namespace
}  // namespace zema::test
