// Whole jobs in time against closed forms and hand-made recurrences.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <sstream>

#include "jobs/job_runner.h"
#include "jobs/solid_deck.h"

namespace zema::test {
namespace {

/// A file of dynamic data: a load that acts in full from the first step on.
struct TimeData {
  double DTIME = 0.01;
  int steps = 5;
  int KLUMP = 0;
  double ALFAD = 0.0;
  double BETAD = 0.0;

  [[nodiscard]] std::string text() const {
    std::ostringstream out;
    out.precision(17);
    out << "0 " << DTIME << " 1 " << steps << ' ' << KLUMP << ' ' << ALFAD << ' ' << BETAD
        << " .25 .5 0 0 0 0 0 1\n1 1\n";
    return out.str();
  }
};

/// A unit cube on a wall at x = 0 that moves along x alone, load on its free face.
SolidDeck oscillator(double load) {
  SolidDeck deck;
  deck.materials = {MaterialCards::isotropic(1000.0, 0.0, 2.0)};
  const BrickGrid grid{1, 1, 1};
  grid.addTo(deck, [](int i, int j, int k) { return Vector3{double(i), double(j), double(k)}; });
  LoadStepCards& step = deck.steps[0];
  step.IDINA = 1;
  for (int node = 1; node <= 8; ++node) {
    const bool free = node % 2 == 0;
    step.fixities.push_back({node, free ? 11 : 111, {}});
    if (free) step.pointLoads[node] = {load / 4.0, 0.0, 0.0};
  }
  return deck;
}

/// Displacements along x of the last node at each step.
std::vector<double> history(SolidDeck deck, const TimeData& data) {
  const JobFolder folder;
  folder.write("job.din", data.text());
  deck.steps[0].increments[0].time = data.DTIME;
  std::vector<double> u;
  for (const ResultBlock& one : solve(folder, deck.text())) {
    if (one.name.starts_with("DISPLACEMENTS")) u.push_back(atNode(one, static_cast<int>(deck.nodes.size()))[0]);
  }
  return u;
}

TEST(Oscillator, FollowsNewmark) {
  struct Case {
    TimeData data;
    std::vector<double> u;
  };
  const std::vector<Case> cases{
      {{}, {2.4390e-4, 1.19572e-3, 3.00649e-3, 5.49955e-3, 8.43168e-3}},
      {{.ALFAD = 2.0, .BETAD = 0.001}, {2.4038e-4, 1.17188e-3, 2.92535e-3, 5.30851e-3, 8.07402e-3}},
      {{.KLUMP = 1}, {3.6145e-4, 1.75497e-3, 4.34055e-3, 7.74436e-3, 1.147429e-2}}};
  for (const Case& one : cases) {
    const std::vector<double> u = history(oscillator(10.0), one.data);
    ASSERT_EQ(u.size(), one.u.size());
    for (std::size_t i = 0; i < u.size(); ++i) EXPECT_NEAR(u[i], one.u[i], 1e-5 * one.u[i] + 5e-9) << i;
  }
}

}  // namespace
}  // namespace zema::test
