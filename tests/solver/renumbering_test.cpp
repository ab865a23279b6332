// Node numbers by hand: the narrowest band, the growing front, meshes in two pieces.
#include <gtest/gtest.h>

#include "foundation/errors.h"
#include "foundation/parallel.h"
#include "solver/narrow_band.h"
#include "solver/profile_numbering.h"

namespace zema {
namespace {

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
