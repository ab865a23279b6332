// The unformatted records of a frequency study, read back.
#include "results/frequency_records.h"

#include <gmock/gmock.h>

#include <cstring>

#include "model/frequency_source.h"
#include "results/result_fixture.h"

namespace zema {
namespace {

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
