// Equation numbers, band widths, their report and their checks, and node numbers for the narrowest band and profile, by
// hand.
#include <gtest/gtest.h>

#include "foundation/channel.h"
#include "foundation/ends.h"
#include "foundation/errors.h"
#include "foundation/parallel.h"
#include "solver/band_numbers.h"
#include "solver/listed_elements.h"
#include "solver/narrow_band.h"
#include "solver/profile_numbering.h"

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

// The graph of elements given by node numbers from 1.
NodeGraph graphOf(const std::vector<std::vector<int>>& elements, int NPOIN) {
  IntegerLists LNODS;
  for (const auto& nodes : elements) {
    for (const int node : nodes) LNODS.entries.push_back(node - 1);
    LNODS.close();
  }
  return {LNODS, NPOIN, 50};
}

// LPNINV from 1, and the band, of the best start.
std::pair<std::vector<int>, int> narrowest(const std::vector<std::vector<int>>& elements, int NPOIN) {
  NodeGraph graph = graphOf(elements, NPOIN);
  WorkerPool pool(3);
  std::vector<int> LPNINV = OPTBAN(sortByDegree(graph.neighbours), graph.BAND, pool);
  for (int& node : LPNINV) ++node;
  return {LPNINV, graph.BAND};
}

TEST(NarrowBand, TheLowestOfTheBestStartsNumbersByLevelsAndGoesOnInTheNextPiece) {
  // A path from 3 to 4, and one from 6 to 7: starts 3 and 4 both reach the band 1.
  const std::vector<std::vector<int>> paths{{3, 1}, {1, 5}, {5, 2}, {2, 4}, {6, 8}, {8, 7}};
  EXPECT_EQ(narrowest(paths, 8), std::pair(std::vector{3, 1, 5, 2, 4, 6, 8, 7}, 1));
  // From node 1 the neighbour with fewer neighbours, 6, comes before 2, though it is met later.
  const std::vector<std::vector<int>> branched{{1, 2}, {2, 3}, {1, 6}, {2, 4}, {3, 5}};
  EXPECT_EQ(narrowest(branched, 6), std::pair(std::vector{1, 6, 2, 4, 3, 5}, 2));
  // No start is better than the deck.
  EXPECT_EQ(narrowest({{1, 2}, {2, 3}}, 3), std::pair(std::vector{1, 2, 3}, 1));
  EXPECT_EQ(narrowest({{1}}, 1), std::pair(std::vector{1}, 0));
}

TEST(NarrowBand, ANodeWithTooManyNeighboursStops) {
  std::vector<std::vector<int>> star;
  for (int n = 2; n <= 51; ++n) star.push_back({1, n});
  EXPECT_EQ(graphOf(star, 51).BAND, 50);
  star.push_back({1, 52});
  EXPECT_THROW(graphOf(star, 52), RunEnd);
}

TEST(ProfileNumbering, TheFrontGrowsByAsFewNodesAsItCan) {
  // Four quadrilaterals on nodes 1 2 3 / 4 5 6 / 7 8 9, and one apart.
  const NodeGraph graph = graphOf({{1, 2, 5, 4}, {2, 3, 6, 5}, {4, 5, 8, 7}, {5, 6, 9, 8}, {10, 11, 12, 13}}, 13);

  EXPECT_EQ(RENUM2(graph.neighbours), 0);
  EXPECT_EQ(RENUM0(graph.neighbours), (std::vector{0, 1, 2, 3, 5, 6, 4, 7, 8, 9, 10, 12, 11}));
}

TEST(ProfileNumbering, TheStartLiesAtTheEndOfTheMesh) {
  const NodeGraph path = graphOf({{1, 2}, {1, 3}, {3, 5}, {2, 4}}, 5);  // 4 2 1 3 5

  const LevelStructure middle = RENUM4(path.neighbours, 0);
  EXPECT_EQ(std::tuple(middle.depth, middle.width, middle.last), std::tuple(3, 2, std::vector{3, 4}));
  EXPECT_EQ(RENUM2(path.neighbours), 3);
  EXPECT_EQ(RENUM0(path.neighbours), (std::vector{2, 1, 3, 0, 4}));
}

}  // namespace
}  // namespace zema
