// The balance of energy and the measures of damage.
#include "results/monitors.h"

#include <gtest/gtest.h>

#include "results/result_fixture.h"

namespace zema {
namespace {

using test::linesOf;
using test::makeModel;

/// Two tetrahedra on a common face.
class MonitorsTest : public test::ResultTest {
 protected:
  MonitorsTest() : model(makeModel(5, {{1, 2, 3, 4}, {2, 3, 4, 5}}, 1)) {}

  Model model;
};

TEST_F(MonitorsTest, StaticRunHasNoPower) {
  model.vectors.TLOAD(0)[0] = 5.0;
  model.vectors.ELOAD(0, 2)[0] = -4.0;
  model.increment.DTIME = 1.0;

  MENERG(job, model, kernel);

  EXPECT_EQ(written(channel::listing),
            "------------------------------------------------------------------------\n"
            " Pot. deformativa           :        0.000000\n"
            " Pot. cinetica              :        0.000000\n"
            " Pot. disipada              :        0.000000\n"
            " Pot. (def.)+(cin.)+(disip.):        0.000000\n"
            " Pot. introducida           :        0.000000\n"
            " Energ. introducida         :        0.000000\n"
            " Energ. disipada            :        0.000000\n"
            "------------------------------------------------------------------------\n");
}

TEST_F(MonitorsTest, PowersOfTheAssembledForcesAndTheirTrapezoidalEnergy) {
  model.increment.DTIME = 0.5;
  model.working.TDISP[15 + 3] = 2.0;   // velocity of node 2 in x
  model.vectors.ELOAD(0, 2)[3] = 1.0;  // node 2 in the first element
  model.vectors.ELOAD(1, 2)[0] = 3.0;  // and in the second
  model.vectors.TLOAD(1)[0] = 5.0;

  MENERG(job, model, kernel);
  EXPECT_EQ(model.monitors.POTDEF, 8.0);
  EXPECT_EQ(model.monitors.POTINT, 10.0);
  EXPECT_EQ(model.monitors.ENEINT, 2.5);

  model.vectors.TLOAD(1)[0] = 7.0;
  MENERG(job, model, kernel);
  EXPECT_EQ(model.monitors.ENEINT, 8.5);
}

TEST_F(MonitorsTest, DamageByForceComparesAssembledForces) {
  model.vectors.ELOAD(0, 3)[3] = 6.0;  // node 2 in x
  model.vectors.ELOAD(1, 3)[0] = -1.0;
  model.vectors.ELOAD(0, 2)[3] = 3.0;  // real (3, 4) against predicted (5, 12): norms 5 and 13
  model.vectors.ELOAD(0, 3)[4] = 12.0;
  model.vectors.ELOAD(0, 2)[4] = 4.0;
  model.monitors.DANEN = 0.25;
  model.monitors.DISIG = 1.5;

  DAMAGE(job, model, kernel);

  EXPECT_DOUBLE_EQ(model.monitors.DANFU, 8.0 / 13.0);
  EXPECT_EQ(written(channel::listing),
            "********  DANO GLOBAL -medida energetica--:        0.250000\n"
            "********  DANO GLOBAL -medida en fuerza-- :        0.615385\n"
            "********  DISIPACIÓN GLOBAL -medida energetica--:       1.500000\n");
}

TEST_F(MonitorsTest, NoPredictionNoDamage) {
  model.vectors.ELOAD(0, 2)[3] = 3.0;

  DAMAGE(job, model, kernel);

  EXPECT_EQ(model.monitors.DANFU, 0.0);
}

TEST_F(MonitorsTest, FrequencyRecordsGetTheDamageByForce) {
  model.vectors.ELOAD(0, 3)[0] = 4.0;
  model.vectors.ELOAD(0, 2)[0] = 3.0;
  model.control.KFREC = 1;

  DAMAGE(job, model, kernel);
  EXPECT_FALSE(exists("Danyo.txt"));

  model.increment.KFRES = 1;
  DAMAGE(job, model, kernel);
  DAMAGE(job, model, kernel);
  EXPECT_EQ(linesOf(content("Danyo.txt")), (std::vector<std::string>{" 0.25", " 0.25"}));

  model.vectors.ELOAD(0, 2)[0] = 5.0;  // above the prediction: below 0 and not written
  DAMAGE(job, model, kernel);
  EXPECT_EQ(model.monitors.DANFU, -0.25);
  EXPECT_EQ(linesOf(content("Danyo.txt")).size(), 2U);
}

}  // namespace
}  // namespace zema
