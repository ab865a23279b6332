// The cards of simple materials: slots, what is derived from them, the echo, and the refusals.
#include "input/material_cards.h"

#include <gmock/gmock.h>

#include <cmath>

#include "input/input_fixture.h"

namespace zema::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class MaterialCardsTest : public InputTest {
 protected:
  MaterialCardsTest() {
    model.control.NMATS = 1;
    model.mesh.elements = {ElementData{.NTYPE = 6}};
  }
  void read(const std::string& cards) {
    deck(cards + "end of materials\nnext card\n");
    CONSTITUTIVAS(job, model);
  }
  const Material& readOne(const std::string& codes, const std::map<int, double>& slots,
                          const std::string& curves = "0\n0\n0\n") {
    read(materialCards(1, codes, slots, curves));
    return model.materials(1);
  }
};

TEST_F(MaterialCardsTest, EveryRecordFillsItsSlots) {
  std::map<int, double> slots;
  for (int place = 1; place <= 100; ++place) slots[place] = 1000.0 + place;
  for (const int changed : {5, 6, 8, 10, 11, 17, 20}) slots[changed] = 0.0;
  slots[65] = slots[66] = slots[67] = 0.0;  // these stand on cards of their own
  for (int unread = 80; unread <= 92; ++unread) slots[unread] = 0.0;
  slots[35] = 0.0;

  const Material& material = readOne("2 3 0 2 1 1", slots);

  for (int place = 1; place <= 100; ++place) EXPECT_EQ(material(place), slots[place]) << place;
  EXPECT_EQ(material.NCRIT, Criterion::vonMises);
  EXPECT_EQ(material.NCRIP, Criterion::mohrCoulomb);
  EXPECT_EQ(material.NFLUG, Flow::variable);
  EXPECT_EQ(material.NHARD, HardeningVariable::work);
  EXPECT_EQ(material.NMATX, TangentChoice::continuous);
  EXPECT_THAT(material.MAEULER(), ElementsAre(1072.0, 1044.0, 1073.0));
  EXPECT_EQ(job.cards().line("next", 80), "next card");
}

TEST_F(MaterialCardsTest, ReadsTemperatureCurvesAndThePointTable) {
  const Material& material =
      readOne("2 2 8 2 3 1", {{8, 5.0}, {9, 2.0}}, "1.9\n20 100\n0.5\n2\n20 5\n30 4\n0.001 7\n0.002 8\n");

  EXPECT_EQ(material(65), 1.0);
  EXPECT_EQ(material(66), 0.0);
  EXPECT_THAT(material.young.X, ElementsAre(20.0));
  EXPECT_THAT(material.young.Y, ElementsAre(100.0));
  EXPECT_TRUE(material.poisson.X.empty());
  EXPECT_THAT(material.yield.X, ElementsAre(20.0, 30.0));
  EXPECT_THAT(material.yield.Y, ElementsAre(5.0, 4.0));
  EXPECT_THAT(material.stressStrain.X, ElementsAre(0.001, 0.002));
  EXPECT_THAT(material.stressStrain.Y, ElementsAre(7.0, 8.0));
}

TEST_F(MaterialCardsTest, AnglesBecomeRadiansAndConesGetTheirRatios) {
  const Material& material = readOne("4 4 1 2 2 1", {{5, 90.0}, {6, 30.0}, {20, 5.0}, {26, 5.0}});

  EXPECT_DOUBLE_EQ(material(5), std::acos(0.0));
  EXPECT_DOUBLE_EQ(material(6), std::acos(0.0) / 3.0);
  EXPECT_NEAR(material(20), 3.5 / 1.5, 1e-14);  // sin = 1/2: (1/2 + 3) / (3 - 3/2)
  EXPECT_GT(material(26), 1e15);                // sin = 1: no tension at all
}

