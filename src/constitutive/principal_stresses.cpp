// Principal stresses and the shares of tension and compression in them.
#include "constitutive/principal_stresses.h"

#include <cmath>
#include <numbers>

namespace zema {

std::array<double, 2> PSTRE2(double xx, double yy, double xy) {
  const double centre = (xx + yy) / 2.0, half = (xx - yy) / 2.0;
  const double radius = std::sqrt(half * half + xy * xy);
  return {centre + radius, centre - radius};
}

std::array<double, 3> PSTRE3(const Stress<6>& SIGMA) {
  const double m = (SIGMA[0] + SIGMA[1] + SIGMA[3]) / 3.0;
  Stress<6> d = SIGMA;
  for (const int i : {0, 1, 3}) d[i] -= m;
  const double J2 = (d[0] * d[0] + d[1] * d[1] + d[3] * d[3]) / 2.0 + d[2] * d[2] + d[4] * d[4] + d[5] * d[5];
  const double cube = J2 * std::sqrt(J2);
  if (cube == 0.0) return {SIGMA[0], SIGMA[1], SIGMA[3]};
  const double J3 = DETERM3D(tensorOf(d));
  const double sine = std::clamp(-3.0 * std::numbers::sqrt3 * J3 / (2.0 * cube), -1.0, 1.0);
  const double theta = std::asin(sine) / 3.0;
  const double r = 2.0 * std::sqrt(J2 / 3.0);
  constexpr double turn = 2.0 * std::numbers::pi / 3.0;
  return {m + r * std::sin(theta + turn), m + r * std::sin(theta), m + r * std::sin(theta + 2.0 * turn)};
}

template <>
std::array<double, 3> PRINSI<6>(const Stress<6>& SIGMA) {
  return PSTRE3(SIGMA);
}
template <>
std::array<double, 3> PRINSI<4>(const Stress<4>& SIGMA) {
  const auto [first, second] = PSTRE2(SIGMA[0], SIGMA[1], SIGMA[2]);
  return {first, second, SIGMA[3]};
}

TensionShare tensionShare(const std::array<double, 3>& principal) {
  TensionShare share;
  for (const double value : principal) {
    share.S += std::abs(value);
    share.St += (std::abs(value) + value) / 2.0;
    share.Sc += (std::abs(value) - value) / 2.0;
  }
  return share;
}

}  // namespace zema
