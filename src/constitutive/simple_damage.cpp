// Damage by one scalar with an explicit formula.
#include "constitutive/simple_damage.h"

#include "constitutive/characteristic_length.h"
#include "constitutive/damage_curves.h"
#include "constitutive/damage_measure.h"
#include "constitutive/fatigue.h"
#include "constitutive/law_failure.h"

namespace zema {
namespace {

constexpr double linearLaw = 1.0;
constexpr double strainShift = 1.0e-06;

/// The softening curve of a point.
struct SofteningCurve {
  bool linear = false;
  double f = 0.0;
  double A = 0.0;

  [[nodiscard]] DamageValue at(double tau) const {
    return linear ? linearSoftening(tau, f, A, LineEnd::cut).limited(0.0, 1.0) : exponentialSoftening(tau, f, A);
  }
};

/// 2 E G n^2 / f^2, the greatest length at which the element can dissipate G; the threshold of criterion 7 is f /
/// sqrt(E).
double greatestLength(const Material& material) {
  const double f = material(slot::damageStress), n = material(slot::damageRatio);
  const double E = material.NCRIT == Criterion::damageSimoJu ? 1.0 : material(slot::youngX);
  return 2.0 * E * material(slot::damageFractureEnergy) * n * n / (f * f);
}

bool slopeIsGiven(const Material& material) {
  return material(slot::damageSlopeFlag) != 0.0;
}

template <int N>
void refuseSlopeOfExponentialLaw(const MaterialPoint<N>& at, const SofteningCurve& curve) {
  if (curve.linear || !slopeIsGiven(at.material)) return;
  stopAtPoint(at,
              N == 4 ? "  >>>> NO ES POSIBLE CON UNA LEY EXP. PROPS(NUMAT,53)=0"
                     : "  >>>> IT IS NOT POSSIBLE WITH AN PROPS(NUMAT,53)=0",
              "The exponential law (slot 51) takes its slope from the fracture energy: set slot 53 to 0, or slot 51 to "
              "1 for a line.");
}

template <int N>
SofteningCurve curveOf(const MaterialPoint<N>& at) {
  const Material& material = at.material;
  const double l = characteristicLength(at.geometry, LengthRule::pointCubeRoot, false);
  const double greatest = greatestLength(material);
  checkLength(l, greatest, beyondLimit);
  const double ductility = greatest / l;
  SofteningCurve curve{material(slot::damageSoftening) == linearLaw, material(slot::damageStress), 0.0};
  if (!curve.linear) {
    curve.A = exponentialParameter(ductility);
  } else if (slopeIsGiven(material)) {
    const double slope = material(slot::damageSlope);
    curve.A = slope / (material(slot::youngX) - slope);
  } else {
    curve.A = linearParameter(ductility);
  }
  return curve;
}

/// dd / d strain of criterion 6: each strain component is moved, and the damage evaluated anew from the committed
/// threshold.
template <int N>
Stress<N> gradientByDifferences(const LawInput<N>& input, const SofteningCurve& curve, double committedThreshold,
                                const DamageGrowth<N>& growth) {
  const Matrix<N> D = input.DMANX();
  Stress<N> gradient;
  for (int j = 0; j < N; ++j) {
    Stress<N> moved = input.SIGMA;
    for (int i = 0; i < N; ++i) moved[i] += strainShift * D(i, j);
    const double tau = principalStressNorm(moved, input.at.material(slot::damageRatio)) / growth.factor;
    const double d = tau >= committedThreshold ? curve.at(tau).d : input.committed.INTVAR[internal::damage];
    gradient[j] = (d - growth.d) / strainShift;
  }
  return gradient;
}

}  // namespace

template <int N>
DamageGrowth<N> growSimpleDamage(const LawInput<N>& input, LawState& state) {
  const MaterialPoint<N>& at = input.at;
  double& d = state.INTVAR[internal::damage];
  double& threshold = state.INTVAR[internal::threshold];
  const double before = d, committedThreshold = threshold;
  const SofteningCurve curve = curveOf(at);
  const DamageMeasure<N> measure(input, state.INTVAR[internal::frictionAngle]);

  DamageGrowth<N> growth;
  growth.factor = STRFAT(at.pass, state.fatigue, (1.0 - d) * curve.f, measure.tau(), curve.f,
                         input.SIGMA[0] + input.SIGMA[1] + input.SIGMA[3]);
  growth.tau = measure.tau() / growth.factor;
  growth.loading = growth.tau >= threshold;
  if (growth.loading) {
    refuseSlopeOfExponentialLaw(at, curve);
    threshold = growth.tau;
    const DamageValue value = curve.at(growth.tau);
    d = value.d;
    growth.energy = (d - before) * 0.5 * dot(input.SIGMA, input.elasticStrain());
    state.INTVAR[internal::dissipation] += growth.energy;
    growth.d = d;
    if (!at.pass.wantsTangent()) return growth;
    if (at.material.NCRIT == Criterion::damagePlaneStress) {
      growth.shift = strainShift;
      growth.gradient = gradientByDifferences(input, curve, committedThreshold, growth);
    } else {
      growth.gradient = (value.slope / growth.factor) * measure.gradient();
    }
  }
  growth.d = d;
  return growth;
}

template <int N>
void DEGRAA(const LawInput<N>& input, LawState& state, LawResult<N>& result) {
  const DamageGrowth<N> growth = growSimpleDamage(input, state);
  returnDamagedStress(input, growth, (1.0 - growth.d) * growth.tau, state, result);
}

void checkSimpleDamage(const Material& material, const std::string& who) {
  if (!(material(slot::damageStress) > 0.0)) throw InputFault(who + ": the damage stress (slot 30) must be above 0");
  const bool line = material(slot::damageSoftening) == linearLaw && slopeIsGiven(material);
  if (line && !(material(slot::damageSlope) < material(slot::youngX)))
    throw InputFault(who + ": the slope of the softening line (slot 52) must be below the Young modulus (slot 1)");
}

template DamageGrowth<4> growSimpleDamage(const LawInput<4>&, LawState&);
template DamageGrowth<6> growSimpleDamage(const LawInput<6>&, LawState&);
template void DEGRAA(const LawInput<4>&, LawState&, LawResult<4>&);
template void DEGRAA(const LawInput<6>&, LawState&, LawResult<6>&);

}  // namespace zema
