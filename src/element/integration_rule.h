// The integration rules that an element card can ask for.
#pragma once

#include <array>

namespace zema {

/// Families of rules by the deck's code NINTE.
enum class RuleFamily : int {
  gauss = 1,
  lobatto = 2,           ///< end points included
  lobattoByNumber3 = 3,  ///< the same rules as 2
  triangle = 4,          ///< points inside the triangle
  triangleMidside = 5    ///< points at the middles of the sides
};

/// Elements with one point of families 1 to 3 differ: solids take that of the tetrahedron, plane ones that of the line.
enum class RuleTable { solid, plane };

/// Abscissae and weights of one direction (or, with families 4 and 5, of a triangle walked by one index).
struct IntegrationRule {
  std::array<double, 3> POSGP{};  ///< abscissae of the NGAUS points
  std::array<double, 3> WEIGP{};  ///< their weights
};

/// Whether NGAUS points of family NINTE are a rule. Families 4 and 5 fill three places with 2 points asked for as well.
[[nodiscard]] bool hasRule(int NINTE, int NGAUS);

/// `INTEGR`: the rule of NGAUS points of a family. The pair must have a rule.
/// Literature: Hughes (2000), sec. 3.8, 3.I (Gauss, Lobatto and triangle rules).
[[nodiscard]] const IntegrationRule& INTEGR(RuleTable table, int NINTE, int NGAUS);

}  // namespace zema
