// Shape functions: partition of unity, values at the nodes, derivatives against differences.
#include "element/shape_functions.h"

#include <gtest/gtest.h>

#include <numeric>
#include <vector>

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

}  // namespace
}  // namespace zema
