// The search for the curve card, the cards of the axes, and the force curves.
#include "input/curve_cards.h"

#include <gmock/gmock.h>

#include "input/input_fixture.h"

namespace zema::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class CurveCardsTest : public InputTest {
 protected:
  CurveCardsTest() { useTwoTetrahedra(); }
  void read(const std::string& cards) {
    deck(cards);
    INPCU(job, model, kernel);
  }
};

TEST_F(CurveCardsTest, EveryKeywordHasItsCountOfValues) {
  read(
      "CURV,    5\n"
      "reaction-time curve, cut\nX-IINCS rest\n'Y-TREAC of a node'\n3 2 left\n"
      "b\nX-DISPL\n1 2 3\nY-RCTOT\n1\n"
      "c\nX-TEMPE\n5\nY-STRES\n1 1 3 1 1\n"
      "d\nX\n1 2 3 4 5\nY-OTHER\n6 7 8 9 10\n"
      "e\nX-IINCS\nY-IINCS\n");

  ASSERT_EQ(model.curves.size(), 5U);
  EXPECT_EQ(model.curves[0].title, "reaction-time cu");
  EXPECT_EQ(model.curves[0].xWord, "X-IINCS");
  EXPECT_EQ(model.curves[0].yWord, "Y-TREAC of a node");
  EXPECT_THAT(model.curves[0].KDATS, ElementsAre(0, 0, 0, 0, 0, 3, 2, 0, 0, 0));
  EXPECT_THAT(model.curves[1].KDATS, ElementsAre(1, 2, 3, 0, 0, 1, 0, 0, 0, 0));
  EXPECT_THAT(model.curves[2].KDATS, ElementsAre(5, 0, 0, 0, 0, 1, 1, 3, 1, 1));
  EXPECT_THAT(model.curves[3].KDATS, ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9, 10));
}

TEST_F(CurveCardsTest, AForceIsFoundInTheVectorOfItsElement) {
  // Node 4 is the third of element 2, and the fourth of element 1.
  read("CURV,    1\nforces\nX-FORCE\n2 1 4\nY-FORCE\n1 3 4\n");

  EXPECT_THAT(model.curves[0].KDATS, ElementsAre(2, 7, 4, 0, 0, 1, 12, 4, 0, 0));
  EXPECT_EQ(messageOf<RunEnd>([this] { read("CURV,    1\nforces\nX-IINCS\nY-FORCE\n2 1 1\n"); }),
            "** EL PUNTO NO PERTENECE AL ELEMENTO **");
}

TEST_F(CurveCardsTest, AGaussPositionMustBeOneOfTheElement) {
  try {
    read("CURV,    1\nt\nX-IINCS\nY-EHIST\n1 2 1 0 0\n");
    FAIL() << "a tetrahedron of one point was given a second one";
  } catch (const RunEnd& stop) {
    EXPECT_STREQ(stop.what(), "** EL PUNTO NO PERTENECE AL ELEMENTO **");
    EXPECT_EQ(stop.A(), 2.0);
    EXPECT_EQ(stop.B(), 1.0);
  }
}

TEST_F(CurveCardsTest, TheCardMustBeAmongTheFirstLinesAndInItsColumns) {
  const auto padding = [](int lines) {
    std::string text;
    for (int i = 0; i < lines; ++i) text += "a line, CURV,    9\n";
    return text;
  };
  const std::string notFound = " >>>>  ERROR !!!. No encuentro: CURV";

  read(padding(100) + "CURV,  + 0 behind\n");
  EXPECT_TRUE(model.curves.empty());
  EXPECT_EQ(messageOf<RunEnd>([&] { read(padding(101) + "CURV,    0\n"); }), notFound);
  EXPECT_EQ(messageOf<RunEnd>([&] { read(" CURV,   0\ncurv,    0\n"); }), notFound);
  EXPECT_EQ(messageOf<RunEnd>([&] { read(""); }), notFound);
  read("CURV,\n");
  EXPECT_TRUE(model.curves.empty());
}

TEST_F(CurveCardsTest, BadCountsAndNumbersAreFaults) {
  const auto fault = [this](const std::string& cards) { return messageOf<InputFault>([&] { read(cards); }); };
  EXPECT_THAT(fault("CURV,  1.0\n"), HasSubstr("field NCURV: found \"  1.0\""));
  EXPECT_THAT(fault("CURV,   -1\n"), HasSubstr("field NCURV"));
  EXPECT_THAT(fault("CURV,    1\nt\nX-DISPL\n6 1 1\n"),
              HasSubstr("field node: found 6, expected an integer from 1 to 5"));
  EXPECT_THAT(fault("CURV,    1\nt\nX-DISPL\n5 4 1\n"), HasSubstr("field degree of freedom: found 4"));
  EXPECT_THAT(fault("CURV,    1\nt\nX-DISPL\n5 3 4\n"), HasSubstr("field column: found 4"));
  EXPECT_THAT(fault("CURV,    1\nt\nX-FORCE\n3 1 1\n"), HasSubstr("field element: found 3"));
  EXPECT_THAT(fault("CURV,    1\nt\nX-RCTOT\n0\n"), HasSubstr("field degree of freedom: found 0"));
  for (const auto& [axis, found] : std::map<std::string, std::string>{
           {"X-STRES\n3 1 1 0 0", "line 4, curve X axis card, field element: found 3, expected an integer from 1 to 2"},
           {"X-STRAI\n2 1 7 0 0", "field component: found 7, expected an integer from 1 to 6"},
           {"X-EHIST\n2 1 17 0 0", "field internal variable: found 17, expected an integer from 1 to 16"},
           {"X-ANGLE\n2 1 99 2 0", "field layer: found 2, expected an integer from 0 to 1"},
           {"X-STRAP\n2 1 6 1 2", "field simple material: found 2, expected an integer from 0 to 1"}})
    EXPECT_THAT(fault("CURV,    1\nt\n" + axis + "\n"), HasSubstr(found));
  EXPECT_THAT(fault("CURV,    2\nt\nX-IINCS\nY-IINCS\n"), HasSubstr("end of the file"));
}

}  // namespace
}  // namespace zema::test
