// The search for the curve card, the cards of the axes, and the force curves.
#include "input/curve_cards.h"

#include "input/input_fixture.h"

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

}  // namespace
}  // namespace zema::test
