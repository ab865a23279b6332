// Curves, loads and increments: what their cards set, data that make no sense, and where the head of an increment
// stands.
#include "input/curve_cards.h"
#include "input/increment_cards.h"
#include "input/input_fixture.h"
#include "input/load_cards.h"

namespace zema::test {
namespace {

using CurveCardsTest = SectionTest<INPCU>;
using testing::ElementsAre;

TEST_F(CurveCardsTest, EveryKeywordHasItsCountOfValues) {
  read(
      "CURV,    5\n"
      "reaction-time curve, cut\nX-IINCS rest\n'Y-TREAC of a node'\n3 2 left\n"
      "b\nX-DISPL\n1 2 3\nY-RCTOT\n1\n"
      "c\nX-TEMPE\n5\nY-STRES\n1 1 3 1 1\n"
      "d\nX\n1 2 3 4 5\nY-OTHER\n6 7 8 9 10\n"
      "e\nX-FORCE\n2 1 4\nY-FORCE\n1 3 4\n");

  ASSERT_EQ(model.curves.size(), 5U);
  EXPECT_EQ(model.curves[0].title, "reaction-time cu");
  EXPECT_EQ(model.curves[0].xWord, "X-IINCS");
  EXPECT_EQ(model.curves[0].yWord, "Y-TREAC of a node");
  EXPECT_THAT(model.curves[0].KDATS, ElementsAre(0, 0, 0, 0, 0, 3, 2, 0, 0, 0));
  EXPECT_THAT(model.curves[1].KDATS, ElementsAre(1, 2, 3, 0, 0, 1, 0, 0, 0, 0));
  EXPECT_THAT(model.curves[2].KDATS, ElementsAre(5, 0, 0, 0, 0, 1, 1, 3, 1, 1));
  EXPECT_THAT(model.curves[3].KDATS, ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9, 10));
  // A force stands in the vector of its element: node 4 is the third of element 2, and the fourth of element 1.
  EXPECT_THAT(model.curves[4].KDATS, ElementsAre(2, 7, 4, 0, 0, 1, 12, 4, 0, 0));
}

TEST_F(CurveCardsTest, TheCardMustBeAmongTheFirstLinesAndInItsColumns) {
  std::string lines;
  for (int i = 0; i < 100; ++i) lines += "a line, CURV,    9\n";

  EXPECT_EQ(endOf(lines + "CURV,  + 0 behind\n"), "goes on");
  EXPECT_EQ(endOf("CURV,\n"), "goes on");
  EXPECT_TRUE(model.curves.empty());
  for (const std::string& cards : {lines + "\nCURV,    0\n", std::string(" CURV,   0\ncurv,    0\n"), std::string()})
    EXPECT_EQ(endOf(cards), "run end  >>>>  ERROR !!!. No encuentro: CURV 0.0 0.0") << cards;
}

using LoadCardsTest = SectionTest<LOADPS>;

TEST_F(LoadCardsTest, SetsTheStepAndClearsTheLoadsOfTheStepBefore) {
  model.vectors.RLOAD(0, 1)[5] = 3.0;
  job.IRUN.IINCS = 7;

  read("a step, with blanks \n3 2 0 2\n1 20 0 0 0 0 2 8*1.5\n end\nnext\n");

  EXPECT_EQ(model.loadStep.title, "a step, with blanks ");
  EXPECT_THAT(model.loadStep.ACTIV, ElementsAre(0, 1));
  EXPECT_EQ(model.loadStep.KLOAD, 1);
  EXPECT_EQ(model.loop.NINCS, 20);
  EXPECT_EQ(model.loadStep.KNEWM, 2);
  EXPECT_EQ(model.loadStep.TEMPL, 1.5);
  EXPECT_EQ(job.IRUN.IINCS, 1);
  EXPECT_THAT(model.vectors.RLOAD(0, 1), testing::Each(0.0));
  EXPECT_EQ(job.cards().line("next", 10), "next");
}

TEST_F(LoadCardsTest, MoreThanTwelveLoadsOfAnElementTakeFurtherLines) {
  model.mesh.elements[0].NNODE = 8;
  read("t\n0\n0 1 9*0\nend\n");

  std::string zeros;
  for (int i = 0; i < 12; ++i) zeros += "      0.0000";
  EXPECT_THAT(listing(),
              testing::HasSubstr("\n         1     " + zeros + "\n               " + zeros + "\n         2"));
}

TEST_F(LoadCardsTest, LoadsThatMakeNoSenseStop) {
  model.mesh.LNODS[1] = model.mesh.LNODS[8] = 3;  // elements 1 3 3 4 and 3 3 4 5
  EXPECT_EQ(endOf("t\n1 1\n0 1 1 8*0\n2\n"),
            "fault deck, line 4, loaded node card, field node number: found 2, expected a node that an element holds");
  model.materials(1)(slot::density) = 0.0;
  EXPECT_EQ(endOf("t\n1 1\n0 1 0 1 7*0\n0 0 0 10\n1 1\n"), "stop  NO PUEDE RESOLVER CON DENSIDAD NULA \n");
  model.mesh.elements[1].NTYPE = 2;  // a jointed bar
  EXPECT_EQ(endOf("t\n1 1\n0 1 0 0 1 6*0\n"), "stop ELEM. DE RETICUL. CON CARGA DISTRIBUIDA ? -- !NO!\n");
}

bool readCard(Job& job, Model& model, const Kernel& kernel) {
  return readIncrementCard(job, model, kernel);
}
using IncrementCardsTest = SectionTest<readCard>;

TEST_F(IncrementCardsTest, ACardStandsForItsCountOfIncrements) {
  const IncrementCard& card = model.increment;
  read("2 0.5 1.5 1e-7 30 0 3 1 0 2 0 0.25 4 1 1 1 1 0 1 1 5*0 1 8*0 1\n1 0.25 ,,,, 0 2 12*0 16*0\n");
  EXPECT_THAT(card.NOUTP, ElementsAre(0, 3, 1, 0));
  EXPECT_EQ(card.KFRES, 1);
  EXPECT_THAT(card.IPOST3D, ElementsAre(1, 1, 0, 1));
  EXPECT_THAT(card.IIFLAG, ElementsAre(1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 1));

  for (const double DFACT : {0.5, 0.25}) {
    ASSERT_TRUE(readCard(job, model, kernel));
    EXPECT_EQ(card.DFACT, DFACT);
  }
  EXPECT_EQ(card.DTIME, 1.5);  // a null value keeps what the card before said
  EXPECT_THAT(card.NOUTP, ElementsAre(0, 2, 0, 0));

  model.loadStep.IDINA = 1;  // time steps ask nothing of arc-length data
  for (const char* type : {"4", "5"})
    EXPECT_EQ(endOf("1 0.5 1 1e-7 30 0 3 0 0 2 " + std::string(type) + " 0.25 9 9 21*0\n"), "goes on");
}

TEST_F(IncrementCardsTest, TheEndOfTheDeckIsNoFaultAndLeavesTheCardAlone) {
  model.increment.DFACT = 0.75;
  for (const char* rest : {"", "1 0.5 1", "1 0.5 1 1e-7 30 0 3 0 0 1 9*0 15*0\n"}) {
    deck(rest);
    EXPECT_FALSE(readCard(job, model, kernel)) << rest;
    EXPECT_EQ(model.increment.DFACT, 0.75);
    EXPECT_EQ(model.increment.NREPE, 0);
  }
}

TEST_F(IncrementCardsTest, TheHeadStandsOnTheLogOnDemandAndTellsTheLength) {
  const std::string before = written(channel::log);
  model.mesh.elements[1].FRACL = 0.0;
  echoIncrement(job, model);
  EXPECT_THAT(listing(), testing::EndsWith("\n0  CALCULO DE LA LONGITUD CARACTERISTICA COMO DSQRT(TVOLU)\n"));
  EXPECT_EQ(written(channel::log), before);

  model.increment.NOUTP[3] = 1;
  echoIncrement(job, model);
  const std::string head = written(channel::log).substr(before.size());
  EXPECT_EQ(head + head, listing());
}

}  // namespace
}  // namespace zema::test
