// The load block: head, point loads, gravity, faces, and the table of element loads.
#include "input/load_cards.h"

#include <gmock/gmock.h>

#include "input/input_fixture.h"

namespace zema::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class LoadCardsTest : public InputTest {
 protected:
  LoadCardsTest() { useTwoTetrahedra(); }
  void read(const std::string& cards) {
    deck(cards);
    LOADPS(job, model, kernel);
  }
  std::string fault(const std::string& cards) {
    return messageOf<InputFault>([&] { read(cards); });
  }
  [[nodiscard]] std::vector<double> loads(int e) const {
    const auto all = model.vectors.RLOAD(e, 1).first(12);
    return {all.begin(), all.end()};
  }
};

TEST_F(LoadCardsTest, ReadsAndEchoesTheHead) {
  model.loop.ILOAD = 12;
  model.vectors.RLOAD(0, 1)[5] = 3.0;
  model.FLEC = {1.0};
  job.IRUN.IINCS = 7;

  read("a step, with blanks \n3 2 0 2\n1 20 0 0 0 0 2 8*1.5\n end\nnext\n");

  EXPECT_EQ(model.loadStep.title, "a step, with blanks ");
  EXPECT_THAT(model.loadStep.ACTIV, ElementsAre(0, 1));
  EXPECT_EQ(model.loadStep.KLOAD, 1);
  EXPECT_EQ(model.loop.NINCS, 20);
  EXPECT_EQ(model.loadStep.KNEWM, 2);
  EXPECT_EQ(model.loadStep.TEMPL, 1.5);
  EXPECT_EQ(job.IRUN.IINCS, 1);
  EXPECT_TRUE(model.FLEC.empty());
  EXPECT_EQ(job.cards().line("next", 10), "next");
  const std::string dashes(30, '-');
  EXPECT_EQ(
      listing(), "\n        ECHO OF THERMAL LOADS DATA FOLLOWS :\n        " + std::string(36, '=') + "\n" + dashes +
                     " LOAD NUMBER:   12" + dashes + "\n0a step, with blanks " + std::string(52, ' ') +
                     "\n"
                     "      NUMBER OF INCREMENTS........................:       20\n"
                     "      POINTS LOADS................................:  NO \n"
                     "      GRAVITY LOADS...............................:  NO \n"
                     "      FACE LOAD...................................:  NO \n"
                     "      TYPE OF LOAD................................:  STATIC    \n" +
                     std::string(80, '-') + "\n0      NUMERO TOTAL DE CARGAS POR ELEMENTO\n" + "         1     " + [] {
                       std::string zeros;
                       for (int i = 0; i < 12; ++i) zeros += "      0.0000";
                       return zeros + "\n         2     " + zeros + "\n";
                     }());
}

TEST_F(LoadCardsTest, PointLoadsGoToTheFirstElementOfANodeAndAddUp) {
  read("t\n1 1\n0 1 1 0 0 0 0 4*0\n4\n1 2 3\n4\n10 0 -6.25\n5\n7 8 9\nend\n");

  EXPECT_THAT(loads(0), ElementsAre(0, 0, 0, 0, 0, 0, 0, 0, 0, 11, 2, -3.25));
  EXPECT_THAT(loads(1), ElementsAre(0, 0, 0, 0, 0, 0, 0, 0, 0, 7, 8, 9));
  EXPECT_TRUE(listed(std::string(30, '-') + "NODAL LOADS" + std::string(30, '-') +
                     "\n      ECHO OF NODAL POINT LOADS :\n"
                     "                4        1.000000        2.000000        3.000000\n"
                     "                4       10.000000        0.000000       -6.250000\n"
                     "                5        7.000000        8.000000        9.000000\n" +
                     std::string(80, '-')));
  EXPECT_TRUE(
      listed("         1           0.0000      0.0000      0.0000      0.0000      0.0000      0.0000      0.0000"
             "      0.0000      0.0000     11.0000      2.0000     -3.2500"));
}

TEST_F(LoadCardsTest, MoreThanTwelveLoadsOfAnElementTakeFurtherLines) {
  model.mesh.elements[0].NNODE = 8;
  model.vectors.RLOAD(0, 1)[0] = 1.0;

  read("t\n1 1\n0 1 0 0 1 0 0 4*0\n1\n1\n1 2 3\n1 2 3 4 5 6 7 8 9\nend\n");

  EXPECT_TRUE(
      listed("         1           1.0000      2.0000      3.0000      4.0000      5.0000      6.0000      7.0000"
             "      8.0000      9.0000      0.0000      0.0000      0.0000\n"
             "                     0.0000      0.0000      0.0000      0.0000      0.0000      0.0000      0.0000"
             "      0.0000      0.0000      0.0000      0.0000      0.0000\n"
             "         2           0.0000      0.0000      0.0000      0.0000      0.0000      0.0000      0.0000"
             "      0.0000      0.0000      0.0000      0.0000      0.0000"));
}

