// The plastic law 3.
#include "constitutive/kinematic_hardening.h"

#include "constitutive/fatigue.h"
#include "constitutive/plastic_answer.h"
#include "foundation/errors.h"
#include "foundation/single_precision.h"

namespace zema {
namespace {

constexpr const char* words = "  >>>>  >>>>  DETENIDO EN -ECUAC- ";

/// Equivalent plastic strain of a step and its derivatives by the trial excess Phi and the strain t.
struct PlasticStrain {
  double x;
  double byExcess;
  double byStrain;
};

/// The root of x (b + Phi - k x) = t (Phi - k x) that leaves the stress above the surface: the law's equation times Hk,
/// with b = m Hk^2 / (3 G). Phi: excess of the trial stress; k: by how much a unit of x lowers it.
PlasticStrain solve(double Phi, double t, double b, double k) {
  const double lowering = t * k;
  const double root = std::sqrt((Phi - lowering) * (Phi - lowering) + b * (b + 2.0 * (Phi + lowering)));
  const double x = 2.0 * t * Phi / (b + Phi + lowering + root);
  return {x, (t - x) / root, (Phi - k * x) / root};
}

/// Centre of the surface for a plastic strain.
template <int N>
Stress<N> backStress(const Strain<N>& plastic, double slope) {
  Stress<N> centre;
  for (int i = 0; i < N; ++i) centre[i] = single(2.0F / 3.0F) * slope * (isShear(i) ? 0.5 : 1.0) * plastic[i];
  return centre;
}

/// The deviatoric part of a strain, as a strain.
template <int N>
Strain<N> deviatorOf(Strain<N> strain) {
  const double mean = (strain[0] + strain[1] + strain[3]) / 3.0;
  for (const int i : {0, 1, 3}) strain[i] -= mean;
  return strain;
}

/// What the trial stress says about the step.
template <int N>
struct Trial {
  StressInvariants<N> invariants;  ///< about the centre of the surface
  CriterionData criterion;
  double F = 0.0;       ///< over the fatigue factor
  double factor = 1.0;  ///< fatigue factor
  Strain<N> de;         ///< deviatoric strain of the step
  Strain<N> flow;       ///< 1.5 s / F: plastic strain for a unit of x
  double t = 0.0;       ///< s . de / F without fatigue

  Trial(const LawInput<N>& input, LawState& state)
      : invariants(invariantsOf(input.SIGMA, backStress(input.STRAP(), input.at.material(slot::kinematicSlope)))),
        criterion(yieldData(input.at.material, state.INTVAR[internal::frictionAngle])),
        F(PLINVA(invariants, criterion).F) {
    const Material& material = input.at.material;
    const PassContext& pass = input.at.pass;
    if (pass.TCYCL != 0.0) {
      factor = STRFAT(pass, state.fatigue, state.INTVAR[internal::yieldStress], F, material(slot::damageStress),
                      invariants.p);
    }
    F /= factor;
  }

  /// Takes in the strain of the step, of use beyond the surface only.
  void takeIncrement(const Strain<N>& increment) {
    de = deviatorOf(increment);
    t = dot(invariants.s, de) / (F * factor * factor);  // so that 3 G t is the growth of F in an elastic step
    for (int i = 0; i < N; ++i) flow[i] = (isShear(i) ? 3.0 : 1.5) * invariants.s[i] / F;
  }
};

/// d stress / d strain of stress = trial - x D flow, with x and flow functions of the trial stress and of the strain.
template <int N>
Matrix<N> tangentOf(const LawInput<N>& input, const Matrix<N>& D, const Trial<N>& trial,
                    const PlasticStrain& solution) {
  Strain<N> a;
  (void)PLYIEL(input.SIGMA, trial.invariants, trial.criterion, a);
  const Stress<N> dF = (1.0 / trial.factor) * CALTEN(D, a), Dde = CALTEN(D, trial.de), Dflow = CALTEN(D, trial.flow);
  Matrix<N> flowByStrain;  // d flow / d strain but for the part along the flow itself
  for (int j = 0; j < N; ++j) {
    const double mean = (D(0, j) + D(1, j) + D(3, j)) / 3.0;
    for (int i = 0; i < N; ++i) flowByStrain(i, j) = isShear(i) ? 3.0 * D(i, j) : 1.5 * (D(i, j) - mean);
  }
  Matrix<N> tangent = PROMA1(D, flowByStrain);
  for (int j = 0; j < N; ++j) {
    const double dt = ((trial.invariants.s[j] + Dde[j]) / (trial.factor * trial.factor) - trial.t * dF[j]) / trial.F;
    const double dx = solution.byExcess * dF[j] + solution.byStrain * dt - solution.x * dF[j] / trial.F;
    for (int i = 0; i < N; ++i) tangent(i, j) = D(i, j) - Dflow[i] * dx - solution.x / trial.F * tangent(i, j);
  }
  return tangent;
}

}  // namespace

template <int N>
void ECUAC(const LawInput<N>& input, LawState& state, LawResult<N>& result) {
  const MaterialPoint<N>& at = input.at;
  const double H0 = state.INTVAR[internal::hardening];
  double& kappa = state.INTVAR[internal::kappa];
  double& K = state.INTVAR[internal::yieldStress];
  Trial<N> trial(input, state);
  K = at.material(slot::yieldStress) + H0 * kappa;
  state.INTVAR[internal::reducedYieldStress] = trial.factor * K;
  if (!std::isfinite(trial.F)) stopReturn(at, words);
  if (trial.F <= K) return answerElastic(at, input.SIGMA, state, result);
  trial.takeIncrement(input.STRAN());
  if (trial.t <= 0.0) return answerElastic(at, input.SIGMA, state, result);

  const double slope = at.material(slot::kinematicSlope), threeG = 3.0 * at.elastic.D(2, 2);
  const double Hk = slope + H0;
  if (Hk == 0.0)
    stopAtPoint(at, words, "The sum of the hardening slopes, slot 32 and slot 33, must not be 0 in law 3.");
  const PlasticStrain solution =
      solve(trial.F - K, trial.t, at.material(slot::kinematicExponent) * Hk * Hk / threeG, threeG + slope + H0);
  if (!std::isfinite(solution.x)) stopReturn(at, words);
  const Matrix<N> D = plasticMatrix(input);
  const Strain<N> plastic = solution.x * trial.flow;
  kappa += solution.x;
  K += H0 * solution.x;
  state.INTVAR[internal::reducedYieldStress] = trial.factor * K;
  answerPlastic(at, input.SIGMA - CALTEN(D, plastic), plastic, state, result);
  if (!at.pass.wantsTangent()) return;
  result.tangent = tangentOf(input, D, trial, solution);
  result.hasTangent = true;
}

void checkGeneralisedPlasticity(const Material& material, const std::string& who) {
  if (material.NCRIT != Criterion::vonMises) throw InputFault(who + ", which is made for yield function 2, von Mises");
  if (material(slot::kinematicSlope) + material(slot::initialHardening) == 0.0)
    throw InputFault(who + ", in which the sum of the hardening slopes, slots 32 and 33, must not be 0");
}

template void ECUAC(const LawInput<4>&, LawState&, LawResult<4>&);
template void ECUAC(const LawInput<6>&, LawState&, LawResult<6>&);

}  // namespace zema
