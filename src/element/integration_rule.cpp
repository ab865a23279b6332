// The table of integration rules and the look-up in it.
#include "element/integration_rule.h"

#include <algorithm>
#include <cassert>

#include "foundation/single_precision.h"

namespace zema {

namespace {

struct Row {
  RuleFamily family{};
  int points = 0;
  IntegrationRule rule;
};

constexpr double gaussOfTwo = 0.5773502691896258;
constexpr double gaussOfThree = 0.7745966692414834;
constexpr double third = single(1.0F / 3.0F);
constexpr double sixth = 1.0 / 6.0;

constexpr IntegrationRule tetrahedronPoint{{0.25}, {sixth}};
constexpr IntegrationRule linePoint{{0.0}, {2.0}};
constexpr IntegrationRule trianglePoint{{third}, {0.5}};
constexpr IntegrationRule lobattoTwo{{-1.0, 1.0}, {1.0, 1.0}};
constexpr IntegrationRule lobattoThree{{-1.0, 0.0, 1.0}, {1.0 / 3.0, 4.0 / 3.0, 1.0 / 3.0}};
constexpr IntegrationRule inside{{sixth, 2.0 / 3.0, sixth}, {sixth, sixth, sixth}};
constexpr IntegrationRule midside{{0.5, 0.5, 0.0}, {sixth, sixth, sixth}};

constexpr std::array rows{
    Row{RuleFamily::gauss, 1, tetrahedronPoint},
    Row{RuleFamily::gauss, 2, {{-gaussOfTwo, gaussOfTwo}, {1.0, 1.0}}},
    Row{RuleFamily::gauss, 3, {{-gaussOfThree, 0.0, gaussOfThree}, {5.0 / 9.0, 8.0 / 9.0, 5.0 / 9.0}}},
    Row{RuleFamily::lobatto, 1, tetrahedronPoint},
    Row{RuleFamily::lobatto, 2, lobattoTwo},
    Row{RuleFamily::lobatto, 3, lobattoThree},
    Row{RuleFamily::lobattoByNumber3, 1, tetrahedronPoint},
    Row{RuleFamily::lobattoByNumber3, 2, lobattoTwo},
    Row{RuleFamily::lobattoByNumber3, 3, lobattoThree},
    Row{RuleFamily::triangle, 1, trianglePoint},
    Row{RuleFamily::triangle, 2, inside},
    Row{RuleFamily::triangle, 3, inside},
    Row{RuleFamily::triangleMidside, 1, trianglePoint},
    Row{RuleFamily::triangleMidside, 2, midside},
    Row{RuleFamily::triangleMidside, 3, midside},
};

const Row* find(int NINTE, int NGAUS) {
  const auto* const row = std::find_if(
      rows.begin(), rows.end(), [=](const Row& one) { return one.family == RuleFamily{NINTE} && one.points == NGAUS; });
  return row == rows.end() ? nullptr : row;
}

}  // namespace

bool hasRule(int NINTE, int NGAUS) {
  return find(NINTE, NGAUS) != nullptr;
}

const IntegrationRule& INTEGR(RuleTable table, int NINTE, int NGAUS) {
  const bool alongLine = RuleFamily{NINTE} < RuleFamily::triangle;
  if (table == RuleTable::plane && alongLine && NGAUS == 1) return linePoint;
  const Row* const row = find(NINTE, NGAUS);
  assert(row != nullptr);
  return row->rule;
}

}  // namespace zema
