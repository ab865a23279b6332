// The plastic law 2: forward steps of sub-increments, and a scaling back to the surface.
#pragma once

#include "constitutive/law.h"

namespace zema {

/// `ECUAB`: the part of the elastic increment beyond the surface is applied in sub-increments, each with the multiplier
/// max(0, a ds / (H + a D g)); a stress that ends above the surface is scaled onto it. lastYield holds the yield value
/// of the step before, with its
/// sign: under confining pressure it may lie far below 0. Literature: Owen & Hinton (1980).
template <int N>
void ECUAB(const LawInput<N>& input, LawState& state, LawResult<N>& result);

}  // namespace zema
