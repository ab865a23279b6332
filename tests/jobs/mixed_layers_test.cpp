// Whole jobs with serial-parallel and short-fibre layers.
#include <gtest/gtest.h>

#include <cmath>

#include "jobs/job_runner.h"
#include "jobs/solid_deck.h"

namespace zema::test {
namespace {

/// A cube of one layer of materials 1 (matrix) and 2 (fibre), whose strains along x are parallel or not, drawn along x.
SolidDeck cubeOfPly(const MaterialCards& matrix, const MaterialCards& fibre, int along, double drawn, int repeat) {
  SolidDeck deck = symmetricCube(matrix, drawn / repeat);
  deck.materials.push_back(fibre);
  deck.composites = {{{.components = {{1, 0.4}, {2, 0.6}}, .word = "SP", .flags = {along, 0, 0, 0, 0, 0}}}};
  deck.NSOLV = 2;
  deck.steps[0].increments.assign(static_cast<std::size_t>(repeat), Increment{});
  return deck;
}

TEST(SerialParallelJob, PerfectlyPlasticMatrixAlongAndAcrossTheFibre) {
  const MaterialCards matrix = MaterialCards::plastic(3500.0, 0.0, 35.0),
                      fibre = MaterialCards::isotropic(72000.0, 0.0);
  struct Case {
    int along;
    double strain, stress;
  };
  for (const auto& [along, strain, stress] :
       {Case{1, 0.01, 446.0}, Case{1, 0.02, 878.0}, Case{0, 0.004, 0.004 * 8155.3398058252}, Case{0, 0.02, 35.0}}) {
    const auto results = solve(cubeOfPly(matrix, fibre, along, strain, 4).text());

    expectRows(lastBlock(results, "STRESSES"), std::array{stress}, 1e-8 * stress);
  }
}

/// Bricks on top of each other, one of each composite, drawn and sheared in their plane by given strains (in steps) and
/// loaded by a stress on top.
SolidDeck stack(const std::vector<double>& heights, const std::array<double, 3>& inPlane, double load, int steps) {
  SolidDeck deck;
  std::vector<double> z{0.0};
  for (const double height : heights) z.push_back(z.back() + height);
  const int rows = static_cast<int>(heights.size());
  BrickGrid{1, 1, rows}.addTo(deck, [&](int i, int j, int k) {
    return Vector3{double(i), double(j), z.at(static_cast<std::size_t>(k))};
  });
  LoadStepCards& step = deck.steps[0];
  const double part = 1.0 / steps;
  for (std::size_t n = 0; n < deck.nodes.size(); ++n) {
    const Vector3& x = deck.nodes[n];
    const Vector3 u{part * (inPlane[0] * x[0] + inPlane[2] * x[1]), part * inPlane[1] * x[1], 0.0};
    step.fixities.push_back({static_cast<int>(n) + 1, n < 4 ? 111 : 110, u});
    if (n >= 4 * heights.size()) step.pointLoads[static_cast<int>(n) + 1] = {0, 0, 0.25 * part * load};
  }
  for (int row = 0; row < rows; ++row) deck.elements[static_cast<std::size_t>(row)].composite = row + 1;
  step.increments.assign(static_cast<std::size_t>(steps), Increment{});
  deck.NSOLV = 2;
  return deck;
}

TEST(ParallelJob, HalfElasticHalfDamaged) {
  const MaterialCards elastic = MaterialCards::isotropic(30.0e3, 0.0);
  MaterialCards damaging = MaterialCards::damaging(30.0e3, 0.0, 3.0, 1.0e-3);
  damaging.codes[0] = 6;
  for (const auto& [strain, stress] : {std::pair{3.0e-4, 5.240509}, std::pair{5.0e-4, 7.865569}}) {
    SolidDeck deck = cubeOfPly(damaging, elastic, 1, strain, 5);
    deck.composites = {{{.components = {{1, 0.5}, {2, 0.5}}}}};

    EXPECT_NEAR(lastBlock(solve(deck.text()), "STRESSES").rows[0][0], stress, 5e-7);
  }
}

TEST(SerialParallelJob, NewtonIsQuadraticInAPlyWhoseMatrixDamages) {
  SolidDeck deck =
      cubeOfPly(MaterialCards::damaging(3500.0, 0.35, 60.0, 2.0), MaterialCards::isotropic(72000.0, 0.22), 1, 1.0, 1);
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

TEST(SerialParallelJob, TwoRowsOfElementsAreTheLayerOfTwoSheets) {
  const std::vector<MaterialCards> materials{MaterialCards::plastic(3500.0, 0.0, 35.0),
                                             MaterialCards::isotropic(72000.0, 0.22)};
  SolidDeck rows = stack({0.4, 0.6}, {0.01, -0.002, 0.012}, 20.0, 4),
            layer = stack({1.0}, {0.01, -0.002, 0.012}, 20.0, 4);
  rows.materials = layer.materials = materials;
  rows.composites = {{{.components = {{1, 1.0}}}}, {{.components = {{2, 1.0}}}}};
  layer.composites = {{{.components = {{1, 0.4}, {2, 0.6}}, .word = "SP", .flags = {1, 1, 1, 0, 0, 0}}}};

  const auto ofRows = solve(rows.text()), ofLayer = solve(layer.text());

  const double height = atNode(lastBlock(ofRows, "DISPLACEMENTS"), 9)[2];
  EXPECT_NEAR(atNode(lastBlock(ofLayer, "DISPLACEMENTS"), 5)[2], height, 1e-9 * std::abs(height));
  const auto& ofRow = lastBlock(ofRows, "STRESSES//COMPOSITE").rows;
  const auto& mixed = lastBlock(ofLayer, "STRESSES//COMPOSITE").rows[0];
  for (std::size_t i = 0; i < 6; ++i) EXPECT_NEAR(mixed[i], 0.4 * ofRow[0][i] + 0.6 * ofRow[8][i], 1e-7);
}

}  // namespace
}  // namespace zema::test
