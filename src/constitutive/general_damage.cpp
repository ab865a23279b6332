// Damage by one scalar whose strength follows the energy that it has dissipated.
#include "constitutive/general_damage.h"

#include "constitutive/damage_strength.h"
#include "constitutive/law_failure.h"
#include "constitutive/yield_evaluator.h"

namespace zema {
namespace {

/// Damage and strength that agree: d = 1 - K(v) / tau with v = v_n + w W (d - d_n).
struct Balance {
  double d = 0.0;
  double variable = 0.0;
  CurveValue strength{};
  double ease = 1.0;  ///< 1 + K' w W / tau: how much less than by itself the damage grows, as strength falls with it

  [[nodiscard]] double lack(double tau) const { return 1.0 - strength.c / tau - d; }
};

/// `DAVARI`: variable and strength of a damage. W: elastic energy / length^3 of the undamaged material.
Balance DAVARI(const DamageStrength& curves, double tau, double W, double committed, double variable, double d) {
  Balance balance{d, curves.DECAPA(variable, W * (d - committed))};
  balance.strength = curves.DAEQUI(balance.variable);
  if (balance.variable >= 1.0) balance.strength.h = 0.0;  // nothing is left to dissipate
  balance.ease = 1.0 + balance.strength.h * curves.weight * W / tau;
  return balance;
}

/// Damage grows until strength and stress agree. What it lacks is concave over d, so there is one balance beyond the
/// committed damage; Newton steps find it from where the slope leads there, plain steps before.
template <int N>
Balance findBalance(const MaterialPoint<N>& at, const DamageStrength& curves, double tau, double W, double committed,
                    double variable) {
  constexpr int mostIterations = 600;
  constexpr double negligible = 1.0e-10;
  Balance balance = DAVARI(curves, tau, W, committed, variable, committed);
  if (!(balance.lack(tau) > 0.0)) return balance;
  for (int iteration = 0; iteration < mostIterations; ++iteration) {
    const double lack = balance.lack(tau);
    const double step = balance.ease > 0.0 ? lack / balance.ease : lack;
    balance = DAVARI(curves, tau, W, committed, variable, std::min(1.0, balance.d + step));
    if (std::abs(lack) < negligible) return balance;
  }
  stopAtPoint(
      at, "  >>>>  >>>>  DETENIDO EN -DEGRAB- ",
      "Damage and strength did not come to agree: use smaller increments, smaller elements or a larger fracture "
      "energy.");
}

}  // namespace

template <int N>
DamageGrowth<N> growGeneralDamage(const LawInput<N>& input, const Stress<N>& SIGMA, const Strain<N>& strain,
                                  LawState& state) {
  constexpr double shareOfTolerance = 0.0001;
  const MaterialPoint<N>& at = input.at;
  double& threshold = state.INTVAR[internal::threshold];
  double& d = state.INTVAR[internal::damage];
  double& variable = state.INTVAR[internal::secondVariable];
  YieldState<N> evaluation;
  MODAUX_R(input, SIGMA, Normals::recomputed, state, evaluation);
  const double tau = evaluation.yield.F;
  DamageGrowth<N> growth;
  growth.tau = tau;
  growth.factor = evaluation.factor;
  growth.d = d;
  if (tau - threshold < std::abs(at.pass.TOLER * shareOfTolerance * threshold)) return growth;

  const DamageStrength curves = damageStrength(at, SIGMA);
  const double W = 0.5 * dot(SIGMA, strain);
  const double before = d;
  threshold = tau;
  const Balance balance = findBalance(at, curves, tau, W, before, variable);
  if (!(balance.d > before && balance.d <= 1.0)) return growth;
  growth.loading = true;
  growth.d = d = balance.d;
  growth.strength = balance.strength.c;
  growth.energy = W * (d - before);
  variable = balance.variable;
  state.INTVAR[internal::dissipation] += growth.energy;
  if (!at.pass.wantsTangent()) return growth;
  // d = 1 - K/tau, dK = K' w (W dd + (d - d_n) SIGMA dstrain)
  if (balance.ease <= 0.0) return growth;
  growth.gradient = (growth.strength / tau) * CALTEN(input.DMANX(), evaluation.a);
  growth.gradient.add(-balance.strength.h * curves.weight * (d - before), SIGMA);
  growth.gradient *= 1.0 / (tau * balance.ease);
  return growth;
}

template <int N>
void DEGRAB(const LawInput<N>& input, LawState& state, LawResult<N>& result) {
  const DamageGrowth<N> growth = growGeneralDamage(input, input.SIGMA, input.elasticStrain(), state);
  const double strength = growth.loading ? growth.strength : state.INTVAR[internal::yieldStress];
  returnDamagedStress(input, growth, strength, state, result);
}

void checkGeneralDamage(const Material& material, const std::string& who) {
  if (!(material(slot::yieldStress) > 0.0)) throw InputFault(who + ": the yield stress (slot 7) must be above 0");
  for (const int place : {slot::tensionCurve, slot::compressionCurve}) {
    if (material(place) == 1.0 || material(place) == 2.0) continue;
    throw InputFault(who + ": the curve in slot " + std::to_string(place) + " must be 1 (straight) or 2 (exponential)");
  }
}

template DamageGrowth<4> growGeneralDamage(const LawInput<4>&, const Stress<4>&, const Strain<4>&, LawState&);
template DamageGrowth<6> growGeneralDamage(const LawInput<6>&, const Stress<6>&, const Strain<6>&, LawState&);
template void DEGRAB(const LawInput<4>&, LawState&, LawResult<4>&);
template void DEGRAB(const LawInput<6>&, LawState&, LawResult<6>&);

}  // namespace zema
