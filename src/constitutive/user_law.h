// The place of a user's own law, code 15.
#pragma once

#include "constitutive/law.h"

namespace zema {

/// `ECUAJ`: as delivered it is no law: stress, tangent and elastic flag are 0. Replace the body, see "Add a law" in
/// docs/architecture.md.
template <int N>
void ECUAJ(const LawInput<N>& input, LawState& state, LawResult<N>& result);

}  // namespace zema
