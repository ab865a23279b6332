// Integration rules: what they integrate exactly, and the order in which an element visits its points.
#include "element/integration_rule.h"

#include <gtest/gtest.h>

#include <cmath>

#include "element/point_loop.h"

namespace zema {
namespace {

/// Sum over a rule along a line of w x^power.
double lineIntegral(RuleTable table, int NINTE, int NGAUS, int power) {
  const IntegrationRule& rule = INTEGR(table, NINTE, NGAUS);
  double sum = 0.0;
  for (std::size_t p = 0; p < static_cast<std::size_t>(NGAUS); ++p)
    sum += rule.WEIGP[p] * std::pow(rule.POSGP[p], power);
  return sum;
}

ElementData elementOf(int NNODE, int NGAUS, int NINTE) {
  ElementData element;
  element.NNODE = NNODE;
  element.NGAUS = NGAUS;
  element.NINTE = NINTE;
  return element;
}

/// Sum over the points of a triangle of w s^a t^b.
double triangleIntegral(int NNODE, int NGAUS, int NINTE, int a, int b) {
  const ElementSizes sizes{.NGAU1 = NGAUS, .NGAU2 = 1, .NGAU3 = 1};
  double sum = 0.0;
  for (const RulePoint& point : pointLoop(RuleTable::plane, elementOf(NNODE, NGAUS, NINTE), sizes))
    sum += point.weight * std::pow(point.s, a) * std::pow(point.t, b);
  return sum;
}

TEST(IntegrationRule, LinesIntegratePolynomials) {
  struct Case {
    int NINTE, NGAUS, degree;
  };
  for (const Case& rule : {Case{1, 1, 1}, {1, 2, 3}, {1, 3, 5}, {2, 1, 1}, {2, 2, 1}, {2, 3, 3}, {3, 2, 1}, {3, 3, 3}})
    for (int power = 0; power <= rule.degree; ++power)
      EXPECT_NEAR(lineIntegral(RuleTable::plane, rule.NINTE, rule.NGAUS, power),
                  power % 2 == 0 ? 2.0 / (power + 1) : 0.0, 1e-15)
          << "family " << rule.NINTE << ", points " << rule.NGAUS << ", power " << power;
}

TEST(IntegrationRule, TrianglesIntegratePolynomials) {
  for (const int NINTE : {4, 5}) {
    EXPECT_NEAR(triangleIntegral(3, 1, NINTE, 1, 0), 1.0 / 6.0, 1e-8);  // 1/3 is a single-precision value
    EXPECT_NEAR(triangleIntegral(6, 3, NINTE, 0, 0), 1.0 / 2.0, 1e-15);
    EXPECT_NEAR(triangleIntegral(6, 3, NINTE, 1, 0), 1.0 / 6.0, 1e-15);
    EXPECT_NEAR(triangleIntegral(6, 3, NINTE, 2, 0), 1.0 / 12.0, 1e-15);
    EXPECT_NEAR(triangleIntegral(6, 3, NINTE, 1, 1), 1.0 / 24.0, 1e-15);
  }
  EXPECT_EQ(INTEGR(RuleTable::solid, 4, 1).POSGP[0], 0.3333333432674408);
}

TEST(IntegrationRule, OnePointOfASolidIsThatOfTheTetrahedron) {
  for (const int NINTE : {1, 2, 3}) {
    EXPECT_EQ(INTEGR(RuleTable::solid, NINTE, 1).POSGP[0], 0.25);
    EXPECT_EQ(INTEGR(RuleTable::solid, NINTE, 1).WEIGP[0], 1.0 / 6.0);
  }
}

TEST(IntegrationRule, TwoPointsOfATriangleRuleFillThreePlaces) {
  EXPECT_EQ(INTEGR(RuleTable::solid, 4, 2).POSGP, (std::array{1.0 / 6.0, 2.0 / 3.0, 1.0 / 6.0}));
  EXPECT_EQ(INTEGR(RuleTable::solid, 5, 2).WEIGP, (std::array{1.0 / 6.0, 1.0 / 6.0, 1.0 / 6.0}));
}

TEST(IntegrationRule, PairsOutsideTheTableAreNoRules) {
  EXPECT_TRUE(hasRule(5, 2));
  EXPECT_FALSE(hasRule(0, 2));
  EXPECT_FALSE(hasRule(6, 1));
  EXPECT_FALSE(hasRule(1, 0));
  EXPECT_FALSE(hasRule(1, 4));
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
  EXPECT_EQ(points[5].index.i, 2);
  EXPECT_EQ(points[5].index.j, 1);
  EXPECT_EQ(points[5].index.k, 2);
}

TEST(PointLoop, TetrahedronHasOnePointOfWeightOneSixth) {
  const auto points = pointLoop(RuleTable::solid, elementOf(4, 1, 1), {.NGAU1 = 1, .NGAU2 = 1, .NGAU3 = 1});

  ASSERT_EQ(points.size(), 1U);
  EXPECT_EQ((std::array{points[0].s, points[0].t, points[0].u}), (std::array{0.25, 0.25, 0.25}));
  EXPECT_EQ(points[0].weight, 1.0 / 6.0);
}

}  // namespace
}  // namespace zema
