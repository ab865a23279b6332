// The plastic law 2.
#include "constitutive/subincrementing.h"

#include <algorithm>

#include "constitutive/plastic_answer.h"

namespace zema {
namespace {

/// How far the trial stress lies above the surface, and the part of the elastic increment that is plastic.
struct Excess {
  double e;
  double plasticPart;
};

Excess excessOf(double F, double K, double lastYield) {
  if (lastYield >= K) return {F - std::abs(lastYield), 1.0};
  const double e = F - std::abs(K);
  return {e, e / (F - lastYield)};
}

int subincrements(double e, double K) {
  constexpr double most = 1000.0;  // a spent strength would ask for any number
  return static_cast<int>(std::clamp(8.0 * e / std::abs(K) + 1.0, 1.0, most));
}

}  // namespace

template <int N>
void ECUAB(const LawInput<N>& input, LawState& state, LawResult<N>& result) {
  const MaterialPoint<N>& at = input.at;
  double& K = state.INTVAR[internal::yieldStress];
  YieldState<N> yield;
  MODAUX_R(input, input.SIGMA, Normals::kept, state, yield);
  const double trialF = yield.yield.F;
  const char* const words = "  >>>>  >>>>  DETENIDO EN -ECUAB- ";
  if (!std::isfinite(trialF)) stopReturn(at, words);
  const Excess excess = excessOf(trialF, K, state.lastYield);
  if (YieldTest(at.pass, K, trialF).elastic(excess.e)) {
    state.lastYield = trialF;
    state.INTVAR[internal::reducedYieldStress] = yield.factor * K;
    return answerElastic(at, input.SIGMA, state, result);
  }

  const Matrix<N> D = plasticMatrix(input);
  const int steps = subincrements(excess.e, K);
  Stress<N> stress = input.PRESG;
  stress.add(1.0 - excess.plasticPart, input.STRES);
  const Stress<N> elasticPart = (excess.plasticPart / steps) * input.STRES;
  Strain<N> plastic;
  MODAUX(input, stress, D, Normals::recomputed, {}, state, yield);
  for (int step = 0; step < steps; ++step) {
    const double multiplier = std::max(0.0, yield.A * dot(elasticPart, yield.a));
    const Strain<N> increment = multiplier * yield.g;
    plastic += increment;
    stress += elasticPart;
    stress.add(-multiplier, yield.Dg);
    MODAUX(input, stress, D, Normals::recomputed, {increment, state.INTVAR[internal::kappa], true}, state, yield);
  }
  state.lastYield = yield.yield.F;
  if (!std::isfinite(state.lastYield)) stopReturn(at, words);
  if (state.lastYield > std::abs(K)) {
    stress *= std::abs(K) / state.lastYield;
    state.lastYield = std::abs(K);
  }
  answerPlastic(at, stress, plastic, state, result);
  answerTangent(at.pass, D, yield.a, yield.g, hardeningSlope(state), result);
}

template void ECUAB(const LawInput<4>&, LawState&, LawResult<4>&);
template void ECUAB(const LawInput<6>&, LawState&, LawResult<6>&);

}  // namespace zema
