// The post mesh and result files, to the last character.
#include "results/post_files.h"

#include <gmock/gmock.h>

#include "results/result_fixture.h"

namespace zema {
namespace {

using test::linesOf;
using test::makeModel;
using test::setTensor;
using testing::ElementsAre;

using PostFilesTest = test::ResultTest;

constexpr int strainPlace = 6;
constexpr int plasticPlace = 12;

Model oneTetrahedron() {
  Model model = makeModel(4, {{1, 2, 3, 4}}, 1);
  model.mesh.COORD = {0.0, 0.0, 0.0, 1.5, 0.0, 0.0, 0.0, -2.0, 0.0, 0.0, 0.0, 123456.75};
  model.loop.TTIME = 2.5;
  return model;
}

Model oneBrick() {
  return makeModel(8, {{1, 2, 3, 4, 5, 6, 7, 8}}, 2);
}

TEST_F(PostFilesTest, MeshOfATetrahedron) {
  const Model model = oneTetrahedron();

  GEOPOST(job, model, kernel);

  EXPECT_EQ(written(channel::postMesh),
            "MESH \"TETRA-G1\" Dimension 3 Elemtype TetraHedra   Nnode 4\n"
            " Coordinates\n"
            "        10.000000E+000.000000E+000.000000E+00\n"
            "        20.150000E+010.000000E+000.000000E+00\n"
            "        30.000000E+00-.200000E+010.000000E+00\n"
            "        40.000000E+000.000000E+000.123457E+06\n"
            " End Coordinates\n"
            " Elements\n"
            "        1        1        2        3        4      1\n"
            " End elements\n");
}

TEST_F(PostFilesTest, HeadOfBricks) {
  const Model model = oneBrick();

  GEOPOST(job, model, kernel);

  EXPECT_EQ(linesOf(written(channel::postMesh)).front(), "MESH \"HEXA-G8\"  Dimension 3 Elemtype HexaHedra    Nnode 8");
  EXPECT_EQ(written(channel::postResults),
            " Qor Post Results File 1.0\n"
            "\n"
            " GaussPoints  \"HEXA-G8\"        Elemtype   HexaHedra      \"HEXA-G8\"   \n"
            " Number of Gauss Points:   8\n"
            " Natural Coordinates   : Internal\n"
            " End GaussPoints\n"
            "\n");
}

TEST_F(PostFilesTest, MixedMeshKeepsEveryElementUnderItsOwnKind) {
  Model model = makeModel(9, {{1, 2, 3, 4, 5, 6, 7, 8}, {5, 6, 8, 9}}, 1);
  model.increment.IPOST3D = {0, 1, 0, 0};
  model.increment.NOUTP[2] = 1;
  model.composites.all.push_back(model.composites(1));
  model.composites(1).ELECOM = {0};
  model.composites(2).ELECOM = {1};
  model.mesh.elements[1].MATNO[0] = 2;

  GEOPOST(job, model, kernel);
  POSPRO(job, model, kernel);

  const std::vector<std::string> mesh = linesOf(written(channel::postMesh));
  ASSERT_EQ(mesh.size(), 21U);
  EXPECT_EQ(mesh[0], "MESH \"TETRA-G1\" Dimension 3 Elemtype TetraHedra   Nnode 4");
  EXPECT_EQ(mesh[13], "        2        5        6        8        9      2");
  EXPECT_EQ(mesh[15], "MESH \"HEXA-G1\"  Dimension 3 Elemtype HexaHedra    Nnode 8");
  EXPECT_EQ(mesh[16], " Coordinates");
  EXPECT_EQ(mesh[17], " End Coordinates");
  EXPECT_EQ(mesh[19], "        1        1        2        3        4        5        6        7        8      1");
  const std::vector<std::string> results = linesOf(written(channel::postResults));
  ASSERT_EQ(results.size(), 32U);  // each composite has one kind of element and so one block
  EXPECT_EQ(results[7], " GaussPoints  \"HEXA-G1\"        Elemtype   HexaHedra      \"HEXA-G1\"   ");
  EXPECT_EQ(results[8], " Number of Gauss Points:   1");
  EXPECT_EQ(results[15].substr(0, 5), "    2");
  EXPECT_EQ(results[20].substr(0, 5), "    1");
  EXPECT_EQ(results[25].substr(0, 5), "    1");
  EXPECT_EQ(results[30].substr(0, 5), "    2");
}

TEST_F(PostFilesTest, UnknownNodeCountHasBlankWords) {
  const Model model = makeModel(6, {{1, 2, 3, 4, 5, 6}}, 1);

  GEOPOST(job, model, kernel);

  EXPECT_EQ(linesOf(written(channel::postMesh)).front(), "MESH            Dimension 3 Elemtype              Nnode 6");
}

TEST_F(PostFilesTest, DisplacementBlock) {
  Model model = oneTetrahedron();
  model.working.TDISP[0] = 0.125;
  model.working.TDISP[4] = -2.0;
  model.increment.IPOST3D = {1, 0, 0, 0};

  POSPRO(job, model, kernel);

  EXPECT_EQ(written(channel::postResults),
            "Result \"DISPLACEMENTS\" \"DISPLACEMENTS\"   0.250000E+01 Vector Onnodes\n"
            " ComponentNames \"DX\" \"DY \"\"DZ\"\n"
            " Values\n"
            "    1         0.125000000000000         0.000000000000000         0.000000000000000\n"
            "    2         0.000000000000000        -2.000000000000000         0.000000000000000\n"
            "    3         0.000000000000000         0.000000000000000         0.000000000000000\n"
            "    4         0.000000000000000         0.000000000000000         0.000000000000000\n"
            " End Values\n");
}

TEST_F(PostFilesTest, TensorBlocksShowTheCommittedStateInTheOrderOfTheColumns) {
  Model model = oneTetrahedron();
  setTensor(model, StateSlot::committed, 0, 0, 0, 0, {1.0, 2.0, 3.0, 4.0, 5.0, 6.0});
  setTensor(model, StateSlot::committed, 0, 0, 0, strainPlace, {0.5, 0.0, 0.25, 0.0, 0.0, 0.0});
  setTensor(model, StateSlot::committed, 0, 0, 0, plasticPlace, {0.0, 0.0, 0.0, 0.125, 0.0, 0.0});
  setTensor(model, StateSlot::trial, 0, 0, 0, 0, {9.0, 9.0, 9.0, 9.0, 9.0, 9.0});
  model.increment.IPOST3D = {0, 1, 1, 1};

  POSPRO(job, model, kernel);

  EXPECT_EQ(written(channel::postResults),
            "Result \"STRESSES//COMPOSITE\" \"MECHANICAL\"                           0.250000E+01 Matrix OnGaussPoints "
            "\"TETRA-G1\"  \n"
            "ComponentNames \"Sxx\" \"Syy\" \"Szz\" \"Sxy\" \"Sxz\" \"Syz\"\n"
            " Values\n"
            "    1        1.000000000000000        2.000000000000000        4.000000000000000"
            "        3.000000000000000        5.000000000000000        6.000000000000000\n"
            " End Values\n"
            "Result \"STRAINS//TOTAL//COMPOSITE\" \"MECHANICAL\"                               0.250000E+01 Matrix "
            "OnGaussPoints \"TETRA-G1\"  \n"
            "ComponentNames \"Exx\" \"Eyy\" \"Ezz\" \"Exy\" \"Exz\" \"Eyz\"\n"
            " Values\n"
            "    1        0.500000000000000        0.000000000000000        0.000000000000000"
            "        0.250000000000000        0.000000000000000        0.000000000000000\n"
            " End Values\n"
            "Result \"STRAINS//PLASTIC//COMPOSITE\" \"MECHANICAL\"                             0.250000E+01 Matrix "
            "OnGaussPoints \"TETRA-G1\"  \n"
            "ComponentNames \"Exx\" \"Eyy\" \"Ezz\" \"Exy\" \"Exz\" \"Eyz\"\n"
            " Values\n"
            "    1        0.000000000000000        0.000000000000000        0.125000000000000"
            "        0.000000000000000        0.000000000000000        0.000000000000000\n"
            " End Values\n");
}

TEST_F(PostFilesTest, InternalVariablesByTheirFlags) {
  Model model = oneTetrahedron();
  model.points.internal(StateSlot::committed, 0, 0, 0)[internal::damage] = 0.75;
  model.increment.IIFLAG[internal::damage] = 1;
  model.increment.IIFLAG[14] = 1;  // beyond the names: no block

  POSPRO(job, model, kernel);

  EXPECT_EQ(written(channel::postResults),
            "Result \"INT.VAR.//COMPOSITE//DEGMA\" \"MECHANICAL\"                              0.250000E+01 Scalar "
            "OnGaussPoints \"TETRA-G1\"  \n"
            " ComponentNames \"DEGMA\"\n"
            " Values\n"
            "    1        0.750000000000000\n"
            " End Values\n");
}

/// First number behind the element columns of each value line of a block that begins the file.
std::vector<std::string> firstValues(const std::string& text) {
  std::vector<std::string> lines = linesOf(text);
  std::vector<std::string> values;
  for (std::size_t i = 3; i + 1 < lines.size(); ++i) values.push_back(lines[i].substr(0, 14));
  return values;
}

TEST_F(PostFilesTest, BrickPointsFollowTheWalkOfTheFile) {
  Model model = oneBrick();
  for (int i = 0; i < 2; ++i)
    for (int j = 0; j < 2; ++j)
      for (int k = 0; k < 2; ++k)
        setTensor(model, StateSlot::committed, 0, 4 * i + 2 * j + k, 0, 0, {i * 100.0 + j * 10.0 + k + 111.0});
  model.increment.IPOST3D = {0, 1, 0, 0};

  POSPRO(job, model, kernel);

  EXPECT_THAT(firstValues(written(channel::postResults)),
              ElementsAre("    1      111", "           121", "           221", "           211", "           112",
                          "           122", "           222", "           212"));
}

TEST_F(PostFilesTest, InactiveElementsHaveNoLines) {
  Model model = makeModel(6, {{1, 2, 3, 4}, {2, 3, 4, 5}, {3, 4, 5, 6}}, 1);
  model.mesh.elements[1].IFASE = 2;
  model.loadStep.ACTIV = {1, 0};
  model.increment.IPOST3D = {0, 1, 0, 0};
  model.increment.NOUTP[2] = 1;

  POSPRO(job, model, kernel);

  const std::vector<std::string> lines = linesOf(written(channel::postResults));
  ASSERT_EQ(lines.size(), 12U);  // the whole and the one simple material
  EXPECT_EQ(lines[3].substr(0, 5), "    1");
  EXPECT_EQ(lines[4].substr(0, 5), "    3");
  EXPECT_EQ(lines[10].substr(0, 5), "    3");
}

TEST_F(PostFilesTest, CompositeBlocksGoThroughLayersAndSimpleMaterials) {
  Model model = oneTetrahedron();
  test::addLayer(model, 2);
  test::makeStores(model);
  for (int component = 0; component <= 3; ++component)
    setTensor(model, StateSlot::committed, 0, 0, component, 0, {component + 0.5});
  model.increment.IPOST3D = {0, 1, 0, 0};
  model.increment.IIFLAG[0] = 1;
  model.increment.NOUTP[2] = 1;

  POSPRO(job, model, kernel);

  const std::vector<std::string> lines = linesOf(written(channel::postResults));
  ASSERT_EQ(lines.size(), 40U);
  EXPECT_EQ(lines[5],
            "Result \"STRESSES//COMPOSITE01//LAYER01//SIMPLE MAT.01\" \"MECHANICAL\" 0.250000E+01 Matrix "
            "OnGaussPoints \"TETRA-G1\"  ");
  EXPECT_EQ(lines[8].substr(0, 30), "    1        1.500000000000000");
  EXPECT_EQ(lines[10].substr(0, 62), "Result \"STRESSES//COMPOSITE01//LAYER02//SIMPLE MAT.01\" \"MECHAN");
  EXPECT_EQ(lines[18].substr(0, 30), "    1        3.500000000000000");
  EXPECT_EQ(lines[35],
            "Result \"INT.VAR.//COMPOSITE01//LAYER02//SIMPLE MAT.02//CAPAP\" \"MECHANICAL\"    0.250000E+01 "
            "Scalar OnGaussPoints \"TETRA-G1\"  ");
  EXPECT_EQ(lines[36], " ComponentNames \"CAPAP\"");
}

TEST_F(PostFilesTest, MaterialAxesTurnTheWholeButNotTheSimpleMaterials) {
  Model model = oneTetrahedron();
  model.mesh.elements[0].EAEULER = {90.0, 0.0, 0.0};  // local x along global y
  setTensor(model, StateSlot::committed, 0, 0, 0, 0, {1.0, 2.0, 0.5, 0.0, 0.0, 0.0});
  setTensor(model, StateSlot::committed, 0, 0, 1, 0, {1.0, 2.0, 0.5, 0.0, 0.0, 0.0});
  model.increment.IPOST3D = {0, 2, 0, 0};
  model.increment.NOUTP[2] = 1;

  POSPRO(job, model, kernel);

  const std::vector<std::string> lines = linesOf(written(channel::postResults));
  EXPECT_EQ(lines[3].substr(5, 100),
            "        2.000000000000000        1.000000000000000"
            "        0.000000000000000       -0.500000000000000");
  EXPECT_EQ(lines[8].substr(5, 50), "        1.000000000000000        2.000000000000000");
}

TEST_F(PostFilesTest, CurrentConfigurationShowsCauchyAndAlmansi) {
  Model model = oneTetrahedron();
  setTensor(model, StateSlot::committed, 0, 0, 0, 0, {3.0});
  setTensor(model, StateSlot::committed, 0, 0, 0, strainPlace, {3.0});
  setTensor(model, StateSlot::committed, 0, 0, 0, plasticPlace, {3.0});
  model.control.LARGE = 1;
  model.control.KPUSH = 2;
  model.increment.IPOST3D = {0, 1, 1, 1};

  POSPRO(job, model, kernel);

  const std::vector<std::string> lines = linesOf(written(channel::postResults));
  EXPECT_EQ(lines[3].substr(0, 30), "    1        6.000000000000000");
  EXPECT_EQ(lines[8].substr(0, 30), "    1        1.500000000000000");
  EXPECT_EQ(lines[13].substr(0, 30), "    1        3.000000000000000");
}

TEST_F(PostFilesTest, LoadTableSkipsIncrementsOfDynamicAndTimeDependentRuns) {
  Model model = oneTetrahedron();
  model.increment.IPOST3D = {1, 0, 0, 0};
  model.FLEC = {0.0, 1.0};
  const auto writes = [&](int IDINA, double TCYCL, int INCRE) {
    model.loadStep.IDINA = IDINA;
    model.loadStep.TCYCL = TCYCL;
    model.loop.INCRE = INCRE;
    const std::size_t before = written(channel::postResults).size();
    POSPRO(job, model, kernel);
    return written(channel::postResults).size() > before;
  };

  EXPECT_TRUE(writes(0, 0.0, 1));
  EXPECT_FALSE(writes(1, 0.0, 1));
  EXPECT_TRUE(writes(1, 0.0, 2));
  EXPECT_FALSE(writes(0, 5.0, 1));
  EXPECT_FALSE(writes(0, 5.0, 3));
}

TEST_F(PostFilesTest, NumbersTooLargeForTheirColumnsLoseNothing) {
  Model model = makeModel(100000, {{1, 2, 3, 100000}}, 1);
  setTensor(model, StateSlot::committed, 0, 0, 0, 0, {1.5e10, -999999999.0, 0.25});
  model.increment.IPOST3D = {1, 1, 0, 0};

  POSPRO(job, model, kernel);

  const std::vector<std::string> lines = linesOf(written(channel::postResults));
  EXPECT_EQ(lines[100001].substr(0, 8), "99999   ");
  EXPECT_EQ(lines[100002].substr(0, 8), "100000  ");
  EXPECT_EQ(lines[100007], "    1 1.5E+10 -999999999.0 0.0 0.25 0.0 0.0");
}

}  // namespace
}  // namespace zema
