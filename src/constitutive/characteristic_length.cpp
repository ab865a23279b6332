// Characteristic length of a point and the limit that a softening law sets it.
#include "constitutive/characteristic_length.h"

#include <cmath>

#include "foundation/errors.h"

namespace zema {

double characteristicLength(const PointGeometry& geometry, LengthRule rule, bool barsTakeMeasure) {
  const bool bar = geometry.NTYPE == 1 || geometry.NTYPE == 2;
  const double measure = rule == LengthRule::pointCubeRoot ? geometry.dV : geometry.TVOLU;
  if (bar && barsTakeMeasure) return measure;
  if (geometry.FRACL != 0.0) return geometry.FRACL;
  const double current = measure * geometry.DETF;
  const bool plane = geometry.NTYPE >= 3 && geometry.NTYPE <= 5;
  return rule == LengthRule::pointCubeRoot && !plane ? std::cbrt(current) : std::sqrt(current);
}

void checkLength(double l, double limit, std::string_view words) {
  if (limit > l) return;
  throw ConstitutiveStop(std::string(words), l, limit,
                         "The first number is the characteristic length of the element, the second the greatest "
                         "that the fracture\n  energy of the material allows (2 E G / f^2): use smaller elements, a "
                         "larger fracture energy or a lower strength.");
}

}  // namespace zema