TEST_F(MaterialCardsTest, WorkHardeningScalesTensionByTheRatioAndSlopesBecomePlastic) {
  // E = 200 from slot 37; 10 x 2 = 20 and 10 x 2 = 20 -> 20 / (1 - 20/200); -200 -> -200 / 2
  const std::map<int, double> slots{{1, 100.0}, {37, 200.0}, {10, 10.0}, {11, 10.0}, {17, -200.0}, {20, 2.0}};
  const Material work = readOne("2 2 8 2 1 1", slots);
  EXPECT_DOUBLE_EQ(work(10), 20.0);
  EXPECT_DOUBLE_EQ(work(11), 20.0 / 0.9);
  EXPECT_DOUBLE_EQ(work(17), -100.0);

  const Material strain = readOne("2 2 8 2 2 1", slots);
  EXPECT_DOUBLE_EQ(strain(10), 10.0);
  EXPECT_DOUBLE_EQ(strain(11), 10.0 / 0.95);

  const Material steep = readOne("2 2 8 2 2 1", {{1, 100.0}, {37, 50.0}, {11, 100.0}});
  EXPECT_DOUBLE_EQ(steep(11), 100.0);  // a slope equal to E stays
}

TEST_F(MaterialCardsTest, CriteriaAndElementTypesChangeTheirSlots) {
  const Material shifted = readOne("2 6 4 2 1 1", {{2, 0.3}, {38, 0.3}, {41, 0.3}, {36, 0.3}, {3, 0.5}});
  EXPECT_EQ(shifted(2) + shifted(38) + shifted(41), 0.0);
  EXPECT_EQ(shifted(36), 0.3);
  EXPECT_EQ(shifted(3), 0.5);

  model.mesh.elements = {ElementData{.NTYPE = 4}};
  EXPECT_EQ(readOne("7 7 4 2 1 1", {{3, 0.5}})(3), 0.0);
  EXPECT_DOUBLE_EQ(readOne("7 7 4 2 1 1", {{30, 50.0}})(30), 5.0);  // over the root of E = 100
  EXPECT_EQ(readOne("7 7 5 2 1 1", {{30, 50.0}})(30), 50.0);
}

TEST_F(MaterialCardsTest, NumbersComeInAnyOrderAndTheLastCardsOfANumberHold) {
  model.control.NMATS = 2;
  read(materialCards(2, "2 2 0 2 1 1", {{7, 7.0}}) + materialCards(1, "2 2 0 2 1 1", {{7, 8.0}}));
  EXPECT_EQ(model.materials(1)(7), 8.0);
  EXPECT_EQ(model.materials(2)(7), 7.0);

  read(materialCards(2, "2 2 0 2 1 1") + materialCards(2, "2 2 0 2 1 1", {{7, 9.0}}));
  EXPECT_FALSE(model.materials(1).given);
  EXPECT_EQ(model.materials(2)(7), 9.0);
}

TEST_F(MaterialCardsTest, AYoungModulusMustBePositive) {
  for (const int place : {1, 37}) {
    const auto stop = [&] { readOne("2 2 0 2 1 1", {{place, 0.0}}); };
    EXPECT_EQ(messageOf<RunEnd>(stop), "** MATERIAL CON MODULO ELASTICO NULO O NEGATIVO  **");
  }
}

TEST_F(MaterialCardsTest, CodesOutOfTheirTablesAreFaults) {
  const auto fault = [this](const std::string& codes) { return messageOf<InputFault>([&] { readOne(codes, {}); }); };
  EXPECT_THAT(fault("9 2 1 2 1 1"), HasSubstr("field NCRIT: found 9"));
  EXPECT_THAT(fault("2 -1 1 2 1 1"), HasSubstr("field NCRIP: found -1"));
  EXPECT_THAT(fault("2 2 20 2 1 1"), HasSubstr("field NTINT: found 20"));
  EXPECT_THAT(fault("2 2 1 3 1 1"), HasSubstr("field NFLUG: found 3"));
  EXPECT_THAT(fault("2 2 1 2 5 1"), HasSubstr("field NHARD: found 5"));
  EXPECT_THAT(fault("2 2 1 2 1 4"), HasSubstr("field NMATX: found 4"));
  EXPECT_EQ(fault("2 2 1 2 4 1"), "");
}

