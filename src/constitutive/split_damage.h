// What the laws with damage in tension and in compression share: stress and tangent of a stress split by its sign.
#pragma once

#include "constitutive/law.h"
#include "constitutive/spectral_split.h"

namespace zema {

/// One of the two damage variables in a step.
template <int N>
struct DamageScalar {
  double d = 0.0;          ///< at the end of the step
  double increment = 0.0;  ///< what the step adds
  double slope = 0.0;      ///< dd/dtau, 0 when it does not grow
  Stress<N> gradient;      ///< dd / d strain; 0 when it does not grow
};

/// Stress (1 - d+) positive + (1 - d-) negative with its sums, dissipation (place 7) and elastic flag (place 9), and
/// the consistent tangent [(1 - d+) Q+ + (1 - d-) (I - Q+)] D - positive (x) d+' n+ - negative (x) d-' n-. Places 6 and
/// 13 take the damages.
template <int N>
void returnSplitStress(const LawInput<N>& input, const SpectralSplit<N>& split, const DamageScalar<N>& tension,
                       const DamageScalar<N>& compression, LawState& state, LawResult<N>& result);

}  // namespace zema
