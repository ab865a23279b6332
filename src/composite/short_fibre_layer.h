// The manager of short-fibre layers.
#pragma once

#include "composite/layer_mixer.h"

namespace zema {

/// Shares of the five components of a short-fibre layer, of which a part N of fibre and matrix works in parallel:
/// plain, fibre and matrix in parallel, fibre and matrix in series.
[[nodiscard]] std::array<double, 5> shortFibreShares(double f1, double f2, double f3, double N);

/// Moduli or tangents of a short-fibre layer from those of its parts. parallel: of components 1 to 3; series: of
/// components 4 and 5 in series.
template <int N>
[[nodiscard]] Matrix<N> shortFibreMatrix(const std::array<double, 5>& shares,
                                         const std::array<const Matrix<N>*, 3>& parallel, const Matrix<N>& series);

/// `NT_MNGER`: components 1 to 3 have the strain of the layer, components 4 and 5 (fibre and matrix of the zone of load
/// transfer) share its stress; the damage of component 5 at the start of the step turns parallel share into series
/// share. All in layer axes. Throws RunEnd when components 4 and 5 find no common stress.
template <int N>
[[nodiscard]] MixedPoint<N> NT_MNGER(const LayerPlan<N>& layer, const LayerInput<N>& input);

}  // namespace zema
