// The place of a user's own law.
#include "constitutive/user_law.h"

namespace zema {

template <int N>
void ECUAJ(const LawInput<N>& /*input*/, LawState& state, LawResult<N>& result) {
  result.SGTOT = {};
  result.tangent = {};
  result.hasTangent = true;
  state.INTVAR[internal::elasticFlag] = 0.0;
}

template void ECUAJ(const LawInput<4>&, LawState&, LawResult<4>&);
template void ECUAJ(const LawInput<6>&, LawState&, LawResult<6>&);

}  // namespace zema