TEST_F(MaterialCardsTest, ACodeThatTheLawDoesNotLookAtMayBeZero) {
  const auto fault = [this](const std::string& codes) { return messageOf<InputFault>([&] { readOne(codes, {}); }); };
  EXPECT_EQ(fault("0 0 0 0 0 0"), "");
  EXPECT_EQ(fault("0 0 6 0 0 0"), "");
  EXPECT_EQ(fault("2 0 4 0 0 0"), "");
  EXPECT_THAT(fault("0 0 4 0 0 0"), HasSubstr("field NCRIT: found 0"));
  EXPECT_THAT(fault("2 0 8 2 1 1"), HasSubstr("field NCRIP: found 0"));
  EXPECT_THAT(fault("2 2 8 0 1 1"), HasSubstr("field NFLUG: found 0"));
  EXPECT_THAT(fault("2 2 8 2 0 1"), HasSubstr("field NHARD: found 0"));
  EXPECT_THAT(fault("2 2 8 2 1 0"), HasSubstr("field NMATX: found 0"));
}

TEST_F(MaterialCardsTest, CountsOfPointsMustBeCounts) {
  EXPECT_THAT(messageOf<InputFault>([this] { readOne("2 2 0 2 1 1", {}, "-1\n"); }), HasSubstr("field slot 65: found"));
  EXPECT_THAT(messageOf<InputFault>([this] { readOne("2 2 0 2 1 1", {}, "1e30\n"); }), HasSubstr("field slot 65"));
}

TEST_F(MaterialCardsTest, TemperaturesOfACurveMustAscend) {
  for (const std::string second : {"20", "19"})
    EXPECT_THAT(messageOf<InputFault>([&] { readOne("2 2 0 2 1 1", {}, "0\n3\n20 1\n" + second + " 1\n30 1\n0\n"); }),
                HasSubstr("line 13, Poisson-temperature curve card, field abscissa: found " + second + ".0" +
                          ", expected a temperature above that of the card before"));
}

TEST_F(MaterialCardsTest, EchoesHeadAndSelection) {
  readOne("3 5 8 1 1 2", {{2, 0.25}, {7, -30.0}});

  EXPECT_TRUE(
      listed("\n\n       MATERIAL PROPERTIES DEFINITION :\n      -------------------------------\n\n\n"
             "\n      MATERIAL NUMBER:    1\n      ---------------------\n"
             "      YIELD FUNCTION..............................:  MOHR-COULOMB\n"
             "      POTENTIAL FUNCTION..........................:  LUBLINER-OLLER\n"
             "      INTEGRATION ALGORITHM.......................:  BACK. EURLER\n"
             "      FLOW TYPE...................................:  CONSTANT\n"
             "      INTERNAL VARIABLE...........................:  WORK\n"
             "      CONSTITUTIVE MATRIX.........................:  ALGORITHMIC\n"
             "      YOUNG MODULUS FOR OTHOTROPY.................:   0.10000E+03 (ExxO)\n"
             "      POISSON COEFICIENT FOR ORTHOTROPY...........:   0.25000E+00 (NUxyO)\n"
             "      THICKNESS PLAIN STRESS......................:   0.00000E+00\n"
             "      DENSITY.....................................:   0.00000E+00\n"
             "      DILATANCY ANGLE.............................:   0.00000E+00\n"
             "      INTERNAL FRICTION...........................:   0.00000E+00\n"
             "      YIELD STRESS (COMPRESION)...................:  -0.30000E+02"));
  EXPECT_THAT(listing(), HasSubstr("DATA FOR LUBLINER-OLLER YIELD CRITERIA"));
  EXPECT_THAT(listing(), HasSubstr("DATA FOR LUBLINER-OLLER POTENTIAL CRITERIA"));
  EXPECT_THAT(listing(), Not(HasSubstr("DAMAGE MODEL")));
  EXPECT_THAT(listing(), Not(HasSubstr("VISCOELASTIC MODEL")));
}

