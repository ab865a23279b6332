// The correction of the load factor for each constraint, by hand, and what it changes.
#include "analysis/arc_length.h"

#include <cmath>

#include "analysis/analysis.h"
#include "input/increment_cards.h"
#include "input/input_fixture.h"
#include "job/file_set.h"

namespace zema::test {
namespace {

class ArcLengthTest : public InputTest {
 protected:
  ArcLengthTest() {
    allocate(analysis);
    analysis.model.working.IFFIX.assign(15, 0);
    analysis.model.working.IFFIX[14] = 1;
    analysis.model.working.FIXEM[14] = 5.0;
  }
  void read(const std::string& cards) override {
    model.increment.NREPE = 0;
    deck("1 0.5 1 1e-7 30 0 0 0 0 2 " + cards + " 5*0 16*0\n");
    ASSERT_TRUE(readIncrementCard(job, model, kernel));
    ARCLE(analysis);
  }

  Analysis analysis{job, model, kernel};
  /// Sets the displacements x of nodes 1 and 2.
  void setMotion(const std::array<double, 2>& D, const std::array<double, 2>& A, const std::array<double, 2>& T) {
    for (const std::size_t node : {0U, 1U}) {
      model.displacements.DDISP[3 * node] = D[node];
      analysis.equations.ASDIS[3 * node] = A[node];
      analysis.equations.DISPM[3 * node] = T[node];
    }
  }
};

TEST_F(ArcLengthTest, EachTypeFindsItsCorrectionAndItScalesLoadsAndSupports) {
  using Row = std::pair<const char*, double>;  // KARCL ARCLN NODAR IDOFA, correction
  folder.write("pairs", "1 2 a comment\n2 1.0\n3,4\n2 1\n");
  job.CFILE[entry::pairs] = folder.path() / "pairs";
  model.vectors.RLOAD(0, 1)[0] = 10.0;
  for (const auto& [card, dl] :
       {Row{"1 6 0 0", (6.0 * 5.0 - 25.0 + 1.0) / 10.0}, Row{"2 10 0 0", (10.0 - 7.0) / 3.0},
        Row{"3 10 0 0", (-11.0 + std::sqrt(121.0 + 5.0 * 75.0)) / 5.0}, Row{"4 8 2 1", 8.0 - 3.0}, Row{"4 8 2 2", 0.0},
        Row{"7 8 9 9", 0.0}, Row{"5 -4 1 1", (-4.0 + 1.0) / -1.0}, Row{"6 3 2 1", 2.0}, Row{"6 3 1 2", 0.0},
        Row{"5 3 0 1", 0.0}}) {
    SCOPED_TRACE(card);
    setMotion({3, 4}, {1, -1}, {2, 1});
    model.vectors.TLOAD(0)[0] = analysis.equations.FIXED[14] = model.working.FACTO = 0.0;

    read(card);

    EXPECT_NEAR(model.increment.DFACT, 0.5 + dl, 1e-14);
    EXPECT_NEAR(model.working.FACTO, dl, 1e-14);
    EXPECT_NEAR(analysis.equations.ASDIS[0], 1.0 + 2.0 * dl, 1e-14);
    EXPECT_NEAR(model.vectors.TLOAD(0)[0], 10.0 * dl, 1e-13);
    EXPECT_NEAR(analysis.equations.FIXED[14], 5.0 * dl, 1e-13);
  }
}

TEST_F(ArcLengthTest, WhatCannotBeControlledStops) {
  folder.write("pairs", "1 2\n1 6\n1");
  job.CFILE[entry::pairs] = folder.path() / "pairs";
  const std::string spoiltTable = "  >>>> ERROR EN LA LECTURA DE PARES DE PUNTOS";

  setMotion({1, 0}, {0.1, 0}, {-1, 0});  // the larger root, 2.1, would turn back
  EXPECT_EQ(endOf("3 1 0 0"), "goes on");
  EXPECT_NEAR(model.increment.DFACT, 0.5 + 0.1, 1e-15);
  setMotion({1, 0}, {-2, 0}, {0, 1});
  EXPECT_THAT(endOf("3 2 0 0"), testing::StartsWith("run end FACTOR INICIAL MUY ALTO EN: SPHERICAL PATH -1.0"));
  setMotion({0, 0}, {0, 3}, {1, 0});
  EXPECT_THAT(endOf("3 1 0 0"), testing::StartsWith("run end ARC_LENGTH: SPHERICAL; RADICANDO < 0  -32.0"));
  EXPECT_THAT(endOf("4 1 6 1"), testing::HasSubstr("field NODAR: found 6, expected a node from 1 to 5"));
  EXPECT_THAT(endOf("4 1 5 4"), testing::HasSubstr("field IDOFA: found 4, expected a degree of freedom of node 5"));
  EXPECT_EQ(endOf("5 1 1 3"), "goes on");
  EXPECT_THAT(endOf("5 1 1 3"), testing::HasSubstr("line 2, node pair card, field node number: found 6"));
  EXPECT_THAT(endOf("5 1 1 3"), testing::StartsWith("run end " + spoiltTable));
}

}  // namespace
}  // namespace zema::test
