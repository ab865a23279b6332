// Uniform states of whole decks: large shear, own weight, construction stages, temperature, orthotropy in three ways.
#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

#include "jobs/job_runner.h"
#include "jobs/solid_deck.h"

namespace zema::test {
namespace {

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

TEST(SimpleShear, ReportsTheStressAndStrainOfItsConfigurationAndReactsWithTheFirstPiolaStress) {
  struct Row {
    double gamma;
    std::array<double, 6> S, cauchy;  // xx yy zz xy xz yz
    double P12, P22;                  // first Piola-Kirchhoff
  };
  const BrickGrid grid{2, 2, 2};
  for (const auto& [g, S, cauchy, P12, P22] :
       {Row{.1, {2, 6, 2, 40, 0, 0}, {10.06, 6, 2, 40.6, 0, 0}, 40.6, 6},
        Row{.5, {50, 150, 50, 200, 0, 0}, {287.5, 150, 50, 275, 0, 0}, 275, 150},
        Row{1, {200, 600, 200, 400, 0, 0}, {1600, 600, 200, 1000, 0, 0}, 1000, 600}}) {
    const double g2 = g * g;
    // moduli that act on the Almansi strain: tau = lambda tr e + 2 mu e with e_xy = gamma / 2, e_yy = -gamma^2 / 2
    const std::array<double, 6> byAlmansi{-200 * g2, -600 * g2, -200 * g2, 400 * g, 0, 0};
    for (const auto& [KPUSH, KTANP, stress, strain] :
         {std::tuple{1, 0, S, g2 / 2}, {2, 1, cauchy, -g2 / 2}, {2, 0, byAlmansi, -g2 / 2}}) {
      SCOPED_TRACE(testing::Message() << "gamma " << g << " KPUSH " << KPUSH << " KTANP " << KTANP);
      SolidDeck deck = grid.deck(MaterialCards::isotropic(1000.0, 0.25), [](int i, int j, int k) {
        return Vector3{i / 2.0, j / 2.0, k / 2.0};
      });
      deck.LARGE = 1;
      deck.KPUSH = KPUSH;
      deck.KTANP = KTANP;
      deck.support([](const Vector3& x) { return x == Vector3{0.5, 0.5, 0.5} ? 0 : 111; });
      for (FixityCard& card : deck.steps[0].fixities) card.values[0] = g * deck.node(card.node)[1];
      deck.curveCount = 2;
      for (const char* place : {"17 1", "17 2"})  // the middle of the face y = 1, which has a quarter of its force
        deck.curves.insert(deck.curves.end(), {"reaction", "X-IINCS", "Y-TREAC", place});
      const JobFolder folder;

      const auto results = solve(folder, deck.text());

      expectRows(block(results, "STRESSES"), stress, 1e-8 * 1600);
      EXPECT_NEAR(block(results, "STRAINS//TOTAL").rows[0][1], strain, 1e-10);
      if (KPUSH == 2) continue;
      EXPECT_NEAR(readCurve(folder, "job.AA").back()[1], P12 / 4.0, 1e-6);
      EXPECT_NEAR(readCurve(folder, "job.AB").back()[1], P22 / 4.0, 1e-6);
    }
  }
}

// ---- column 1 x 1 x 10 under its own weight ----

TEST(Column, OwnWeightGivesTheExactNodalDisplacementsAndOnlyListedConstructionStepsHaveIt) {
  for (const int loaded : {10, 5}) {
    const BrickGrid grid{1, 1, 10};
    SolidDeck deck = grid.deck(MaterialCards::isotropic(1e5, 0.0, {{slot::density, 2.0}}), unitGrid);
    deck.support([](const Vector3& x) { return x[2] == 0.0 ? 111 : 0; });
    deck.steps[0].gravity = 10.0;
    for (std::size_t e = 5; e < 10; ++e) deck.elements[e].step = loaded == 5 ? 2 : 1;
    if (loaded == 5) deck.steps[0].activeSteps = {1, 2};

    const auto results = solve(deck.text());

    for (int k = 0; k <= 10; ++k) {
      const double z = std::min(k, loaded), u = -20.0 * (loaded * z - z * z / 2.0) / 1e5;
      EXPECT_NEAR(atNode(block(results, "DISPLACEMENTS"), grid.at(0, 0, k))[2], u, 1e-12);
      if (k == 10) break;
      const double stress = -20.0 * std::max(0.0, loaded - 0.5 - k);
      EXPECT_NEAR(block(results, "STRESSES").rows[8 * static_cast<std::size_t>(k)][2], stress, 1e-8);
    }
  }
}

TEST(ConstructionStages, AnElementThatIsSwitchedOffLeavesTheSolutionToTheOthers) {
  // a distorted row of two bricks, the outer one taken away, put back and loaded again
  SolidDeck deck = BrickGrid{2, 1, 1}.deck(MaterialCards::isotropic(100.0, 0.2), [](int i, int j, int k) {
    return Vector3{i + 0.1 * j * k, j + 0.05 * i, k * 1.1};
  });
  deck.LARGE = 1;
  deck.elements[1].step = 2;
  deck.support([](const Vector3& x) { return x[0] < 0.5 ? 111 : 0; });
  for (const int n : {2, 5, 8, 11}) deck.steps[0].pointLoads[n] = {1.0, 0.3, 0};
  deck.steps[0].increments[0].tolerance = 1e-7;
  for (const bool outer : {true, false, true}) {
    deck.steps.push_back(deck.steps[0]);
    deck.steps.back().activeSteps = outer ? std::vector{1, 2} : std::vector{1};
    deck.steps.back().increments[0].factor = 0.1;
  }
  const auto results = solve(deck.text());

  for (int step = 0; step < 4; ++step)
    for (const auto& row : block(results, "DISPLACEMENTS", step).rows) EXPECT_LT(std::abs(row[0]), 0.2);
}

// ---- yield stress that falls with the temperature ----

TEST(Temperature, YieldStressFollowsItsCurveFromLoadStepToLoadStep) {
  Material material = MaterialCards::plastic(1000.0, 0.3, 1000.0);
  material(slot::referenceTemperature) = 20.0;
  material.yield = {{20, 120}, {1000, 500}};
  SolidDeck deck = symmetricCube(material, 2.0);
  LoadStepCards step = deck.steps[0];
  step.KLOAD = 1;
  deck.steps.clear();
  for (const double T : {20, 70, 120, 170}) {
    step.temperature = T;
    step.increments[0].factor = deck.steps.empty() ? 1.0 : 0.0;
    deck.steps.push_back(step);
  }

  const auto results = solve(deck.text());

  for (int i = 0; i < 4; ++i)  // the last one by extrapolation
    EXPECT_NEAR(block(results, "STRESSES", i).rows[0][0], 1000.0 - 250.0 * i, 1e-6);
}

// ---- one orthotropic solid, its axes turned by material, layer or element angles ----

const Slots moduli{{37, 900.0}, {40, 500.0},      {36, 0.45 * 0.075}, {38, 0.38},  {39, 0.38 / 24.0},
                   {41, 0.55},  {42, 0.55 / 1.8}, {43, 700.0},        {68, 650.0}, {69, 60.0}};
const Material wood = MaterialCards::isotropic(12000.0, 0.45, moduli);

TEST(RotatedTwins, MaterialLayerAndElementAnglesGiveOneAnswerInBothMeasures) {
  const Vector3 angles = {25.0, 40.0, -65.0};
  for (const int LARGE : {0, 1}) {
    SolidDeck plain = BrickGrid{3, 2, 2}.deck(wood, [](int i, int j, int k) {
      return Vector3{1.0 * i, 0.5 * j, 0.4 * k};
    });
    plain.LARGE = LARGE;
    if (LARGE == 1) plain.KPUSH = plain.KTANP = 2;
    plain.support([](const Vector3& x) { return x[0] == 0.0 ? 111 : 0; });
    plain.steps[0].pointLoads[36] = {1.0, -2.0, 3.0};
    plain.steps[0].increments[0].factor = LARGE == 1 ? 0.1 : 1.0;
    plain.steps[0].increments[0].tolerance = 1e-8;
    SolidDeck byMaterial = plain, byLayer = plain, byElement = plain;
    byMaterial.materials[0] = with(wood, {{72, angles[0]}, {44, angles[1]}, {73, angles[2]}});
    byLayer.composites[0][0].angles = angles;
    for (ElementCard& element : byElement.elements) element.angles = angles;

    const auto reference = solve(byMaterial.text());

    for (const SolidDeck& twin : {byLayer, byElement}) expectAgreement(solve(twin.text()), reference, 1e-10);
  }
}

// ---- ways to the same converged state ----

/// A wooden post of n x n x 6 bricks, pushed at a corner; then without one of them, one node pushed, another let go.
SolidDeck bentPost(int n) {
  SolidDeck deck = BrickGrid{n, n, 6}.deck(wood, unitGrid);
  deck.elements[static_cast<std::size_t>(2 * n * n)].step = 2;
  const int floor = (n + 1) * (n + 1);
  deck.support([](const Vector3& x) { return x[2] == 0.0 ? 111 : 0; });
  deck.steps[0].pointLoads[7 * floor] = {1.0, 1.0, 0.0};
  deck.steps[0].increments[0].repeat = 2;
  deck.steps.push_back(deck.steps[0]);
  deck.steps[0].activeSteps = {1, 2};
  deck.steps[1].fixities[0] = {6 * floor + 2, 1, {0, 0, 2e-4}};
  return deck;
}

struct Way {
  int NSOLV, KRENU = 0, algorithm = 2, KPATH = 1;
};

/// The first way gives the state that the others must reach.
void expectOneState(SolidDeck deck, const std::vector<Way>& ways) {
  deck.gmres = "300 3000 1e-9 0";
  std::vector<ResultBlock> reference;
  for (const Way& way : ways) {
    SCOPED_TRACE(testing::Message() << "NSOLV " << way.NSOLV << " KRENU " << way.KRENU << " KALGO " << way.algorithm);
    deck.NSOLV = way.NSOLV;
    deck.KRENU = way.KRENU;
    deck.KPATH = way.KPATH;
    for (LoadStepCards& step : deck.steps) step.increments[0].algorithm = way.algorithm;
    const JobFolder folder;

    const auto results = solve(folder, deck.text());

    if (reference.empty()) reference = results;
    expectAgreement(results, reference, 1e-8);
    if (way.NSOLV == 6 && deck.ISIME == 1) {
      EXPECT_NE(folder.read("job.mec.log").find("unsymmetric sparse factors"), std::string::npos);
    }
  }
}

TEST(Agreement, SolversAlgorithmsCommitRulesAndNodeNumbersReachOneState) {
  std::vector<Way> ofSlender{{4}}, ofThick{{6}};
  for (const int NSOLV : {1, 2, 3, 4, 5, 6}) {
    for (const int algorithm : {1, 2, 3, 4}) ofSlender.push_back({NSOLV, algorithm / 2 % 2, algorithm, 1 + NSOLV % 2});
    if (NSOLV > 1) ofThick.push_back({NSOLV, 1});  // it is too thick for the front of solver 1
  }
  expectOneState(bentPost(2), ofSlender);
  expectOneState(bentPost(6), ofThick);
}

TEST(Agreement, SolversOfUnsymmetricMatricesAndAlgorithmsReachOneStateOfASoilOfLessDilatancyThanFriction) {
  const Slots slots{{5, 10}, {6, 30}, {7, 3}, {8, 1}, {9, 1}, {10, 3}, {11, 20}, {12, 1}, {20, 3}, {26, 1.4}};
  SolidDeck deck = BrickGrid{2, 2, 3}.deck(
      MaterialCards::isotropic(1000.0, 0.25, slots, plasticCodes(Criterion::mohrCoulomb, Law::backwardEulerNumeric)),
      unitGrid);
  deck.ISIME = 1;
  deck.support([](const Vector3& x) { return x[2] == 0.0 ? 111 : 0; });
  for (int n = 28; n <= 36; ++n) deck.steps[0].pointLoads[n] = {0.05, 0.02, 0.2};
  deck.steps[0].increments[0] = {.repeat = 4, .factor = 0.25, .iterations = 500};
  expectOneState(deck, {{2}, {1}, {3}, {6}, {2, 0, 1}, {2, 0, 3}, {2, 0, 4}});
}

}  // namespace
}  // namespace zema::test
