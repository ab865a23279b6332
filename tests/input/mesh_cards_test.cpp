// The model section of the deck: what is kept, what is echoed, and what stops the run.
#include "input/mesh_cards.h"

#include <gmock/gmock.h>

#include "input/input_fixture.h"

namespace zema::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

/// A deck of the model section; each part can be replaced.
struct MeshDeck {
  std::string elements = "2 1 7 0 6 2 4 1 1 2 3 4 5 10 20 30\n1 1 0 1.5 6 1 4 1 1 1 2 3 4 0 0 -90\n";
  std::string composites = "1 1\nP 1 0 0 0\n1 1 1\n";
  std::string nodes = fiveNodes;
  std::string rest = materialCards(1, "2 2 0 2 1 1") + materialCards(2, "2 2 0 2 1 1") + "end\nCURV,    0\n";

  [[nodiscard]] std::string text() const { return elements + composites + nodes + rest; }
};

class MeshCardsTest : public InputTest {
 protected:
  void read() {
    deck(parts.text());
    INPU(job, model, kernel);
  }
  std::string fault() {
    return messageOf<InputFault>([this] { read(); });
  }
  std::string runEnd() {
    return messageOf<RunEnd>([this] { read(); });
  }
  [[nodiscard]] std::vector<int> nodesOf(int e) const {
    const auto nodes = model.mesh.nodesOf(e);
    return {nodes.begin(), nodes.end()};
  }

  MeshDeck parts;
};

TEST_F(MeshCardsTest, KeepsElementsByNumberAndListsThemByCard) {
  read();

  EXPECT_THAT(nodesOf(0), ElementsAre(1, 2, 3, 4));
  EXPECT_THAT(nodesOf(1), ElementsAre(2, 3, 4, 5));
  EXPECT_THAT(model.mesh.element(1).MATNO, ElementsAre(1, 7, 0));
  EXPECT_EQ(model.mesh.element(1).IFASE, 2);
  EXPECT_THAT(model.mesh.element(1).EAEULER, ElementsAre(10.0, 20.0, 30.0));
  EXPECT_EQ(model.mesh.element(0).FRACL, 1.5);
  EXPECT_THAT(model.composites(1).ELECOM, ElementsAre(1, 0));
  EXPECT_EQ(model.mesh.coordinates({5})[2], 1.0);
}

TEST_F(MeshCardsTest, EchoesElementsAndCoordinatesByPairs) {
  read();

  EXPECT_TRUE(
      listed(" ELEMENT  MATNO    FRACL   NTYPE, NFASE NNODE NGAUS NINTE,     NODE   NUMBERS" + std::string(53, ' ') +
             "ÁNGULOS\n"
             "     2       1  0.000E+00     6      2     4     1     1         2       3       4       5       0"
             "       0       0       0     0.10E+02  0.20E+02  0.30E+02\n"
             "     1       1  0.150E+01     6      1     4     1     1         1       2       3       4       0"
             "       0       0       0     0.00E+00  0.00E+00 -0.90E+02"));
  EXPECT_TRUE(
      listed("      NODE  X-COORD  Y-COORD  Z-COORD              NODE  X-COORD  Y-COORD  Z-COORD\n"
             "        1 0.000E+00 0.000E+00 0.000E+00            2 0.100E+01 0.000E+00 0.000E+00\n"
             "        3 0.000E+00 0.100E+01 0.000E+00            4 0.000E+00 0.000E+00 0.100E+01\n"
             "        5 0.100E+01 0.100E+01 0.100E+01            6 0.000E+00 0.000E+00 0.000E+00"));
}

TEST_F(MeshCardsTest, ARestartReadsWithoutEcho) {
  model.text.CSTART = "START2";

  read();

  EXPECT_EQ(listing(), "");
  EXPECT_EQ(model.mesh.NELEM(), 2);
}

TEST_F(MeshCardsTest, FrequencyRecordsTakeMeshAndNodes) {
  job.channels.open(channel::frequencies);

  read();

  EXPECT_EQ(written(channel::frequencies),
            " MEC3D\n 5 2 1 0\n 4\n"
            "     2       1     6      2     4     1     1         2       3       4       5       0       0       0"
            "       0\n"
            "     1       1     6      1     4     1     1         1       2       3       4       0       0       0"
            "       0\n"
            "        1 0.000E+00 0.000E+00 0.000E+00\n        2 0.100E+01 0.000E+00 0.000E+00\n"
            "        3 0.000E+00 0.100E+01 0.000E+00\n        4 0.000E+00 0.000E+00 0.100E+01\n"
            "        5 0.100E+01 0.100E+01 0.100E+01\n");
}

