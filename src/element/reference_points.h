// The integration points of one kind of elements with their shape functions, made once and shared by all of them.
#pragma once

#include <vector>

#include "element/point_loop.h"
#include "element/shape_functions.h"

namespace zema {

/// An integration point in natural coordinates.
template <int dimensions, int NNODE>
struct ReferencePoint {
  PointIndex index;                           ///< its counters in the three loops
  double weight = 0.0;                        ///< dV = det J times it
  ShapeFunctions<dimensions, NNODE> shape{};  ///< SHAPEN and DERIV at the point
};

/// The points in the order of the point loop.
template <int dimensions, int NNODE>
using ReferencePoints = std::vector<ReferencePoint<dimensions, NNODE>>;

template <int dimensions, int NNODE>
[[nodiscard]] ReferencePoints<dimensions, NNODE> referencePoints(const std::vector<RulePoint>& rule) {
  ReferencePoints<dimensions, NNODE> points;
  for (const RulePoint& point : rule) {
    if constexpr (dimensions == 3)
      points.push_back({point.index, point.weight, SFR3D<NNODE>(point.s, point.t, point.u)});
    else
      points.push_back({point.index, point.weight, SFR2D<NNODE>(point.s, point.t)});
  }
  return points;
}

}  // namespace zema
