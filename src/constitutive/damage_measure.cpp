// Equivalent stresses of the damage law with one variable.
#include "constitutive/damage_measure.h"

#include "constitutive/principal_stresses.h"

namespace zema {
namespace {

/// The shear places of a stress.
template <int N>
Strain<N> shearsOf(const Stress<N>& stress) {
  Strain<N> shears;
  for (int i = 0; i < N; ++i)
    if (isShear(i)) shears[i] = stress[i];
  return shears;
}

}  // namespace

template <int N>
double principalStressNorm(const Stress<N>& SIGMA, double n) {
  const std::array<double, 3> principal = PRINSI(SIGMA);
  const double r = tensionShare(principal).r();
  double squares = 0.0;
  for (const double value : principal) squares += value * value;
  return std::sqrt(squares) * (r * n + (1.0 - r));
}

template <int N>
DamageMeasure<N>::DamageMeasure(const LawInput<N>& input, double frictionAngle)
    : input_(input), criterion_(yieldData(input.at.material, frictionAngle)) {
  const Stress<N>& SIGMA = input.SIGMA;
  switch (criterion_.code) {
    case Criterion::damagePlaneStress:
      tau_ = principalStressNorm(SIGMA, input.at.material(slot::damageRatio));
      break;
    case Criterion::damageSimoJu: {
      const double squared = dot(SIGMA, input.elasticStrain());
      tau_ = squared < 0.0 ? 0.0 : std::sqrt(squared);
      break;
    }
    case Criterion::shear:
      tau_ = std::sqrt(dot(SIGMA, shearsOf(SIGMA)));
      break;
    default:
      invariants_ = invariantsOf(SIGMA);
      tau_ = PLINVA(invariants_, criterion_).F;
  }
}

template <int N>
Stress<N> DamageMeasure<N>::gradient() const {
  switch (criterion_.code) {
    case Criterion::damagePlaneStress:
      return {};
    case Criterion::damageSimoJu:
      return (1.0 / tau_) * input_.SIGMA;
    case Criterion::shear:
      return (1.0 / tau_) * CALTEN(input_.DMANX(), shearsOf(input_.SIGMA));
    default: {
      Strain<N> normal;
      (void)PLYIEL(input_.SIGMA, invariants_, criterion_, normal);
      return CALTEN(input_.DMANX(), normal);
    }
  }
}

template class DamageMeasure<4>;
template class DamageMeasure<6>;
template double principalStressNorm(const Stress<4>&, double);
template double principalStressNorm(const Stress<6>&, double);

}  // namespace zema
