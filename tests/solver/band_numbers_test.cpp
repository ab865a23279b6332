// Equation numbers, band widths, their report and their checks, by hand.
#include "solver/band_numbers.h"

#include <gtest/gtest.h>

#include "foundation/channel.h"
#include "foundation/ends.h"
#include "solver/listed_elements.h"

namespace zema {
namespace {

using enum SolverCode;

// Position 2 is fixed. Equations 1 2 0 3 4: distances 3 - 1 in element 1, 4 - 2 in element 2, 4 - 3 in element 3.
class BandNumbersTest : public testing::Test {
 protected:
  BandNumbersTest() { PERMUT(system, std::vector{0, 0, 7, 0, 0}); }

  // How CALC_NBA ends; leaves its report.
  std::string endOf(const ElementSource& elements, int MBAND, const BandLimits& limits) {
    system.MBAND = MBAND;
    Channel listing = Channel::open("/dev/null", OpenMode::append);
    std::string end = zema::endOf([&] { CALC_NBA(elements, system, limits, listing); });
    report = listing.buffer();
    return end;
  }

  // Working and deck positions of three elements.
  ListedElements source{
      {{{0, 1, 3}, {}, {}, {}, {4, 0, 2}}, {{1, 2, 4}, {}, {}, {}, {2, 0, 4}}, {{3, 4}, {}, {}, {}, {0, 1}}}};
  EquationSystem system{5};
  std::string report;
};

TEST_F(BandNumbersTest, TheReportNamesTheLastElementThatReachesAWidth) {
  const std::string withoutRenumbering =
      "\n\n          SOLVER INFORMATION :\n          ==================\n"
      "\n\n          ANCHO DE BANDA SIN RENUMERACION:     5  ELEMENTO:         2\n";
  EXPECT_EQ(system.IPERM, (std::vector{1, 2, 0, 3, 4}));

  EXPECT_NE(endOf(source, 0, {bandLU, false}), "goes on");
  EXPECT_EQ(report, withoutRenumbering);

  EXPECT_EQ(endOf(source, 0, {gmres, true}), "goes on");
  EXPECT_EQ(report,
            withoutRenumbering +
                "\n          ANCHO DE BANDA CON RENUMERACION:     4  ELEMENTO:         2\n"
                "\n          ANCHO DE BANDA CON RENUMERACION (CON RESTRICCIONES):           3  ELEMENTO:         2\n");
  EXPECT_EQ((std::vector{system.NBAN0, system.NBAN1, system.NBAND}), (std::vector{5, 4, 3}));
}

TEST_F(BandNumbersTest, ALaterLoadStepFindsItsOwnBandAndIsGrantedColumnsByTheOneBefore) {
  EVALMBANDA(source, system);
  EXPECT_EQ(system.MBAND, 2 * (0 + 2) + 5);
  endOf(source, 0, {gmres, true});
  EVALMBANDA(source, system);
  EXPECT_EQ(system.MBAND, 2 * (3 + 2) + 5);

  PERMUT(system, std::vector{0, 1, 1, 0, 1});  // equations 1 0 0 2 0: element 1
  endOf(source, 0, {gmres, true});
  EXPECT_EQ(system.NBAND, 2);

  PERMUT(system, std::vector(5, 1));  // no equation
  endOf(source, 0, {gmres, true});
  EVALMBANDA(source, system);
  EXPECT_EQ(system.NBAND, 0);
  EXPECT_EQ(system.MBAND, 5);
}

TEST_F(BandNumbersTest, LimitsThatArePassedStop) {
  const std::string tooWide = "run end >>>> MAXIMO ANCHO DE BANDA SUPERADO SOLVER ";
  EXPECT_EQ(endOf(source, 5, {bandLU, false}), tooWide + "ASIMETRICO 6.0 5.0");
  EXPECT_EQ(endOf(source, 5, {bandLU, false, 100}), "goes on");
  EXPECT_EQ(endOf(source, 6, {bandLU, false}), "goes on");
  EXPECT_EQ(endOf(source, 2, {bandCholesky, false}), tooWide + "SIMETRICO 3.0 2.0");
  EXPECT_EQ(endOf(source, 2, {bandLDL, false}), tooWide + "SIMETRICO 3.0 2.0");
  EXPECT_EQ(endOf(source, 2, {gmres, false}), "goes on");
  EXPECT_EQ(endOf(source, 3, {bandCholesky, false}), "goes on");

  const ListedElements widened({{{0, 4}, {}, {}, {}, {0, 1}}});  // equations farther apart than in the deck
  const std::string notBetter = "run end   >>>> RENUMERACION NO OPTIMIZA ANCHO DE BANDA  0.0 0.0";
  EXPECT_EQ(endOf(widened, 100, {bandCholesky, true}), notBetter);
  EXPECT_EQ(endOf(widened, 100, {gmres, true}), notBetter);
  EXPECT_EQ(endOf(widened, 100, {bandCholesky, false}), "goes on");
  EXPECT_EQ(endOf(widened, 100, {bandLU, true}), "goes on");
}

}  // namespace
}  // namespace zema
