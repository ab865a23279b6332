// Whole jobs in time against closed forms and recurrences made by hand.
#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <sstream>

#include "foundation/near.h"
#include "jobs/job_runner.h"
#include "jobs/solid_deck.h"

namespace zema::test {
namespace {

/// Bricks of section 1 along x that move along x alone, with a wall at x = 0 or free; the load acts on the end or, on a
/// free bar, on all nodes in parts that move it as a whole. A step in time, consistent with data().
struct Bar {
  int bricks = 1;
  double length = 1.0;
  bool wall = true;
  Material material = MaterialCards::isotropic(1000.0, 0.0, {{slot::density, 2.0}});
  double load = 10.0;
  int watched = 0;  ///< node, 0 the last
  double dt = 0.01;
  std::string rows = "1 1";  ///< of the load table
  int steps = 5;
  int KLUMP = 0;
  double ALFAD = 0.0, BETAD = 0.0;
  int KSAVE = 1;

  [[nodiscard]] SolidDeck deck() const {
    SolidDeck deck = BrickGrid{bricks, 1, 1}.deck(material, [&](int i, int j, int k) {
      return Vector3{i * length / bricks, double(j), double(k)};
    });
    deck.steps[0].IDINA = 1;
    deck.steps[0].increments[0] = {.output = {0, 1, 0, 0}, .post = {1, 0, 0, 0}};
    deck.support([&](const Vector3& x) { return wall && x[0] == 0.0 ? 111 : 11; });
    for (int node = 1; node <= static_cast<int>(deck.nodes.size()); ++node) {
      const int place = (node - 1) % (bricks + 1);
      const double share = wall ? (place == bricks ? 1.0 : 0.0) : (place % bricks == 0 ? 0.5 : 1.0) / bricks;
      if (share > 0.0) deck.steps[0].pointLoads[node] = {load / 4.0 * share, 0.0, 0.0};
    }
    return deck;
  }
  [[nodiscard]] std::string data() const {
    std::ostringstream out;
    out.precision(17);
    out << "0 " << dt << ' ' << 1 + std::ranges::count(rows, '\n') << ' ' << steps << ' ' << KLUMP << ' ' << ALFAD
        << ' ' << BETAD << " .25 .5 0 0 0 0 0 " << KSAVE << '\n'
        << rows << '\n';
    return out.str();
  }
  /// Displacements of the watched node at the steps that leave results.
  [[nodiscard]] std::vector<double> history() const { return history(deck(), data()); }
  [[nodiscard]] std::vector<double> history(SolidDeck inTime, const std::string& din,
                                            std::string* listing = nullptr) const {
    const JobFolder folder;
    folder.write("job.din", din);
    for (LoadStepCards& step : inTime.steps) step.increments[0].time = dt;
    std::vector<double> u;
    for (const ResultBlock& one : solve(folder, inTime.text()))
      if (one.name.starts_with("DISPLACEMENTS"))
        u.push_back(watched > 0 ? atNode(one, watched)[0] : one.rows.back()[0]);
    if (listing != nullptr) *listing = folder.read("job.mec.sal");
    return u;
  }
};

/// The numbers behind each place of a text.
std::vector<double> valuesBehind(std::string_view label, const std::string& text) {
  std::vector<double> values;
  for (std::size_t at = 0; (at = text.find(label, at + 1)) != std::string::npos;)
    values.push_back(std::stod(text.substr(at + label.size(), 20)));
  return values;
}

TEST(TimeIntegration, OscillatorFollowsNewmark) {
  std::string listing;
  expectNear(Bar().history(Bar().deck(), Bar().data(), &listing),
             {2.4390e-4, 1.19572e-3, 3.00649e-3, 5.49955e-3, 8.43168e-3}, 5e-9);
  EXPECT_NE(listing.find("      0.048780      0.000000      0.000000      9.756098"), std::string::npos);
  expectNear(Bar{.KLUMP = 1}.history(), {3.6145e-4, 1.75497e-3, 4.34055e-3, 7.74436e-3, 1.147429e-2}, 5e-9);
  const std::vector<double> u = Bar{.steps = 200, .ALFAD = 2.0, .BETAD = 0.001}.history();
  expectNear({u.begin(), u.begin() + 5}, {2.4038e-4, 1.17188e-3, 2.92535e-3, 5.30851e-3, 8.07402e-3}, 5e-9);
  EXPECT_NEAR(u[10], 0.01843842, 5e-9);
  EXPECT_EQ(std::ranges::max_element(u) - u.begin(), 10);
  EXPECT_NEAR(u[199], 0.00950395, 5e-9);
}

TEST(TimeIntegration, AFreeBlockIsAcceleratedAsAWholeByEverySolverAndMeasure) {
  for (const int NSOLV : {1, 2, 3, 4, 5, 6})
    for (const int LARGE : {0, 1})
      for (const int KLUMP : {0, 1}) {
        const Bar bar{.bricks = 2, .wall = false, .steps = 10, .KLUMP = KLUMP};
        SolidDeck deck = bar.deck();
        deck.NSOLV = NSOLV;
        deck.LARGE = LARGE;
        deck.steps[0].increments[0].tolerance = 1e-6;
        std::vector<double> expected(10);
        for (std::size_t i = 0; i < 10; ++i)
          expected[i] = 5e-4 * (std::pow(static_cast<double>(i) + 0.5, 2) / 2.0 + 0.125);
        expectNear(bar.history(deck, bar.data()), expected, 1e-11);
      }
}

TEST(TimeIntegration, AWaveTravelsAlongABar) {
  const Material unit = MaterialCards::isotropic(1.0, 0.0, {{slot::density, 1.0}});
  const std::vector<double> u =  // at steps 1, 50, 100 ...
      Bar{.bricks = 100, .material = unit, .load = 1.0, .steps = 400, .KSAVE = 50}.history();
  expectNear({u[1], u[2], u[3], u[4], u[6], u[8]}, {0.4950, 0.9950, 1.4950, 1.9763, 1.0052, 0.0294}, 5e-5);
}

TEST(TimeIntegration, DampingOfAViscousMaterialActsOnceAndLikeThatOfTheStiffness) {
  const auto viscous = [](double E, double t) {
    return MaterialCards::isotropic(E, 0.0, {{slot::density, 2.0}, {slot::relaxationTime, t}},
                                    {.NTINT = Law::viscoelasticDynamic});
  };
  expectNear(Bar{.material = viscous(1000.0, 0.001)}.history(), Bar{.BETAD = 0.001}.history(), 1e-12);

  std::vector<double> expected(10);  // creep of E = 1, t = 1 under a stress of 1
  for (std::size_t i = 0; i < 10; ++i) expected[i] = 1.0 - std::pow(1.1, -1.0 - static_cast<double>(i));
  for (Bar bar : {Bar{.material = viscous(1.0, 1.0)},
                  Bar{.material = MaterialCards::isotropic(1.0, 0.0, {{slot::density, 2.0}}), .BETAD = 1.0}}) {
    bar.rows = ".1 1";
    bar.dt = 0.1;
    bar.steps = 10;
    SolidDeck deck = bar.deck();
    deck.steps[0].KNEWM = 0;
    expectNear(bar.history(deck, bar.data()), expected, 1e-12);
  }
}

TEST(TimeIntegration, StaticAndDynamicStepsInTurnBalanceTheirPower) {
  Bar bar{.steps = 50, .ALFAD = 2.0, .BETAD = 0.001};
  std::vector<double> expected = bar.history();
  for (double& u : expected) u = 0.01 - u;
  expected.insert(expected.begin(), 0.01);
  expected.push_back(0.0);

  SolidDeck deck = bar.deck();
  deck.steps[0].KLOAD = 1;
  deck.steps.assign(4, LoadStepCards(deck.steps[0]));
  deck.steps[0].IDINA = deck.steps[3].IDINA = 0;
  deck.steps[3].increments[0].factor = 0.0;
  bar.steps = 25;  // in each of two
  std::string data, listing;
  for (const char* rows : {"-1 1", "0 1"}) {  // takes the static load off
    bar.rows = rows;
    data += bar.data();
  }
  expectNear(bar.history(deck, data, &listing), expected, 1e-12);

  const auto powers = [&](std::string_view label) { return valuesBehind(label, listing); };
  const std::vector<double> sum = powers(" Pot. (def.)+(cin.)+(disip.):");
  ASSERT_EQ(sum.size(), 52U);
  expectNear(sum, powers(" Pot. introducida           :"), 1.1e-6);
  EXPECT_EQ(sum.front(), 0.0);
  EXPECT_EQ(sum.back(), 0.0);
  EXPECT_GT(powers(" Pot. disipada              :")[5], 0.01);
}

TEST(TimeIntegration, DamageShowsInItsIndicesWhilePowerIsBalanced) {
  const Bar bar{.material = MaterialCards::damaging(3.0, 0.0, 3.0, 10.0, {{slot::density, 2.0}}),
                .dt = 0.1,
                .rows = "0.2 1",  // a load of 2, which a bar at rest bears
                .steps = 24,
                .ALFAD = 0.05,
                .BETAD = 0.01};
  SolidDeck deck = bar.deck();
  deck.steps[0].increments[0].tolerance = 1e-7;
  std::string listing;
  const std::vector<double> u = bar.history(deck, bar.data(), &listing);
  EXPECT_GT(*std::ranges::max_element(u), 1.0);
  expectNear(valuesBehind(" Pot. (def.)+(cin.)+(disip.):", listing),
             valuesBehind(" Pot. introducida           :", listing), 2e-6);
  const double byForce = valuesBehind("-medida en fuerza-- :", listing).back();  // damage is the same at all points
  EXPECT_NEAR(valuesBehind("DANO GLOBAL -medida energetica--:", listing).back(), byForce, 1e-6);
  EXPECT_GT(byForce, 0.4);
  EXPECT_GT(valuesBehind("DISIPACIÓN GLOBAL -medida energetica--:", listing).back(), 1.0);
}

TEST(TimeIntegration, AnUndampedVibrationKeepsItsEnergyOverTenThousandSteps) {
  Bar bar{.steps = 5000, .KSAVE = 0};
  SolidDeck deck = bar.deck();
  deck.steps[0].KLOAD = 1;
  deck.steps.push_back(deck.steps[0]);
  std::string data;
  for (const std::string factors : {"1 1 ", "0 1 "}) {  // results at every thousandth step and at the next one
    bar.rows = factors + '1';
    for (int n = 2; n <= bar.steps; ++n) bar.rows += '\n' + factors + (n % 1000 < 2 ? '1' : '0');
    data += bar.data();
  }
  const std::vector<double> u = bar.history(deck, data);
  ASSERT_EQ(u.size(), 20U);
  // u - u_static = A cos(n theta + phi), tan(theta / 2) = omega dt / 2: the amplitude follows from two steps
  const double theta = 2.0 * std::atan(std::sqrt(1000.0) * 0.01 / 2.0);
  const auto amplitude = [&](std::size_t i) {
    const double x = u[i] - 0.01, y = u[i + 1] - 0.01;
    return (x * x + y * y - 2.0 * x * y * std::cos(theta)) / std::pow(std::sin(theta), 2);
  };
  for (std::size_t i = 3; i + 1 < u.size(); i += 2) EXPECT_NEAR(amplitude(i) / amplitude(1), 1.0, 1e-9);
}

TEST(TimeIntegration, ElementsThatAreNotThereAddNothing) {
  for (const double damping : {0.0, 0.001}) {
    const Bar bar{.bricks = 2, .length = 2.0, .load = 0.0, .watched = 2, .BETAD = damping};
    SolidDeck deck = bar.deck();
    deck.elements[1].step = 2;
    for (const int node : {2, 5, 8, 11}) deck.steps[0].pointLoads[node] = {2.5, 0.0, 0.0};
    for (deck.KMASS = 0; deck.KMASS < 2; ++deck.KMASS)
      expectNear(bar.history(deck, bar.data()), Bar{.BETAD = damping}.history(), 1e-12);
  }
}

TEST(TimeIntegration, FiniteStrainFollowsItsScalarEquation) {
  const Bar bar{.rows = "30 1", .steps = 40};
  SolidDeck deck = bar.deck();
  deck.LARGE = 1;
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
  expectNear(bar.history(deck, bar.data()), expected, 1e-10);
}

}  // namespace
}  // namespace zema::test
