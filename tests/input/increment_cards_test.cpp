// Increment cards and the head of an increment.
#include "input/increment_cards.h"

#include <gmock/gmock.h>

#include "input/input_fixture.h"

namespace zema::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

const std::string card = "2 0.5 1.5 1e-7 30 0 3 1 0 2 0 0.25 4 1 1 1 1 0 1 ";
const std::string flags = "1 0 0 0 0 0 1 0 0 0 0 0 0 0 0 1\n";

class IncrementCardsTest : public InputTest {
 protected:
  IncrementCardsTest() { model.mesh.elements = {ElementData{.NTYPE = 6}}; }
};

TEST_F(IncrementCardsTest, ACardStandsForItsCountOfIncrements) {
  deck(card + flags + "1 0.25 ,,,, 0 2 12*0 16*0\n");

  ASSERT_TRUE(readIncrementCard(job, model, kernel));
  const IncrementCard& increment = model.increment;
  EXPECT_EQ(increment.NREPE, 1);
  EXPECT_EQ(increment.DFACT, 0.5);
  EXPECT_EQ(increment.DTIME, 1.5);
  EXPECT_EQ(increment.TOLER, 1e-7);
  EXPECT_EQ(increment.MITER, 30);
  EXPECT_THAT(increment.NOUTP, ElementsAre(0, 3, 1, 0));
  EXPECT_EQ(increment.KALGO, 2);
  EXPECT_EQ(increment.ARCLN, 0.25);
  EXPECT_EQ(increment.NODAR, 4);
  EXPECT_EQ(increment.IDOFA, 1);
  EXPECT_EQ(increment.KFRES, 1);
  EXPECT_THAT(increment.IPOST3D, ElementsAre(1, 1, 0, 1));
  EXPECT_EQ(increment.IIFLAG[0] + increment.IIFLAG[6] + increment.IIFLAG[15], 3);

  ASSERT_TRUE(readIncrementCard(job, model, kernel));
  EXPECT_EQ(increment.NREPE, 0);
  EXPECT_EQ(increment.DFACT, 0.5);

  ASSERT_TRUE(readIncrementCard(job, model, kernel));
  EXPECT_EQ(increment.DFACT, 0.25);
  EXPECT_EQ(increment.DTIME, 1.5);  // a null value keeps what the card before said
  EXPECT_EQ(increment.MITER, 30);
  EXPECT_EQ(increment.NOUTP[1], 2);
}

TEST_F(IncrementCardsTest, TheEndOfTheDeckIsNoFaultAndLeavesTheCardAlone) {
  model.increment.DFACT = 0.75;
  for (const std::string& rest : {std::string(), std::string("1 0.5 1"), card}) {
    deck(rest);

    EXPECT_FALSE(readIncrementCard(job, model, kernel)) << rest;

    EXPECT_EQ(model.increment.DFACT, 0.75);
    EXPECT_EQ(model.increment.NREPE, 0);
  }
}

TEST_F(IncrementCardsTest, LargeStrainsRefuseTheInitialStiffness) {
  const std::string initialStiffness = "1 0.5 1 1e-7 30 0 3 0 0 1 0 0 0 0 0 4*0 " + flags;
  deck(initialStiffness);
  EXPECT_TRUE(readIncrementCard(job, model, kernel));

  model.control.LARGE = 1;
  deck(initialStiffness);
  EXPECT_EQ(messageOf<RunEnd>([this] { static_cast<void>(readIncrementCard(job, model, kernel)); }),
            ">>>> ERROR EN GRANDES DEF. UTILIZAR NEWTON-RAPHSON");
}

TEST_F(IncrementCardsTest, WhatCannotBeDoneIsAFault) {
  deck("1 0.5 1 1e-7 30 0 3 0 0 2 4 0 0 0 0 4*0 " + flags);
  EXPECT_THAT(messageOf<InputFault>([this] { static_cast<void>(readIncrementCard(job, model, kernel)); }),
              HasSubstr("field KARCL: found 4, expected 0: arc-length control is not in this build yet"));
}

TEST_F(IncrementCardsTest, EchoesTheHeadOfAnIncrement) {
  deck(card + flags);
  ASSERT_TRUE(readIncrementCard(job, model, kernel));
  model.loop.TTIME = 1.5;
  model.loop.INCRE = 12;
  model.working.FACTO = 2.5;
  model.control.LARGE = 1;

  echoIncrement(job, model);

  EXPECT_EQ(listing(), std::string(80, '=') +
                           "\n0  NUMERO DE CARGA    1  TIEMPO REAL  CALCULO ******  NUMERO DE INCREMENTO   12\n"
                           "0  FACTOR DE CARGA       =.25000E+01\n"
                           "  TOLERANCIA            =.10000E-06    MAX. Nr. ITERACIONES  =   30\n"
                           "  COD. SALIDA INICIAL   =    0    COD. DE SALIDA FINAL  =    3\n"
                           "  ALGORITMO DE SOLUCION =    2    TIPO DE ARC-LENGTH    =    0\n"
                           "  LONGITUD DE ARCO      =      0.250000    NODO y GRAD. DE LIB   =   4,    1\n"
                           "  POST-PROC EN FEMVIEW  =    0    LARGE =    1    ISIME =    0   IDINA =    0\n"
                           "0  CALCULO DE LA LONGITUD CARACTERISTICA COMO DSQRT(TVOLU)\n");
  EXPECT_EQ(written(channel::log), "");
}

TEST_F(IncrementCardsTest, TheLogRepeatsTheHeadOnDemand) {
  model.mesh.elements[0].FRACL = 0.5;
  model.increment.NOUTP[3] = 1;

  echoIncrement(job, model);

  EXPECT_EQ(written(channel::log), listing());
  EXPECT_THAT(listing(), HasSubstr("\n0  LONGITUD CARACTERISTICA IMPUESTA= .50000E+00\n"));
}

}  // namespace
}  // namespace zema::test
