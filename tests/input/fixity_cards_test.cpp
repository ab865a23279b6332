// Supports: digit codes, what stays from one load step to the next, checks, and the thermal cards.
#include "input/fixity_cards.h"

#include <gmock/gmock.h>

#include "input/input_fixture.h"

namespace zema::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class FixityCardsTest : public InputTest {
 protected:
  FixityCardsTest() { useTwoTetrahedra(); }
  void read(const std::string& cards, const std::string& thermal = "0\n0\n") {
    deck(cards + thermal + "1 1.0 of an increment card\n");
    INPU3(job, model, kernel);
  }
  std::string fault(const std::string& cards, const std::string& thermal = "0\n0\n") {
    return messageOf<InputFault>([&] { read(cards, thermal); });
  }
  std::string runEnd(const std::string& cards, const std::string& thermal = "0\n0\n") {
    return messageOf<RunEnd>([&] { read(cards, thermal); });
  }
  /// The flags of a node, as its digits.
  [[nodiscard]] static std::string flags(const std::vector<int>& all, int node) {
    std::string digits;
    for (int d = 0; d < 3; ++d) digits += std::to_string(all[static_cast<std::size_t>(3 * (node - 1) + d)]);
    return digits;
  }
  void setTotalLoads(double value) {
    for (int e = 0; e < 2; ++e) std::ranges::fill(model.vectors.TLOAD(e), value);
  }
};

TEST_F(FixityCardsTest, ADigitFixesADirectionAndWhatIsLeftOfItSpillsOver) {
  const std::map<std::string, std::string> flagsOfCodes{{"111", "111"}, {"101", "101"}, {"1", "001"},  {"0", "000"},
                                                        {"2", "001"},   {"20", "011"},  {"30", "011"}, {"200", "111"},
                                                        {"120", "111"}, {"102", "101"}, {"99", "011"}, {"1000", "111"},
                                                        {"-11", "000"}, {"100", "100"}, {"010", "010"}};
  for (const auto& [code, expected] : flagsOfCodes) {
    read("1 0\n2 " + code + " 0 0 0\n");

    EXPECT_EQ(flags(model.fixities.IFFIXM, 2), expected) << code;
  }
}

TEST_F(FixityCardsTest, ValuesAreStoredForFreeDirectionsTooAndEchoed) {
  read("2 1\n4 101 0.1 -0.2 0.3\n1 111 0 0 0\n5 11\n");

  EXPECT_THAT(model.fixities.NOFIXM, ElementsAre(4, 1));
  EXPECT_EQ(model.fixities.FIXEMM[9], 0.1);
  EXPECT_EQ(model.fixities.FIXEMM[10], -0.2);
  EXPECT_EQ(flags(model.fixities.IFFIXM, 1), "111");
  EXPECT_EQ(flags(model.fixities.IFLIB, 5), "011");
  EXPECT_EQ(model.fixities.IFFIXMbefore, model.fixities.IFFIXM);
  EXPECT_EQ(model.fixities.TREACM.size(), 6U);
  // Ten columns do not hold six digits and an exponent.
  EXPECT_TRUE(
      listed("          ECHO OF FIXITY DATA FOLLOWS :\n          ===========================\n\n"
             "      NODE      CODE              FIXED VALUES\n"
             "         4        101     ******************************\n"
             "         1        111     ******************************\n"
             " NODE      COD. FREE \n    5             11"));
}

TEST_F(FixityCardsTest, FrequencyRecordsTakeTheFixitiesOfTheFirstLoadStep) {
  job.channels.open(channel::frequencies);
  read("1 0\n1 111 0 0 0\n");
  model.loop.ILOAD = 2;
  read("1 0\n2 111 0 0 0\n");

  EXPECT_EQ(written(channel::frequencies), " 1\n         1        111     ******************************\n");
}

TEST_F(FixityCardsTest, DirectionsThatStayFixedKeepTheirReactions) {
  read("2 0\n1 111 0 0 0\n2 111 0 0 0\n");
  model.fixities.TREACM = {1, 2, 3, 4, 5, 6};
  model.fixities.TREACT = {-1, -2, -3, -4, -5, -6};
  model.loop.ILOAD = 2;

  model.loadStep.KLOAD = 1;
  read("3 0\n5 111 0 0 0\n2 101 0 0 0\n4 111 0 0 0\n");

  EXPECT_THAT(model.fixities.TREACM, ElementsAre(0, 0, 0, 4, 0, 6, 0, 0, 0));
  EXPECT_THAT(model.fixities.TREACT, ElementsAre(0, 0, 0, -4, 0, -6, 0, 0, 0));
}

