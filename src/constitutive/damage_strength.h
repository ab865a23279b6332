// The strength of the general damage law over its normalised dissipation.
#pragma once

#include "constitutive/hardening_curves.h"
#include "constitutive/law.h"

namespace zema {

/// Strength over the normalised dissipation of damage, 0 to 1, in tension or in compression.
struct StrengthCurve {
  bool straight = false;  ///< curve code 1 `DAEQF2`; otherwise `DAEQF1`
  double f = 0.0;         ///< first strength
  double p = 0.0;         ///< exponent of `DAEQF1`
  double g = 0.0;         ///< energy / length^3 that it dissipates
};
/// `DACURV`: `DAEQF2` or `DAEQF1`.
[[nodiscard]] CurveValue DACURV(const StrengthCurve& curve, double variable);
/// `DAEQF1`: f e^(-p variable).
[[nodiscard]] CurveValue DAEQF1(double f, double p, double variable);
/// `DAEQF2`: (1 - variable) f, 1e-11 beyond 1.
[[nodiscard]] CurveValue DAEQF2(double f, double variable);

/// Strength and dissipation of a point under a stress.
struct DamageStrength {
  StrengthCurve tension;
  StrengthCurve compression;
  double r = 0.0;       ///< share of tension in the stress
  double weight = 0.0;  ///< normalised dissipation by energy / length^3: r / gt + (1 - r) / gc

  /// `DAEQUI`: strength K between those of tension and compression, and dK / d variable.
  [[nodiscard]] CurveValue DAEQUI(double variable) const;
  /// `DECAPA`: the variable after a dissipation (energy / length^3), at most 1.
  [[nodiscard]] double DECAPA(double variable, double energy) const;
};

/// The strength at an effective stress. Throws ConstitutiveStop for an element beyond the limit length and for an end
/// stress (slot 11 or 17, with its flag) that asks for an exponent outside 5 to 100.
template <int N>
[[nodiscard]] DamageStrength damageStrength(const MaterialPoint<N>& at, const Stress<N>& SIGMA);

}  // namespace zema