TEST_F(MeshCardsTest, StoresFollowFromElementsAndComposites) {
  parts.composites = "1 2\nP 0.5 0 0 0\n2 1 0.5 2 0.5\nP 0.5 0 0 0\n1 1 1\n";

  read();

  EXPECT_EQ(model.composites(1).NUMAT, 4);
  EXPECT_EQ(model.vectors.NEVAB(), 24);
  EXPECT_TRUE(model.vectors.initialLoad(0).empty());
  EXPECT_THAT(model.positions.of(1), ElementsAre(3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14));
}

TEST_F(MeshCardsTest, AKernelOfThePlaneNeedsNoOtherText) {
  kernel = SizesOnly(SizesOnly::Space::plane);
  parts.elements = "1 1 0 0 3 1 3 1 4 1 2 3\n2 1 0 0 3 1 4 2 1 2 4 5 3\n";
  parts.nodes = "1 0 0\n2 1 0\n3 0 1\n4 2 0\n5 2 1\n";

  read();

  EXPECT_EQ(model.mesh.NTOTV, 10);
  EXPECT_EQ(model.mesh.coordinates({5})[0], 2.0);
  EXPECT_TRUE(listed("        5 0.200E+01 0.100E+01            6 0.000E+00 0.000E+00"));
}

TEST_F(MeshCardsTest, NodesTakeTheFirstElementsDofsWhenTheLastTwoCardsAgree) {
  kernel.dofsOfType20 = 1;
  model.control.NPOIN = 6;
  model.control.NELEM = 3;
  parts.nodes += "6 2 2 2\n";
  const std::string first = "1 1 0 0 20 1 4 1 1 1 2 3 4 0 0 0\n";
  parts.elements = first + "2 1 0 0 6 1 4 1 1 2 3 4 5 0 0 0\n3 1 0 0 6 1 4 1 1 2 3 4 5 0 0 0\n";
  read();
  EXPECT_THAT(model.mesh.NDOFP, ElementsAre(1, 1, 1, 1, 1, 1));

  parts.elements = "2 1 0 0 6 1 4 1 1 2 3 4 5 0 0 0\n3 1 0 0 6 1 4 1 1 2 3 4 5 0 0 0\n" + first;
  read();
  EXPECT_THAT(model.mesh.NDOFP, ElementsAre(1, 3, 3, 3, 3, 0));
  EXPECT_THAT(model.mesh.lastDof, ElementsAre(1, 4, 7, 10, 13, 13));
}

TEST_F(MeshCardsTest, ReadsEveryKindOfLayer) {
  model.control.NLAYM = 4;
  parts.composites =
      "1 4\nP 0.1 1 2 3\n2 2 0.25 1 0.75\nSP 0.2 0 0 0\n1 0.5 2 0.5 1 0 0 1 0 1\nNT 0.3 0 0 0\n1 0.6 2 0.3 1 0.1\n"
      "XX 0.4 0 0 0\n";

  read();

  const std::vector<Layer>& layers = model.composites(1).layers;
  ASSERT_EQ(layers.size(), 4U);
  const auto materials = [&layers](std::size_t l) {
    std::vector<int> all;
    for (const Component& component : layers[l].components) all.push_back(component.LCPRO);
    return all;
  };
  EXPECT_THAT(materials(0), ElementsAre(2, 1));
  EXPECT_EQ(layers[0].components[1].PARTV, 0.75);
  EXPECT_THAT(layers[0].LAEULER, ElementsAre(1.0, 2.0, 3.0));
  EXPECT_EQ(layers[1].kind, LayerKind::serialParallel);
  EXPECT_THAT(layers[1].SPDFLAG, ElementsAre(1, 0, 0, 1, 0, 1));
  EXPECT_THAT(materials(2), ElementsAre(1, 2, 1, 2, 1));
  EXPECT_EQ(layers[2].components[4].LOCMA, 9);
  EXPECT_EQ(layers[3].kind, LayerKind::none);
  EXPECT_EQ(layers[3].PVLAY, 0.4);
  EXPECT_EQ(model.composites(1).NUMAT, 10);
}