TEST_F(FixityCardsTest, AReleasedDirectionStartsAgainFromZeroWhereItsReactionStood) {
  for (const int KLOAD : {0, 1}) {
    model.loop.ILOAD = 1;
    model.loadStep.KLOAD = KLOAD;
    read("2 0\n1 111 0 0 0\n2 111 0 0 0\n");
    setTotalLoads(5.0);
    model.loop.ILOAD = 2;

    read("2 0\n1 111 0 0 0\n2 101 0 0 0\n");

    // Direction 2 of node 2: second node of element 1, first of element 2.
    EXPECT_EQ(model.vectors.TLOAD(0)[4], KLOAD == 0 ? 0.0 : 5.0);
    EXPECT_EQ(model.vectors.TLOAD(1)[1], 5.0);
    EXPECT_EQ(model.vectors.TLOAD(0)[3], 5.0);
    EXPECT_EQ(model.vectors.TLOAD(0)[0], 5.0);
  }
}

TEST_F(FixityCardsTest, ALoadThatChangesClearsTheTotalLoadOnlyWithKloadZero) {
  for (const int KLOAD : {0, 1}) {
    model.loop.ILOAD = 1;
    model.loadStep.KLOAD = KLOAD;
    model.vectors.RLOAD(0, 1)[7] = 1.0;
    read("1 0\n1 111 0 0 0\n");
    EXPECT_EQ(model.vectors.RLOAD(0, 2)[7], 1.0);
    setTotalLoads(5.0);
    model.fixities.TREACM = {7, 8, 9};
    model.loop.ILOAD = 2;
    model.vectors.RLOAD(0, 1)[7] = 2.0;
    model.vectors.RLOAD(0, 1)[1] += 1.0;  // on a support, whose reaction goes with the cleared load

    read("1 0\n1 111 0 0 0\n");

    EXPECT_EQ(model.fixities.TREACM[1], KLOAD == 0 ? 0.0 : 8.0);
    EXPECT_EQ(model.fixities.TREACM[0], 7.0);

    EXPECT_EQ(model.vectors.TLOAD(0)[7], KLOAD == 0 ? 0.0 : 5.0);
    EXPECT_EQ(model.vectors.TLOAD(0)[8], 5.0);
    EXPECT_EQ(model.vectors.RLOAD(0, 2)[7], 2.0);
  }
}

TEST_F(FixityCardsTest, TheCheckCountsBadNodesAndDoubleCards) {
  EXPECT_EQ(runEnd("5 0\n1 111 0 0 0\n1 111 0 0 0\n1 111 0 0 0\n6 111 0 0 0\n-2 111 0 0 0\n"),
            "  >>>> DETENIDO EN LA RUTINA CHECK3");

  EXPECT_TRUE(
      listed(" *** DIAGNOSTIGO DE CHECK3, ERROR 23      ASOCIADO CON EL NUMERO    2\n"
             " *** DIAGNOSTIGO DE CHECK3, ERROR 25      ASOCIADO CON EL NUMERO    3\n"
             "\n\n SIGUE LA LISTA DE TARJETAS POST-ERROR \n\n                    0" +
             std::string(79, ' ')));
}

TEST_F(FixityCardsTest, ALoadStepMustHoldItsSolidsAndNotTooOften) {
  for (const std::string count : {"0", "-3"}) {
    EXPECT_EQ(runEnd(count + " 0\n"), "  >>>> DETENIDO EN LA RUTINA CHECK3");
    EXPECT_TRUE(listed(" *** DIAGNOSTIGO DE CHECK3, ERROR 21      ASOCIADO CON EL NUMERO    1"));
  }
  EXPECT_EQ(runEnd("16 0\n"), "  >>>> DETENIDO EN LA RUTINA INPU2 ");
  EXPECT_THAT(listing(), HasSubstr("*** DIAG. DE INPU2, NUMERO DE RESTRICCIONES > NPOIN*MDOFN"));
  model.mesh.elements[1].NTYPE = 20;
  kernel.dofsOfType20 = 3;
  EXPECT_EQ(runEnd("0 0\n"), "");
}

