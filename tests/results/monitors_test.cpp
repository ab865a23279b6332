// The balance of energy and the measures of damage.
#include "results/monitors.h"

#include <gtest/gtest.h>

#include "results/result_fixture.h"

namespace zema {
namespace {

/// Two tetrahedra on a common face, with lumped masses of 1 and 2 at their nodes.
class MonitorsTest : public test::ResultTest {
 protected:
  MonitorsTest() {
    use({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 1, 1}}, {{1, 2, 3, 4}, {2, 3, 4, 5}});
    model.materials(1)(slot::density) = 24.0;
    kernel = makeSolid3D();
    kernel->prepare(model);
  }
};

TEST_F(MonitorsTest, PowersOfTheAssembledForcesAndTheirTrapezoidalEnergy) {
  model.increment.DTIME = 0.5;
  model.loadStep.IDINA = model.loadStep.KNEWM = 1;
  model.working.TDISP[15 + 3] = 2.0;  // velocity of node 2 in x
  model.working.TDISP[30 + 3] = 5.0;  // and its acceleration
  model.dynamics.ALFAD = 0.5;
  model.vectors.ELOAD(0, 2)[3] = 1.0;  // node 2 in the first element
  model.vectors.ELOAD(1, 2)[0] = 3.0;  // and in the second
  model.vectors.TLOAD(1)[0] = 5.0;
  MENERG(job, model, *kernel);
  EXPECT_EQ(model.monitors.ENEINT, 2.5);
  model.vectors.TLOAD(1)[0] = 7.0;
  static_cast<void>(written(channel::listing));

  MENERG(job, model, *kernel);

  EXPECT_EQ(written(channel::listing), test::dataFile("results/powers.txt"));
  model.loadStep.IDINA = 0;
  MENERG(job, model, *kernel);  // nothing moves
  EXPECT_EQ(model.monitors.ENEINT, 8.5);
  EXPECT_EQ(model.monitors.ENEDIS, 4.5);
  EXPECT_EQ(model.monitors.POTINT, 0.0);
}

TEST_F(MonitorsTest, DamageByForceComparesAssembledForces) {
  model.vectors.ELOAD(0, 2)[3] = 3.0;  // node 2 in x
  model.monitors.DANEN = 0.25;
  model.monitors.DISIG = 1.5;
  DAMAGE(job, model, *kernel);
  EXPECT_EQ(model.monitors.DANFU, 0.0);  // nothing predicted
  model.vectors.ELOAD(0, 2)[4] = 4.0;    // real (3, 4) against predicted (5, 12): norms 5 and 13
  model.vectors.ELOAD(0, 3)[3] = 6.0;
  model.vectors.ELOAD(1, 3)[0] = -1.0;
  model.vectors.ELOAD(0, 3)[4] = 12.0;
  static_cast<void>(written(channel::listing));

  DAMAGE(job, model, *kernel);

  EXPECT_EQ(written(channel::listing), test::dataFile("results/damage.txt"));
}

TEST_F(MonitorsTest, FrequencyRecordsGetTheDamageByForceThatIsPositive) {
  model.vectors.ELOAD(0, 3)[0] = 4.0;
  model.control.KFREC = 1;
  for (const auto& [KFRES, force] : {std::pair{0, 3.0}, {1, 3.0}, {1, 5.0}, {1, 2.0}}) {
    model.increment.KFRES = KFRES;
    model.vectors.ELOAD(0, 2)[0] = force;
    DAMAGE(job, model, *kernel);
  }

  EXPECT_EQ(folder.read("Danyo.txt"), " 0.25\n 0.5\n");
}

}  // namespace
}  // namespace zema