TEST_F(LoadCardsTest, GravityLoadsTheElementsOfTheStepsItLists) {
  // Half a layer of density 3 weighs 1.5 x 10; 90 degrees about x turn -z into +y.
  read("t\n2 1 2\n0 1 0 1 0 0 0 4*0\n0 90 0 10\n2 2 0\nend\n");

  EXPECT_THAT(loads(0), testing::Each(0.0));
  EXPECT_NEAR(loads(1)[0], 0.0, 1e-14);
  EXPECT_NEAR(loads(1)[1], 15.0, 1e-14);
  EXPECT_NEAR(loads(1)[2], 0.0, 1e-14);
  EXPECT_TRUE(listed(" * ---- FI ---- THETA ---- HI ----- GRAVY ---- *\n 0.0 90.0 0.0 10.0\n Fases Cargadas:  2 0"));
}

TEST_F(LoadCardsTest, GravityStopsWithoutDensityOrOnAnInactiveStep) {
  const std::string cards = "t\n1 1\n0 1 0 1 0 0 0 4*0\n0 0 0 10\n1 2\nend\n";
  EXPECT_EQ(messageOf<PlainStop>([&] { read(cards); }), " ERROR: FASE NO ACTIVA CON PESO \n");

  model.materials(1)(slot::density) = 0.0;
  EXPECT_EQ(messageOf<PlainStop>([&] { read(cards); }), " NO PUEDE RESOLVER CON DENSIDAD NULA \n");
}

TEST_F(LoadCardsTest, FaceNodesAreMatchedByTheirNumbers) {
  read("t\n1 1\n0 1 0 0 1 0 0 4*0\n2\n2\n5 2 4\n1 2 3 4 5 6 7 8 9\n2\n4 5 2\n3*0 0.5 5*0\nend\n");

  EXPECT_THAT(loads(1), ElementsAre(4, 5, 6, 0, 0, 0, 7, 8, 9, 1.5, 2, 3));
  EXPECT_TRUE(
      listed("0     NO. DE LADOS CARGAD =    2\n0     LISTA DE LADOS CARGADOS Y CARGAS APLIC\n"
             "         2             5        2        4\n"
             " 0.100E+01 0.200E+01 0.300E+01 0.400E+01 0.500E+01 0.600E+01 0.700E+01 0.800E+01 0.900E+01"));
}

TEST_F(LoadCardsTest, JointedBarsBearNoFaceLoads) {
  model.mesh.elements[1].NTYPE = 2;

  EXPECT_EQ(messageOf<PlainStop>([&] { read("t\n1 1\n0 1 0 0 1 0 0 4*0\n0\nend\n"); }),
            "ELEM. DE RETICUL. CON CARGA DISTRIBUIDA ? -- !NO!\n");
}

TEST_F(LoadCardsTest, BadNumbersAreFaults) {
  EXPECT_THAT(fault("t\n1 3\n"), HasSubstr("field construction step: found 3, expected an integer from 0 to 2"));
  EXPECT_THAT(fault("t\n-1\n"), HasSubstr("field NFACT: found -1"));
  EXPECT_THAT(fault("t\n0\n0 -1 9*0\nend\n"), HasSubstr("field NINCR: found -1"));
  EXPECT_THAT(fault("t\n0\n0 1 0 0 0 1 5*0\nend\n"), HasSubstr("dynamic load steps are not in this build yet"));
  const std::string points = "t\n1 1\n0 1 1 0 0 0 0 4*0\n";
  EXPECT_THAT(fault(points + "6\n"), HasSubstr("loaded node card, field node number: found 6"));
  EXPECT_THAT(fault(points + "1\n0 0 0\nend\n"), HasSubstr("found \"end\""));
  const std::string gravity = "t\n1 1\n0 1 0 1 0 0 0 4*0\n0 0 0 10\n";
  EXPECT_THAT(fault(gravity + "1 3\n"), HasSubstr("loaded step card, field construction step: found 3"));
  EXPECT_THAT(fault(gravity + "-2\n"), HasSubstr("found -2"));
  const std::string faces = "t\n1 1\n0 1 0 0 1 0 0 4*0\n";
  EXPECT_THAT(fault(faces + "-1\n"), HasSubstr("field count of loaded faces: found -1"));
  EXPECT_THAT(fault(faces + "1\n3\n"), HasSubstr("field element number: found 3"));
  EXPECT_THAT(fault(faces + "1\n2\n5 2 1\n"), HasSubstr("found 1, expected a node of element 2"));
}

TEST_F(LoadCardsTest, APointLoadNeedsAnElementThatHoldsTheNode) {
  model.mesh.LNODS[8] = 3;  // element 2 becomes 3 3 4 5, element 1 becomes 1 3 3 4
  model.mesh.LNODS[1] = 3;

  EXPECT_THAT(fault("t\n1 1\n0 1 1 0 0 0 0 4*0\n2\n1 2 3\n"),
              HasSubstr("found 2, expected a node that an element holds"));
}

}  // namespace
}  // namespace zema::test
