// Patch tests of whole decks: constant strain on irregular meshes, and unit states of stress.
#include <gtest/gtest.h>

#include "jobs/job_runner.h"
#include "jobs/solid_deck.h"

namespace zema::test {
namespace {

constexpr Vector3 corners[8] = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}};

Vector3 linearField(const Vector3& x) {
  return {5e-4 * (2 * x[0] + x[1] + x[2]), 5e-4 * (x[0] + 2 * x[1] + x[2]), 5e-4 * (x[0] + x[1] + 2 * x[2])};
}

void prescribeField(SolidDeck& deck, int outerNodes) {
  for (int n = 0; n < outerNodes; ++n) {
    deck.steps[0].fixities.push_back({n + 1, 111, linearField(deck.nodes[static_cast<std::size_t>(n)])});
  }
}

/// Every node on the linear field, every point at the stress that belongs to it.
void expectConstantState(const SolidDeck& deck, const std::vector<ResultBlock>& results) {
  const ResultBlock& u = block(results, "DISPLACEMENTS");
  for (std::size_t n = 0; n < deck.nodes.size(); ++n) {
    const Vector3 expected = linearField(deck.nodes[n]);
    for (std::size_t d = 0; d < 3; ++d) EXPECT_NEAR(u.rows[n][d], expected[d], 1e-11) << "node " << n + 1;
  }
  expectRows(block(results, "STRESSES"), std::array{2000.0, 2000.0, 2000.0, 400.0, 400.0, 400.0}, 1e-5);
}

SolidDeck brickPatch() {
  SolidDeck deck;
  deck.materials = {MaterialCards::isotropic(1e6, 0.25)};
  deck.nodes.assign(corners, corners + 8);
  for (const Vector3& inner : {Vector3{.249, .342, .192},
                               {.826, .288, .288},
                               {.850, .649, .263},
                               {.273, .750, .230},
                               {.320, .186, .643},
                               {.677, .305, .683},
                               {.788, .693, .644},
                               {.165, .745, .702}}) {
    deck.nodes.push_back(inner);
  }
  for (const std::vector<int>& nodes : {std::vector<int>{9, 10, 11, 12, 13, 14, 15, 16},
                                        {1, 2, 3, 4, 9, 10, 11, 12},
                                        {5, 8, 7, 6, 13, 16, 15, 14},
                                        {1, 5, 6, 2, 9, 13, 14, 10},
                                        {2, 6, 7, 3, 10, 14, 15, 11},
                                        {3, 7, 8, 4, 11, 15, 16, 12},
                                        {4, 8, 5, 1, 12, 16, 13, 9}}) {
    deck.elements.push_back({nodes});
  }
  deck.steps[0].increments[0].tolerance = 1e-7;
  return deck;
}

TEST(PatchTest, SevenIrregularBricksHoldAConstantStrainWithEverySolver) {
  for (const int NSOLV : {1, 2, 3, 4, 5, 6}) {
    SolidDeck deck = brickPatch();
    deck.NSOLV = NSOLV;
    prescribeField(deck, 8);
    const JobFolder folder;

    const auto results = solve(folder, deck.text());

    SCOPED_TRACE(NSOLV);
    expectConstantState(deck, results);
  }
}

/// Twelve tetrahedra from an inner node to two triangles on each face of the cube.
SolidDeck tetrahedronPatch() {
  constexpr int faces[6][4] = {{1, 4, 3, 2}, {5, 6, 7, 8}, {1, 2, 6, 5}, {2, 3, 7, 6}, {3, 4, 8, 7}, {4, 1, 5, 8}};
  SolidDeck deck;
  deck.materials = {MaterialCards::isotropic(1e6, 0.25)};
  deck.nodes.assign(corners, corners + 8);
  deck.nodes.push_back({.4, .45, .6});
  for (const auto& f : faces) {  // the inner node sees the triangle turn clockwise
    deck.elements.push_back({{f[0], f[2], f[1], 9}});
    deck.elements.push_back({{f[0], f[3], f[2], 9}});
  }
  return deck;
}

