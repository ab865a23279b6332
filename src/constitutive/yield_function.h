// Yield functions and potentials: invariants, value, normal, second derivatives. All in the space of the laws.
#pragma once

#include <cmath>

#include "database/point_store.h"
#include "model/materials.h"
#include "tensor/voigt.h"

namespace zema {

/// The parameters of a yield function or potential.
struct CriterionData {
  Criterion code{};    ///< which surface
  double angle = 0.0;  ///< internal friction of a yield function, dilatancy of a potential, radians
  double R = 1.0;      ///< ratio of the yield stresses in compression and tension
  double alpha = 0.0;  ///< the three parameters of the fifth criterion
  double gamma = 0.0;
  double delta = 0.0;
};

/// Parameters of a material's yield function with the friction angle in force, `INTVAR(2)`.
[[nodiscard]] CriterionData yieldData(const Material& material, double frictionAngle);
/// Parameters of its potential with the dilatancy angle in force, `INTVAR(3)`.
[[nodiscard]] CriterionData potentialData(const Material& material, double dilatancyAngle);

/// Invariants of a stress less a back stress.
template <int N>
struct StressInvariants {
  double p = 0.0;          ///< mean stress
  double J2 = 0.0;         ///< second invariant of the deviator, stress^2
  double J3 = 0.0;         ///< third invariant, stress^3
  double rootJ2 = 0.0;     ///< sqrt(J2)
  double sin3theta = 1.0;  ///< -3 sqrt(3) J3 / (2 J2^(3/2)); beyond +-0.95 snapped to +-1; 1 when J2 is 0
  Stress<N> s;             ///< deviator less the back stress

  [[nodiscard]] bool atCorner() const { return std::abs(sin3theta) == 1.0; }
  /// Lode angle, -pi/6 (one stress above two equal ones) to pi/6 (one below two equal ones).
  [[nodiscard]] double theta() const { return std::asin(sin3theta) / 3.0; }
  /// Largest principal stress, with the snapped angle; exactly 0 when it is within 1e-8 sqrt(J2) of 0.
  [[nodiscard]] double SGMAX() const;
};

/// backStress: centre of the surface in deviatoric stress, taken off the deviator; none: 0.
template <int N>
[[nodiscard]] StressInvariants<N> invariantsOf(const Stress<N>& SIGMA, const Stress<N>& backStress = {});

/// Value of a yield function.
struct YieldValue {
  double F = 0.0;       ///< equivalent stress
  double dFdphi = 0.0;  ///< its derivative by the friction angle
};

/// `PLINVA`: F of criteria 1 to 5, scaled so that the uniaxial yield stress in compression is its value at yield; 0 for
/// the others. dF/dK is -1 for all. Literature: Lubliner et al. (1989), Owen & Hinton (1980).
template <int N>
[[nodiscard]] YieldValue PLINVA(const StressInvariants<N>& invariants, const CriterionData& criterion);

/// `PLYIEL`: the normal dF/d stress (shear places count twice, as in a strain). Returns false and leaves the normal
/// alone when J2 is 0. Criterion 6 gives a unit vector on the larger of places xx and yy, criterion 7 the normal of
/// criterion 2, criterion 8 the zero vector.
template <int N>
bool PLYIEL(const Stress<N>& SIGMA, const StressInvariants<N>& invariants, const CriterionData& criterion,
            Strain<N>& normal);

/// `PLY2DERI`: second derivatives of a criterion by the stress in the von Mises form, P/q - n n/q with q the von Mises
/// stress and n its normal, times the slope of the criterion along sqrt(J2) over that of q. Exact for criteria 2 and 4
/// and in the corner zones; between them criteria 1, 3 and 5 bend more. 0 when J2 is 0.
template <int N>
[[nodiscard]] Matrix<N> PLY2DERI(const StressInvariants<N>& invariants, const CriterionData& criterion);

}  // namespace zema
