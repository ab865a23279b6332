// Damage by one scalar with an explicit formula.
#pragma once

#include "constitutive/damage_growth.h"

namespace zema {

/// The damage of the trial state: places 6 (damage), 7 (dissipation), 8 (threshold) and the fatigue values of the state
/// are written, no stress, tangent or place 4. For laws that couple damage with something else.
/// Throws ConstitutiveStop for an element beyond the limit length and for a given slope with the exponential law.
template <int N>
[[nodiscard]] DamageGrowth<N> growSimpleDamage(const LawInput<N>& input, LawState& state);

/// `DEGRAA`: damage by one scalar, linear or exponential softening, criteria 1 to 8. Literature: Oliver et al. (1990),
/// Simo & Ju (1987).
template <int N>
void DEGRAA(const LawInput<N>& input, LawState& state, LawResult<N>& result);

/// Throws InputFault for a material that `DEGRAA` cannot work with. who: what the fault is about.
void checkSimpleDamage(const Material& material, const std::string& who);

}  // namespace zema
