// Softening bars as whole decks: their path and dissipation on any mesh.
#include <gtest/gtest.h>

#include <cmath>

#include "jobs/job_runner.h"
#include "jobs/solid_deck.h"

namespace zema::test {
namespace {

// Units that give E = 3, f = 3 and a fracture energy of 10: the length at which the elements snap back is 20/3.
constexpr double E = 3.0, f = 3.0, G = 10.0;

/// Displacement and pull, from 0, 0 on, of a bar of length and section 1 with damage by curve 0 or 1; its first brick
/// is weaker.
std::vector<std::array<double, 2>> pull(int bricks, double curve, const std::vector<Increment>& increments) {
  MaterialCards material = MaterialCards::damaging(E, 0.0, f, G);
  material.slots[51] = curve;
  SolidDeck deck = symmetricCube(material, 1.0, bricks);
  deck.NSOLV = 2;
  deck.materials.push_back(material);
  deck.materials[0].slots[30] *= 1.0 - 1e-6;
  if (bricks > 1) deck.composites.push_back({{.components = {{2, 1.0}}}});
  for (std::size_t e = 0; e < deck.elements.size(); ++e) {
    deck.elements[e].composite = e == 0 ? 1 : 2;
    deck.elements[e].FRACL = 1.0 / bricks;
  }
  deck.steps[0].increments = increments;
  for (Increment& increment : deck.steps[0].increments) {
    increment.post = {0, 0, 0, 0};
    increment.tolerance = 1e-6;
  }
  deck.curveCount = 1;
  deck.curves = {"pull", "X-DISPL", std::to_string(bricks + 1) + " 1 1", "Y-RCTOT", "1"};
  const JobFolder folder;
  solve(folder, deck.text());
  std::vector<std::array<double, 2>> points = readCurve(folder);
  for (auto& [u, reaction] : points) reaction = -reaction;
  return points;
}

double work(const std::vector<std::array<double, 2>>& points) {
  double sum = 0.0;
  for (std::size_t i = 1; i < points.size(); ++i)
    sum += 0.5 * (points[i][1] + points[i - 1][1]) * (points[i][0] - points[i - 1][0]);
  return sum;
}

TEST(SofteningBar, DissipatesItsFractureEnergyOnAnyMesh) {
  const std::vector<Increment> exponential{{1, 0.9999989}, {1, 3e-7}, {500, 0.05}};
  const std::vector<Increment> linear{{1, 0.9999989}, {1, 3e-7}, {130, 0.05}};
  for (const int bricks : {1, 2, 4}) {
    const auto points = pull(bricks, 0, exponential);
    ASSERT_EQ(points.size(), 503U);
    EXPECT_NEAR(work(points), G, 0.01 * G) << bricks;
    for (const auto& [u, force] : points) {
      const double strain = bricks * (u - force / E * (1.0 - 1.0 / bricks));  // of the weak brick
      const double line = E * std::min(1.0, u), softened = std::exp((1.0 - strain) / (E * G * bricks / (f * f) - 0.5));
      EXPECT_NEAR(force, u < 1.0 ? line : f * softened, 1e-5);
    }
    EXPECT_NEAR(work(pull(bricks, 1, linear)), G, 0.01 * G) << bricks;
  }
}

}  // namespace
}  // namespace zema::test
