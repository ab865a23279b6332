// What a step does to a damage variable, and the stress and tangent that follow from it.
#pragma once

#include "constitutive/law.h"

namespace zema {

/// The damage of a step, in the space of LawInput.
template <int N>
struct DamageGrowth {
  double tau = 0.0;       ///< equivalent stress of the undamaged material, over the fatigue factor
  double factor = 1.0;    ///< fatigue factor
  double d = 0.0;         ///< damage at the end of the step
  double energy = 0.0;    ///< dissipated in the step, energy / length^3
  bool loading = false;   ///< the damage follows the stress
  Stress<N> gradient;     ///< dd / d strain; formed when loading in a pass that wants tangents
  double strength = 0.0;  ///< strength in force of the general damage law, when loading
  double shift = 0.0;     ///< strain by which `gradient` was formed by differences; 0: it is exact

  /// Whether nothing has happened to the point yet.
  [[nodiscard]] bool untouched() const { return d == 0.0 && !loading; }
};

/// `DARIGI`: (1 - d) D - SIGMA (x) gradient, with the stress SIGMA of the undamaged material; without growth the secant
/// (1 - d) D. Literature: Simo & Ju (1987).
template <int N>
[[nodiscard]] Matrix<N> DARIGI(const Matrix<N>& D, const Stress<N>& SIGMA, const DamageGrowth<N>& growth);

/// `DARINU`: the same with a gradient by differences: column j is the difference of (1 - d) SIGMA over `shift`.
template <int N>
[[nodiscard]] Matrix<N> DARINU(const Matrix<N>& D, const Stress<N>& SIGMA, const DamageGrowth<N>& growth);

/// What a point adds to the energy sums. energy: dissipated in the step, energy / length^3; d: its damage.
[[nodiscard]] EnergySums damageSums(const PointGeometry& geometry, double energy, double d);

/// Stress (1 - d) SIGMA of a damaged material with tangent and sums; places 9 (elastic flag), 4 (a stress measure) and
/// 12 (the same over the fatigue factor) of INTVAR.
template <int N>
void returnDamagedStress(const LawInput<N>& input, const DamageGrowth<N>& growth, double measure, LawState& state,
                         LawResult<N>& result);

}  // namespace zema
