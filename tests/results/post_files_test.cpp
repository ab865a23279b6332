// The post mesh and result files, to the last character.
#include "results/post_files.h"

#include <gmock/gmock.h>

#include "results/result_fixture.h"

namespace zema {
namespace {

using test::columnsOf;
using testing::ElementsAre;
using testing::StartsWith;

class PostFilesTest : public test::ResultTest {
 protected:
  std::string blocks() {
    model.loop.TTIME = 2.5;
    POSPRO(job, model, *kernel);
    return written(channel::postResults);
  }
};

TEST_F(PostFilesTest, MixedMeshKeepsEveryElementUnderItsOwnKind) {
  use({{0, 0, 0}, {-1.5, 0, 0}, {0, 1, 0}, {0, 0, 123456.75}}, {{1, 2, 3, 4, 4, 3, 2, 1}, {1, 3, 2, 4}});
  model.mesh.elements[1].MATNO[0] = 2;

  GEOPOST(job, model, *kernel);

  EXPECT_EQ(written(channel::postMesh), test::dataFile("results/mixed.post.msh"));
  EXPECT_EQ(written(channel::postResults), test::dataFile("results/mixed.post.res"));
  model.mesh.elements[1].NNODE = 6;  // unknown: blank words
  GEOPOST(job, model, *kernel);
  EXPECT_THAT(written(channel::postMesh), StartsWith("MESH            Dimension 3 Elemtype              Nnode 6\n"));
}

TEST_F(PostFilesTest, OneBlockOfEachQuantityShowsTheCommittedStateInTheCurrentConfiguration) {
  stretchTwofold(0);
  for (const std::size_t y : {1U, 4U, 7U, 10U}) model.working.TDISP[y] = -2.0;
  set(StateSlot::committed, 0, 0, test::stressPlace, {0.5, 4.0, 3.0, 8.0, 5.0, 12.0});
  set(StateSlot::committed, 0, 0, test::strainPlace, {2.0, 0.0, 0.5, 0.0, 0.0, 0.0});
  set(StateSlot::committed, 0, 0, test::plasticPlace, {0.0, 0.0, 0.0, 0.125, 0.0, 0.0});
  set(StateSlot::trial, 0, 0, test::stressPlace, {9.0, 9.0, 9.0, 9.0, 9.0, 9.0});
  model.points.internal(StateSlot::committed, 0, 0, 0)[internal::damage] = 0.75;
  model.increment.IPOST3D = {1, 1, 1, 1};
  model.increment.IIFLAG[internal::damage] = 1;
  model.increment.IIFLAG[14] = 1;  // beyond the names: no block

  EXPECT_EQ(blocks(), test::dataFile("results/blocks.post.res"));
}

TEST_F(PostFilesTest, BrickPointsFollowTheWalkOfTheFile) {
  use(test::cubeNodes, {{1, 2, 3, 4, 5, 6, 7, 8}});
  for (int point = 0; point < 8; ++point)  // shows i j k as digits
    set(StateSlot::committed, point, 0, test::stressPlace, {111.0 + point / 4 * 100 + point / 2 % 2 * 10 + point % 2});
  model.increment.IPOST3D = {0, 1, 0, 0};

  EXPECT_THAT(columnsOf(blocks(), "    ", 11, 3), ElementsAre("111", "121", "221", "211", "112", "122", "222", "212"));
}

TEST_F(PostFilesTest, BlocksHoldTheActiveElementsOfTheirKind) {
  use(test::cubeNodes, {{5, 6, 7, 8}, {1, 2, 3, 4}, {2, 3, 4, 5}, {1, 2, 3, 4, 5, 6, 7, 8}});
  model.mesh.elements[1].IFASE = 2;
  model.loadStep.ACTIV = {1, 0};
  model.mesh.elements[3].MATNO[0] = 2;
  model.composites.all.push_back(model.composites(1));
  model.composites(1).ELECOM = {0, 1, 2};
  model.composites(2).ELECOM = {3};
  model.increment.IPOST3D = {0, 1, 0, 0};
  model.increment.NOUTP[2] = 1;

  std::string heads;  // and the elements of the value lines behind each
  for (const std::string& front : columnsOf(blocks(), "", 0, 5))
    if (front == "Resul" || (front.starts_with("    ") && front[4] != ' ')) heads += front == "Resul" ? '|' : front[4];

  // the whole: bricks, tetrahedra; then each composite in the one kind that it has
  EXPECT_EQ(heads, "|4|13|13|4");
}

TEST_F(PostFilesTest, MaterialAxesTurnTheWholeButNotTheSimpleMaterialsOfTheLayers) {
  use({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}, {{1, 2, 3, 4}}, 2);
  model.mesh.elements[0].EAEULER = {90.0, 0.0, 0.0};  // local x along global y
  for (int component = 0; component <= 3; ++component)
    set(StateSlot::committed, 0, component, test::stressPlace, {component + 0.5, 7.0, 0.25});
  model.increment.IPOST3D = {0, 2, 0, 0};
  model.increment.IIFLAG[0] = 1;
  model.increment.NOUTP[2] = 1;

  const std::string text = blocks();

  EXPECT_THAT(columnsOf(text, "    1", 13, 3), ElementsAre("7.0", "1.5", "2.5", "3.5", "0.0", "0.0", "0.0", "0.0"));
  EXPECT_THAT(text, testing::HasSubstr("    1        7.000000000000000        0.500000000000000"
                                       "        0.000000000000000       -0.250000000000000"));
  const std::vector<std::string> heads = columnsOf(text, "Result", 8, 80);
  ASSERT_EQ(heads.size(), 8U);
  EXPECT_EQ(heads[1], R"(STRESSES//COMPOSITE01//LAYER01//SIMPLE MAT.01" "MECHANICAL" 0.250000E+01 Matrix )");
  EXPECT_EQ(heads[2], R"(STRESSES//COMPOSITE01//LAYER02//SIMPLE MAT.01" "MECHANICAL" 0.250000E+01 Matrix )");
  EXPECT_EQ(heads[7], R"(INT.VAR.//COMPOSITE01//LAYER02//SIMPLE MAT.02//CAPAP" "MECHANICAL"    0.250000E+)");
}

TEST_F(PostFilesTest, LoadTableSkipsIncrementsOfDynamicAndTimeDependentRuns) {
  model.increment.IPOST3D = {1, 0, 0, 0};
  model.dynamics.FLEC[2] = {0.0, 1.0};
  const std::vector<std::tuple<int, double, int, bool>> rows = {
      {0, 0.0, 1, true}, {1, 0.0, 1, false}, {1, 0.0, 2, true}, {0, 5.0, 1, false}, {0, 5.0, 3, false}};
  for (const auto& [IDINA, TCYCL, INCRE, writes] : rows) {
    model.loadStep.IDINA = IDINA;
    model.loadStep.TCYCL = TCYCL;
    model.loop.INCRE = INCRE;
    EXPECT_EQ(!blocks().empty(), writes) << IDINA << TCYCL << INCRE;
  }
}

TEST_F(PostFilesTest, NumbersTooLargeForTheirColumnsLoseNothing) {
  use(std::vector<test::Point>(100000), {{1, 2, 3, 100000}});
  set(StateSlot::committed, 0, 0, test::stressPlace, {1.5e10, -999999999.0, 0.25});
  model.increment.IPOST3D = {1, 1, 0, 0};

  const std::string text = blocks();

  EXPECT_THAT(text, testing::HasSubstr("\n100000         0.000"));
  EXPECT_THAT(text, testing::HasSubstr("\n    1 1.5E+10 -999999999.0 0.0 0.25 0.0 0.0\n"));
}

}  // namespace
}  // namespace zema