TEST(PatchTest, TwelveTetrahedraAroundAnInnerNodeHoldAConstantStrain) {
  SolidDeck deck = tetrahedronPatch();
  prescribeField(deck, 8);
  const JobFolder folder;

  const auto results = solve(folder, deck.text());

  expectConstantState(deck, results);
}

/// Nodal forces of a unit traction state on a unit cube of one brick: a quarter of each face's force at its corners.
SolidDeck unitState(int component) {
  constexpr int first[6] = {0, 1, 0, 2, 0, 1};  // xx yy xy zz xz yz
  constexpr int second[6] = {0, 1, 1, 2, 2, 2};
  SolidDeck deck;
  deck.materials = {MaterialCards::isotropic(210.0, 0.3)};
  BrickGrid{1, 1, 1}.addTo(deck, [](int i, int j, int k) { return Vector3{double(i), double(j), double(k)}; });
  for (int n = 1; n <= 8; ++n) deck.steps[0].pointLoads[n] = Vector3{};
  for (std::size_t n = 0; n < 8; ++n) {
    Vector3& load = deck.steps[0].pointLoads[static_cast<int>(n) + 1];
    const auto addTraction = [&](std::size_t normal, std::size_t direction) {
      load[direction] += deck.nodes[n][normal] == 1.0 ? 0.25 : -0.25;
    };
    const auto k = static_cast<std::size_t>(first[component]);
    const auto l = static_cast<std::size_t>(second[component]);
    addTraction(k, l);
    if (k != l) addTraction(l, k);
  }
  deck.steps[0].fixities = {{1, 111, {}}, {2, 11, {}}, {3, 1, {}}};
  return deck;
}

/// Every value line shows a unit of one component (record order xx yy xy zz xz yz) and the strains that go with it.
void expectUnitState(const std::vector<ResultBlock>& results, int component) {
  constexpr std::size_t fileColumn[6] = {0, 1, 3, 2, 4, 5};  // files list xx yy zz xy xz yz
  const std::size_t own = fileColumn[component];
  std::array<double, 6> stress{}, strain{};
  if (own < 3) strain[0] = strain[1] = strain[2] = -0.3 / 210.0;
  stress[own] = 1.0;
  strain[own] = own > 2 ? 2.6 / 210.0 : 1.0 / 210.0;
  expectRows(block(results, "STRESSES"), stress, 1e-9);
  expectRows(block(results, "STRAINS//TOTAL"), strain, 1e-12);
}

TEST(UnitStates, NodalForcesOnABrickGiveEachStressComponentAlone) {
  for (int component = 0; component < 6; ++component) {
    const JobFolder folder;

    const auto results = solve(folder, unitState(component).text());

    SCOPED_TRACE(component);
    expectUnitState(results, component);
  }
}

TEST(UnitStates, FaceLoadsOnTetrahedraGiveEachStressComponentAlone) {
  for (int component = 0; component < 6; ++component) {
    SolidDeck deck = tetrahedronPatch();
    deck.materials = {MaterialCards::isotropic(210.0, 0.3)};
    deck.steps[0].fixities = {{1, 111, {}}, {2, 11, {}}, {4, 1, {}}};
    for (std::size_t e = 0; e < 12; ++e) {
      const std::vector<int>& nodes = deck.elements[e].nodes;
      const std::size_t face = e / 2;  // low z, high z, low y, high x, high y, low x
      constexpr std::size_t normal[6] = {2, 2, 1, 0, 1, 0};
      const double sign = face == 1 || face == 3 || face == 4 ? 1.0 : -1.0;
      constexpr std::size_t first[6] = {0, 1, 0, 2, 0, 1};
      constexpr std::size_t second[6] = {0, 1, 1, 2, 2, 2};
      const auto c = static_cast<std::size_t>(component);
      Vector3 traction{};
      if (first[c] == normal[face]) traction[second[c]] = sign;
      if (second[c] == normal[face]) traction[first[c]] = sign;
      deck.steps[0].faces.push_back({static_cast<int>(e) + 1, {nodes[0], nodes[1], nodes[2]}, traction});
    }
    const JobFolder folder;

    const auto results = solve(folder, deck.text());

    SCOPED_TRACE(component);
    expectUnitState(results, component);
  }
}

}  // namespace
}  // namespace zema::test
