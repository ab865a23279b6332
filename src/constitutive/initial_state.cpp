// Internal variables at the start of a job.
#include "constitutive/initial_state.h"

#include <cmath>

namespace zema {
namespace {

/// Places 8 and 14, the damage thresholds; a law with two damage variables keeps that of compression in place 14.
struct Thresholds {
  double first;
  double second;
};

Thresholds initialThresholds(const Material& material) {
  const double damageStress = material(slot::damageStress);
  switch (material.NTINT) {
    case Law::generalDamage:
      return {material(slot::yieldStress), 0.0};
    case Law::tensionCompressionDamage:
      return {damageStress, damageStress};
    case Law::tensionCompressionDamageAlternative:
      // The energy norm of the strength in tension, and the octahedral measure of the one in compression; the law
      // itself starts from 0.37102877370052556, a relative difference of 2e-7.
      return {material(slot::tensionPeakStress) / std::sqrt(material(slot::youngX)),
              std::sqrt((damageStress / 3.0) * 0.371028691109907)};
    default:
      return {damageStress, 0.0};
  }
}

}  // namespace

std::array<double, internal::count> initialInternalVariables(const Material& material) {
  const Thresholds thresholds = initialThresholds(material);
  std::array<double, internal::count> INTVAR{};
  INTVAR[internal::frictionAngle] = material(slot::frictionAngle);
  INTVAR[internal::dilatancyAngle] = material(slot::dilatancyAngle);
  INTVAR[internal::yieldStress] = material(slot::yieldStress);
  INTVAR[internal::hardening] = material(slot::initialHardening);
  INTVAR[internal::threshold] = thresholds.first;
  INTVAR[internal::elasticFlag] = 1.0;
  INTVAR[internal::flowScale] = 1.0;
  INTVAR[internal::reducedYieldStress] = material(slot::yieldStress);
  INTVAR[internal::compressionThreshold] = thresholds.second;
  INTVAR[internal::tensionStrength] = material(slot::damageStress);
  INTVAR[internal::compressionStrength] = material(slot::damageStress);
  return INTVAR;
}

}  // namespace zema
