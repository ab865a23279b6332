// Elastic prediction of the stress, and the way of a tangent from the space of the laws back to the real one.
#pragma once

#include "constitutive/law.h"

namespace zema {

/// `MODULI`: elastic stress (reference measure) of a strain. pushed: the matrix relates Kirchhoff stress and Almansi
/// strain, unless KTANP is 1, where it is moved along with the strain and the moves cancel.
template <int N>
[[nodiscard]] Stress<N> MODULI(const Matrix<N>& D, const Strain<N>& strain, const Matrix<3>& F, bool pushed, int KTANP);

/// `ANISOT`: real tangent ASMTI D AEMX of a tangent D of the mapped space.
template <int N>
[[nodiscard]] Matrix<N> ANISOT(const Matrix<N>& D, const ElasticMaterial<N>& elastic);

/// `ELRIGI`: real tangent of a tangent of the laws' space: moved back to the reference configuration, then unmapped.
template <int N>
[[nodiscard]] Matrix<N> ELRIGI(const Matrix<N>& D, const MaterialPoint<N>& at);

/// `PLRIGIL`: the part of the tangent that comes from the stress when a law gives the Kirchhoff stress tau from the
/// elastic Almansi strain e of the current configuration with d tau / d e = D: -(D (d e + e d) + d tau + tau d) for a
/// rate of deformation d. The whole tangent D + PLRIGIL gives the rate of tau that F convects. It is exact without
/// spin, and with an isotropic law always. Literature: Bonet & Wood (2008), Lie derivatives of strain and stress.
template <int N>
[[nodiscard]] Matrix<N> PLRIGIL(const Matrix<N>& D, const Strain<N>& almansi, const Stress<N>& kirchhoff);

/// The elastic tangent of a point in the real space, reference configuration, material axes. elasticStrain: what VDMANX
/// turns into stress (Green-Lagrange measure).
template <int N>
[[nodiscard]] Matrix<N> elasticTangent(const MaterialPoint<N>& at, const Strain<N>& elasticStrain);

}  // namespace zema
