// Supports: digit codes, what stays from one load step to the next, and the thermal cards.
#include "input/fixity_cards.h"

#include "input/input_fixture.h"

namespace zema::test {
namespace {

using FixityCardsTest = SectionTest<INPU3>;
using testing::ElementsAre;

/// The flags of a node, as its digits.
std::string flags(const std::vector<int>& all, int node) {
  std::string digits;
  for (int d = 3 * node - 3; d < 3 * node; ++d) digits += std::to_string(all[static_cast<std::size_t>(d)]);
  return digits;
}

TEST_F(FixityCardsTest, ADigitFixesADirectionAndWhatIsLeftOfItSpillsOver) {
  const std::map<std::string, std::string> flagsOfCodes{{"111", "111"}, {"101", "101"}, {"1", "001"},  {"0", "000"},
                                                        {"2", "001"},   {"20", "011"},  {"30", "011"}, {"200", "111"},
                                                        {"120", "111"}, {"102", "101"}, {"99", "011"}, {"1000", "111"},
                                                        {"-11", "000"}, {"100", "100"}, {"010", "010"}};
  for (const auto& [code, expected] : flagsOfCodes) {
    read("1 1\n2 " + code + " 0 0 0\n4.0 " + code + "\n0\n0\n");
    EXPECT_EQ(flags(model.fixities.IFFIXM, 2), expected) << code;
    EXPECT_EQ(flags(model.fixities.IFLIB, 4), expected) << code;
  }
}

TEST_F(FixityCardsTest, ValuesAreStoredForFreeDirectionsToo) {
  read("2 0\n4 101 0.1 -0.2 0.3\n1 111 0 0 0\n0\n0\n");
  EXPECT_THAT(model.fixities.NOFIXM, ElementsAre(4, 1));
  EXPECT_THAT(model.fixities.FIXEMM, ElementsAre(0, 0, 0, 0, 0, 0, 0, 0, 0, 0.1, -0.2, 0.3, 0, 0, 0));
  EXPECT_EQ(model.fixities.IFFIXMbefore, model.fixities.IFFIXM);
}

TEST_F(FixityCardsTest, ReactionsStayWithFixedDirectionsUnlessKloadZeroClearsTheirLoads) {
  for (const int KLOAD : {0, 1}) {
    model.loop.ILOAD = 1;
    model.loadStep.KLOAD = KLOAD;
    read("2 0\n1 111 0 0 0\n2 111 0 0 0\n0\n0\n");
    for (int e = 0; e < 2; ++e) std::ranges::fill(model.vectors.TLOAD(e), 5.0);
    model.fixities.TREACM = {7, 8, 9, 10, 11, 12};
    model.fixities.TREACT = {-7, -8, -9, -10, -11, -12};
    model.loop.ILOAD = 2;
    model.vectors.RLOAD(0, 1)[7] += 1.0;  // direction 2 of node 3
    model.vectors.RLOAD(0, 1)[1] += 1.0;  // direction 2 of node 1, a support

    read("3 0\n5 111 0 0 0\n2 101 0 0 0\n1 111 0 0 0\n0\n0\n");  // releases direction 2 of node 2

    const double cleared = KLOAD == 0 ? 0.0 : 5.0;
    EXPECT_THAT(model.vectors.TLOAD(0).first(12), ElementsAre(5, cleared, 5, 5, cleared, 5, 5, cleared, 5, 5, 5, 5));
    EXPECT_THAT(model.vectors.TLOAD(1), testing::Each(5.0));  // node 2 is held by element 1 first
    EXPECT_THAT(model.fixities.TREACM, ElementsAre(0, 0, 0, 10, 0, 12, 7, KLOAD == 0 ? 0 : 8, 9));
    EXPECT_THAT(model.fixities.TREACT, ElementsAre(0, 0, 0, -10, 0, -12, -7, -8, -9));
    EXPECT_EQ(model.vectors.RLOAD(0, 2)[7], model.vectors.RLOAD(0, 1)[7]);
  }
}

TEST_F(FixityCardsTest, AnElementOfTheThermalFieldNeedsNoSupport) {
  model.mesh.elements[1].NTYPE = 20;
  kernel.dofsOfType20 = 3;
  EXPECT_EQ(endOf("0 0\n0\n0\n"), "goes on");
}

TEST_F(FixityCardsTest, TemperaturesAreCutToIntegers) {
  read("1 0\n1 111 0 0 0\n2\n3 99.9\n1 -20.7\n0\n");

  EXPECT_THAT(model.fixities.FIXEMT, ElementsAre(-20, 0, 99, 0, 0));
  EXPECT_THAT(model.fixities.IFFIXT, ElementsAre(1, 0, 1, 0, 0));
  EXPECT_EQ(model.fixities.IFFIXTbefore, model.fixities.IFFIXT);
}

TEST_F(FixityCardsTest, SidesLoadTheInitialColumnWhereThereIsOne) {
  const std::string side = "1 0\n1 111 0 0 0\n0\n1\n1\n2 3 4\n-0.25\n";  // P = 0.25 x half a layer of 8
  read(side);
  EXPECT_TRUE(model.vectors.initialLoad(0).empty());

  // Nodes (1,0), (0,1), (0,0) of a line of three: at s = 1/4 the functions are -3/32, 15/16, 5/32 and their
  // derivatives -1/4, -1/2, 3/4, so dx = -1/4 and dy = -1/2; the weight is 1/6 and -dy + dx = 1/4.
  model.vectors = ElementVectors(2, 24, true);
  read(side);
  const auto load = model.vectors.initialLoad(0);
  EXPECT_NEAR(load[3], -3.0 / 32.0 / 24.0, 1e-15);
  EXPECT_NEAR(load[6], 15.0 / 16.0 / 24.0, 1e-15);
  EXPECT_NEAR(load[9], 5.0 / 32.0 / 24.0, 1e-15);

  model.vectors.clear();
  read("1 0\n1 111 0 0 0\n0\n1\n1\n4 2 3\n-0.25\n");  // from the last node of four the side goes on at the first
  EXPECT_TRUE(load[9] != 0.0 && load[0] != 0.0 && load[3] != 0.0 && load[6] == 0.0);
}

}  // namespace
}  // namespace zema::test
