// The strength of the general damage law over its normalised dissipation.
#include "constitutive/damage_strength.h"

#include <algorithm>
#include <cmath>

#include "constitutive/characteristic_length.h"
#include "constitutive/law_failure.h"
#include "constitutive/principal_stresses.h"
#include "foundation/single_precision.h"

namespace zema {
namespace {

/// Share of a fracture energy in the weight; an energy that is next to nothing does not count.
double weightOf(double share, double g) {
  constexpr double leastEnergy = single(1.0e-6F);
  return g > leastEnergy ? share / g : 0.0;
}

template <int N>
double exponentOf(const MaterialPoint<N>& at, const HardeningCurve& curve) {
  constexpr double usual = 20.0, least = 5.0, largest = 100.0;
  const double endStress = curve.slope;
  if (!curve.slopeGiven || endStress <= 0.0) return usual;
  const double p = -std::log(endStress / curve.f);
  if (p >= least && p <= largest) return p;
  stopAtPoint(at, " >>>>  ERROR !!! sigma-lim incorrecto -- parado en DAEQF1_V3D > ",
              "The end stress of a damage curve (slot 11 or 17, turned into a plastic slope when it is read) must lie "
              "between\n  exp(-100) and exp(-5) of the yield stress (slot 7).");
}

template <int N>
StrengthCurve strengthCurve(const MaterialPoint<N>& at, const HardeningCurve& curve) {
  const bool straight = curve.code == 1;
  return {straight, curve.f, straight ? 0.0 : exponentOf(at, curve), curve.g()};
}

}  // namespace

CurveValue DACURV(const StrengthCurve& curve, double variable) {
  return curve.straight ? DAEQF2(curve.f, variable) : DAEQF1(curve.f, curve.p, variable);
}

CurveValue DAEQF1(double f, double p, double variable) {
  const double c = f * std::pow(curveBase, -p * variable);
  return {c, -p * c};
}

CurveValue DAEQF2(double f, double variable) {
  if (variable > 1.0) return spent;
  return {(1.0 - variable) * f, -f};
}

CurveValue DamageStrength::DAEQUI(double variable) const {
  const CurveValue t = DACURV(tension, variable), c = DACURV(compression, variable);
  return {r * t.c + (1.0 - r) * c.c, r * t.h + (1.0 - r) * c.h};
}

double DamageStrength::DECAPA(double variable, double energy) const {
  return std::min(1.0, variable + weight * energy);
}

template <int N>
DamageStrength damageStrength(const MaterialPoint<N>& at, const Stress<N>& SIGMA) {
  const Material& material = at.material;
  const double l = characteristicLength(at.geometry, LengthRule::pointCubeRoot);
  const double f = material(slot::yieldStress);
  checkLength(l, 2.0 * material(slot::youngX) * material(slot::compressionFractureEnergy) / (f * f), beyondLimit);
  DamageStrength strength{strengthCurve(at, tensionCurve(material, f, l)),
                          strengthCurve(at, compressionCurve(material, f, l)), tensionShare(PRINSI(SIGMA)).r()};
  strength.weight = weightOf(strength.r, strength.tension.g) + weightOf(1.0 - strength.r, strength.compression.g);
  return strength;
}

template DamageStrength damageStrength(const MaterialPoint<4>&, const Stress<4>&);
template DamageStrength damageStrength(const MaterialPoint<6>&, const Stress<6>&);

}  // namespace zema
