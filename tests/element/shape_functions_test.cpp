// Shape functions: partition of unity, values at the nodes, derivatives against differences.
#include "element/shape_functions.h"

#include <gtest/gtest.h>

#include <vector>

namespace zema {
namespace {

using NaturalPoint = std::array<double, 3>;

/// Checks shape(point) at the element's nodes, and sums and derivatives at a point of no symmetry.
template <int dimensions, int NNODE, class Shape>
void checkPattern(const Shape& shape, const std::vector<NaturalPoint>& nodes) {
  ASSERT_EQ(nodes.size(), static_cast<std::size_t>(NNODE));
  for (std::size_t a = 0; a < nodes.size(); ++a) {
    const ShapeFunctions<dimensions, NNODE> atNode = shape(nodes[a]);
    for (std::size_t b = 0; b < nodes.size(); ++b)
      EXPECT_NEAR(atNode.SHAPEN[b], a == b ? 1.0 : 0.0, 1e-15) << "node " << a << ", function " << b;
  }
  const NaturalPoint point{0.21, 0.34, -0.17};
  const ShapeFunctions<dimensions, NNODE> here = shape(point);
  double sum = 0.0;
  for (const double N : here.SHAPEN) sum += N;
  EXPECT_NEAR(sum, 1.0, 1e-14);
  constexpr double h = 1e-5;
  for (int k = 0; k < dimensions; ++k) {
    NaturalPoint ahead = point, behind = point;
    ahead[static_cast<std::size_t>(k)] += h;
    behind[static_cast<std::size_t>(k)] -= h;
    for (int a = 0; a < NNODE; ++a) {
      const auto n = static_cast<std::size_t>(a);
      const double difference = (shape(ahead).SHAPEN[n] - shape(behind).SHAPEN[n]) / (2.0 * h);
      EXPECT_NEAR(here.DERIV(k, a), difference, 1e-9) << "coordinate " << k << ", node " << a;
    }
  }
}

template <int NNODE>
auto solid() {
  return [](const NaturalPoint& p) { return SFR3D<NNODE>(p[0], p[1], p[2]); };
}

template <int NNODE>
auto plane() {
  return [](const NaturalPoint& p) { return SFR2D<NNODE>(p[0], p[1]); };
}

template <int NNODE>
auto line() {
  return [](const NaturalPoint& p) { return SFR1D<NNODE>(p[0]); };
}

TEST(ShapeFunctions, SolidsInterpolateTheirNodes) {
  checkPattern<3, 4>(solid<4>(), {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
  checkPattern<3, 8>(solid<8>(), {{-1, -1, -1},
                                  {1, -1, -1},
                                  {1, 1, -1},
                                  {-1, 1, -1},  //
                                  {-1, -1, 1},
                                  {1, -1, 1},
                                  {1, 1, 1},
                                  {-1, 1, 1}});
}

TEST(ShapeFunctions, PlanePatternsInterpolateTheirNodes) {
  checkPattern<2, 3>(plane<3>(), {{0, 0}, {1, 0}, {0, 1}});
  checkPattern<2, 4>(plane<4>(), {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}});
  checkPattern<2, 6>(plane<6>(), {{0, 0}, {0.5, 0}, {1, 0}, {0.5, 0.5}, {0, 1}, {0, 0.5}});
  const std::vector<NaturalPoint> eight{{-1, -1}, {0, -1}, {1, -1}, {1, 0}, {1, 1}, {0, 1}, {-1, 1}, {-1, 0}};
  checkPattern<2, 8>(plane<8>(), eight);
  std::vector<NaturalPoint> nine = eight;
  nine.push_back({0, 0});
  checkPattern<2, 9>(plane<9>(), nine);
}

TEST(ShapeFunctions, LinesInterpolateTheirNodes) {
  checkPattern<1, 2>(line<2>(), {{-1}, {1}});
  checkPattern<1, 3>(line<3>(), {{-1}, {0}, {1}});
}

TEST(ShapeFunctions, PlanePatternOfAnUnknownCountIsZero) {
  const ShapeFunctions<2, 7> none = SFR2D<7>(0.3, 0.2);

  EXPECT_EQ(none.SHAPEN, Vector<7>{});
  EXPECT_EQ(none.DERIV, (Matrix<2, 7>{}));
}

}  // namespace
}  // namespace zema
