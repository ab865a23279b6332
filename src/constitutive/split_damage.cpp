// Stress and tangent of a stress that is damaged by its sign.
#include "constitutive/split_damage.h"

#include "constitutive/damage_growth.h"

namespace zema {
namespace {

template <int N>
Matrix<N> splitTangent(const LawInput<N>& input, const SpectralSplit<N>& split, const DamageScalar<N>& tension,
                       const DamageScalar<N>& compression) {
  Matrix<N> left = split.positiveDerivative();
  for (double& value : left.values) value *= compression.d - tension.d;
  for (int i = 0; i < N; ++i) left(i, i) += 1.0 - compression.d;
  Matrix<N> tangent = PROMA1(left, input.DMANX());
  for (int i = 0; i < N; ++i)
    for (int j = 0; j < N; ++j)
      tangent(i, j) -= split.positive[i] * tension.gradient[j] + split.negative[i] * compression.gradient[j];
  return tangent;
}

}  // namespace

template <int N>
void returnSplitStress(const LawInput<N>& input, const SpectralSplit<N>& split, const DamageScalar<N>& tension,
                       const DamageScalar<N>& compression, LawState& state, LawResult<N>& result) {
  const Strain<N> strain = input.elasticStrain();
  const double energy =
      0.5 * (dot(split.positive, strain) * tension.increment + dot(split.negative, strain) * compression.increment);
  result.SGTOT = (1.0 - tension.d) * split.positive + (1.0 - compression.d) * split.negative;
  result.sums = damageSums(input.at.geometry, energy, std::max(tension.d, compression.d));
  state.INTVAR[internal::damage] = tension.d;
  state.INTVAR[internal::compressionDamage] = compression.d;
  state.INTVAR[internal::dissipation] += energy;
  const bool untouched = tension.d == 0.0 && compression.d == 0.0;
  state.INTVAR[internal::elasticFlag] = untouched ? 1.0 : 0.0;
  if (untouched) return;
  result.tangent = splitTangent(input, split, tension, compression);
  result.hasTangent = true;
}

template void returnSplitStress(const LawInput<4>&, const SpectralSplit<4>&, const DamageScalar<4>&,
                                const DamageScalar<4>&, LawState&, LawResult<4>&);
template void returnSplitStress(const LawInput<6>&, const SpectralSplit<6>&, const DamageScalar<6>&,
                                const DamageScalar<6>&, LawState&, LawResult<6>&);

}  // namespace zema
