// Shape functions of solids, plane patterns and lines, with their derivatives in natural coordinates.
#pragma once

#include <array>

#include "foundation/dense.h"

namespace zema {

/// Shape functions at a natural point.
template <int dimensions, int NNODE>
struct ShapeFunctions {
  Vector<NNODE> SHAPEN{};             ///< values, by node
  Matrix<dimensions, NNODE> DERIV{};  ///< derivatives: row = natural coordinate, column = node
};

/// `SFR3D`: the solid of 4 nodes (linear tetrahedron, nodes (0,0,0), (1,0,0), (0,1,0), (0,0,1)) or of 8 nodes
/// (trilinear brick, corners counter-clockwise from (-1,-1) in the plane u = -1, then in the plane u = 1). There is no
/// other solid.
template <int NNODE>
[[nodiscard]] constexpr ShapeFunctions<3, NNODE> SFR3D(double s, double t, double u) {
  static_assert(NNODE == 4 || NNODE == 8);
  ShapeFunctions<3, NNODE> shape;
  if constexpr (NNODE == 4) {
    shape.SHAPEN = {1.0 - s - t - u, s, t, u};
    shape.DERIV = {{-1.0, 1.0, 0.0, 0.0, -1.0, 0.0, 1.0, 0.0, -1.0, 0.0, 0.0, 1.0}};
  } else {
    constexpr std::array<double, 8> ownS{-1, 1, 1, -1, -1, 1, 1, -1};
    constexpr std::array<double, 8> ownT{-1, -1, 1, 1, -1, -1, 1, 1};
    constexpr std::array<double, 8> ownU{-1, -1, -1, -1, 1, 1, 1, 1};
    for (int a = 0; a < 8; ++a) {
      const auto n = static_cast<std::size_t>(a);
      const double S = 1.0 + s * ownS[n], T = 1.0 + t * ownT[n], U = 1.0 + u * ownU[n];
      shape.SHAPEN[n] = S * T * U / 8.0;
      shape.DERIV(0, a) = ownS[n] * T * U / 8.0;
      shape.DERIV(1, a) = S * ownT[n] * U / 8.0;
      shape.DERIV(2, a) = S * T * ownU[n] / 8.0;
    }
  }
  return shape;
}

/// `SFR2D`: the plane pattern of 3 or 6 nodes (triangle), 4, 8 or 9 nodes (quadrilateral), nodes counter-clockwise from
/// the first corner, mid-side nodes between their corners, the centre last. Any other count gives zeros.
/// Literature: Zienkiewicz, Taylor & Zhu (2013), ch. 6 (serendipity and Lagrange families).
template <int NNODE>
[[nodiscard]] constexpr ShapeFunctions<2, NNODE> SFR2D(double s, double t);

/// `SFR1D`: the line of 2 or 3 nodes on -1..1, in the order of s.
template <int NNODE>
[[nodiscard]] constexpr ShapeFunctions<1, NNODE> SFR1D(double s) {
  static_assert(NNODE == 2 || NNODE == 3);
  if constexpr (NNODE == 2) {
    return {{(1.0 - s) / 2.0, (1.0 + s) / 2.0}, {{-0.5, 0.5}}};
  } else {
    return {{(s * s - s) / 2.0, 1.0 - s * s, (s * s + s) / 2.0},
            {{(2.0 * s - 1.0) / 2.0, -2.0 * s, (2.0 * s + 1.0) / 2.0}}};
  }
}

template <int NNODE>
constexpr ShapeFunctions<2, NNODE> SFR2D(double s, double t) {
  const double L = 1.0 - s - t;  // third coordinate of a triangle
  if constexpr (NNODE == 3) {
    return {{L, s, t}, {{-1.0, 1.0, 0.0, -1.0, 0.0, 1.0}}};
  } else if constexpr (NNODE == 4) {
    return {{(1 - s) * (1 - t) / 4, (1 + s) * (1 - t) / 4, (1 + s) * (1 + t) / 4, (1 - s) * (1 + t) / 4},
            {{-(1 - t) / 4, (1 - t) / 4, (1 + t) / 4, -(1 + t) / 4,  //
              -(1 - s) / 4, -(1 + s) / 4, (1 + s) / 4, (1 - s) / 4}}};
  } else if constexpr (NNODE == 6) {
    return {{(2 * L - 1) * L, 4 * s * L, (2 * s - 1) * s, 4 * s * t, (2 * t - 1) * t, 4 * t * L},
            {{1 - 4 * L, 4 * (L - s), 4 * s - 1, 4 * t, 0, -4 * t,  //
              1 - 4 * L, -4 * s, 0, 4 * s, 4 * t - 1, 4 * (L - t)}}};
  } else if constexpr (NNODE == 8) {
    return {{(1 - s) * (1 - t) * (-s - t - 1) / 4, (1 - s * s) * (1 - t) / 2, (1 + s) * (1 - t) * (s - t - 1) / 4,
             (1 + s) * (1 - t * t) / 2, (1 + s) * (1 + t) * (s + t - 1) / 4, (1 - s * s) * (1 + t) / 2,
             (1 - s) * (1 + t) * (-s + t - 1) / 4, (1 - s) * (1 - t * t) / 2},
            {{(1 - t) * (2 * s + t) / 4, -s * (1 - t), (1 - t) * (2 * s - t) / 4, (1 - t * t) / 2,
              (1 + t) * (2 * s + t) / 4, -s * (1 + t), (1 + t) * (2 * s - t) / 4, -(1 - t * t) / 2,  //
              (1 - s) * (s + 2 * t) / 4, -(1 - s * s) / 2, (1 + s) * (2 * t - s) / 4, -t * (1 + s),
              (1 + s) * (s + 2 * t) / 4, (1 - s * s) / 2, (1 - s) * (2 * t - s) / 4, -t * (1 - s)}}};
  } else if constexpr (NNODE == 9) {
    return {{s * t * (s - 1) * (t - 1) / 4, t * (1 - s * s) * (t - 1) / 2, s * t * (s + 1) * (t - 1) / 4,
             s * (1 - t * t) * (s + 1) / 2, s * t * (s + 1) * (t + 1) / 4, t * (1 - s * s) * (t + 1) / 2,
             s * t * (s - 1) * (t + 1) / 4, s * (1 - t * t) * (s - 1) / 2, (1 - s * s) * (1 - t * t)},
            {{t * (2 * s - 1) * (t - 1) / 4, -s * t * (t - 1), t * (2 * s + 1) * (t - 1) / 4,
              (1 - t * t) * (2 * s + 1) / 2, t * (2 * s + 1) * (t + 1) / 4, -s * t * (t + 1),
              t * (2 * s - 1) * (t + 1) / 4, (1 - t * t) * (2 * s - 1) / 2, -2 * s * (1 - t * t),  //
              s * (s - 1) * (2 * t - 1) / 4, (1 - s * s) * (2 * t - 1) / 2, s * (s + 1) * (2 * t - 1) / 4,
              -s * t * (s + 1), s * (s + 1) * (2 * t + 1) / 4, (1 - s * s) * (2 * t + 1) / 2,
              s * (s - 1) * (2 * t + 1) / 4, -s * t * (s - 1), -2 * t * (1 - s * s)}}};
  } else {
    return {};
  }
}

}  // namespace zema
