// What the plastic laws share around their returns: the yield test, and the answers of an elastic and a plastic step.
#pragma once

#include <algorithm>
#include <cmath>

#include "constitutive/law_failure.h"
#include "constitutive/yield_evaluator.h"

namespace zema {

/// Yield test of a law call.
struct YieldTest {
  double tolerance = 0.0;  ///< TOLER 1e-4 times the yield stress at the start, force / length^2
  double rounding = 0.0;   ///< what a stress of the size of the trial one cannot resolve

  /// K: yield stress, F: yield value of the trial stress.
  YieldTest(const PassContext& pass, double K, double F)
      : tolerance(std::abs(pass.TOLER * 1.0e-4 * K)), rounding(1.0e-14 * std::abs(F)) {}
  /// Whether the trial stress, f above the surface, is elastic.
  [[nodiscard]] bool elastic(double f) const { return f < tolerance || f <= 0.0; }
  /// Whether a return has come near enough to the surface.
  [[nodiscard]] bool returned(double f) const { return f < tolerance || f <= rounding; }
};

/// Adds to the sums what a plastic step gives: J V times stress . plastic increment, kappa, and 1 where kappa is above
/// 0.
template <int N>
void addPlasticSums(const MaterialPoint<N>& at, const LawState& state, LawResult<N>& result) {
  const double volume = at.geometry.DETF * at.geometry.dV, kappa = state.INTVAR[internal::kappa];
  result.sums += {volume * dot(result.SGTOT, result.plasticIncrement), volume * kappa, kappa > 0.0 ? volume : 0.0};
}

/// The answer of an elastic step: the trial stress.
template <int N>
void answerElastic(const MaterialPoint<N>& at, const Stress<N>& trial, LawState& state, LawResult<N>& result) {
  result.SGTOT = trial;
  state.INTVAR[internal::elasticFlag] = 1.0;
  addPlasticSums(at, state, result);
}

/// The answer of a plastic step, without a tangent.
template <int N>
void answerPlastic(const MaterialPoint<N>& at, const Stress<N>& stress, const Strain<N>& plasticIncrement,
                   LawState& state, LawResult<N>& result) {
  result.SGTOT = stress;
  result.plasticIncrement = plasticIncrement;
  state.INTVAR[internal::elasticFlag] = 0.0;
  addPlasticSums(at, state, result);
}

/// Gives the answer its elasto-plastic tangent, when the pass wants one. D, a, g, H: see `PLRIGI`.
template <int N>
void answerTangent(const PassContext& pass, const Matrix<N>& D, const Strain<N>& a, const Strain<N>& g, double H,
                   LawResult<N>& result) {
  if (!pass.wantsTangent()) return;
  result.tangent = PLRIGI(D, a, g, H);
  result.hasTangent = true;
}

/// The hardening slope of the multiplier, INTVAR(5) / INTVAR(11).
[[nodiscard]] inline double hardeningSlope(const LawState& state) {
  return state.INTVAR[internal::hardening] / state.INTVAR[internal::flowScale];
}

/// Throws InputFault for a material whose potential has no flow. who: what the fault is about.
inline void checkPlasticFlow(const Material& material, const std::string& who) {
  if (material.NCRIP == Criterion::shear)
    throw InputFault(who + ", a plastic law, with potential 8, along which nothing can flow");
}

/// f A, unless softening makes it so large that the stress would turn round: then the step that the surface as it
/// stands asks for. F is convex, so such a step ends outside the surface and the next one takes in the softening.
template <int N>
[[nodiscard]] double multiplierOf(double f, const YieldState<N>& yield) {
  const double lowering = dot(yield.Dg, yield.a);  // of F for a unit of the multiplier
  const double multiplier = std::max(0.0, f * yield.A);
  return multiplier * lowering > yield.yield.F || yield.A < 0.0 ? f / lowering : multiplier;
}

/// Stops a law whose return does not end, or ends in a value that is not finite.
template <int N>
[[noreturn]] void stopReturn(const MaterialPoint<N>& at, const std::string& words) {
  stopAtPoint(at, words,
              "The return to the yield surface did not converge, or its values are not finite:\n  take smaller "
              "increments, a larger TOLER, law 1 for criteria with edges, and look for softening that is\n  steeper "
              "than the elements allow (fracture energies, FRACL).");
}

}  // namespace zema
