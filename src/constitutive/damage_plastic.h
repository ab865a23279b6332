// The laws 12 and 13: damage coupled with plasticity.
#pragma once

#include <string>

#include "constitutive/law.h"

namespace zema {

/// `ECUAG`: damage d by `growSimpleDamage` from the trial state, backward Euler on the stress of the undamaged
/// material, and (1 - d) times the stress that this returns. Literature: Luccioni, Oller & Danesi (1996).
template <int N>
void ECUAG(const LawInput<N>& input, LawState& state, LawResult<N>& result);

/// `ECUAH`: damage d by `growGeneralDamage` from D times the strain, then backward Euler on (1 - d) times trial stress
/// and elastic matrix.
template <int N>
void ECUAH(const LawInput<N>& input, LawState& state, LawResult<N>& result);

/// Throw InputFault for a material that `ECUAG` or `ECUAH` cannot work with. who: what the fault is about.
void checkSimpleDamagePlastic(const Material& material, const std::string& who);
void checkGeneralDamagePlastic(const Material& material, const std::string& who);

}  // namespace zema
