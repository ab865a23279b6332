// Integration rules: what they integrate exactly, and the order in which an element visits its points.
#include "element/integration_rule.h"

#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

#include "element/point_loop.h"

namespace zema {
namespace {

ElementData elementOf(int NNODE, int NGAUS, int NINTE) {
  ElementData element;
  element.NNODE = NNODE;
  element.NGAUS = NGAUS;
  element.NINTE = NINTE;
  return element;
}

TEST(IntegrationRule, LinesIntegratePolynomialsUpToTheirDegree) {
  for (const auto& [NINTE, NGAUS, degree] : std::vector<std::array<int, 3>>{
           {1, 1, 1}, {1, 2, 3}, {1, 3, 5}, {2, 1, 1}, {2, 2, 1}, {2, 3, 3}, {3, 2, 1}, {3, 3, 3}})
    for (int power = 0; power <= degree; ++power) {
      const IntegrationRule& rule = INTEGR(RuleTable::plane, NINTE, NGAUS);
      double sum = 0.0;
      for (std::size_t p = 0; p < static_cast<std::size_t>(NGAUS); ++p)
        sum += rule.WEIGP[p] * std::pow(rule.POSGP[p], power);
      EXPECT_NEAR(sum, power % 2 == 0 ? 2.0 / (power + 1) : 0.0, 1e-15) << NINTE << ' ' << NGAUS << ' ' << power;
    }
}

TEST(IntegrationRule, TrianglesIntegratePolynomials) {
  using Row = std::tuple<int, int, int, int, double, double>;  // 1/3 is a single-precision value
  for (const int NINTE : {4, 5})
    for (const auto& [NNODE, NGAUS, a, b, exact, tolerance] : {Row{3, 1, 1, 0, 1.0 / 6.0, 1e-8},
                                                               {6, 3, 0, 0, 1.0 / 2.0, 1e-15},
                                                               {6, 3, 1, 0, 1.0 / 6.0, 1e-15},
                                                               {6, 3, 2, 0, 1.0 / 12.0, 1e-15},
                                                               {6, 3, 1, 1, 1.0 / 24.0, 1e-15}}) {
      double sum = 0.0;
      for (const RulePoint& point :
           pointLoop(RuleTable::plane, elementOf(NNODE, NGAUS, NINTE), {.NGAU1 = NGAUS, .NGAU2 = 1, .NGAU3 = 1}))
        sum += point.weight * std::pow(point.s, a) * std::pow(point.t, b);
      EXPECT_NEAR(sum, exact, tolerance) << NINTE << ' ' << NGAUS << ' ' << a << ' ' << b;
    }
}

TEST(IntegrationRule, SpecialPlacesOfTheTable) {
  for (const int NINTE : {1, 2, 3}) {  // one point of a solid is that of the tetrahedron
    EXPECT_EQ(INTEGR(RuleTable::solid, NINTE, 1).POSGP[0], 0.25);
    EXPECT_EQ(INTEGR(RuleTable::solid, NINTE, 1).WEIGP[0], 1.0 / 6.0);
  }
  EXPECT_EQ(INTEGR(RuleTable::solid, 4, 1).POSGP[0], 0.3333333432674408);
  EXPECT_EQ(INTEGR(RuleTable::solid, 4, 2).POSGP, (std::array{1.0 / 6.0, 2.0 / 3.0, 1.0 / 6.0}));
  EXPECT_EQ(INTEGR(RuleTable::solid, 5, 2).WEIGP, (std::array{1.0 / 6.0, 1.0 / 6.0, 1.0 / 6.0}));
  EXPECT_TRUE(hasRule(5, 2));
  for (const auto& [NINTE, NGAUS] : {std::pair{0, 2}, {6, 1}, {1, 0}, {1, 4}}) EXPECT_FALSE(hasRule(NINTE, NGAUS));
}

TEST(PointLoop, BrickRunsFirstAlongTThenSThenU) {
  constexpr double g = 0.5773502691896258;
  constexpr std::array<std::array<double, 3>, 8> byHand{
      {{-g, -g, -g}, {-g, -g, g}, {g, -g, -g}, {g, -g, g}, {-g, g, -g}, {-g, g, g}, {g, g, -g}, {g, g, g}}};

  const auto points =
      pointLoop(RuleTable::solid, elementOf(8, 2, 1), {.NSTRE = 6, .NDOFN = 3, .NGAU1 = 2, .NGAU2 = 2, .NGAU3 = 2});

  ASSERT_EQ(points.size(), byHand.size());
  for (std::size_t p = 0; p < byHand.size(); ++p) {
    EXPECT_EQ((std::array{points[p].s, points[p].t, points[p].u}), byHand[p]) << "point " << p;
    EXPECT_EQ(points[p].weight, 1.0);
  }
  const PointIndex sixth = points[5].index;
  EXPECT_EQ((std::array{sixth.i, sixth.j, sixth.k}), (std::array{2, 1, 2}));
}

}  // namespace
}  // namespace zema
