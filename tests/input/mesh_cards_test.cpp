// What is kept of the model section of the deck.
#include "input/mesh_cards.h"

#include "input/input_fixture.h"

namespace zema::test {
namespace {

using MeshCardsTest = SectionTest<INPU>;
using testing::ElementsAre;

TEST_F(MeshCardsTest, KeepsElementsByNumberAndListsThemByCard) {
  model.text.CSTART = "START2";
  read(ModelCards{.elements = "2 1 7 0 6 2 4 1 1 -2 3 4 5 10 20 30\n1 1 0 1.5 6 1 4 1 1 1 2 3 4/\n"});

  EXPECT_EQ(listing(), "");  // a restart has no echo
  EXPECT_THAT(model.mesh.nodesOf(0), ElementsAre(1, 2, 3, 4));
  EXPECT_THAT(model.mesh.nodesOf(1), ElementsAre(2, 3, 4, 5));
  EXPECT_THAT(model.mesh.element(1).MATNO, ElementsAre(1, 7, 0));
  EXPECT_THAT(model.composites(1).ELECOM, ElementsAre(1, 0));
  EXPECT_EQ(model.mesh.coordinates({5})[2], 1.0);
  EXPECT_EQ(model.vectors.NEVAB(), 24);
  EXPECT_THAT(model.positions.of(1), ElementsAre(3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14));
}

TEST_F(MeshCardsTest, AKernelOfThePlaneNeedsNoOtherTextButRulesOfTriangles) {
  kernel.row.dimensions = kernel.row.MDOFN = 2;
  kernel.row.elementAngles = 0;
  const std::string nodes = "1 0 0\n2 1 0\n3 0 1\n4 2 0\n5 2 1\n";
  read(ModelCards{.elements = "1 1 0 0 3 1 3 1 4 1 2 3\n2 1 0 0 3 1 4 2 1 2 4 5 3\n", .nodes = nodes});
  EXPECT_EQ(model.mesh.NTOTV, 10);
  EXPECT_EQ(model.mesh.coordinates({5})[0], 2.0);
  EXPECT_THAT(listing(), testing::HasSubstr("\n        5 0.200E+01 0.100E+01            6 0.000E+00 0.000E+00\n"));

  EXPECT_EQ(endOf(ModelCards{.elements = "1 1 0 0 3 1 3 1 4 1 2 3\n2 1 0 0 3 1 3 1 1 3 4 5\n", .nodes = nodes}),
            "run end   >>>> DETENIDO EN LA RUTINA CHECK2 2.0 1.0");
  EXPECT_THAT(listing(),
              testing::HasSubstr("\n -->      *** DIAG. DE CHECK2, EL. TRIANGULARES: CUADRAT RADAU o COWPER"));
}

TEST_F(MeshCardsTest, NodesTakeTheFirstElementsDofsWhenTheLastTwoCardsAgree) {
  kernel.dofsOfType20 = 1;
  model.control.NPOIN = 6;
  model.control.NELEM = 3;
  const std::string nodes = ModelCards().nodes + "6 2 2 2\n";

  read(ModelCards{.elements = "1 1 0 0 20 1 4 1 1 1 2 3 4/\n2 1 0 0 6 1 4 1 1 2 3 4 5/\n3 1 0 0 6 1 4 1 1 2 3 4 5/\n",
                  .nodes = nodes});
  EXPECT_THAT(model.mesh.NDOFP, ElementsAre(1, 1, 1, 1, 1, 1));

  read(ModelCards{.elements = "1 1 0 0 6 1 4 1 1 2 3 4 5/\n2 1 0 0 6 1 4 1 1 2 3 4 5/\n3 1 0 0 20 1 4 1 1 1 2 3 4/\n",
                  .nodes = nodes});
  EXPECT_THAT(model.mesh.NDOFP, ElementsAre(1, 3, 3, 3, 3, 0));
  EXPECT_THAT(model.mesh.lastDof, ElementsAre(1, 4, 7, 10, 13, 13));
}

TEST_F(MeshCardsTest, ReadsEveryKindOfLayer) {
  model.control.NLAYM = 4;
  read(ModelCards{.composites = "1 4\nP 0.1 1 2 3\n2 2 0.25 1 0.75\n'SP ' 0.2 0 0 0\n1 0.5 2 0.5 1 0 0 1 0 1\n"
                                "NT 0.3 0 0 0\n1 0.6 2 0.3 1 0.2\nXX 0.4 0 0 0\n"});

  const std::vector<Layer>& layers = model.composites(1).layers;
  ASSERT_EQ(layers.size(), 4U);
  const auto material = [](int number) { return testing::Field(&Component::LCPRO, number); };
  EXPECT_THAT(layers[0].components, ElementsAre(material(2), material(1)));
  EXPECT_EQ(layers[0].components[1].PARTV, 0.75);
  EXPECT_THAT(layers[0].LAEULER, ElementsAre(1.0, 2.0, 3.0));
  EXPECT_EQ(layers[1].kind, LayerKind::serialParallel);
  EXPECT_THAT(layers[1].SPDFLAG, ElementsAre(1, 0, 0, 1, 0, 1));
  EXPECT_THAT(layers[2].components, ElementsAre(material(1), material(2), material(1), material(2), material(1)));
  EXPECT_EQ(layers[2].components[4].LOCMA, 9);
  EXPECT_EQ(layers[3].kind, LayerKind::none);
  EXPECT_EQ(layers[3].PVLAY, 0.4);
  EXPECT_EQ(model.composites(1).NUMAT, 10);
  EXPECT_THAT(written(channel::log), testing::EndsWith(" ---> composite 1, layer 3: the shares of its components "
                                                       "add up to 1.1, not to 1\n"));
}

TEST_F(MeshCardsTest, AFrontThatIsTooWideStops) {
  model.control.NSOLV = 1;
  kernel.dofsOfType20 = 26;  // four nodes pass 100
  EXPECT_EQ(endOf(ModelCards{.elements = "1 1 0 0 20 1 4 1 1 1 2 3 4/\n2 1 0 0 20 1 4 1 1 2 3 4 5/\n"}),
            "run end   >>>> DETENIDO EN LA RUTINA CHECK2 0.0 0.0");
  EXPECT_THAT(listing(),
              testing::HasSubstr("\n MAXIMO ANCHO DE FRENTE ENCONTRADO =   104\n"
                                 "\n\n *** DIAGNOSTICO DE CHECK2, ERROR 20      ASOCIADO  CON EL NUMERO    1\n"));
}

}  // namespace
}  // namespace zema::test
