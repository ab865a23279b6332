// The direction of the greater principal value in a plane.
#include "results/principal_direction.h"

#include <cmath>

namespace zema {

double principalDirection(double xx, double yy, double xy) {
  constexpr double eighthTurn = 0.7853981635;
  constexpr double quarterTurn = 1.570796327;
  const double half = (xx - yy) / 2.0;
  const double angle = std::abs(half) > 1.0e-7 ? std::atan(xy / half) / 2.0 : eighthTurn;
  return angle + (xx < yy ? quarterTurn : 0.0);
}

}  // namespace zema
