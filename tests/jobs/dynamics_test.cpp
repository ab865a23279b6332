// Whole jobs in time against closed forms and recurrences made by hand.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>

#include "jobs/job_runner.h"
#include "jobs/solid_deck.h"

namespace zema::test {
namespace {

/// Bricks of section 1 along x, density 2, E 1000, that move along x alone, with a wall at x = 0 or free; the load acts
/// on the end or, on a free bar, on all nodes in parts that move it as a whole. A step in time, consistent with data().
struct Bar {
  double dt = 0.01;
  double length = 1.0;
  double load = 10.0;
  int KLUMP = 0;
  double ALFAD = 0.0, BETAD = 0.0;
  std::string rows = "1 1";  ///< of the load table
  int steps = 5;
  int KSAVE = 1;
  int watched = 0;  ///< node, 0 the last
  SolidDeck deck{};

  explicit Bar(int bricks = 1, double barLength = 1.0, bool wall = true) : length(barLength) {
    deck.materials = {MaterialCards::isotropic(1000.0, 0.0, 2.0)};
    deck.steps[0].IDINA = 1;
    deck.steps[0].increments[0].output = {0, 1, 0, 0};
    deck.steps[0].increments[0].post = {1, 0, 0, 0};
    const BrickGrid grid{bricks, 1, 1};
    grid.addTo(deck, [&](int i, int j, int k) { return Vector3{i * length / bricks, double(j), double(k)}; });
    for (int node = 1; node <= static_cast<int>(deck.nodes.size()); ++node) {
      const int place = (node - 1) % (bricks + 1);
      deck.steps[0].fixities.push_back({node, wall && place == 0 ? 111 : 11, {}});
      const bool atEnd = place == 0 || place == bricks;
      if (wall ? place == bricks : true)
        deck.steps[0].pointLoads[node] = {load / 4.0 / (wall ? 1 : bricks) / (wall || !atEnd ? 1 : 2), 0.0, 0.0};
    }
  }
  [[nodiscard]] std::string data() const {
    std::ostringstream out;
    out.precision(17);
    out << "0 " << dt << ' ' << 1 + std::ranges::count(rows, '\n') << ' ' << steps << ' ' << KLUMP << ' ' << ALFAD
        << ' ' << BETAD << " .25 .5 0 0 0 0 0 " << KSAVE << '\n'
        << rows << '\n';
    return out.str();
  }
  /// Displacements of the last node at the steps that leave results.
  [[nodiscard]] std::vector<double> history() const { return history(data()); }
  [[nodiscard]] std::vector<double> history(const std::string& din, std::string* listing = nullptr) const {
    const JobFolder folder;
    folder.write("job.din", din);
    SolidDeck inTime = deck;
    for (LoadStepCards& step : inTime.steps) step.increments[0].time = dt;
    std::vector<double> u;
    for (const ResultBlock& one : solve(folder, inTime.text()))
      if (one.name.starts_with("DISPLACEMENTS"))
        u.push_back(watched > 0 ? atNode(one, watched)[0] : one.rows.back()[0]);
    if (listing != nullptr) *listing = folder.read("job.mec.sal");
    return u;
  }
};

void expectNear(const std::vector<double>& values, const std::vector<double>& expected, double tolerance) {
  ASSERT_EQ(values.size(), expected.size());
  for (std::size_t i = 0; i < values.size(); ++i) EXPECT_NEAR(values[i], expected[i], tolerance) << i;
}

/// The numbers behind each place of a text.
std::vector<double> valuesBehind(std::string_view label, const std::string& text) {
  std::vector<double> values;
  for (std::size_t at = 0; (at = text.find(label, at + 1)) != std::string::npos;)
    values.push_back(std::stod(text.substr(at + label.size(), 20)));
  return values;
}

TEST(TimeIntegration, OscillatorFollowsNewmark) {
  Bar bar;
  std::string listing;
  expectNear(bar.history(bar.data(), &listing), {2.4390e-4, 1.19572e-3, 3.00649e-3, 5.49955e-3, 8.43168e-3}, 5e-9);
  EXPECT_NE(listing.find("      0.048780      0.000000      0.000000      9.756098"), std::string::npos);
  bar.KLUMP = 1;
  expectNear(bar.history(), {3.6145e-4, 1.75497e-3, 4.34055e-3, 7.74436e-3, 1.147429e-2}, 5e-9);
  bar.KLUMP = 0;
  bar.ALFAD = 2.0;
  bar.BETAD = 0.001;
  bar.steps = 200;
  const std::vector<double> u = bar.history();
  expectNear({u.begin(), u.begin() + 5}, {2.4038e-4, 1.17188e-3, 2.92535e-3, 5.30851e-3, 8.07402e-3}, 5e-9);
  EXPECT_NEAR(u[10], 0.01843842, 5e-9);
  EXPECT_EQ(std::ranges::max_element(u) - u.begin(), 10);
  EXPECT_NEAR(u[199], 0.00950395, 5e-9);
}

TEST(TimeIntegration, AFreeBlockIsAcceleratedAsAWholeByEverySolverAndMeasure) {
  for (const int NSOLV : {1, 2, 3, 4, 5, 6})
    for (const int LARGE : {0, 1})
      for (const int KLUMP : {0, 1}) {
        Bar bar(2, 1.0, false);
        bar.deck.NSOLV = NSOLV;
        bar.deck.steps[0].increments[0].tolerance = 1e-6;
        bar.deck.LARGE = LARGE;
        bar.KLUMP = KLUMP;
        bar.steps = 10;
        std::vector<double> expected;
        for (int n = 1; n <= 10; ++n) expected.push_back(10.0 / 2.0 * 1e-4 * (n * n / 2.0 - n / 2.0 + 0.25));
        expectNear(bar.history(), expected, 1e-11);
      }
}

TEST(TimeIntegration, AWaveTravelsAlongABar) {
  Bar bar(100);
  bar.load = 1.0;
  bar.deck.materials = {MaterialCards::isotropic(1.0, 0.0, 1.0)};
  for (auto& [node, load] : bar.deck.steps[0].pointLoads) load[0] = 0.25;
  bar.steps = 400;
  bar.KSAVE = 50;
  const std::vector<double> u = bar.history();  // at steps 1, 50, 100 ...
  expectNear({u[1], u[2], u[3], u[4], u[6], u[8]}, {0.4950, 0.9950, 1.4950, 1.9763, 1.0052, 0.0294}, 5e-5);
}

TEST(TimeIntegration, DampingOfAViscousMaterialActsOnceAndLikeThatOfTheStiffness) {
  Bar viscous;
  viscous.deck.materials[0].codes[2] = 7;
  viscous.deck.materials[0].slots[50] = 0.001;
  Bar rayleigh;
  rayleigh.BETAD = 0.001;
  expectNear(viscous.history(), rayleigh.history(), 1e-12);

  for (Bar* bar : {&viscous, &rayleigh}) {  // creep of E = 1, t = 1 under a stress of 1
    bar->deck.materials[0].E = {1.0, 1.0, 1.0};
    bar->deck.materials[0].slots[50] = bar->BETAD = 1.0;
    bar->deck.steps[0].KNEWM = 0;
    bar->rows = ".1 1";
    bar->dt = 0.1;
    bar->steps = 10;
    std::vector<double> expected;
    for (int n = 1; n <= 10; ++n) expected.push_back(1.0 - std::pow(1.1, -n));
    if (bar == &viscous) bar->BETAD = 0.0;
    expectNear(bar->history(), expected, 1e-12);
  }
}

TEST(TimeIntegration, StaticAndDynamicStepsInTurnBalanceTheirPower) {
  Bar bar;
  bar.ALFAD = 2.0;
  bar.BETAD = 0.001;
  bar.steps = 50;
  const std::vector<double> response = bar.history();

  LoadStepCards& inTime = bar.deck.steps[0];
  inTime.KLOAD = 1;
  bar.deck.steps = {inTime, inTime, inTime};
  bar.deck.steps[0].IDINA = bar.deck.steps[2].IDINA = 0;
  bar.deck.steps[2].increments[0].factor = 0.0;
  bar.rows = "-1 1";  // takes the static load off
  std::string listing;
  std::vector<double> expected{0.01};
  for (const double u : response) expected.push_back(0.01 - u);
  expected.push_back(0.0);
  expectNear(bar.history(bar.data(), &listing), expected, 1e-12);

  const auto powers = [&](std::string_view label) { return valuesBehind(label, listing); };
  const std::vector<double> sum = powers(" Pot. (def.)+(cin.)+(disip.):");
  ASSERT_EQ(sum.size(), 52U);
  expectNear(sum, powers(" Pot. introducida           :"), 1.1e-6);
  EXPECT_EQ(sum.front(), 0.0);
  EXPECT_EQ(sum.back(), 0.0);
  EXPECT_GT(powers(" Pot. disipada              :")[5], 0.01);
}

TEST(TimeIntegration, DamageShowsInItsIndicesWhilePowerIsBalanced) {
  Bar bar;
  bar.dt = 0.1;
  bar.steps = 24;
  bar.ALFAD = 0.05;
  bar.BETAD = 0.01;
  bar.deck.materials = {MaterialCards::damaging(3.0, 0.0, 3.0, 10.0)};
  bar.deck.materials[0].density = 2.0;
  bar.rows = "0.2 1";  // a load of 2, which a bar at rest bears
  bar.deck.steps[0].increments[0].tolerance = 1e-7;
  std::string listing;
  const std::vector<double> u = bar.history(bar.data(), &listing);
  EXPECT_GT(*std::ranges::max_element(u), 1.0);
  expectNear(valuesBehind(" Pot. (def.)+(cin.)+(disip.):", listing),
             valuesBehind(" Pot. introducida           :", listing), 2e-6);
  const double byForce = valuesBehind("-medida en fuerza-- :", listing).back();  // damage is the same at all points
  EXPECT_NEAR(valuesBehind("DANO GLOBAL -medida energetica--:", listing).back(), byForce, 1e-6);
  EXPECT_GT(byForce, 0.4);
  EXPECT_GT(valuesBehind("DISIPACIÓN GLOBAL -medida energetica--:", listing).back(), 1.0);
}

TEST(TimeIntegration, AnUndampedVibrationKeepsItsEnergyOverTenThousandSteps) {
  Bar bar;
  bar.deck.steps[0].KLOAD = 1;
  bar.deck.steps.push_back(bar.deck.steps[0]);
  bar.steps = 5000;
  bar.KSAVE = 0;
  const auto table = [](std::string factor) {  // results at every thousandth step and at the next one
    std::string rows;
    for (int n = 1; n <= 5000; ++n) rows += factor + (n % 1000 < 2 ? " 1 1\n" : " 1 0\n");
    rows.pop_back();
    return rows;
  };
  bar.rows = table("1");
  std::string data = bar.data();
  bar.rows = table("0");
  const std::vector<double> u = bar.history(data + bar.data());
  // u - u_static = A cos(n theta + phi), tan(theta / 2) = omega dt / 2: the amplitude follows from two steps
  const double theta = 2.0 * std::atan(std::sqrt(1000.0) * 0.01 / 2.0);
  std::vector<double> amplitude;
  for (std::size_t i = 1; i + 1 < u.size(); i += 2) {
    const double x = u[i] - 0.01, y = u[i + 1] - 0.01;
    amplitude.push_back((x * x + y * y - 2.0 * x * y * std::cos(theta)) / std::pow(std::sin(theta), 2));
  }
  ASSERT_EQ(u.size(), 20U);
  for (const double A : amplitude) EXPECT_NEAR(A / amplitude[0], 1.0, 1e-9);
}

TEST(TimeIntegration, ElementsThatAreNotThereAddNothing) {
  Bar bar(2, 2.0);
  bar.deck.elements[1].step = 2;
  for (auto& [node, load] : bar.deck.steps[0].pointLoads) load[0] = 0.0;
  for (const int node : {2, 5, 8, 11}) bar.deck.steps[0].pointLoads[node] = {2.5, 0.0, 0.0};
  bar.watched = 2;
  for (const double damping : {0.0, 0.001}) {
    Bar alone;
    bar.BETAD = alone.BETAD = damping;
    for (bar.deck.KMASS = 0; bar.deck.KMASS < 2; ++bar.deck.KMASS) expectNear(bar.history(), alone.history(), 1e-12);
  }
}

TEST(TimeIntegration, FiniteStrainFollowsItsScalarEquation) {
  Bar bar;
  bar.deck.LARGE = 1;
  bar.steps = 40;
  bar.rows = "30 1";
  const auto force = [](double u) { return 500.0 * ((1.0 + u) * (1.0 + u) - 1.0) * (1.0 + u); };
  std::vector<double> expected;
  double u = 0.0, v = 0.0, a = 0.0;
  for (int n = 0; n < bar.steps; ++n) {
    double d = 0.0;
    const auto inertia = [&](double x) { return 4e4 * (x - 0.01 * v) - a; };
    for (int i = 0; i < 50; ++i) d -= (inertia(d) + force(u + d) - 300.0) / (4e4 + 1500.0 * (1 + u + d) * (1 + u + d));
    const double next = inertia(d);
    v += 0.005 * (a + next);
    a = next;
    expected.push_back(u += d);
  }
  expectNear(bar.history(), expected, 1e-10);
}

}  // namespace
}  // namespace zema::test
