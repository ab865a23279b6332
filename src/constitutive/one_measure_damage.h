// Damage by two scalars that follow one equivalent stress.
#pragma once

#include <string>

#include "constitutive/law.h"

namespace zema {

/// `DEGRA18`: damage in tension and in compression by one equivalent stress, criteria 1 to 5. The share of tension
/// tells which of the two grows; damage in tension is not left below that in compression. Throws ConstitutiveStop for
/// an element beyond the limit length. Literature: Ortiz (1985) for the split.
template <int N>
void DEGRA18(const LawInput<N>& input, LawState& state, LawResult<N>& result);

/// Throws InputFault for a material that `DEGRA18` cannot work with. who: what the fault is about.
void checkOneMeasureDamage(const Material& material, const std::string& who);

}  // namespace zema
