// Equation numbers, band widths, their report and their checks, by hand.
#include "solver/band_numbers.h"

#include <gtest/gtest.h>

#include "foundation/channel.h"
#include "foundation/errors.h"
#include "solver/listed_elements.h"

namespace zema {
namespace {

ListedElement at(std::vector<int> positions, std::vector<int> deckPositions) {
  return {std::move(positions), {}, {}, {}, std::move(deckPositions)};
}

// Position 2 is fixed. Equations 1 2 0 3 4: distances 3 - 1 in element 1, 4 - 2 in element 2, 4 - 3 in element 3.
class BandNumbersTest : public testing::Test {
 protected:
  BandNumbersTest() { PERMUT(system, std::vector{0, 0, 7, 0, 0}); }

  // What CALC_NBA writes.
  std::string report(bool renumbered) {
    Channel listing = Channel::open("/dev/null", OpenMode::append);
    CALC_NBA(source, system, {SolverCode::gmres, renumbered}, listing);
    return listing.buffer();
  }

  ListedElements source{{at({0, 1, 3}, {4, 0, 2}), at({1, 2, 4}, {2, 0, 4}), at({3, 4}, {0, 1})}};
  EquationSystem system{5};
};

TEST_F(BandNumbersTest, FreePositionsAreNumberedInOrder) {
  EXPECT_EQ(system.IPERM, (std::vector{1, 2, 0, 3, 4}));
  EXPECT_EQ(system.NEQNS, 4);
}

TEST_F(BandNumbersTest, ReportNamesTheLastElementThatReachesAWidth) {
  EXPECT_EQ(report(true),
            "\n\n          SOLVER INFORMATION :\n          ==================\n"
            "\n\n          ANCHO DE BANDA SIN RENUMERACION:     5  ELEMENTO:         2\n"
            "\n          ANCHO DE BANDA CON RENUMERACION:     4  ELEMENTO:         2\n"
            "\n          ANCHO DE BANDA CON RENUMERACION (CON RESTRICCIONES):           3  ELEMENTO:         2\n");
  EXPECT_EQ(system.NBAN0, 5);
  EXPECT_EQ(system.NBAN1, 4);
  EXPECT_EQ(system.NBAND, 3);
}

TEST_F(BandNumbersTest, ReportIsShortWithoutRenumbering) {
  EXPECT_EQ(report(false),
            "\n\n          SOLVER INFORMATION :\n          ==================\n"
            "\n\n          ANCHO DE BANDA SIN RENUMERACION:     5  ELEMENTO:         2\n");
}

TEST_F(BandNumbersTest, ALaterLoadStepFindsItsOwnBand) {
  (void)report(true);
  PERMUT(system, std::vector{0, 1, 1, 0, 1});

  (void)report(true);

  EXPECT_EQ(system.NBAND, 2);  // equations 1 0 0 2 0: element 1
}

TEST_F(BandNumbersTest, ColumnsGrantedFollowTheBandKnownSoFar) {
  EVALMBANDA(source, system);
  EXPECT_EQ(system.MBAND, 2 * (0 + 2) + 5);

  (void)report(true);
  EVALMBANDA(source, system);
  EXPECT_EQ(system.MBAND, 2 * (3 + 2) + 5);
}

TEST_F(BandNumbersTest, NoFreePositionGivesNoBand) {
  PERMUT(system, std::vector(5, 1));

  EVALMBANDA(source, system);
  (void)report(true);

  EXPECT_EQ(system.MBAND, 5);
  EXPECT_EQ(system.NBAND, 0);
}

struct Stop {
  std::string text;
  double A, B;
};

// The stop of CALC_NBA; an empty text if it does not stop.
Stop stopOf(const ElementSource& source, EquationSystem& system, const BandLimits& limits) {
  Channel listing = Channel::open("/dev/null", OpenMode::append);
  try {
    CALC_NBA(source, system, limits, listing);
  } catch (const RunEnd& stop) {
    EXPECT_FALSE(listing.buffer().empty()) << "the report comes before the stop";
    return {stop.what(), stop.A(), stop.B()};
  }
  return {"", 0.0, 0.0};
}

void expectStop(const Stop& stop, const std::string& text, double A, double B) {
  EXPECT_EQ(stop.text, text);
  EXPECT_EQ(stop.A, A);
  EXPECT_EQ(stop.B, B);
}

TEST_F(BandNumbersTest, TooFewColumnsStopTheUnsymmetricBand) {
  system.MBAND = 5;
  expectStop(stopOf(source, system, {SolverCode::bandLU, false}),
             ">>>> MAXIMO ANCHO DE BANDA SUPERADO SOLVER ASIMETRICO", 6.0, 5.0);
  EXPECT_EQ(stopOf(source, system, {SolverCode::bandLU, false, 100}).text, "");

  system.MBAND = 6;
  EXPECT_EQ(stopOf(source, system, {SolverCode::bandLU, false}).text, "");
}

TEST_F(BandNumbersTest, TooFewColumnsStopTheSymmetricBand) {
  system.MBAND = 2;
  for (const SolverCode code : {SolverCode::bandCholesky, SolverCode::bandLDL})
    expectStop(stopOf(source, system, {code, false}), ">>>> MAXIMO ANCHO DE BANDA SUPERADO SOLVER SIMETRICO", 3.0, 2.0);
  EXPECT_EQ(stopOf(source, system, {SolverCode::gmres, false}).text, "");

  system.MBAND = 3;
  EXPECT_EQ(stopOf(source, system, {SolverCode::bandCholesky, false}).text, "");
}

TEST_F(BandNumbersTest, ARenumberingThatWidensTheBandStops) {
  ListedElements widened({at({0, 4}, {0, 1})});
  system.MBAND = 100;

  expectStop(stopOf(widened, system, {SolverCode::bandCholesky, true}),
             "  >>>> RENUMERACION NO OPTIMIZA ANCHO DE BANDA ", 0.0, 0.0);
  expectStop(stopOf(widened, system, {SolverCode::gmres, true}), "  >>>> RENUMERACION NO OPTIMIZA ANCHO DE BANDA ", 0.0,
             0.0);
  EXPECT_EQ(stopOf(widened, system, {SolverCode::bandCholesky, false}).text, "");
  EXPECT_EQ(stopOf(widened, system, {SolverCode::bandLU, true}).text, "");
}

}  // namespace
}  // namespace zema
