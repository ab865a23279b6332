// Damage by two scalars with a measure each.
#pragma once

#include <string>

#include "constitutive/law.h"

namespace zema {

/// `DEGRAC`: damage in tension by the energy norm of the tensile part of the stress, damage in compression by an
/// octahedral norm of the compressive part. It looks at no criterion. Throws ConstitutiveStop for an element beyond the
/// limit length. Literature: Faria, Oliver & Cervera (1998).
template <int N>
void DEGRAC(const LawInput<N>& input, LawState& state, LawResult<N>& result);

/// Throws InputFault for a material that `DEGRAC` cannot work with. who: what the fault is about.
void checkTwoMeasureDamage(const Material& material, const std::string& who);

}  // namespace zema
