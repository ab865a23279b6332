// Deformation gradient, strain and rate of strain at a point, and the strain's bookkeeping over construction steps.
#pragma once

#include "foundation/dense.h"
#include "tensor/voigt.h"

namespace zema {

/// Infinitesimal strain of the displacement gradient, or Green-Lagrange strain of the deformation gradient.
enum class StrainMeasure { small, finite };

/// `GRADEF`: FGRAD(i, j) = sum over nodes of ELDIS(a, i) CARTD(j, a), ELDIS node x direction. With displacements it is
/// the displacement gradient, with positions the deformation gradient, with velocities the velocity gradient (all by
/// reference coordinates). In the plane the third row and column stay 0.
template <int dimensions, int NNODE>
[[nodiscard]] Matrix<3> GRADEF(const Matrix<NNODE, dimensions>& ELDIS, const Matrix<dimensions, NNODE>& CARTD) {
  const Matrix<dimensions> gradient = PROMA1(CARTD, ELDIS);  // transposed
  Matrix<3> FGRAD;
  for (int i = 0; i < dimensions; ++i)
    for (int j = 0; j < dimensions; ++j) FGRAD(i, j) = gradient(j, i);
  return FGRAD;
}

/// First part of `DEFO3D`: total strain of a gradient, the symmetric part of a displacement gradient (small) or
/// (F^T F - I) / 2 of a deformation gradient (finite).
template <int NSTR1>
[[nodiscard]] Strain<NSTR1> strainOf(const Matrix<3>& FGRAD, StrainMeasure measure) {
  Strain<NSTR1> strain;
  for (int r = 0; r < NSTR1; ++r) {
    const int k = KF[static_cast<std::size_t>(r)], l = LF[static_cast<std::size_t>(r)];
    if (measure == StrainMeasure::small) {
      strain[r] = k == l ? FGRAD(k, k) : FGRAD(k, l) + FGRAD(l, k);
    } else {
      const double product = FGRAD(0, k) * FGRAD(0, l) + FGRAD(1, k) * FGRAD(1, l) + FGRAD(2, k) * FGRAD(2, l);
      strain[r] = k == l ? (product - 1.0) / 2.0 : product;
    }
  }
  return strain;
}

/// Rate of strain: the symmetric part of the velocity gradient L (small) or sym(F^T L), the rate of the Green-Lagrange
/// strain (finite). Literature: Bonet & Wood (2008), sec. 4.11.
template <int NSTR1>
[[nodiscard]] Strain<NSTR1> strainRate(const Matrix<3>& FGRAD, const Matrix<3>& L, StrainMeasure measure) {
  return strainOf<NSTR1>(measure == StrainMeasure::small ? L : transposeTimes(FGRAD, L), StrainMeasure::small);
}

/// Strain of a point after the bookkeeping.
template <int NSTR1>
struct PointStrain {
  Strain<NSTR1> STRAN;   ///< increment since the stored total
  Strain<NSTR1> STRAT;   ///< total
  Strain<NSTR1> STRFAS;  ///< offset of the construction step
};

/// Second part of `DEFO3D`: increment and total of a strain against the stored total. An inactive element gets zero
/// strain and keeps the negative of what its nodes have gathered in STRFAS; an active one starts from that.
template <int NSTR1>
[[nodiscard]] PointStrain<NSTR1> DEFO(const Strain<NSTR1>& total, const Strain<NSTR1>& storedSTRAT,
                                      const Strain<NSTR1>& storedSTRFAS, bool active) {
  if (!active) return {{}, {}, -1.0 * total};
  return {total - storedSTRAT + storedSTRFAS, total + storedSTRFAS, storedSTRFAS};
}

}  // namespace zema
