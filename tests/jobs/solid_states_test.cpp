// Uniform states of whole decks: large shear, own weight, construction stages, temperature, orthotropy in three ways.
#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

#include "jobs/job_runner.h"
#include "jobs/solid_deck.h"

namespace zema::test {
namespace {

Vector3 unitGrid(int i, int j, int k) {
  return {double(i), double(j), double(k)};
}

/// Every value within a share of the largest value of its block.
void expectAgreement(const std::vector<ResultBlock>& results, const std::vector<ResultBlock>& reference, double share) {
  ASSERT_EQ(results.size(), reference.size());
  for (std::size_t b = 0; b < results.size(); ++b) {
    const double tolerance = share * largest(reference[b]);
    for (std::size_t r = 0; r < results[b].rows.size(); ++r)
      for (std::size_t c = 0; c < results[b].rows[r].size(); ++c)
        ASSERT_NEAR(results[b].rows[r][c], reference[b].rows[r][c], tolerance) << results[b].name;
  }
}

// ---- simple shear with finite strain: E = 1000, nu = .25, so lambda = mu = 400 ----

SolidDeck simpleShear(double gamma, int KPUSH, int KTANP) {
  SolidDeck deck;
  deck.LARGE = 1;
  deck.KPUSH = KPUSH;
  deck.KTANP = KTANP;
  deck.materials = {MaterialCards::isotropic(1000.0, 0.25)};
  const BrickGrid grid{2, 2, 2};
  grid.addTo(deck, [](int i, int j, int k) { return Vector3{i / 2.0, j / 2.0, k / 2.0}; });
  for (int n = 1; n <= 27; ++n) {
    const Vector3& x = deck.nodes[static_cast<std::size_t>(n - 1)];
    if (n != grid.at(1, 1, 1)) deck.steps[0].fixities.push_back({n, 111, {gamma * x[1], 0, 0}});
  }
  deck.steps[0].increments[0].post = {1, 1, 1, 0};
  return deck;
}

struct ShearRow {
  double gamma;
  std::array<double, 6> S, cauchy;  // xx yy zz xy xz yz
  double P12, P22;                  // first Piola-Kirchhoff
};

TEST(SimpleShear, ReportsTheStressAndStrainOfItsConfigurationAndReactsWithTheFirstPiolaStress) {
  for (const ShearRow& row : {ShearRow{.1, {2, 6, 2, 40, 0, 0}, {10.06, 6, 2, 40.6, 0, 0}, 40.6, 6},
                              ShearRow{.5, {50, 150, 50, 200, 0, 0}, {287.5, 150, 50, 275, 0, 0}, 275, 150},
                              ShearRow{1, {200, 600, 200, 400, 0, 0}, {1600, 600, 200, 1000, 0, 0}, 1000, 600}}) {
    const double g = row.gamma, g2 = g * g;
    // moduli that act on the Almansi strain: tau = lambda tr e + 2 mu e with e_xy = gamma / 2, e_yy = -gamma^2 / 2
    const std::array<double, 6> byAlmansi{-200 * g2, -600 * g2, -200 * g2, 400 * g, 0, 0};
    for (const auto& [KPUSH, KTANP, stress, strain] :
         {std::tuple{1, 0, row.S, g2 / 2}, {2, 1, row.cauchy, -g2 / 2}, {2, 0, byAlmansi, -g2 / 2}}) {
      SCOPED_TRACE(testing::Message() << "gamma " << g << " KPUSH " << KPUSH << " KTANP " << KTANP);
      SolidDeck deck = simpleShear(g, KPUSH, KTANP);
      deck.curveCount = 2;
      for (const char* place : {"17 1", "17 2"})  // the middle of the face y = 1, which has a quarter of its force
        deck.curves.insert(deck.curves.end(), {"reaction", "X-IINCS", "Y-TREAC", place});
      const JobFolder folder;

      const auto results = solve(folder, deck.text());

      expectRows(block(results, "STRESSES"), stress, 1e-8 * 1600);
      EXPECT_NEAR(block(results, "STRAINS//TOTAL").rows[0][1], strain, 1e-10);
      if (KPUSH == 2) continue;
      EXPECT_NEAR(readCurve(folder, "job.AA").back()[1], row.P12 / 4.0, 1e-6);
      EXPECT_NEAR(readCurve(folder, "job.AB").back()[1], row.P22 / 4.0, 1e-6);
    }
  }
}

// ---- column 1 x 1 x 10 under its own weight ----

SolidDeck column() {
  SolidDeck deck;
  deck.materials = {MaterialCards::isotropic(1e5, 0.0, 2.0)};
  BrickGrid{1, 1, 10}.addTo(deck, unitGrid);
  for (int n = 1; n <= 4; ++n) deck.steps[0].fixities.push_back({n, 111, {}});
  deck.steps[0].gravity = 10.0;
  return deck;
}

TEST(Column, OwnWeightGivesTheExactNodalDisplacementsAndOnlyListedConstructionStepsHaveIt) {
  for (const int loaded : {10, 5}) {
    SolidDeck deck = column();
    for (std::size_t e = 5; e < 10; ++e) deck.elements[e].step = loaded == 5 ? 2 : 1;
    if (loaded == 5) deck.steps[0].activeSteps = {1, 2};
    const JobFolder folder;

    const auto results = solve(folder, deck.text());

    const ResultBlock& u = block(results, "DISPLACEMENTS");
    const ResultBlock& stress = block(results, "STRESSES");
    for (int k = 0; k <= 10; ++k) {
      const double z = std::min(k, loaded);
      EXPECT_NEAR(atNode(u, BrickGrid{1, 1, 10}.at(0, 0, k))[2], -20.0 * (loaded * z - z * z / 2.0) / 1e5, 1e-12);
      if (k == 10) break;
      EXPECT_NEAR(stress.rows[8 * static_cast<std::size_t>(k)][2], -20.0 * std::max(0.0, loaded - 0.5 - k), 1e-8);
    }
  }
}

TEST(ConstructionStages, AnElementThatIsSwitchedOnLateStartsFromZeroStrain) {
  // two bricks in a row along x under a pull of 1 (E = 100, nu = 0): the second one is built in load step 2
  SolidDeck deck;
  deck.materials = {MaterialCards::isotropic(100.0, 0.0)};
  BrickGrid{2, 1, 1}.addTo(deck, unitGrid);
  deck.elements[1].step = 2;
  for (int n = 1; n <= 12; ++n) {
    const bool root = (n - 1) % 3 == 0;
    const bool built = (n - 1) % 3 == 2;
    deck.steps[0].fixities.push_back({n, root || built ? 111 : 11, {}});
    if ((n - 1) % 3 == 1) deck.steps[0].pointLoads[n] = {0.25, 0, 0};
  }
  LoadStepCards second = deck.steps[0];
  second.activeSteps = {1, 2};
  for (auto& [node, load] : second.pointLoads) load[0] = 0.5;
  deck.steps.push_back(second);
  const JobFolder folder;

  const auto results = solve(folder, deck.text());

  // the pull of 1 strains the first brick alone by .01; the further 1 is shared by both: +.005 and -.005
  EXPECT_NEAR(atNode(block(results, "DISPLACEMENTS", 0), 2)[0], 0.01, 1e-10);
  EXPECT_NEAR(atNode(block(results, "DISPLACEMENTS", 1), 2)[0], 0.015, 1e-10);
  const ResultBlock& stress = lastBlock(results, "STRESSES");
  EXPECT_NEAR(stress.rows[0][0], 1.5, 1e-8);
  EXPECT_NEAR(stress.rows[8][0], -0.5, 1e-8);
  EXPECT_EQ(block(results, "STRESSES", 0).rows.size(), 8u);  // an inactive element has no lines
}

TEST(ConstructionStages, AnElementThatIsSwitchedOffLeavesTheSolutionToTheOthers) {
  // a distorted row of two bricks, the outer one taken away, put back and loaded again
  SolidDeck deck;
  deck.LARGE = 1;
  deck.materials = {MaterialCards::isotropic(100.0, 0.2)};
  BrickGrid{2, 1, 1}.addTo(deck, [](int i, int j, int k) { return Vector3{i + 0.1 * j * k, j + 0.05 * i, k * 1.1}; });
  deck.elements[1].step = 2;
  for (const int n : {1, 4, 7, 10}) deck.steps[0].fixities.push_back({n, 111, {}});
  for (const int n : {2, 5, 8, 11}) deck.steps[0].pointLoads[n] = {1.0, 0.3, 0};
  deck.steps[0].increments[0].tolerance = 1e-7;
  for (const bool outer : {true, false, true}) {
    deck.steps.push_back(deck.steps[0]);
    deck.steps.back().activeSteps = outer ? std::vector{1, 2} : std::vector{1};
    deck.steps.back().increments[0].factor = 0.1;
  }
  const JobFolder folder;

  const auto results = solve(folder, deck.text());

  for (int step = 0; step < 4; ++step) {
    for (const auto& row : block(results, "DISPLACEMENTS", step).rows) EXPECT_LT(std::abs(row[0]), 0.2);
  }
}

// ---- modulus that falls with the temperature ----

TEST(Temperature, ModulusAndYieldStressFollowTheirCurvesFromLoadStepToLoadStep) {
  const std::array<double, 4> temperatures = {20, 70, 120, 170};
  const std::array<double, 4> modulus = {1000, 750, 500, 250};  // the last one by extrapolation
  for (const std::string kind : {"loaded", "held", "yielding"}) {
    const bool held = kind != "loaded", yields = kind == "yielding";
    MaterialCards material = MaterialCards::isotropic(1000.0, 0.3);
    material.referenceTemperature = 20.0;
    (yields ? material.yieldCurve : material.youngCurve) = {{20, 1000}, {120, 500}};
    if (yields) {  // no hardening: a given slope of 0
      material.codes = {2, 2, 8, 2, 3, 2};
      material.slots = {{7, 1000}, {8, 1}, {9, 1}, {10, 1}, {12, 1}};
    }
    SolidDeck deck = symmetricCube(material, yields ? 2.0 : held ? 1e-3 : 0.0);
    if (!held) {
      for (const int n : {2, 4, 6, 8}) deck.steps[0].pointLoads[n] = {0.25, 0, 0};
    }
    LoadStepCards step = deck.steps[0];
    deck.steps.clear();
    for (const double T : temperatures) {
      step.temperature = T;
      step.increments[0].factor = deck.steps.empty() ? 1.0 : 0.0;
      deck.steps.push_back(step);
    }
    for (LoadStepCards& later : deck.steps) later.KLOAD = 1;
    const JobFolder folder;

    const auto results = solve(folder, deck.text());

    for (int i = 0; i < 4; ++i) {
      const double E = modulus[static_cast<std::size_t>(i)];
      SCOPED_TRACE(testing::Message() << kind << " at step " << i + 1);
      if (held) {
        EXPECT_NEAR(block(results, "STRESSES", i).rows[0][0] / E, yields ? 1.0 : 1e-3, 1e-9);
      } else {
        EXPECT_NEAR(atNode(block(results, "DISPLACEMENTS", i), 2)[0], 1.0 / E, 1e-11);
      }
    }
  }
}

// ---- one orthotropic solid, its axes turned by material, layer or element angles ----

MaterialCards wood() {
  MaterialCards m;
  m.E = {12000, 900, 500};
  m.xy = 0.45;
  m.yx = m.xy * 900 / 12000;
  m.xz = 0.38;
  m.zx = m.xz * 500 / 12000;
  m.yz = 0.55;
  m.zy = m.yz * 500 / 900;
  m.G = {700, 650, 60};
  return m;
}

TEST(RotatedTwins, MaterialLayerAndElementAnglesGiveOneAnswerInBothMeasures) {
  const Vector3 angles = {25.0, 40.0, -65.0};
  for (const int LARGE : {0, 1}) {
    std::vector<ResultBlock> first;
    for (int where = 0; where < 3; ++where) {
      SolidDeck deck;
      deck.LARGE = LARGE;
      if (LARGE == 1) deck.KPUSH = deck.KTANP = 2;
      deck.materials = {wood()};
      BrickGrid{3, 2, 2}.addTo(deck, [](int i, int j, int k) { return Vector3{1.0 * i, 0.5 * j, 0.4 * k}; });
      if (where == 0) deck.materials[0].angles = angles;
      if (where == 1) deck.composites[0][0].angles = angles;
      for (ElementCard& element : deck.elements)
        if (where == 2) element.angles = angles;
      for (const int n : {1, 5, 9, 13, 17, 21, 25, 29, 33}) deck.steps[0].fixities.push_back({n, 111, {}});
      deck.steps[0].pointLoads[36] = {1.0, -2.0, 3.0};
      deck.steps[0].increments[0].factor = LARGE == 1 ? 0.1 : 1.0;
      deck.steps[0].increments[0].tolerance = 1e-8;
      const JobFolder folder;
      const auto results = solve(folder, deck.text());
      if (where == 0) first = results;
      SCOPED_TRACE(testing::Message() << "angles in place " << where << ", LARGE " << LARGE);
      expectAgreement(results, first, 1e-10);
    }
  }
}

// ---- ways to the same converged state ----

/// A wooden post of n x n x 6 bricks, pushed at a corner; then without one of them, one node pushed, another let go.
SolidDeck bentPost(int n) {
  SolidDeck deck;
  deck.materials = {wood()};
  BrickGrid{n, n, 6}.addTo(deck, unitGrid);
  deck.elements[static_cast<std::size_t>(2 * n * n)].step = 2;
  const int floor = (n + 1) * (n + 1);
  for (int node = 1; node <= floor; ++node) deck.steps[0].fixities.push_back({node, 111, {}});
  deck.steps[0].pointLoads[7 * floor] = {1.0, 1.0, 0.0};
  deck.steps[0].increments[0].repeat = 2;
  deck.steps.push_back(deck.steps[0]);
  deck.steps[0].activeSteps = {1, 2};
  deck.steps[1].fixities[0] = {6 * floor + 2, 1, {0, 0, 2e-4}};
  return deck;
}

TEST(Agreement, SolversAlgorithmsCommitRulesAndNodeNumbersReachOneState) {
  struct Way {
    int NSOLV, KRENU = 0, algorithm = 2, KPATH = 1;
  };
  const auto solved = [](SolidDeck deck, const Way& way) {
    deck.NSOLV = way.NSOLV;
    deck.KRENU = way.KRENU;
    deck.KPATH = way.KPATH;
    deck.gmres = "300 3000 1e-9 0";
    for (LoadStepCards& step : deck.steps) step.increments[0].algorithm = way.algorithm;
    SCOPED_TRACE(testing::Message() << "NSOLV " << way.NSOLV << " KRENU " << way.KRENU << " KALGO " << way.algorithm);
    const JobFolder folder;
    return solve(folder, deck.text());
  };
  const std::vector<ResultBlock> slender = solved(bentPost(2), {4}), block = solved(bentPost(6), {4});

  for (const Way& way : {Way{2},
                         {2, 1, 3},
                         {4, 1, 1},
                         {4, 0, 4},
                         {4, 0, 2, 2},
                         {5, 1},
                         {1},
                         {1, 0, 1},
                         {1, 1, 4},
                         {3},
                         {3, 1, 3},
                         {6, 0, 3},
                         {6, 1, 4}})
    expectAgreement(solved(bentPost(2), way), slender, 1e-8);
  for (const Way& way : {Way{2}, {3, 1}, {5, 1}, {6}, {6, 1}}) expectAgreement(solved(bentPost(6), way), block, 1e-8);
}

TEST(Agreement, SolversOfUnsymmetricMatricesAndAlgorithmsReachOneStateOfASoilOfLessDilatancyThanFriction) {
  std::vector<ResultBlock> reference;
  for (const auto& [NSOLV, algorithm] : {std::pair{2, 2}, {1, 2}, {3, 2}, {6, 2}, {2, 1}, {2, 3}, {2, 4}}) {
    SolidDeck deck;
    deck.NSOLV = NSOLV;
    deck.ISIME = 1;
    BrickGrid{2, 2, 3}.addTo(deck, unitGrid);
    for (int n = 1; n <= 9; ++n) {
      deck.steps[0].fixities.push_back({n, 111, {}});
      deck.steps[0].pointLoads[27 + n] = {0.05, 0.02, 0.2};
    }
    deck.steps[0].increments[0].repeat = 4;
    deck.steps[0].increments[0].factor = 0.25;
    deck.steps[0].increments[0].iterations = 500;
    deck.steps[0].increments[0].algorithm = algorithm;
    deck.materials = {MaterialCards::isotropic(1000.0, 0.25)};
    deck.materials[0].codes = {3, 3, 10, 2, 3, 2};
    deck.materials[0].slots = {{5, 10}, {6, 30},  {7, 3},  {8, 1},  {9, 1},
                               {10, 3}, {11, 20}, {12, 1}, {20, 3}, {26, 1.4}};
    const JobFolder folder;

    const auto results = solve(folder, deck.text());

    SCOPED_TRACE(testing::Message() << "NSOLV " << NSOLV << " KALGO " << algorithm);
    if (reference.empty()) reference = results;
    expectAgreement(results, reference, 1e-8);
    if (NSOLV == 6) {
      EXPECT_NE(folder.read("job.mec.log").find("unsymmetric sparse factors"), std::string::npos);
    }
  }
}

}  // namespace
}  // namespace zema::test
