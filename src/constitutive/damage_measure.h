// Equivalent stresses of the damage law with one variable, and how they change with the strain.
#pragma once

#include "constitutive/law.h"
#include "constitutive/yield_function.h"

namespace zema {

/// Equivalent stress of a trial state by the criterion of the material: F of `PLINVA` for 1 to 5, 6 the norm of the
/// principal stresses weighted by the share of tension, 7 the energy norm sqrt(strain SIGMA), 8 the norm of the shears.
/// Literature: Oliver et al. (1990) for 6, Simo & Ju (1987) for 7.
template <int N>
class DamageMeasure {
 public:
  /// frictionAngle: `INTVAR(2)`.
  DamageMeasure(const LawInput<N>& input, double frictionAngle);

  [[nodiscard]] double tau() const { return tau_; }
  /// dtau / d strain of criteria 1 to 5, 7, 8; 0 for criterion 6, whose measure has none in closed form.
  [[nodiscard]] Stress<N> gradient() const;

 private:
  const LawInput<N>& input_;
  CriterionData criterion_;
  StressInvariants<N> invariants_;  // of criteria 1 to 5
  double tau_ = 0.0;
};

/// Measure of criterion 6 at a stress. n: strength ratio, slot 31.
template <int N>
[[nodiscard]] double principalStressNorm(const Stress<N>& SIGMA, double n);

}  // namespace zema
