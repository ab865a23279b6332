// The standard solid: a spring in parallel with a spring and a damper in series.
#pragma once

#include "constitutive/law.h"

namespace zema {

/// The stress of the standard solid at the end of a step: a PRESG + D w with a = exp(-dt / t), b = Ep dt / (2 E t) and
/// w = (1 - b) strain - (1 + b) a (strain at the start of the step), E, Ep, t: slots 1, 49, 50. oldShare: factor of
/// PRESG; share: factor of D. Throws ConstitutiveStop when t is not above 0. Literature: Simo & Hughes (1998).
template <int N>
[[nodiscard]] Stress<N> relaxedStress(const LawInput<N>& input, double oldShare, double share);

/// `VISCOE`: the standard solid. Held strain relaxes from E to E - Ep. It counts as elastic, with the elastic tangent.
template <int N>
void VISCOE(const LawInput<N>& input, LawState& state, LawResult<N>& result);

}  // namespace zema
