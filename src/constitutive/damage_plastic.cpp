// The laws 12 and 13.
#include "constitutive/damage_plastic.h"

#include "constitutive/backward_euler.h"
#include "constitutive/general_damage.h"
#include "constitutive/plastic_answer.h"
#include "constitutive/simple_damage.h"

namespace zema {
namespace {

constexpr const char* words = "  >>>>  >>>>  DETENIDO EN -ECUAD- ";

/// factor A - column (x) row.
template <int N>
Matrix<N> scaledLess(double factor, Matrix<N> A, const Stress<N>& column, const Stress<N>& row) {
  for (int i = 0; i < N; ++i)
    for (int j = 0; j < N; ++j) A(i, j) = factor * A(i, j) - column[i] * row[j];
  return A;
}

/// A strain without what a law that acts on the shear stresses alone (potential 7) does not see of it.
template <int N>
Strain<N> seenByLaw(const LawInput<N>& input, Strain<N> strain) {
  if (input.at.material.NCRIP != Criterion::damageSimoJu) return strain;
  for (int i = 0; i < N; ++i)
    if (!isShear(i)) strain[i] = 0.0;
  return strain;
}

/// Elastic flag and sums of both parts together.
template <int N>
void addDamage(const LawInput<N>& input, const DamageGrowth<N>& growth, LawState& state, LawResult<N>& result) {
  result.sums += damageSums(input.at.geometry, growth.energy, growth.d);
  if (!growth.untouched()) state.INTVAR[internal::elasticFlag] = 0.0;
}

}  // namespace

template <int N>
void ECUAG(const LawInput<N>& input, LawState& state, LawResult<N>& result) {
  const Matrix<N> D = plasticMatrix(input);
  const DamageGrowth<N> growth = growSimpleDamage(input, state);
  backwardEuler(input, {input.SIGMA, D, FlowDerivative::analytic, words, growth.factor}, state, result);
  addDamage(input, growth, state, result);
  const Stress<N> undamaged = result.SGTOT;
  result.SGTOT = (1.0 - growth.d) * undamaged;
  if (!input.at.pass.wantsTangent() || state.INTVAR[internal::elasticFlag] == 1.0) return;
  result.tangent = scaledLess(1.0 - growth.d, result.hasTangent ? result.tangent : D, undamaged, growth.gradient);
  result.hasTangent = true;
}

template <int N>
void ECUAH(const LawInput<N>& input, LawState& state, LawResult<N>& result) {
  const Strain<N> strain = seenByLaw(input, input.elasticStrain() + input.STRAP());  // without the stress-free part
  Matrix<N> D = plasticMatrix(input);
  const DamageGrowth<N> growth = growGeneralDamage(input, CALTEN(D, strain), strain, state);
  const double left = 1.0 - growth.d;
  for (double& value : D.values) value *= left;
  const Stress<N> trial = left * input.SIGMA;
  backwardEuler(input, {trial, D, FlowDerivative::analytic, words, growth.factor}, state, result);
  addDamage(input, growth, state, result);
  if (!input.at.pass.wantsTangent() || state.INTVAR[internal::elasticFlag] == 1.0) return;
  if (!result.hasTangent) result.tangent = D;
  result.hasTangent = true;
  if (!growth.loading || left == 0.0) return;
  // more damage takes T (strain - plastic strain) / (1 - d) off the stress
  const Strain<N> elasticStrain = seenByLaw(input, strain - input.STRAP() - result.plasticIncrement);
  const Stress<N> lost = (1.0 / left) * CALTEN(result.tangent, elasticStrain);
  result.tangent = scaledLess(1.0, result.tangent, lost, growth.gradient);
}

void checkSimpleDamagePlastic(const Material& material, const std::string& who) {
  checkSimpleDamage(material, who);
  checkPlasticFlow(material, who);
}

void checkGeneralDamagePlastic(const Material& material, const std::string& who) {
  checkGeneralDamage(material, who);
  checkPlasticFlow(material, who);
}

template void ECUAG(const LawInput<4>&, LawState&, LawResult<4>&);
template void ECUAG(const LawInput<6>&, LawState&, LawResult<6>&);
template void ECUAH(const LawInput<4>&, LawState&, LawResult<4>&);
template void ECUAH(const LawInput<6>&, LawState&, LawResult<6>&);

}  // namespace zema
