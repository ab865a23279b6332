// The standard solid with one scalar of damage.
#include "constitutive/visco_damage_law.h"

#include "constitutive/characteristic_length.h"
#include "constitutive/damage_curves.h"
#include "constitutive/damage_growth.h"
#include "constitutive/damage_measure.h"
#include "constitutive/fatigue.h"
#include "constitutive/viscoelastic_law.h"
#include "constitutive/yield_function.h"
#include "foundation/errors.h"

namespace zema {
namespace {

/// Equivalent stress, and the stress whose sign tells tension from compression.
struct EquivalentStress {
  double tau;
  double p;
};

template <int N>
EquivalentStress equivalentStress(const LawInput<N>& input, double frictionAngle) {
  const Material& material = input.at.material;
  const Stress<N>& SIGMA = input.SIGMA;
  if (material.NCRIT < Criterion::lublinerOller) {
    const StressInvariants<N> invariants = invariantsOf(SIGMA);
    return {PLINVA(invariants, yieldData(material, frictionAngle)).F, invariants.p};
  }
  return {principalStressNorm(SIGMA, material(slot::damageRatio)), (SIGMA[0] + SIGMA[1] + SIGMA[3]) / 3.0};
}

/// Damage of an equivalent stress beyond the strength.
double exponentialDamage(const Material& material, const PointGeometry& geometry, double tau) {
  const double f = material(slot::damageStress), c = material(slot::damageRatio);
  const double l = characteristicLength(geometry, LengthRule::elementSquareRoot, false);
  const double A = material(slot::tensionFractureEnergy) / l;
  const double denominator = material(slot::youngX) * c * c * A / (f * f) - 0.5;
  if (!(denominator > 0.0)) {
    throw ConstitutiveStop("  >>>> ENERGIA FRACT MUY BAJA -> SE GENERARA ENDURECIMIENTO", l, denominator,
                           "The first number is the characteristic length l of the element, the second E c^2 G / (l "
                           "f^2) - 0.5, which must be\n  above 0: use smaller elements, a larger fracture energy "
                           "(slot 13) or a lower strength (slot 30), and give slot 31.");
  }
  return exponentialSoftening(tau, f, 1.0 / denominator).d;
}

}  // namespace

template <int N>
void VISDAM(const LawInput<N>& input, LawState& state, LawResult<N>& result) {
  const Material& material = input.at.material;
  auto& INTVAR = state.INTVAR;
  const double oldDamage = INTVAR[internal::damage];
  const double f = material(slot::damageStress);
  EquivalentStress equivalent = equivalentStress(input, INTVAR[internal::frictionAngle]);
  const double factor = STRFAT(input.at.pass, state.fatigue, (1.0 - oldDamage) * f, equivalent.tau, f, equivalent.p);
  const double tau = equivalent.tau / factor;
  double d = oldDamage, energy = 0.0;
  if (tau > INTVAR[internal::threshold]) {
    INTVAR[internal::threshold] = tau;
    d = exponentialDamage(material, input.at.geometry, tau);
    energy = (d - oldDamage) * 0.5 * dot(input.SIGMA, input.elasticStrain());
  }
  result.SGTOT = relaxedStress(input, oldDamage < 1.0 ? (1.0 - d) / (1.0 - oldDamage) : 0.0, 1.0 - d);

  result.sums = damageSums(input.at.geometry, energy, d);
  INTVAR[internal::damage] = d;
  INTVAR[internal::dissipation] += energy;
  INTVAR[internal::yieldStress] = (1.0 - d) * tau;
  INTVAR[internal::reducedYieldStress] = factor * INTVAR[internal::yieldStress];
  INTVAR[internal::elasticFlag] = 1.0;
}

void checkViscoDamage(const Material& material, const std::string& who) {
  if (!(material(slot::damageStress) > 0.0)) throw InputFault(who + ": the damage stress (slot 30) must be above 0");
}

template void VISDAM(const LawInput<4>&, LawState&, LawResult<4>&);
template void VISDAM(const LawInput<6>&, LawState&, LawResult<6>&);

}  // namespace zema
