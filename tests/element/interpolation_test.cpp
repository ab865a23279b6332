// Shape functions, Jacobians and integration rules: what they reproduce exactly, and the lines of their stops.
#include <gtest/gtest.h>

#include <cmath>
#include <numeric>
#include <tuple>
#include <vector>

#include "element/integration_rule.h"
#include "element/jacobian.h"
#include "element/point_loop.h"
#include "element/shape_functions.h"
#include "foundation/distance.h"
#include "foundation/ends.h"

namespace zema {
namespace {

using NaturalPoint = std::array<double, 3>;

template <int dimensions, int NNODE>
ShapeFunctions<dimensions, NNODE> shapeAt(const NaturalPoint& p) {
  if constexpr (dimensions == 3)
    return SFR3D<NNODE>(p[0], p[1], p[2]);
  else if constexpr (dimensions == 2)
    return SFR2D<NNODE>(p[0], p[1]);
  else
    return SFR1D<NNODE>(p[0]);
}

/// Checks values at the element's nodes, and sum and derivatives at a point of no symmetry.
template <int dimensions, int NNODE>
void checkPattern(const std::vector<NaturalPoint>& nodes) {
  ASSERT_EQ(nodes.size(), static_cast<std::size_t>(NNODE));
  const NaturalPoint point{0.21, 0.34, -0.17};
  const auto here = shapeAt<dimensions, NNODE>(point);
  EXPECT_NEAR(std::accumulate(here.SHAPEN.begin(), here.SHAPEN.end(), 0.0), 1.0, 1e-14);
  for (std::size_t a = 0; a < nodes.size(); ++a) {
    const auto N = [a](const NaturalPoint& p) { return shapeAt<dimensions, NNODE>(p).SHAPEN[a]; };
    for (std::size_t b = 0; b < nodes.size(); ++b)
      EXPECT_NEAR(N(nodes[b]), a == b ? 1.0 : 0.0, 1e-15) << "function " << a << ", node " << b;
    constexpr double h = 1e-5;
    for (int k = 0; k < dimensions; ++k) {
      NaturalPoint ahead = point, behind = point;
      ahead[static_cast<std::size_t>(k)] += h;
      behind[static_cast<std::size_t>(k)] -= h;
      EXPECT_NEAR(here.DERIV(k, static_cast<int>(a)), (N(ahead) - N(behind)) / (2.0 * h), 1e-9)
          << "coordinate " << k << ", node " << a;
    }
  }
}

TEST(ShapeFunctions, InterpolateTheirNodes) {
  checkPattern<1, 2>({{-1}, {1}});
  checkPattern<1, 3>({{-1}, {0}, {1}});
  checkPattern<2, 3>({{0, 0}, {1, 0}, {0, 1}});
  checkPattern<2, 4>({{-1, -1}, {1, -1}, {1, 1}, {-1, 1}});
  checkPattern<2, 6>({{0, 0}, {0.5, 0}, {1, 0}, {0.5, 0.5}, {0, 1}, {0, 0.5}});
  std::vector<NaturalPoint> plane{{-1, -1}, {0, -1}, {1, -1}, {1, 0}, {1, 1}, {0, 1}, {-1, 1}, {-1, 0}};
  checkPattern<2, 8>(plane);
  plane.push_back({0, 0});
  checkPattern<2, 9>(plane);
  checkPattern<3, 4>({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
  std::vector<NaturalPoint> brick;
  for (const double u : {-1.0, 1.0})
    for (const auto& [s, t] : {std::pair{-1, -1}, {1, -1}, {1, 1}, {-1, 1}}) brick.push_back({1.0 * s, 1.0 * t, u});
  checkPattern<3, 8>(brick);
}

TEST(ShapeFunctions, PlanePatternOfAnUnknownCountIsZero) {
  const ShapeFunctions<2, 7> none = SFR2D<7>(0.3, 0.2);

  EXPECT_EQ(none.SHAPEN, Vector<7>{});
  EXPECT_EQ(none.DERIV, (Matrix<2, 7>{}));
}

TEST(Jacobian, MeasuresVolumesAreasAndLengths) {
  const Matrix<4, 3> tetrahedron{{0, 0, 0, 2, 0, 0, 1, 3, 0, 0, 0.5, 4}};
  const Matrix<3, 3> flat{{0, 0, 0, 3, 0, 0, 0, 4, 0}};    // right angle, legs 3 and 4, in the plane z = 0
  const Matrix<3, 3> tilted{{0, 0, 0, 0, 3, 3, 0, 0, 5}};  // in the plane x = 0
  const Matrix<2, 3> DERIV = SFR2D<3>(0.0, 0.0).DERIV;
  const ShapeFunctions<3, 4> solid = SFR3D<4>(0.25, 0.25, 0.25);
  Matrix<3, 4> CARTD;

  EXPECT_NEAR(JACOB(solid.DERIV, tetrahedron, 1, CARTD), 24.0, 1e-14);  // 6 V
  EXPECT_NEAR(JACOB2D(DERIV, flat, 1), 12.0, 1e-14);                    // 2 A
  EXPECT_NEAR(JACOB2D(DERIV, tilted, 1), 15.0, 1e-14);
  EXPECT_LT(distance(PROMA1(CARTD, tetrahedron), Matrix<3>::identity()), 1e-15);  // d x_j / d x_i
  EXPECT_NEAR(GPCOD(tetrahedron, solid.SHAPEN)[2], 1.0, 1e-15);
  const auto line = JACOB1D(SFR1D<2>(0.0).DERIV, Matrix<2, 3>{{1, 1, 0, 4, 1, 4}}, 1);
  EXPECT_NEAR(line.DJACB, 2.5, 1e-15);  // L / 2
  EXPECT_NEAR(line.TRANF[0], 0.6, 1e-15);
  EXPECT_NEAR(line.TRANF[2], 0.8, 1e-15);
  EXPECT_NEAR(line.CARTD(0, 1), 0.2, 1e-15);
}

TEST(Jacobian, ThatIsNotPositiveStopsWithTheElement) {
  const Matrix<4, 3> mirrored{{0, 0, 0, 0, 1, 0, 1, 0, 0, 0, 0, 1}};
  const Matrix<3, 2> turned{{0, 0, 0, 1, 1, 0}};
  Matrix<3, 4> CARTD3;
  Matrix<2, 3> CARTD2;
  const auto text = [](const std::string& routine, const std::string& element) {
    return "stop \n\n PROGRAMA DETENIDO EN LA SUBROUTINA " + routine +
           "\n            AREA CERO O NEGATIVA \n           ELEMENTO NUMER" + element + "\n";
  };

  EXPECT_EQ(endOf([&] { return JACOB(SFR3D<4>(0, 0, 0).DERIV, mirrored, 17, CARTD3); }), text("JACOB3D", "    17"));
  EXPECT_EQ(endOf([&] { return JACOB(SFR2D<3>(0, 0).DERIV, turned, 3, CARTD2); }), text("JACOB2D", "     3"));
  EXPECT_EQ(endOf([] { return JACOB1D(SFR1D<2>(0.0).DERIV, Matrix<2, 3>{}, 123456); }), text("JACOB1D", "O *****"));
}

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
