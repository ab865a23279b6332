// Nodal and point results in the listing, to the last character.
#include "results/listing.h"

#include <gmock/gmock.h>

#include "results/result_fixture.h"

namespace zema {
namespace {

class ListingTest : public test::ResultTest {
 protected:
  std::string output(OutputMoment moment) {
    OUTPUT(job, model, *kernel, moment);
    return written(channel::listing);
  }
};

TEST_F(ListingTest, HighestLevelOfADynamicStepAtFiniteStrainWritesEverything) {
  model.working.FACTO = 1.5;
  model.increment.NOUTP = {0, 3, 0, 0};
  model.loop.IITER = 2;
  model.loadStep.IDINA = 1;
  stretchTwofold(0);
  model.working.TDISP[12 + 1] = 0.5;
  model.working.TDISP[24 + 2] = -0.25;
  model.working.NOFIX = {3, 1, 3};
  model.fixities.TREACM = {1.0, 2.0, 3.0, -4.0, 0.0, 0.0, 9.0, 9.0, 9.0};
  set(StateSlot::committed, 0, 0, test::stressPlace, {2.5, 2.0, 0.0, 6.0, 0.0, 0.0});
  set(StateSlot::committed, 0, 0, test::strainPlace, {0.0, 0.0, 0.004, 0.0, 0.0, 0.0});
  set(StateSlot::committed, 0, 0, test::plasticPlace, {-0.25, 0.5, 0.0, 0.0, 0.0, 0.0, 7.5});  // and the yield stress

  EXPECT_EQ(output(OutputMoment::converged), test::dataFile("results/listing.txt"));
}

TEST_F(ListingTest, LevelIterationAndLoadTableChooseTheTables) {
  model.dynamics.FLEC[2] = {0.0, 1.0};
  const std::vector<std::array<int, 7>> rows = {{3, 0, 2, 0, 0, 1, 0},  {0, 1, 2, 0, 0, 1, 2}, {0, 2, 2, 0, 0, 1, 4},
                                                {0, 3, 2, 0, 0, 1, 10}, {1, 0, 1, 1, 0, 1, 2}, {1, 0, 1, 0, 0, 1, 0},
                                                {1, 0, 2, 1, 0, 1, 0},  {0, 1, 2, 0, 5, 1, 0}, {0, 1, 2, 0, 5, 2, 2}};
  for (const auto& [first, other, IITER, KCONV, TCYCL, INCRE, lines] : rows) {  // of titles and headings
    model.increment.NOUTP = {first, other, 0, 0};
    model.loop.IITER = IITER;
    model.loop.KCONV = KCONV;
    model.loadStep.TCYCL = TCYCL;
    model.loop.INCRE = INCRE;
    EXPECT_EQ(std::ssize(test::columnsOf(output(OutputMoment::converged), "0", 0, 1)), lines)
        << first << other << IITER;
  }
}

TEST_F(ListingTest, SimpleMaterialsFollowTheWholeOfEachPointInTheTrialState) {
  use(test::cubeNodes, {{1, 2, 3, 4, 5, 6, 7, 8}}, 1);
  model.increment.NOUTP = {3, 3, 1, 0};
  set(StateSlot::trial, 7, 2, test::stressPlace, {2.5});

  const std::string text = output(OutputMoment::iteration);
  const auto rows = test::columnsOf(text.substr(text.find("ELEMENT NO.")), "    ", 4, 23);
  ASSERT_GT(rows.size(), 24U);
  for (const auto& [row, front] : {std::pair(0U, "0  0  0"), {1, "0  0  1"}, {2, "0  0  2"}, {3, "1  0  0"}})
    EXPECT_EQ(rows[row].substr(0, 7), front);
  EXPECT_EQ(rows[23], "7  0  2        2.500000");
}

TEST_F(ListingTest, ElementNumbersBeyondTheirColumnsAreWritten) {
  use(test::cubeNodes, std::vector<std::vector<int>>(100000, {1, 2, 4, 5}));
  model.increment.NOUTP = {3, 3, 0, 0};

  EXPECT_THAT(output(OutputMoment::converged), testing::HasSubstr("ELEMENT NO. =100000\n"));
}

}  // namespace
}  // namespace zema
