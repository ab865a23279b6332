// Damage by two scalars that follow one equivalent stress.
#include "constitutive/one_measure_damage.h"

#include "constitutive/characteristic_length.h"
#include "constitutive/damage_curves.h"
#include "constitutive/principal_stresses.h"
#include "constitutive/split_damage.h"
#include "constitutive/yield_function.h"
#include "foundation/errors.h"

namespace zema {
namespace {

constexpr double smallDamage = 9.99999993922529e-09;
constexpr double shareRounding = 1.0e-12;  // of a share of tension that is a quotient of sums

SplitCurve curveAt(const Material& material, int codePlace, int parametersPlace, double f, double ductility) {
  return {static_cast<int>(material(codePlace)),
          {material(parametersPlace), material(parametersPlace + 1), material(parametersPlace + 2)},
          f,
          ductility};
}

/// 2 E g / f^2 with g = n^2 Gf / l.
template <int N>
double ductilityOf(const MaterialPoint<N>& at) {
  const Material& material = at.material;
  const double f = material(slot::damageStress), n = material(slot::damageRatio);
  const double l = characteristicLength(at.geometry, LengthRule::pointCubeRoot, false);
  const double greatest = 2.0 * material(slot::youngX) * n * n * material(slot::damageFractureEnergy) / (f * f);
  checkLength(l, greatest, "  >>>> LONG. CARCTERISTICA DEL ELEMENTO MAYOR QUE EL LIMITE");
  return greatest / l;
}

using DamageCurve = DamageValue (*)(const SplitCurve& curve, double tau);

/// Growth of one scalar when tau is beyond its threshold.
template <int N>
void grow(DamageCurve curveValue, const SplitCurve& curve, double tau, double& threshold, DamageScalar<N>& scalar) {
  if (!(tau > threshold)) return;
  threshold = tau;
  const DamageValue value = curveValue(curve, tau);
  scalar.increment = value.d - scalar.d;
  scalar.d = value.d;
  scalar.slope = value.slope;
}

}  // namespace

template <int N>
void DEGRA18(const LawInput<N>& input, LawState& state, LawResult<N>& result) {
  const Material& material = input.at.material;
  auto& INTVAR = state.INTVAR;
  const SpectralSplit<N> split(input.SIGMA);
  const CriterionData criterion = yieldData(material, INTVAR[internal::frictionAngle]);
  const StressInvariants<N> invariants = invariantsOf(input.SIGMA);
  const double tau = PLINVA(invariants, criterion).F;
  DamageScalar<N> tension, compression;
  tension.d = INTVAR[internal::damage];
  compression.d = INTVAR[internal::compressionDamage];
  if (tension.d == 0.0 && compression.d == 0.0)
    INTVAR[internal::tensionStrength] = INTVAR[internal::compressionStrength] = material(slot::damageStress);

  const double ductility = ductilityOf(input.at);
  const SplitCurve tensionCurve =
      curveAt(material, slot::damageSoftening, slot::tensionParameters, INTVAR[internal::tensionStrength], ductility);
  const SplitCurve compressionCurve = curveAt(material, slot::compressionSoftening, slot::compressionParameters,
                                              INTVAR[internal::compressionStrength], ductility);
  const double leastTension = 1.0 - 1.0 / material(slot::damageRatio);
  const bool tensile = tensionShare(split.axes.values).r() > leastTension + shareRounding;
  if (!tensile) grow(DCOM, compressionCurve, tau, INTVAR[internal::compressionThreshold], compression);
  if (tensile || (tension.d < compression.d && compression.d > smallDamage))
    grow(DTEN, tensionCurve, tau, INTVAR[internal::threshold], tension);

  if (input.at.pass.wantsTangent() && (tension.slope != 0.0 || compression.slope != 0.0)) {
    Strain<N> normal;
    (void)PLYIEL(input.SIGMA, invariants, criterion, normal);
    const Stress<N> n = CALTEN(input.DMANX(), normal);
    tension.gradient = tension.slope * n;
    compression.gradient = compression.slope * n;
  }
  const double measure = (1.0 - (tensile ? tension.d : compression.d)) * tau;
  INTVAR[internal::yieldStress] = INTVAR[internal::reducedYieldStress] = measure;
  returnSplitStress(input, split, tension, compression, state, result);
}

void checkOneMeasureDamage(const Material& material, const std::string& who) {
  if (!(material(slot::damageStress) > 0.0)) throw InputFault(who + ": the damage stress (slot 30) must be above 0");
  if (!(material(slot::damageRatio) > 0.0)) throw InputFault(who + ": the strength ratio (slot 31) must be above 0");
}

template void DEGRA18(const LawInput<4>&, LawState&, LawResult<4>&);
template void DEGRA18(const LawInput<6>&, LawState&, LawResult<6>&);

}  // namespace zema
