// Principal stresses and the shares of tension and compression in them.
#pragma once

#include <array>

#include "tensor/voigt.h"

namespace zema {

/// `PRINSI`: the three principal stresses: `PSTRE3` of six components; of four those of the plane by `PSTRE2` and zz.
template <int N>
[[nodiscard]] std::array<double, 3> PRINSI(const Stress<N>& SIGMA);
/// `PSTRE2`: the two principal stresses of xx, yy, xy.
[[nodiscard]] std::array<double, 2> PSTRE2(double xx, double yy, double xy);
/// `PSTRE3`: the three principal stresses, from the invariants.
[[nodiscard]] std::array<double, 3> PSTRE3(const Stress<6>& SIGMA);

/// How much of a stress state is tension.
struct TensionShare {
  double S = 0.0;   ///< sum of the magnitudes of the principal stresses
  double St = 0.0;  ///< sum of the tensile ones
  double Sc = 0.0;  ///< sum of the magnitudes of the compressive ones
  [[nodiscard]] double r() const { return S > 0.0 ? St / S : 0.0; }  ///< share of tension; 0 without stress
};
[[nodiscard]] TensionShare tensionShare(const std::array<double, 3>& principal);

}  // namespace zema