TEST_F(MeshCardsTest, ElementNumbersOutOfRangeAreFaults) {
  const std::string second = "1 1 0 0 6 1 4 1 1 1 2 3 4 0 0 0\n";
  parts.elements = "3 1 0 0 6 1 4 1 1 1 2 3 4 0 0 0\n" + second;
  EXPECT_EQ(fault(), "deck, line 1, element card, field NUMEL: found 3, expected an integer from 1 to 2");
  parts.elements = "2 1 0 0 6 3 4 1 1 1 2 3 4 0 0 0\n" + second;
  EXPECT_THAT(fault(), HasSubstr("field IFASE: found 3, expected an integer from 1 to 2"));
  parts.elements = "2 1 0 0 20 1 4 1 1 1 2 3 4 0 0 0\n" + second;
  EXPECT_THAT(fault(), HasSubstr("element type 20 has no formulation in this kernel"));
  parts.elements = "2 1 0 0 6 1 4 1 6 1 2 3 4 0 0 0\n" + second;
  EXPECT_THAT(fault(), HasSubstr("field NINTE: found 6"));
  parts.elements = "2 1 0 0 6 1 4 0 1 1 2 3 4 0 0 0\n" + second;
  EXPECT_THAT(fault(), HasSubstr("field NGAUS: found 0, expected at least 1 point"));
  parts.elements = "2 1 0 0 6 1 9 1 1 1 2 3 4 5 1 2 3 4 0 0 0\n" + second;
  EXPECT_THAT(fault(), HasSubstr("field NNODE: found 9, expected at most 8 nodes"));
}

TEST_F(MeshCardsTest, NodeAndCompositeNumbersOutOfRangeAreFaults) {
  parts.nodes = "1 0 0 0\n6 1 0 0\n";
  EXPECT_THAT(fault(), HasSubstr("coordinate card, field node number: found 6, expected an integer from 1 to 5"));
  parts = {};
  parts.composites = "2 1\nP 1 0 0 0\n1 1 1\n";
  EXPECT_THAT(fault(), HasSubstr("field composite number: found 2"));
  parts.composites = "1 3\n";
  EXPECT_THAT(fault(), HasSubstr("field NULAY: found 3, expected an integer from 0 to 2"));
  parts.composites = "1 1\nP 1 0 0 0\n1 3 1\n";
  EXPECT_THAT(fault(), HasSubstr("field LCPRO: found 3, expected an integer from 1 to 2"));
  parts.composites = "1 1\nP 1 0 0 0\n-1\n";
  EXPECT_THAT(fault(), HasSubstr("field NUCOMF: found -1"));
}

TEST_F(MeshCardsTest, LimitsOfAnElementStopInTheirOrder) {
  const auto stopped = [this](const std::string& card, const std::string& message) {
    parts.elements = card + card;
    EXPECT_EQ(runEnd(), "  >>>> DETENIDO EN LA RUTINA CHECK1 ");
    EXPECT_THAT(listing(), HasSubstr("\n -->      " + message)) << card;
  };
  stopped("1 1 0 0 9 1 2 3 1 1 2 0 0 0\n", "*** DIAGNOSTICO DE CHECK1, SIN CONGRUENCIA ENTRE NPOIN Y NELEM");
  stopped("1 1 0 0 9 1 -4 3 1 0 0 0\n", "*** DIAGNOSTICO DE CHECK1, SIN CONGRUENCIA ENTRE NPOIN Y NELEM");
  stopped("1 1 0 0 9 1 22 3 1 22*1 0 0 0\n", "*** DIAGNOSTICO DE CHECK1, ERROR EN EL TIPO DE ELEMENTO");
  stopped("1 1 0 0 21 1 22 3 1 22*1 0 0 0\n", "*** DIAG. DE CHECK1, MAXIMO NUM. DE NODOS POR ELEMENTOS SUPERADO");
  stopped("1 1 0 0 6 1 4 3 1 1 2 3 4 0 0 0\n", "*** DIAG. DE CHECK1, MAXIMO CUADRATURA SUPERADA");
}

TEST_F(MeshCardsTest, ABadCompositeIsToleratedUntilTheMaterialsAreRead) {
  parts.elements = "2 1 0 0 6 1 4 1 1 2 3 4 5 0 0 0\n1 2 0 0 6 1 4 1 1 1 2 3 4 0 0 0\n";

  EXPECT_EQ(runEnd(), "  >>>> DETENIDO EN LA RUTINA CHECK2");

  EXPECT_THAT(listing(), HasSubstr("\n -->      *** NUMERO DE MATERIAL 0 O MAYOR A NMATC "));
  EXPECT_EQ(model.materials.all.size(), 2U);
}

