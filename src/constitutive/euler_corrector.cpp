// The plastic laws 1 and 9.
#include "constitutive/euler_corrector.h"

#include <algorithm>

#include "constitutive/plastic_answer.h"

namespace zema {
namespace {

template <int N>
void correct(const LawInput<N>& input, int passes, const char* words, LawState& state, LawResult<N>& result) {
  const MaterialPoint<N>& at = input.at;
  const Matrix<N> D = plasticMatrix(input);
  YieldState<N> yield;
  const auto above = [&yield, &state] { return yield.yield.F - std::abs(state.INTVAR[internal::yieldStress]); };
  MODAUX(input, input.SIGMA, D, Normals::recomputed, {}, state, yield);
  double f = above();
  const YieldTest test(at.pass, state.INTVAR[internal::yieldStress], yield.yield.F);
  if (test.elastic(f)) return answerElastic(at, input.SIGMA, state, result);

  Stress<N> stress = input.SIGMA;
  Strain<N> plastic;
  for (int pass = 1; !test.returned(f); ++pass) {
    if (pass > passes || !std::isfinite(f)) stopReturn(at, words);
    const double multiplier = multiplierOf(f, yield);
    const Strain<N> increment = multiplier * yield.g;
    plastic += increment;
    stress.add(-multiplier, yield.Dg);
    MODAUX(input, stress, D, flowOf(at.material), {increment, state.INTVAR[internal::kappa], true}, state, yield);
    f = above();
  }
  answerPlastic(at, stress, plastic, state, result);
  answerTangent(at.pass, D, yield.a, yield.g, hardeningSlope(state), result);
}

}  // namespace

template <int N>
void ECUAA(const LawInput<N>& input, LawState& state, LawResult<N>& result) {
  constexpr int passes = N == 6 ? 299 : 999;
  correct(input, passes, "  >>>>  >>>>  DETENIDO EN -ECUAA- ", state, result);
}

template <int N>
void ECUAE(const LawInput<N>& input, LawState& state, LawResult<N>& result) {
  constexpr int passes = N == 6 ? 59 : 499;
  correct(input, passes, "  >>>>  >>>>  DETENIDO EN -ECUAE- ", state, result);
}

template void ECUAA(const LawInput<4>&, LawState&, LawResult<4>&);
template void ECUAA(const LawInput<6>&, LawState&, LawResult<6>&);
template void ECUAE(const LawInput<4>&, LawState&, LawResult<4>&);
template void ECUAE(const LawInput<6>&, LawState&, LawResult<6>&);

}  // namespace zema
