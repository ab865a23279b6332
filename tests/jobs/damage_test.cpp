// Softening bars and a notched block as whole decks: dissipation on any mesh, quadratic convergence.
#include <gtest/gtest.h>

#include <cmath>

#include "jobs/job_runner.h"
#include "jobs/solid_deck.h"

namespace zema::test {
namespace {

// Units that give E = 3, f = 3 and a fracture energy of 10: the length at which the elements snap back is 20/3.
constexpr double E = 3.0, f = 3.0, G = 10.0;

MaterialCards softeningMaterial(std::map<int, double> slots, double nu = 0.0, int law = 4) {
  MaterialCards material = MaterialCards::isotropic(E, nu);
  material.codes = {2, 2, law, 2, 1, 1};
  material.slots = {{30, f}, {31, 1.0}, {54, G}};
  for (const auto& [place, value] : slots) material.slots[place] = value;
  return material;
}

/// A bar of length and section 1 that is pulled at x = 1; its first brick is weaker.
SolidDeck bar(int bricks, const std::map<int, double>& slots, const std::vector<Increment>& increments) {
  SolidDeck deck;
  deck.NSOLV = 2;
  const BrickGrid grid{bricks, 1, 1};
  grid.addTo(deck, [bricks](int i, int j, int k) { return Vector3{i / double(bricks), double(j), double(k)}; });
  for (ElementCard& element : deck.elements) element.FRACL = 1.0 / bricks;
  deck.materials = {softeningMaterial(slots), softeningMaterial(slots)};
  deck.materials[0].slots[30] *= 1.0 - 1e-6;
  if (bricks > 1) deck.composites.push_back({{.components = {{2, 1.0}}}});
  for (std::size_t e = 1; e < deck.elements.size(); ++e) deck.elements[e].composite = 2;
  for (int n = 1; n <= grid.at(bricks, 1, 1); ++n) {
    const Vector3& x = deck.nodes[static_cast<std::size_t>(n - 1)];
    const int code = (x[1] == 0.0 ? 10 : 0) + (x[2] == 0.0 ? 1 : 0);
    if (x[0] == 0.0 || x[0] == 1.0)
      deck.steps[0].fixities.push_back({n, 100 + code, {x[0], 0, 0}});
    else if (code != 0)
      deck.steps[0].fixities.push_back({n, code, {}});
  }
  deck.steps[0].increments = increments;
  for (Increment& increment : deck.steps[0].increments) {
    increment.post = {0, 0, 0, 0};
    increment.tolerance = 1e-6;
  }
  deck.curveCount = 1;
  deck.curves = {"pull", "X-DISPL", std::to_string(bricks + 1) + " 1 1", "Y-RCTOT", "1"};
  return deck;
}

/// Displacement and pull, from the curve file.
std::vector<std::array<double, 2>> pull(const SolidDeck& deck) {
  const JobFolder folder;
  folder.write("job.dts", deck.text());
  EXPECT_EQ(runJob(folder, "job.dts").status, 0) << folder.read("job.mec.sal");
  std::vector<std::array<double, 2>> points = readCurve(folder);  // from 0, 0 on
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
    const auto points = pull(bar(bricks, {}, exponential));
    ASSERT_EQ(points.size(), 503U);
    EXPECT_NEAR(work(points), G, 0.01 * G) << bricks;
    for (const auto& [u, force] : points) {
      const double strain = bricks * (u - force / E * (1.0 - 1.0 / bricks));  // of the weak brick
      const double line = E * std::min(1.0, u), softened = std::exp((1.0 - strain) / (E * G * bricks / (f * f) - 0.5));
      EXPECT_NEAR(force, u < 1.0 ? line : f * softened, 1e-5);
    }
    EXPECT_NEAR(work(pull(bar(bricks, {{51, 1.0}}, linear))), G, 0.01 * G) << bricks;
  }
}

}  // namespace
}  // namespace zema::test
