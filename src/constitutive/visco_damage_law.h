// The standard solid with one scalar of damage.
#pragma once

#include <string>

#include "constitutive/law.h"

namespace zema {

/// `VISDAM`: exponential damage, driven by the elastic stress of the whole strain, on the standard solid of `VISCOE`;
/// the old stress carries the new damage too. Writes damage, dissipation, threshold, yieldStress ((1 - d) tau) and
/// reducedYieldStress of INTVAR. It counts as elastic, with the elastic tangent. Throws ConstitutiveStop when the
/// fracture energy is too small for the length of the element. Literature: Simo & Ju (1987).
template <int N>
void VISDAM(const LawInput<N>& input, LawState& state, LawResult<N>& result);

/// Throws InputFault for a material that `VISDAM` cannot work with. who: what the fault is about.
void checkViscoDamage(const Material& material, const std::string& who);

}  // namespace zema
