// The cards of simple materials: slots, codes, and what is derived from them.
#include "input/material_cards.h"

#include <cmath>

#include "input/input_fixture.h"

namespace zema::test {
namespace {

using testing::ElementsAre, testing::HasSubstr;

class MaterialCardsTest : public SectionTest<[](Job& job, Model& model, const Kernel&) { CONSTITUTIVAS(job, model); }> {
 protected:
  MaterialCardsTest() { model.control.NMATS = 1; }
  Material readOne(const std::string& codes, const Slots& slots, const std::string& curves = "0\n0\n0\n") {
    read(materialCards(1, codes, slots, curves) + "end of materials\nnext card\n");
    return model.materials(1);
  }
};

TEST_F(MaterialCardsTest, EveryRecordFillsItsSlots) {
  Slots slots(100);
  for (int place = 1; place <= 100; ++place) slots[static_cast<std::size_t>(place - 1)] = {place, 1000.0 + place};
  // What other values follow from, slots that no card fills, and the counts of points.
  for (const int zero : {5, 6, 8, 10, 11, 17, 20, 35, 65, 66, 67})
    slots[static_cast<std::size_t>(zero - 1)].second = 0.0;
  for (std::size_t i = 79; i < 92; ++i) slots[i].second = 0.0;

  const Material material = readOne("2 3 0 2 1 1", slots);

  for (const auto& [place, value] : slots) EXPECT_EQ(material(place), value) << place;
  EXPECT_EQ(material.NCRIT, Criterion::vonMises);
  EXPECT_EQ(material.NCRIP, Criterion::mohrCoulomb);
  EXPECT_EQ(material.NFLUG, Flow::variable);
  EXPECT_EQ(material.NHARD, HardeningVariable::work);
  EXPECT_EQ(material.NMATX, TangentChoice::continuous);
  EXPECT_THAT(material.MAEULER(), ElementsAre(1072.0, 1044.0, 1073.0));
  EXPECT_EQ(job.cards().line("next", 80), "next card");
}

TEST_F(MaterialCardsTest, ReadsTemperatureCurvesAndThePointTable) {
  const Material material =
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

TEST_F(MaterialCardsTest, CodesDeriveSlots) {
  const Material cones = readOne("4 4 1 2 2 1", {{5, 90.0}, {6, 30.0}, {20, 5.0}, {26, 5.0}});
  EXPECT_DOUBLE_EQ(cones(5), std::acos(0.0));
  EXPECT_DOUBLE_EQ(cones(6), std::acos(0.0) / 3.0);
  EXPECT_NEAR(cones(20), 3.5 / 1.5, 1e-14);  // sin = 1/2: (1/2 + 3) / (3 - 3/2)
  EXPECT_GT(cones(26), 1e15);                // sin = 1: no tension at all

  // E = 200 from slot 37; 10 x 2 = 20 and 10 x 2 = 20 -> 20 / (1 - 20/200); -200 -> -200 / 2
  const Slots slots{{1, 100.0}, {37, 200.0}, {10, 10.0}, {11, 10.0}, {17, -200.0}, {20, 2.0}};
  const Material work = readOne("2 2 8 2 1 1", slots);
  EXPECT_DOUBLE_EQ(work(10), 20.0);
  EXPECT_DOUBLE_EQ(work(11), 20.0 / 0.9);
  EXPECT_DOUBLE_EQ(work(17), -100.0);
  const Material strain = readOne("2 2 8 2 2 1", slots);
  EXPECT_DOUBLE_EQ(strain(10), 10.0);
  EXPECT_DOUBLE_EQ(strain(11), 10.0 / 0.95);
  EXPECT_DOUBLE_EQ(readOne("2 2 8 2 2 1", {{11, 100.0}})(11), 100.0);  // a slope equal to E stays

  const Material shifted = readOne("2 6 4 2 1 1", {{2, 0.3}, {38, 0.3}, {41, 0.3}, {36, 0.3}, {3, 0.5}});
  EXPECT_EQ(shifted(2) + shifted(38) + shifted(41), 0.0);
  EXPECT_EQ(shifted(36), 0.3);
  EXPECT_EQ(shifted(3), 0.5);
  EXPECT_DOUBLE_EQ(readOne("7 7 4 2 1 1", {{30, 50.0}})(30), 5.0);  // over the root of E = 100
  EXPECT_EQ(readOne("7 7 5 2 1 1", {{30, 50.0}})(30), 50.0);
  model.mesh.elements.back().NTYPE = 4;
  EXPECT_EQ(readOne("7 7 4 2 1 1", {{3, 0.5}})(3), 0.0);
}

TEST_F(MaterialCardsTest, NumbersComeInAnyOrderAndTheLastCardsOfANumberHold) {
  model.control.NMATS = 2;
  const std::string second = materialCards(2, "2 2 0 2 1 1", {{7, 7.0}});
  read(second + materialCards(1, "2 2 0 2 1 1", {{7, 8.0}}) + "end\n");
  EXPECT_EQ(model.materials(1)(7), 8.0);
  EXPECT_EQ(model.materials(2)(7), 7.0);

  read(second + materialCards(2, "2 2 0 2 1 1", {{7, 9.0}}) + "end\n");
  EXPECT_FALSE(model.materials(1).given);
  EXPECT_EQ(model.materials(2)(7), 9.0);
}

TEST_F(MaterialCardsTest, CodesOutOfTheirTablesAreFaults) {
  const std::map<std::string, std::string> faults{
      {"9 2 1 2 1 1", "NCRIT: found 9"}, {"2 -1 1 2 1 1", "NCRIP: found -1"}, {"2 2 20 2 1 1", "NTINT: found 20"},
      {"2 2 1 3 1 1", "NFLUG: found 3"}, {"2 2 1 2 5 1", "NHARD: found 5"},   {"2 2 1 2 1 4", "NMATX: found 4"},
      {"0 0 4 0 0 0", "NCRIT: found 0"}, {"2 0 8 2 1 1", "NCRIP: found 0"},   {"2 2 8 0 1 1", "NFLUG: found 0"},
      {"2 2 8 2 0 1", "NHARD: found 0"}, {"2 2 8 2 1 0", "NMATX: found 0"}};
  for (const auto& [codes, found] : faults) EXPECT_THAT(endOf(materialCards(1, codes) + "end\n"), HasSubstr(found));
  // 0 may stand where the law does not look at the code.
  for (const std::string codes : {"0 0 0 0 0 0", "0 0 6 0 0 0", "2 0 4 0 0 0", "2 2 1 2 4 1"})
    EXPECT_EQ(endOf(materialCards(1, codes) + "end\n"), "goes on") << codes;
}

}  // namespace
}  // namespace zema::test
