// The elastic law.
#include "constitutive/elastic_law.h"

namespace zema {

template <int N>
void ECUA0(const LawInput<N>& input, LawState& state, LawResult<N>& result) {
  result.SGTOT = input.SIGMA;
  state.INTVAR[internal::elasticFlag] = 1.0;
}

template void ECUA0(const LawInput<4>&, LawState&, LawResult<4>&);
template void ECUA0(const LawInput<6>&, LawState&, LawResult<6>&);

}  // namespace zema
