// The tensile and the compressive part of a stress, by its principal values, and how the tensile part changes.
#pragma once

#include "tensor/voigt.h"

namespace zema {

/// `JACOBIEIGEN`: principal stresses, in descending order, and their directions.
template <int N>
[[nodiscard]] PrincipalAxes JACOBIEIGEN(const Stress<N>& SIGMA) {
  return principalAxes(tensorOf(SIGMA));
}

/// Symmetric part of the product of the principal directions i and j.
template <int N>
[[nodiscard]] Stress<N> directionProduct(const PrincipalAxes& axes, int i, int j);

/// SIGMA = positive + negative, with the positive and the negative principal values. Literature: Ortiz (1985).
template <int N>
struct SpectralSplit {
  explicit SpectralSplit(const Stress<N>& SIGMA);

  /// Q+ = d positive / d SIGMA, finite at equal principal values. A principal value of 0 counts as negative.
  [[nodiscard]] Matrix<N> positiveDerivative() const;

  PrincipalAxes axes;
  Stress<N> positive;
  Stress<N> negative;
};

}  // namespace zema
