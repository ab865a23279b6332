// The elastic law.
#pragma once

#include "constitutive/law.h"

namespace zema {

/// `ECUA0`: the trial stress is the stress.
template <int N>
void ECUA0(const LawInput<N>& input, LawState& state, LawResult<N>& result);

}  // namespace zema