TEST_F(MaterialCardsTest, EchoesTheHardeningCurvesByCodeAndVariable) {
  readOne("2 2 8 1 1 2", {{8, 2}, {9, 0.5}, {10, 3}, {13, 1}, {14, 4}, {17, 8}, {18, 1}, {19, 2}});
  EXPECT_TRUE(
      listed("\n      HARDENING TENSION\n\n"
             "      CURVE TYPE..................................:  EXP. W/MAX.\n"
             "      NORMALIZED PLASTIC DISIPATION...............:   0.50000E+00\n"
             "      YIELD STRESS (PEAK VALUE)...................:   0.30000E+01\n"
             "      FRACTURE ENERGY.............................:   0.10000E+01\n"
             "\n      HARDENING COMPRESION\n\n"
             "      CURVE TYPE..................................:  STRAIGHT\n"
             "      SLOPE STRAIGHT CURVE........................:   0.86957E+01\n"
             "      FRACTURE ENERGY.............................:   0.20000E+01\n"
             "      RELATION BETWEEN TENSION-COMPRESION.........:   0.00000E+00\n"
             "      INTERNAL FRICTION...........................:  CONSTANT\n"
             "      INTERNAL DILATANCE..........................:  CONSTANT"));

  readOne("2 2 8 1 2 2", {{8, 1}, {10, 3}, {13, 1}, {19, 1}, {21, 1}, {22, 2}});
  EXPECT_TRUE(
      listed("      CURVE TYPE..................................:  STRAIGHT\n"
             "      Q EXPONENT..................................:   0.30000E+01\n"
             "      SLOPE CURVE STRAIGHT CURVE (AUTOMATIC)......:  \n"
             "      FRACTURE ENERGY.............................:   0.10000E+01"));
  EXPECT_TRUE(
      listed("      INTERNAL FRICTION...........................:  VARIABLE\n"
             "      INTERNAL DILATANCE..........................:  "));
}

TEST_F(MaterialCardsTest, EchoesTheBlocksOfDamageAnisotropyAndViscosity) {
  readOne("2 2 5 1 1 2", {{30, 2}, {31, 3}, {44, 45}, {72, 10}, {48, 4}, {70, 5}});
  EXPECT_TRUE(
      listed("\n      DAMAGE MODEL\n\n"
             "      DAMAGE STRESS...............................:   0.20000E+01\n"
             "      RELATION BETWEEN TENSION-COMPRESION.........:   0.30000E+01\n"
             "\n      ANISOTROPY DATA\n"));
  EXPECT_TRUE(
      listed("      ANGLE BETWEEN LOCAL AND GLOBAL X AXES.......:   0.45000E+02 (ROTATION ABOUT Z)\n"
             "      ANGLE BETWEEN LOCAL AND GLOBAL X AXES.......:   0.10000E+02 (ROTATION ABOUT Y)\n"
             "      ANGLE BETWEEN LOCAL AND GLOBAL X AXES.......:   0.00000E+00 (ROTATION ABOUT X)\n"
             "\n      COMPRESION RELATION BETWEEN ISOTROPYC AND REAL SPACE\n\n"
             "      XX DIRECTION................................:   0.00000E+00\n"
             "      YY DIRECTION................................:   0.00000E+00\n"
             "      XY DIRECTION................................:   0.00000E+00\n"
             "      ZZ DIRECTION................................:   0.40000E+01\n"
             "      XZ DIRECTION................................:   0.50000E+01\n"
             "      YZ DIRECTION................................:   0.00000E+00"));

  readOne("0 0 6 0 0 0", {{49, 600}, {50, 10}});
  EXPECT_TRUE(
      listed("      YIELD FUNCTION..............................:  \n"
             "      POTENTIAL FUNCTION..........................:  \n"
             "      INTEGRATION ALGORITHM.......................:  VISCOELASTIC"));
  EXPECT_TRUE(
      listed("\n      VISCOELASTIC MODEL\n\n"
             "      YOUNG MODULUS OF PARALEL SPRING.............:   0.60000E+03\n"
             "      TIME........................................:   0.10000E+02"));
}

}  // namespace
}  // namespace zema::test
