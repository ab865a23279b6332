// Increment cards, and where the head of an increment stands.
#include "input/increment_cards.h"

#include "input/input_fixture.h"

namespace zema::test {
namespace {

bool readCard(Job& job, Model& model, const Kernel& kernel) {
  return readIncrementCard(job, model, kernel);
}
using IncrementCardsTest = SectionTest<readCard>;
using testing::ElementsAre;

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
