// Stress and tangent of a damaged material.
#include "constitutive/damage_growth.h"

namespace zema {

template <int N>
Matrix<N> DARIGI(const Matrix<N>& D, const Stress<N>& SIGMA, const DamageGrowth<N>& growth) {
  const double left = 1.0 - growth.d;
  Matrix<N> tangent;
  for (int i = 0; i < N; ++i)
    for (int j = 0; j < N; ++j) tangent(i, j) = left * D(i, j) - SIGMA[i] * growth.gradient[j];
  return tangent;
}

template <int N>
Matrix<N> DARINU(const Matrix<N>& D, const Stress<N>& SIGMA, const DamageGrowth<N>& growth) {
  // ((1 - d*) SIGMA* - (1 - d) SIGMA) / shift with SIGMA* = SIGMA + shift D e_j and d* = d + shift gradient_j
  Matrix<N> tangent = DARIGI(D, SIGMA, growth);
  for (int i = 0; i < N; ++i)
    for (int j = 0; j < N; ++j) tangent(i, j) -= growth.shift * D(i, j) * growth.gradient[j];
  return tangent;
}

EnergySums damageSums(const PointGeometry& geometry, double energy, double d) {
  const double volume = geometry.DETF * geometry.dV;
  return {energy * volume, d * volume, d > 0.0 ? volume : 0.0};
}

template <int N>
void returnDamagedStress(const LawInput<N>& input, const DamageGrowth<N>& growth, double measure, LawState& state,
                         LawResult<N>& result) {
  result.SGTOT = (1.0 - growth.d) * input.SIGMA;
  result.sums = damageSums(input.at.geometry, growth.energy, growth.d);
  state.INTVAR[internal::yieldStress] = measure;
  state.INTVAR[internal::reducedYieldStress] = growth.factor * measure;
  state.INTVAR[internal::elasticFlag] = growth.untouched() ? 1.0 : 0.0;
  if (growth.untouched()) return;
  const Matrix<N> D = input.DMANX();
  result.tangent = growth.shift == 0.0 ? DARIGI(D, input.SIGMA, growth) : DARINU(D, input.SIGMA, growth);
  result.hasTangent = true;
}

template Matrix<4> DARIGI(const Matrix<4>&, const Stress<4>&, const DamageGrowth<4>&);
template Matrix<6> DARIGI(const Matrix<6>&, const Stress<6>&, const DamageGrowth<6>&);
template Matrix<4> DARINU(const Matrix<4>&, const Stress<4>&, const DamageGrowth<4>&);
template Matrix<6> DARINU(const Matrix<6>&, const Stress<6>&, const DamageGrowth<6>&);
template void returnDamagedStress(const LawInput<4>&, const DamageGrowth<4>&, double, LawState&, LawResult<4>&);
template void returnDamagedStress(const LawInput<6>&, const DamageGrowth<6>&, double, LawState&, LawResult<6>&);

}  // namespace zema
