// The order of integration points.
#include "element/point_loop.h"

namespace zema {

int IEQFU(const ElementData& element, const ElementSizes& sizes, int i, int j) {
  if (sizes.NGAU2 > 1) return j;
  if (RuleFamily{element.NINTE} == RuleFamily::triangle) return i == 3 ? 2 : 1;
  if (i == 1) return element.NNODE == 6 ? 3 : 1;
  return i == 2 ? 2 : 1;
}

int JEQFU(const ElementSizes& sizes, int k) {
  return sizes.NGAU3 == 1 ? 1 : k;
}

std::vector<RulePoint> pointLoop(RuleTable table, const ElementData& element, const ElementSizes& sizes) {
  const IntegrationRule& rule = INTEGR(table, element.NINTE, element.NGAUS);
  const auto position = [&rule](int place) { return rule.POSGP[static_cast<std::size_t>(place - 1)]; };
  const auto weight = [&rule](int place, int count) {
    return count == 1 ? 1.0 : rule.WEIGP[static_cast<std::size_t>(place - 1)];
  };
  std::vector<RulePoint> points;
  for (int i = 1; i <= sizes.NGAU1; ++i)
    for (int j = 1; j <= sizes.NGAU2; ++j)
      for (int k = 1; k <= sizes.NGAU3; ++k)
        points.push_back(
            {.index = {i, j, k},
             .s = position(IEQFU(element, sizes, i, j)),
             .t = position(i),
             .u = position(JEQFU(sizes, k)),
             .weight = weight(j, sizes.NGAU2) * weight(k, sizes.NGAU3) * rule.WEIGP[static_cast<std::size_t>(i - 1)]});
  return points;
}

}  // namespace zema
