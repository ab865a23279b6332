// The plastic laws 1 and 9: repeated corrector on the current multiplier.
#pragma once

#include "constitutive/law.h"

namespace zema {

/// `ECUAA`: while the stress lies above the surface, a plastic increment max(0, A f) g brings it back; the hardening
/// variable accumulates pass by pass. Literature: Ortiz & Simo (1986), cutting plane.
template <int N>
void ECUAA(const LawInput<N>& input, LawState& state, LawResult<N>& result);
/// `ECUAE`: the same with fewer passes.
template <int N>
void ECUAE(const LawInput<N>& input, LawState& state, LawResult<N>& result);

}  // namespace zema
