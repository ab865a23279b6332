// The driver of the laws: trial stress, maps to the space of the laws and back.
#pragma once

#include "constitutive/law.h"

namespace zema {

/// A component at the start of an update: its strains and its committed stress, material axes, reference configuration.
template <int N>
struct CommittedPoint {
  PointStrains<N> strains;
  Stress<N> STRSG;  ///< stress at the start of the step
  LawState state;
};

/// The same after the law.
template <int N>
struct UpdatedPoint {
  Stress<N> STRSG;  ///< stress
  Strain<N> STRAP;  ///< plastic strain
  LawState state;
  Matrix<N> tangent;          ///< d STRSG / d strain, real space; not formed when elasticMatrix
  bool elasticMatrix = true;  ///< the tangent is the material's VDMANX
  EnergySums sums;

  [[nodiscard]] bool elastic() const { return state.INTVAR[internal::elasticFlag] != 0.0; }
};

/// `MODULP`: forms the trial stress from the real elastic matrix, takes it into the space of the laws (mapped, then
/// with KPUSH 2 into the current configuration), runs the law, and brings everything back. With potential 7 the law
/// sees the shear stresses alone. It changes nothing but its result.
template <int N>
void MODULP(const MaterialPoint<N>& at, LawFunction<N> law, const CommittedPoint<N>& start, UpdatedPoint<N>& result);

/// `CTANG`: real tangent by differences, one strain component at a time from the committed state. unperturbed: result
/// for the strain as it is.
template <int N>
[[nodiscard]] Matrix<N> CTANG(const MaterialPoint<N>& at, LawFunction<N> law, const CommittedPoint<N>& start,
                              const Stress<N>& unperturbed);

}  // namespace zema