TEST_F(MeshCardsTest, BadNodeNumbersAreCountedAndTheRestOfTheDeckShown) {
  parts.elements = "2 1 0 0 6 1 4 1 1 2 0 4 5 0 0 0\n1 1 0 0 6 1 4 1 1 6 -7 0 4 0 0 0\n";

  EXPECT_EQ(runEnd(), "  >>>> DETENIDO EN LA RUTINA CHECK2");

  EXPECT_TRUE(
      listed("\n\n *** DIAGNOSTICO DE CHECK2, ERROR 15      ASOCIADO  CON EL NUMERO    2\n"
             "\n\n *** DIAGNOSTICO DE CHECK2, ERROR 16      ASOCIADO  CON EL NUMERO    2\n"
             "\n\n SIGUE LA LISTA DE TARJETAS POST-ERROR \n\n                    CURV,    0" +
             std::string(70, ' ')));
}

TEST_F(MeshCardsTest, ANegativeNodeNumberStandsForItsMagnitude) {
  parts.elements = "2 1 0 0 6 1 4 1 1 -2 3 4 5 0 0 0\n1 1 0 0 6 1 4 1 1 1 2 3 4 0 0 0\n";

  read();

  EXPECT_THAT(nodesOf(1), ElementsAre(2, 3, 4, 5));
}

TEST_F(MeshCardsTest, TheFrontalSolverGetsItsNodeListsChecked) {
  model.control.NSOLV = 1;
  read();
  // Both elements share three nodes: the front grows to 4 nodes, loses one and takes one.
  EXPECT_TRUE(listed(" MAXIMO ANCHO DE FRENTE ENCONTRADO =    12"));

  parts.elements = "1 1 0 0 6 1 4 1 1 2 2 3 4 0 0 0\n2 1 0 0 6 1 4 1 1 2 3 4 3 0 0 0\n";
  EXPECT_EQ(runEnd(), "  >>>> DETENIDO EN LA RUTINA CHECK2");
  EXPECT_TRUE(
      listed(" CONTROLE POR QUE EL NODO   1 NO APARECE NUNCA\n CONTROLE POR QUE EL NODO   5 NO APARECE NUNCA\n"
             " MAXIMO ANCHO DE FRENTE ENCONTRADO =     9\n"
             "\n\n *** DIAGNOSTICO DE CHECK2, ERROR 17      ASOCIADO  CON EL NUMERO    2\n"
             "\n\n *** DIAGNOSTICO DE CHECK2, ERROR 18      ASOCIADO  CON EL NUMERO    2\n"
             "\n\n *** DIAGNOSTICO DE CHECK2, ERROR 19      ASOCIADO  CON EL NUMERO    1"));
}

TEST_F(MeshCardsTest, AFrontThatIsTooWideStops) {
  model.control.NSOLV = 1;
  model.control.NELEM = 1;
  model.control.NPOIN = model.control.NNODM = 21;
  kernel.dofsOfType20 = 5;
  parts.elements = "1 1 0 0 20 1 21 1 1 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20 21 0 0 0\n";
  parts.nodes.clear();
  for (int n = 1; n <= 21; ++n) parts.nodes += std::to_string(n) + " 0 0 0\n";

  EXPECT_EQ(runEnd(), "  >>>> DETENIDO EN LA RUTINA CHECK2");

  EXPECT_TRUE(
      listed(" MAXIMO ANCHO DE FRENTE ENCONTRADO =   105\n"
             "\n\n *** DIAGNOSTICO DE CHECK2, ERROR 20      ASOCIADO  CON EL NUMERO    1"));
}

TEST_F(MeshCardsTest, TrianglesNeedATriangleRule) {
  kernel = SizesOnly(SizesOnly::Space::plane);
  parts.elements = "1 1 0 0 3 1 3 1 4 1 2 3\n2 1 0 0 3 1 3 1 1 3 4 5\n";
  parts.nodes = "1 0 0\n2 1 0\n3 0 1\n4 2 0\n5 2 1\n";

  EXPECT_EQ(runEnd(), "  >>>> DETENIDO EN LA RUTINA CHECK2");

  EXPECT_THAT(listing(), HasSubstr("\n -->      *** DIAG. DE CHECK2, EL. TRIANGULARES: CUADRAT RADAU o COWPER"));
}

}  // namespace
}  // namespace zema::test
