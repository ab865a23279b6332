// The loop over the integration points of an element: which points, in which order, with which weights.
#pragma once

#include <vector>

#include "element/integration_rule.h"
#include "model/kernel.h"

namespace zema {

/// One integration point.
struct RulePoint {
  PointIndex index;  ///< its counters in the three loops
  double s = 0.0;    ///< natural coordinates
  double t = 0.0;
  double u = 0.0;
  double weight = 0.0;  ///< product of the weights of the directions that have more than one point, and of the first
};

/// `IEQFU`: place (from 1) in POSGP of the coordinate s at loop counters i and j. With NGAU2 = 1 a triangle or
/// tetrahedron rule is walked by i alone, and the place is that of the second coordinate of point i.
[[nodiscard]] int IEQFU(const ElementData& element, const ElementSizes& sizes, int i, int j);

/// `JEQFU`: place (from 1) in POSGP of the coordinate u at loop counter k.
[[nodiscard]] int JEQFU(const ElementSizes& sizes, int k);

/// The points of an element in the order of every element loop: i (along t), j (along s), k (along u), k fastest.
/// The element's NINTE and NGAUS must have a rule.
[[nodiscard]] std::vector<RulePoint> pointLoop(RuleTable table, const ElementData& element, const ElementSizes& sizes);

}  // namespace zema
