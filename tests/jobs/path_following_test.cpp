// Paths beyond limit points, by all constraints of arc-length control, and softening bars of any mesh.
#include <gmock/gmock.h>

#include <cmath>
#include <numbers>
#include <sstream>

#include "foundation/near.h"
#include "jobs/job_runner.h"
#include "jobs/solid_deck.h"

namespace zema::test {
namespace {

constexpr double span = 20.0, rise = 0.5, depth = 0.4, E = 1e6;
constexpr BrickGrid grid{20, 1, 2};

/// Half of a shallow arch y = rise cos(pi x / span), pinned at its end, under a load sin-shaped like itself, downwards.
SolidDeck arch() {
  const auto shape = [](double i) { return std::cos(std::numbers::pi * i / 2.0 / grid.nx); };
  SolidDeck deck = grid.deck(MaterialCards::isotropic(E, 0.0), [&](int i, int j, int k) {
    return Vector3{span / 2.0 * i / grid.nx, double(j), depth * (k - 1) / 2.0 + rise * shape(i)};
  });
  deck.LARGE = 1;
  deck.NSOLV = 2;
  for (int i = 0; i <= grid.nx; ++i)
    for (int j = 0; j <= 1; ++j) {
      const double length = span / 2.0 / grid.nx * (i % grid.nx == 0 ? 0.5 : 1.0);
      deck.steps[0].pointLoads[grid.at(i, j, 1)] = {0.0, 0.0, -length / 2.0 * shape(i)};
      for (int k = 0; k <= 2; ++k) {
        const int code = (i == 0 ? 100 : 0) + (j == 0 ? 10 : 0) + (i == grid.nx && k == 1 ? 101 : 0);
        if (code != 0) deck.steps[0].fixities.push_back({grid.at(i, j, k), code, {}});
      }
    }
  deck.curveCount = 1;
  deck.curves = {"crown", "X-DISPL", std::to_string(grid.at(0, 0, 1)) + " 3 1", "Y-RCTOT", "3"};
  return deck;
}

/// Load per length at the crown's deflection w, slender shallow arch (Fung and Kaplan, 1952); the bricks' own stiffness
/// in bending is 1 + (G / E) (a / depth)^2 times that of a beam.
double closedForm(double w) {
  const double bending = E * std::pow(depth, 3) / 12.0 * (1.0 + 0.5 * std::pow(span / 2.0 / grid.nx / depth, 2));
  const double c = rise - w;
  return std::pow(std::numbers::pi / span, 4) * (bending * w + E * depth / 4.0 * (rise * rise - c * c) * c);
}

std::vector<double> valuesOf(const ResultBlock& block) {
  std::vector<double> all;
  for (const auto& row : block.rows) all.insert(all.end(), row.begin(), row.end());
  return all;
}

TEST(Arch, FourConstraintsFollowOnePathThroughSnapThrough) {
  constexpr int increments = 25;
  constexpr double step = 0.04;
  SolidDeck deck = arch();
  deck.steps[0].increments = {Increment{.repeat = increments, .tolerance = 1e-7}};
  deck.steps[0].increments[0].arc = "4 -0.04 " + std::to_string(grid.at(0, 0, 1)) + " 3";
  const JobFolder folder;
  const auto path = solve(folder, deck.text());
  const auto curve = readCurve(folder);
  ASSERT_EQ(curve.size(), increments + 1U);
  for (const auto& [w, reaction] : curve)
    EXPECT_NEAR(reaction * std::numbers::pi / span, closedForm(-w), 0.1) << w;  // of 3.8 at the limit point

  std::vector<std::vector<double>> points{std::vector<double>(deck.nodes.size() * 3, 0.0)};
  for (int k = 0; k < increments; ++k) points.push_back(valuesOf(block(path, "DISPLACEMENTS", k)));
  for (const int type : {1, 2, 3}) {
    SCOPED_TRACE(type);
    const LoadStepCards loads = deck.steps[0];
    SolidDeck follower = deck;
    follower.steps.clear();
    bool rises = false;
    for (int k = 0; k < increments; ++k) {
      // a new load step with the opposite load where the slope of the path changes its sign: type 3 takes the larger
      // factor when an increment begins, type 1 the one of the card
      const bool now = closedForm(step * k + 1e-6) > closedForm(step * k);
      if (follower.steps.empty() || now != rises) {
        follower.steps.push_back(loads);
        follower.steps.back().KLOAD = 1;
        follower.steps.back().increments.clear();
        for (auto& [node, load] : follower.steps.back().pointLoads) load[2] *= now ? 1.0 : -1.0;
      }
      rises = now;
      double square = 0.0, sum = 0.0;  // of the way to the next point
      for (std::size_t i = 0; i < points[0].size(); ++i) {
        const double way = points[static_cast<std::size_t>(k) + 1][i] - points[static_cast<std::size_t>(k)][i];
        square += way * way;
        sum += way;
      }
      std::ostringstream arc;
      arc.precision(17);
      arc << type << ' ' << (type == 2 ? sum : std::sqrt(square)) << " 0 0";
      follower.steps.back().increments.push_back({.factor = 0.2, .tolerance = 1e-7, .arc = arc.str()});
    }
    const JobFolder other;

    const auto followed = solve(other, follower.text());

    for (int k = 0; k < increments; ++k)
      expectNear(valuesOf(block(followed, "DISPLACEMENTS", k)), points[static_cast<std::size_t>(k) + 1], 1e-8);
    EXPECT_NEAR(readCurve(other).back()[1], curve.back()[1], 1e-6);
  }
}

TEST(SofteningBar, FollowsItsPathByTheRelativeDisplacement) {
  constexpr double elastic = 1000.0, strength = 1.0, slope = -500.0, step = 0.0002;
  for (const char* arc : {"5 0.0008 4 1", "6 0.0004 8 1"}) {  // the four pairs sum up to 4 steps, and have length 2
    SCOPED_TRACE(arc);
    const double length = arc[0] == '5' ? 4.0 : 0.5;  // of the elastic brick: with the longer one the end snaps back
    const BrickGrid bar{2, 1, 1};
    SolidDeck deck = bar.deck(MaterialCards::damaging(elastic, 0.0, strength, 1.0, {{51, 1}, {52, slope}, {53, 1}}),
                              [&](int i, int j, int k) {
                                return Vector3{i == 2 ? 1.0 + length : i, double(j), double(k)};
                              });
    deck.NSOLV = 2;
    deck.materials.push_back(MaterialCards::isotropic(elastic, 0.0));
    deck.composites.push_back({{.components = {{2, 1.0}}}});
    deck.elements[1].composite = 2;
    std::string pairs;
    for (int j = 0; j <= 1; ++j)
      for (int k = 0; k <= 1; ++k) {
        deck.steps[0].fixities.push_back({bar.at(0, j, k), 111, {}});
        deck.steps[0].pointLoads[bar.at(2, j, k)] = {0.25, 0.0, 0.0};
        pairs += std::to_string(bar.at(0, j, k)) + ' ' + std::to_string(bar.at(1, j, k)) + '\n';
      }
    deck.steps[0].increments = {Increment{
        .repeat = 12, .factor = 0.0, .tolerance = 1e-7, .iterations = 200, .algorithm = arc[0] == '5' ? 2 : 1}};
    deck.steps[0].increments[0].arc = arc;
    const JobFolder folder;
    folder.write("job.arc", pairs + pairs);

    const auto results = solve(folder, deck.text());

    for (int k = 1; k <= 12; ++k) {
      const double opening = step * k;
      const double stress = std::min(elastic * opening, strength + slope * (opening - strength / elastic));
      const ResultBlock& displacements = block(results, "DISPLACEMENTS", k - 1);
      EXPECT_NEAR(atNode(displacements, 2)[0], opening, 1e-9) << k;
      EXPECT_NEAR(atNode(displacements, 3)[0], opening + length * stress / elastic, 1e-9) << k;
      EXPECT_NEAR(block(results, "STRESSES", k - 1).rows[15][0], stress, 1e-6) << k;
    }
  }
}

TEST(PrescribedMotion, GrowsWithTheLoadFactorThatTheConstraintFinds) {
  SolidDeck deck = symmetricCube(MaterialCards::isotropic(1000.0, 0.3), 0.1);
  deck.LARGE = 1;
  deck.steps[0].increments = {Increment{.repeat = 2, .factor = 0.05, .arc = "4 -0.06 3 2"}};
  for (const int NSOLV : {1, 2, 3, 4, 5, 6}) {
    deck.NSOLV = NSOLV;

    const auto results = solve(deck.text());

    for (int k = 0; k < 2; ++k) {  // the strain across is -nu times the one along, both of Green and Lagrange
      const double across = 1.0 - 0.06 * (k + 1);
      EXPECT_NEAR(atNode(block(results, "DISPLACEMENTS", k), 2)[0],
                  std::sqrt(1.0 + (1.0 - across * across) / 0.3) - 1.0, 1e-9)
          << NSOLV;
    }
  }
}

// Units that give E = 3, f = 3 and a fracture energy of 10: the length at which the elements snap back is 20/3.
constexpr double barE = 3.0, f = 3.0, G = 10.0;

/// Displacement and pull, from 0, 0 on, of a bar of length and section 1 with damage by curve 0 or 1; its first brick
/// is weaker.
std::vector<std::array<double, 2>> pull(int bricks, double curve, const std::vector<Increment>& increments) {
  const Material material = MaterialCards::damaging(barE, 0.0, f, G, {{slot::damageSoftening, curve}});
  SolidDeck deck = symmetricCube(material, 1.0, bricks);
  deck.NSOLV = 2;
  deck.materials.push_back(material);
  deck.materials[0](slot::damageStress) *= 1.0 - 1e-6;
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
      const double strain = bricks * (u - force / barE * (1.0 - 1.0 / bricks));  // of the weak brick
      const double line = barE * std::min(1.0, u),
                   softened = std::exp((1.0 - strain) / (barE * G * bricks / (f * f) - 0.5));
      EXPECT_NEAR(force, u < 1.0 ? line : f * softened, 1e-5);
    }
    EXPECT_NEAR(work(pull(bricks, 1, linear)), G, 0.01 * G) << bricks;
  }
}

}  // namespace
}  // namespace zema::test
