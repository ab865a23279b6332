// The manager of serial-parallel layers.
#pragma once

#include "composite/layer_mixer.h"

namespace zema {

/// `SP_MNGER`: matrix (component 1) and fibre (component 2) share the parallel strains and the serial stresses. All in
/// layer axes. Throws RunEnd when no common serial stress is found.
template <int N>
[[nodiscard]] MixedPoint<N> SP_MNGER(const LayerPlan<N>& layer, const LayerInput<N>& input);

}  // namespace zema