TEST_F(FixityCardsTest, BadNumbersAreFaults) {
  EXPECT_THAT(fault("1 1\n1 111 0 0 0\n6.0 111\n"), HasSubstr("free code card, field node number: found 6"));
  const std::string held = "1 0\n1 111 0 0 0\n";
  EXPECT_EQ(runEnd(held, "-1\n"), "  >>>> DETENIDO EN LA RUTINA CHECKT");
  EXPECT_THAT(fault(held, "1\n1 1e10\n0\n"), HasSubstr("field temperature: found"));
  EXPECT_THAT(fault(held, "0\n-1\n"), HasSubstr("field NSIDE: found -1"));
  EXPECT_THAT(fault(held, "0\n1\n3\n"), HasSubstr("field element number: found 3"));
  EXPECT_THAT(fault(held, "0\n1\n1\n5 1 2\n"), HasSubstr("found 5, expected a node of element 1"));
}

TEST_F(FixityCardsTest, TemperaturesAreCutToIntegers) {
  read("1 0\n1 111 0 0 0\n", "2\n3 99.9\n1 -20.7\n0\n");

  EXPECT_THAT(model.fixities.FIXEMT, ElementsAre(-20, 0, 99, 0, 0));
  EXPECT_THAT(model.fixities.IFFIXT, ElementsAre(1, 0, 1, 0, 0));
  EXPECT_EQ(model.fixities.IFFIXTbefore, model.fixities.IFFIXT);
  EXPECT_THAT(model.fixities.NOFIXT, ElementsAre(3, 1));
  EXPECT_TRUE(listed("    3     **********\n    1     **********"));

  EXPECT_EQ(runEnd("1 0\n1 111 0 0 0\n", "2\n6 1\n6 1\n"), "  >>>> DETENIDO EN LA RUTINA CHECKT");
  EXPECT_TRUE(
      listed(" *** DIAGNOSTIGO DE CHECKT, ERROR 23      ASOCIADO CON EL NUMERO    2\n"
             " *** DIAGNOSTIGO DE CHECKT, ERROR 25      ASOCIADO CON EL NUMERO    1"));
}

TEST_F(FixityCardsTest, SidesLoadTheInitialColumnWhereThereIsOne) {
  const std::string held = "1 0\n1 111 0 0 0\n";
  const std::string side = "0\n1\n1\n2 3 4\n-0.25\n";
  read(held, side);
  EXPECT_TRUE(model.vectors.initialLoad(0).empty());
  EXPECT_TRUE(listed(" 0.100E+01 0.100E+01\n 0.100E+01"));  // 0.25 x half a layer of 8

  model.vectors = ElementVectors(2, 24, true);
  read(held, side);
  // Nodes (1,0), (0,1), (0,0) of a line of three: at s = 1/4 the functions are -3/32, 15/16, 5/32 and their
  // derivatives -1/4, -1/2, 3/4, so dx = -1/4 and dy = -1/2; the weight is 1/6 and -dy + dx = 1/4.
  const auto load = model.vectors.initialLoad(0);
  EXPECT_NEAR(load[3], -3.0 / 32.0 / 24.0, 1e-15);
  EXPECT_NEAR(load[6], 15.0 / 16.0 / 24.0, 1e-15);
  EXPECT_NEAR(load[9], 5.0 / 32.0 / 24.0, 1e-15);

  EXPECT_EQ(runEnd(held, "0\n16\n"), "  >>>> DETENIDO EN LA RUTINA INPU2T ");
  EXPECT_THAT(listing(), HasSubstr("*** DIAG. DE INPU2T, MAXIMO NUMERO DE RESTR. CONV/RAD SUPERADO"));
}

TEST_F(FixityCardsTest, ASideGoesOnAtTheFirstNodeOfTheElement) {
  model.vectors = ElementVectors(2, 24, true);

  read("1 0\n1 111 0 0 0\n", "0\n1\n1\n4 2 3\n-0.25\n");

  // First node at place 4 of 4, the others at places 1 and 2.
  const auto load = model.vectors.initialLoad(0);
  EXPECT_NE(load[9], 0.0);
  EXPECT_NE(load[0], 0.0);
  EXPECT_NE(load[3], 0.0);
  EXPECT_EQ(load[6], 0.0);
}

}  // namespace
}  // namespace zema::test
