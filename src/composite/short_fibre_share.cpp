// Shear lag of short fibres.
#include "composite/short_fibre_share.h"

#include <cmath>

namespace zema {

double transferLengths(const Layer& layer, const Material& fibre, const Material& matrix) {
  const double f2 = layer.components[1].PARTV, f3 = layer.components[2].PARTV;
  const double given = matrix(slot::shearXY);
  const double Gm = given != 0.0 ? given : matrix(slot::youngX) / (2.0 * (matrix(slot::poissonXY) + 1.0));
  const double Q = std::sqrt(f3 / f2 + 1.0);
  const double r = fibre(slot::fibreRadius);
  const double beta = std::sqrt(2.0 * Gm / (fibre(slot::youngX) * r * r * std::log(Q)));
  return beta * fibre(slot::fibreLength);
}

double NPARORI(double transferLengths) {
  constexpr double cannotBeRaised = 700.0;  // cosh would overflow; ln(2 cosh x / 3) is x - ln 3 there
  if (transferLengths > cannotBeRaised) return 1.0 - std::log(3.0) / transferLengths;
  const double c = std::cosh(transferLengths) / 3.0;
  return std::acosh(c) / transferLengths;  // ln(c + sqrt(c^2 - 1)), which is not a number for c < 1
}

}  // namespace zema
