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
  folder.write("pairs", "1 2 a comment\n2 1\n3 4 1.0 2\n");  // four tables, two nodes a line
  struct Row {
    const char* card;  // KARCL ARCLN NODAR IDOFA
    double dl;
  };
  model.vectors.RLOAD(0, 1)[0] = 10.0;
  job.CFILE[entry::pairs] = folder.path() / "pairs";
  // D = (3, 4), A = (1, -1), T = (2, 1)
  for (const Row& row : {Row{"1 6 0 0", (6.0 * 5.0 - 25.0 + 1.0) / 10.0}, Row{"2 10 0 0", (10.0 - 7.0) / 3.0},
                         Row{"3 10 0 0", -2.2 + std::sqrt(2.2 * 2.2 + 15.0)}, Row{"4 8 2 1", 8.0 - 4.0 + 1.0},
                         Row{"5 -4 2 1", 0.0}, Row{"4 8 2 2", 0.0}, Row{"7 8 2 2", 0.0}, Row{"6 2 1 1", 0.0},
                         Row{"5 2 1 1", 2.0 - 0.0}}) {
    SCOPED_TRACE(row.card);
    setMotion({3, 4}, {1, -1}, {2, 1});
    model.increment.NREPE = 0;
    model.vectors.TLOAD(0)[0] = analysis.equations.FIXED[14] = model.working.FACTO = 0.0;

    read(row.card);

    EXPECT_NEAR(model.increment.DFACT, 0.5 + row.dl, 1e-14);
    EXPECT_NEAR(model.working.FACTO, row.dl, 1e-14);
    EXPECT_NEAR(analysis.equations.ASDIS[0], 1.0 + 2.0 * row.dl, 1e-14);
    EXPECT_NEAR(model.vectors.TLOAD(0)[0], 10.0 * row.dl, 1e-13);
    EXPECT_NEAR(analysis.equations.FIXED[14], 5.0 * row.dl, 1e-13);
  }
}

}  // namespace
}  // namespace zema::test
