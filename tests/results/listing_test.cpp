// Nodal and point results in the listing, to the last character.
#include "results/listing.h"

#include <gmock/gmock.h>

#include "results/result_fixture.h"

namespace zema {
namespace {

using test::linesOf;
using test::makeModel;
using test::setTensor;

using ListingTest = test::ResultTest;

constexpr int strainPlace = 6;
constexpr int plasticPlace = 12;
constexpr int yieldPlace = 18;

/// A tetrahedron in the second iteration, which has converged.
Model oneTetrahedron() {
  Model model = makeModel(4, {{1, 2, 3, 4}}, 1);
  model.working.FACTO = 1.5;
  model.loop.IITER = 2;
  model.loop.KCONV = 0;
  return model;
}

const std::string heading =
    "           RESULTADOS EN LA SALIDA =.15000E+01\n"
    "           ***********************************\n"
    "\n";

TEST_F(ListingTest, LevelZeroWritesTheHeadingAlone) {
  const Model model = oneTetrahedron();

  OUTPUT(job, model, kernel, OutputMoment::converged);

  EXPECT_EQ(written(channel::listing), heading);
}

TEST_F(ListingTest, LevelTwoWritesDisplacementsAndReactions) {
  Model model = oneTetrahedron();
  model.increment.NOUTP = {0, 2, 0, 0};
  model.working.TDISP[0] = 0.125;
  model.working.TDISP[5] = -3.0;
  model.working.NOFIX = {3, 1, 3};
  model.fixities.TREACM = {1.0, 2.0, 3.0, -4.0, 0.0, 0.0, 9.0, 9.0, 9.0};

  OUTPUT(job, model, kernel, OutputMoment::converged);

  EXPECT_EQ(written(channel::listing), heading +
                                           "0     DISPLACEMENTS\n"
                                           "0      NODO      X-DESP.       Y-DESP.       Z-DESP.\n"
                                           "         1      0.125000      0.000000      0.000000\n"
                                           "         2      0.000000      0.000000     -3.000000\n"
                                           "         3      0.000000      0.000000      0.000000\n"
                                           "         4      0.000000      0.000000      0.000000\n"
                                           "0     REACTIONS\n"
                                           "0      NODO     X-REAC.       Y-REAC.       Z-REAC.\n"
                                           "         3        1.000000      2.000000      3.000000\n"
                                           "         1       -4.000000      0.000000      0.000000\n"
                                           "         3        1.000000      2.000000      3.000000\n");
}

TEST_F(ListingTest, DynamicStepAddsVelocitiesAndAccelerations) {
  Model model = oneTetrahedron();
  model.increment.NOUTP = {0, 1, 0, 0};
  model.loadStep.IDINA = 1;
  model.working.TDISP[12 + 1] = 0.5;
  model.working.TDISP[24 + 2] = -0.25;

  OUTPUT(job, model, kernel, OutputMoment::converged);

  const std::vector<std::string> lines = linesOf(written(channel::listing));
  ASSERT_EQ(lines.size(), 15U);
  EXPECT_EQ(lines[9], "0     VELOCIDAD Y ACELERACION");
  EXPECT_EQ(lines[10], "0    NODO     X-VELO        Y-VELO        Z-VELO        X-ACEL        Y-ACEL        Z-ACEL");
  EXPECT_EQ(lines[11],
            "      1           0.000000      0.500000      0.000000      0.000000      0.000000     -0.250000");
}

TEST_F(ListingTest, LevelThreeWritesThreeTablesOfPoints) {
  Model model = oneTetrahedron();
  model.increment.NOUTP = {0, 3, 0, 0};
  setTensor(model, StateSlot::committed, 0, 0, 0, 0, {5.0, 1.0, 0.0, 3.0, 0.0, 0.0});
  setTensor(model, StateSlot::committed, 0, 0, 0, strainPlace, {0.0, 0.0, 0.002, 0.0, 0.0, 0.0});
  setTensor(model, StateSlot::committed, 0, 0, 0, plasticPlace, {-0.25, 0.5, 0.0, 0.0, 0.0, 0.0});
  setTensor(model, StateSlot::committed, 0, 0, 0, yieldPlace, {7.5});

  OUTPUT(job, model, kernel, OutputMoment::converged);

  const std::string text = written(channel::listing);
  EXPECT_EQ(text.substr(text.find("....")),
            "................................................................................\n"
            "0 G.P.         XX-STRESS     YY-STRESS     XY-STRESS     ZZ-STRESS     XZ-STRESS     YZ-STRESS"
            "       P.S. 1        P.S. 2        P.S. 3E.P.S.\n"
            "0     ------> ELEMENT NO. =    1\n"
            "    0  0  0        5.000000      1.000000      0.000000      3.000000      0.000000      0.000000"
            "      5.000000      3.000000      1.000000      7.500000\n"
            "................................................................................\n"
            "0 G.P.         XX-STRAIN     YY-STRAIN     XY-STRAIN     ZZ-STRAIN     XZ-STRAIN     YZ-STRAIN"
            "       P.S. 1        P.S. 2        P.S. 3        DEFvol.\n"
            "0     ------> ELEMENT NO. =    1\n"
            "    0  0  0        0.000000      0.000000      0.002000      0.000000      0.000000      0.000000"
            "      0.001000      0.000000     -0.001000      0.002000\n"
            "................................................................................\n"
            "0 G.P.      XX-STRAIP     YY-STRAIP     XY-STRAIP     ZZ-STRAIP     XZ-STRAIP     YZ-STRAIP"
            "       P.S. 1        P.S. 2        P.S. 3        DEFvolP.\n"
            "0     ------> ELEMENT NO. =    1\n"
            "    0  0  0       -0.250000      0.500000      0.000000      0.000000      0.000000      0.000000"
            "      0.500000      0.000000     -0.250000      0.250000\n");
}

TEST_F(ListingTest, SimpleMaterialsFollowTheWholeOfEachPoint) {
  Model model = makeModel(8, {{1, 2, 3, 4, 5, 6, 7, 8}}, 2);
  test::addLayer(model, 1);
  test::makeStores(model);
  model.increment.NOUTP = {3, 3, 1, 0};
  setTensor(model, StateSlot::trial, 0, 7, 2, 0, {2.5});

  OUTPUT(job, model, kernel, OutputMoment::iteration);

  const std::vector<std::string> lines = linesOf(written(channel::listing));
  const auto first = std::ranges::find(lines, "0     ------> ELEMENT NO. =    1");
  ASSERT_GE(lines.end() - first, 25);
  EXPECT_EQ(first[1].substr(0, 11), "    0  0  0");
  EXPECT_EQ(first[2].substr(0, 11), "    0  0  1");
  EXPECT_EQ(first[3].substr(0, 11), "    0  0  2");
  EXPECT_EQ(first[4].substr(0, 11), "    1  0  0");
  EXPECT_EQ(first[24].substr(0, 27), "    7  0  2        2.500000");
}

TEST_F(ListingTest, MomentChoosesTheState) {
  Model model = oneTetrahedron();
  model.increment.NOUTP = {0, 3, 0, 0};
  setTensor(model, StateSlot::committed, 0, 0, 0, 0, {1.0});
  setTensor(model, StateSlot::trial, 0, 0, 0, 0, {2.0});
  const auto stress = [&](OutputMoment moment) {
    const std::size_t before = written(channel::listing).size();
    OUTPUT(job, model, kernel, moment);
    const std::string text = written(channel::listing).substr(before);
    return text.substr(text.find("ELEMENT NO. =    1\n") + 19, 27);
  };

  EXPECT_EQ(stress(OutputMoment::converged), "    0  0  0        1.000000");
  EXPECT_EQ(stress(OutputMoment::iteration), "    0  0  0        2.000000");
}

TEST_F(ListingTest, CurrentConfigurationTurnsStressAndStrainBeforePrincipalValues) {
  Model model = oneTetrahedron();
  model.increment.NOUTP = {0, 3, 0, 0};
  model.control.LARGE = 1;
  model.control.KPUSH = 2;
  for (const int place : {0, strainPlace, plasticPlace}) setTensor(model, StateSlot::committed, 0, 0, 0, place, {4.0});

  OUTPUT(job, model, kernel, OutputMoment::converged);

  std::vector<std::string> rows;
  for (const std::string& line : linesOf(written(channel::listing)))
    if (line.starts_with("    0  0  0")) rows.push_back(line.substr(13, 14) + line.substr(97, 14));
  EXPECT_THAT(rows, testing::ElementsAre("      8.000000      8.000000", "      2.000000      2.000000",
                                         "      4.000000      4.000000"));
}

TEST_F(ListingTest, LevelComesFromTheFirstEntryOnlyBeforeConvergenceOfTheFirstIteration) {
  Model model = oneTetrahedron();
  model.increment.NOUTP = {1, 0, 0, 0};
  const auto hasDisplacements = [&](int IITER, int KCONV) {
    model.loop.IITER = IITER;
    model.loop.KCONV = KCONV;
    const std::size_t before = written(channel::listing).size();
    OUTPUT(job, model, kernel, OutputMoment::iteration);
    return written(channel::listing).find("DISPLACEMENTS", before) != std::string::npos;
  };

  EXPECT_TRUE(hasDisplacements(1, 1));
  EXPECT_FALSE(hasDisplacements(1, 0));
  EXPECT_FALSE(hasDisplacements(2, 1));
}

TEST_F(ListingTest, TimeDependentStepIsSilentWhereTheLoadTableSaysSo) {
  Model model = oneTetrahedron();
  model.loadStep.TCYCL = 1.0;
  model.FLEC = {0.0, 1.0};

  OUTPUT(job, model, kernel, OutputMoment::converged);
  EXPECT_EQ(written(channel::listing), "");

  model.loop.INCRE = 2;
  OUTPUT(job, model, kernel, OutputMoment::converged);
  EXPECT_EQ(written(channel::listing), heading);
}

TEST_F(ListingTest, ElementNumbersBeyondTheirColumnsAreWritten) {
  Model model = makeModel(4, std::vector<std::vector<int>>(100000, {1, 2, 3, 4}), 1);
  model.increment.NOUTP = {3, 3, 0, 0};

  OUTPUT(job, model, kernel, OutputMoment::converged);

  const std::string text = written(channel::listing);
  EXPECT_NE(text.find("ELEMENT NO. =99999\n"), std::string::npos);
  EXPECT_NE(text.find("ELEMENT NO. =100000\n"), std::string::npos);
}

}  // namespace
}  // namespace zema
