// Patch tests of whole decks: constant strain on irregular meshes, and unit states of stress.
#include <gtest/gtest.h>

#include "jobs/job_runner.h"
#include "jobs/solid_deck.h"

namespace zema::test {
namespace {

/// The unit cube with further nodes (three coordinates each) in its inside; elements of n nodes each.
SolidDeck patch(const Material& material, const std::vector<double>& innerNodes, std::size_t n,
                const std::vector<int>& elements) {
  SolidDeck deck{.materials = {material}};
  deck.nodes = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}};
  for (auto x = innerNodes.begin(); x != innerNodes.end(); x += 3) deck.nodes.push_back({x[0], x[1], x[2]});
  const auto size = static_cast<std::ptrdiff_t>(n);
  for (auto node = elements.begin(); node != elements.end(); node += size)
    deck.elements.push_back({{node, node + size}});
  deck.steps[0].increments[0].tolerance = 1e-7;
  return deck;
}

/// Seven bricks: one in the middle, one to each face.
SolidDeck brickPatch(const Material& material) {
  return patch(
      material, {.249, .342, .192, .826, .288, .288, .850, .649, .263, .273, .750, .230,
                 .320, .186, .643, .677, .305, .683, .788, .693, .644, .165, .745, .702},
      8, {9, 10, 11, 12, 13, 14, 15, 16, 1,  2,  3,  4,  9, 10, 11, 12, 5,  8,  7,  6,  13, 16, 15, 14, 1,  5,  6,  2,
          9, 13, 14, 10, 2,  6,  7,  3,  10, 14, 15, 11, 3, 7,  8,  4,  11, 15, 16, 12, 4,  8,  5,  1,  12, 16, 13, 9});
}

/// Twelve tetrahedra from an inner node to two triangles on each face of the cube.
SolidDeck tetrahedronPatch(const Material& material) {
  constexpr int faces[6][4] = {{1, 4, 3, 2}, {5, 6, 7, 8}, {1, 2, 6, 5}, {2, 3, 7, 6}, {3, 4, 8, 7}, {4, 1, 5, 8}};
  std::vector<int> elements;
  for (const auto& f : faces)  // the inner node sees the triangle turn clockwise
    elements.insert(elements.end(), {f[0], f[2], f[1], 9, f[0], f[3], f[2], 9});
  return patch(material, {.4, .45, .6}, 4, elements);
}

Vector3 linearField(const Vector3& x) {
  return {5e-4 * (2 * x[0] + x[1] + x[2]), 5e-4 * (x[0] + 2 * x[1] + x[2]), 5e-4 * (x[0] + x[1] + 2 * x[2])};
}

TEST(PatchTest, IrregularBricksAndTetrahedraHoldAConstantStrainWithEverySolver) {
  const Material material = MaterialCards::isotropic(1e6, 0.25);
  for (const int NSOLV : {1, 2, 3, 4, 5, 6}) {
    for (SolidDeck deck : {brickPatch(material), tetrahedronPatch(material)}) {
      SCOPED_TRACE(testing::Message() << deck.elements.size() << " elements, NSOLV " << NSOLV);
      deck.NSOLV = NSOLV;
      for (int n = 1; n <= 8; ++n) deck.steps[0].fixities.push_back({n, 111, linearField(deck.node(n))});

      const auto results = solve(deck.text());

      for (std::size_t n = 0; n < deck.nodes.size(); ++n) {
        const Vector3 expected = linearField(deck.nodes[n]);
        for (std::size_t d = 0; d < 3; ++d)
          EXPECT_NEAR(block(results, "DISPLACEMENTS").rows[n][d], expected[d], 1e-11) << "node " << n + 1;
      }
      expectRows(block(results, "STRESSES"), std::array{2000.0, 2000.0, 2000.0, 400.0, 400.0, 400.0}, 1e-5);
    }
  }
}

/// Traction of a unit stress component (xx yy xy zz xz yz) on a plane with this normal, times `size`.
Vector3 traction(std::size_t component, std::size_t normal, double size) {
  constexpr std::size_t first[6] = {0, 1, 0, 2, 0, 1}, second[6] = {0, 1, 1, 2, 2, 2};
  Vector3 all{};
  if (first[component] == normal) all[second[component]] = size;
  if (second[component] == normal) all[first[component]] = size;
  return all;
}

/// One brick with a quarter of each face's force at its corners.
SolidDeck loadedBrick(const Material& material, std::size_t component) {
  SolidDeck deck = patch(material, {}, 8, {1, 2, 3, 4, 5, 6, 7, 8});
  for (int n = 1; n <= 8; ++n) {
    const Vector3& x = deck.node(n);
    for (std::size_t normal = 0; normal < 3; ++normal) {
      const Vector3 force = traction(component, normal, x[normal] == 1.0 ? 0.25 : -0.25);
      for (std::size_t i = 0; i < 3; ++i) deck.steps[0].pointLoads[n][i] += force[i];
    }
  }
  return deck;
}

SolidDeck loadedTetrahedra(const Material& material, std::size_t component) {
  SolidDeck deck = tetrahedronPatch(material);
  constexpr std::size_t normal[6] = {2, 2, 1, 0, 1, 0};  // low z, high z, low y, high x, high y, low x
  for (std::size_t e = 0; e < 12; ++e) {
    const std::vector<int>& nodes = deck.elements[e].nodes;
    const std::size_t face = e / 2;
    const double outwards = face == 1 || face == 3 || face == 4 ? 1.0 : -1.0;
    deck.steps[0].faces.push_back(
        {static_cast<int>(e) + 1, {nodes[0], nodes[1], nodes[2]}, traction(component, normal[face], outwards)});
  }
  return deck;
}

TEST(UnitStates, NodalForcesOnABrickAndFaceLoadsOnTetrahedraGiveEachStressComponentAlone) {
  const Material material = MaterialCards::isotropic(210.0, 0.3);
  for (std::size_t component = 0; component < 6; ++component) {
    constexpr std::size_t fileColumn[6] = {0, 1, 3, 2, 4, 5};  // files list xx yy zz xy xz yz
    const std::size_t own = fileColumn[component];
    std::array<double, 6> stress{}, strain{};
    if (own < 3) strain[0] = strain[1] = strain[2] = -0.3 / 210.0;
    stress[own] = 1.0;
    strain[own] = own > 2 ? 2.6 / 210.0 : 1.0 / 210.0;
    for (SolidDeck deck : {loadedBrick(material, component), loadedTetrahedra(material, component)}) {
      SCOPED_TRACE(testing::Message() << deck.elements.size() << " elements, component " << component);
      deck.steps[0].increments[0].tolerance = 1e-9;
      deck.steps[0].fixities = {{1, 111, {}}, {2, 11, {}}, {4, 1, {}}};

      const auto results = solve(deck.text());

      expectRows(block(results, "STRESSES"), stress, 1e-9);
      expectRows(block(results, "STRAINS//TOTAL"), strain, 1e-12);
    }
  }
}

}  // namespace
}  // namespace zema::test
