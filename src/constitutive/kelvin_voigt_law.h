// The Kelvin-Voigt solid: a spring in parallel with a damper.
#pragma once

#include "constitutive/law.h"

namespace zema {

/// `VISCOK`: stress = D (strain + t rate), t: slot 50; dynamic analysis only. The energy sum takes
/// dt / 2 ((rate - old rate) D t (rate - old rate) + rate D t rate) times the volume. It counts as elastic, with the
/// elastic tangent: the viscous matrix is the solver's. Throws ConstitutiveStop in a static run.
template <int N>
void VISCOK(const LawInput<N>& input, LawState& state, LawResult<N>& result);

}  // namespace zema
