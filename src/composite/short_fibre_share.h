// The share of a short-fibre layer that works in parallel, by shear lag.
#pragma once

#include "model/composites.h"
#include "model/materials.h"

namespace zema {

/// beta Lf of a short-fibre layer: the fibre length (component 2, slot 33) in lengths of load transfer, for a fibre of
/// radius slot 32 in a matrix (component 3). Literature: Cox (1952).
[[nodiscard]] double transferLengths(const Layer& layer, const Material& fibre, const Material& matrix);

/// `NPARORI`: the share N0 of fibre and matrix that works in parallel without damage, for beta Lf. It has no real value
/// when cosh(beta Lf) is below 3: the result is then not a number.
[[nodiscard]] double NPARORI(double transferLengths);

/// `CALNPAR`: the same with a damage d of the matrix in the series zone.
[[nodiscard]] inline double CALNPAR(double N0, double d) {
  return N0 * (1.0 - d);
}

}  // namespace zema
