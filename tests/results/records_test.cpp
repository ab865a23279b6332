// The balance of energy, the measures of damage, and the unformatted records of a frequency study, read back.
#include <gmock/gmock.h>

#include <cstring>

#include "model/frequency_source.h"
#include "results/frequency_records.h"
#include "results/monitors.h"
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

/// A tetrahedron of a parallel layer and of one whose two components are in series, all of one material.
class FrequencyRecordsTest : public test::ResultTest {
 protected:
  FrequencyRecordsTest() {
    Composite& composite = model.composites(1);
    composite.layers[0].PVLAY = 0.25;
    composite.layers.push_back(
        {"SP", LayerKind::serialParallel, 0.75, {}, {{1, 0.5, 2}, {1, 0.5, 3}}, {0, 0, 0, 0, 0, 0}});
    composite.NUMAT = 4;
    model.materials(1)(slot::density) = 24.0;
    kernel = makeSolid3D();
    kernel->prepare(model);
  }
  /// Writes the secant records of an increment in which the components have these damages.
  void write(int ILOAD, int INCRE, const std::array<double, 4>& damage) {
    model.loop.ILOAD = ILOAD;
    model.loop.INCRE = INCRE;
    for (int c = 0; c < 4; ++c)
      model.points.internal(StateSlot::trial, 0, 0, c)[internal::damage] = damage[static_cast<std::size_t>(c)];
    writeSecantRecords(job, model, *kernel);
  }
  /// Integers | reals of the records of a file, each with `integers` of them.
  std::vector<std::pair<std::vector<int>, std::vector<double>>> records(const std::string& name, std::size_t integers) {
    const std::string all = folder.read(name);
    std::vector<std::pair<std::vector<int>, std::vector<double>>> found;
    for (std::size_t at = 0; at < all.size();) {
      std::uint32_t size = 0, again = 0;
      std::memcpy(&size, &all[at], 4);
      std::memcpy(&again, &all.at(at + 4 + size), 4);
      EXPECT_EQ(size, again);
      std::vector<int> counts(integers);
      std::vector<double> values((size - 4 * integers) / 8);
      std::memcpy(counts.data(), &all[at + 4], 4 * integers);
      std::memcpy(values.data(), &all[at + 4 + 4 * integers], 8 * values.size());
      found.emplace_back(counts, values);
      at += size + 8;
    }
    return found;
  }
};

TEST_F(FrequencyRecordsTest, SecantsOfDamagedPointsInBatchesThatARestartContinues) {
  using testing::ElementsAre;
  set(StateSlot::trial, 0, 0, test::stressPlace, {1, 2, 3, 4, 5, 6});
  write(1, 4, {0.0, 0.2, 0.5, 0.0});  // the mean says that nothing is damaged
  EXPECT_FALSE(folder.has("Csec.txt"));
  write(1, 5, {0.3, 0.2, 0.5, 0.0});
  EXPECT_FALSE(folder.has("Strsg.txt"));
  model.control.LARGE = 1;
  for (const int INCRE : {1, 1, 2}) write(2, INCRE, {0.3, 1.0, 1.0, 1.0});
  model.frequencies = {};
  job.CTEXT.CSTART = "START2";
  write(3, 1, {0.3, 0.2, 0.5, 0.0});

  writeElasticRecords(job, model, *kernel);
  const auto elastic = records("Co.txt", 1);
  ASSERT_EQ(elastic.size(), 1U);
  ASSERT_EQ(elastic[0].second.size(), 37U);
  EXPECT_EQ(elastic[0].second[36], 24.0);
  EXPECT_EQ(elastic[0].second[0], 1200.0);  // E = 1000, nu = 1/4
  job.channels[channel::elasticRecords].flush();
  EXPECT_THAT(folder.read(job.channels[channel::elasticRecords].path()), testing::StartsWith(" 1       0.120E+04"));

  const auto secants = records("Csec.txt", 5);
  ASSERT_EQ(secants.size(), 5U);
  for (std::size_t i = 0; i < 36; ++i) {
    EXPECT_NEAR(secants[0].second[i], (0.25 * 0.8 + 0.75 / (0.5 / 0.5 + 0.5)) * elastic[0].second[i], 1e-9) << i;
    EXPECT_EQ(secants[1].second[i], 0.0);
  }
  EXPECT_THAT(secants[0].first, ElementsAre(1, 1, 111, 1, 5));
  EXPECT_THAT(secants[2].first, ElementsAre(2, 1, 111, 2, 1));
  EXPECT_THAT(secants[3].first, ElementsAre(3, 1, 111, 2, 2));
  EXPECT_THAT(secants[4].first, ElementsAre(4, 1, 111, 3, 1));
  const auto stresses = records("Strsg.txt", 4);
  ASSERT_EQ(stresses.size(), 4U);
  EXPECT_THAT(stresses[3].first, ElementsAre(1, 111, 3, 1));
  EXPECT_THAT(stresses[3].second, ElementsAre(1, 2, 3, 4, 5, 6));

  model.frequencies = {};
  folder.write("Csec.txt", "cut");
  EXPECT_THROW(write(3, 2, {0.3, 0.2, 0.5, 0.0}), InputFault);
}

}  // namespace
}  // namespace zema
