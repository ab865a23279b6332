// Damage by one scalar whose strength follows the energy that it has dissipated.
#pragma once

#include <string>

#include "constitutive/damage_growth.h"

namespace zema {

/// The damage under an effective stress SIGMA and the strain it comes from. Written are places 6 (damage), 7
/// (dissipation), 8 (threshold), 10 (normalised dissipation) and the fatigue values of the state, no stress, tangent or
/// place 4: the strength is the growth's. For laws that couple damage with something else. Throws ConstitutiveStop for
/// an element beyond the limit length, a wrong end stress, and when the loop does not end.
template <int N>
[[nodiscard]] DamageGrowth<N> growGeneralDamage(const LawInput<N>& input, const Stress<N>& SIGMA,
                                                const Strain<N>& strain, LawState& state);

/// `DEGRAB`: damage by one scalar with curves of strength over dissipation in tension and compression, criteria 1 to 5.
/// Literature: Oliver et al. (1990).
template <int N>
void DEGRAB(const LawInput<N>& input, LawState& state, LawResult<N>& result);

/// Throws InputFault for a material that `DEGRAB` cannot work with. who: what the fault is about.
void checkGeneralDamage(const Material& material, const std::string& who);

}  // namespace zema
