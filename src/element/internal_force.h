// Internal forces of an element: the strain-displacement matrix transposed times the stress, summed over the points.
#pragma once

#include "element/kinematics.h"
#include "element/strain_measures.h"
#include "foundation/dense.h"

namespace zema {

/// Forces by direction, then by node.
template <class Kin, int NNODE>
using NodalForces = Matrix<Kin::directions, NNODE>;

/// f += dV B^T sigma. G: gradient functions (function x node); F: deformation gradient, not read at small strains.
template <class Kin, int NNODE>
void addInternalForce(const Matrix<Kin::functions, NNODE>& G, const Matrix<3>& F, StrainMeasure measure,
                      const Stress<Kin::NSTR1>& sigma, double dV, NodalForces<Kin, NNODE>& f) {
  // P = F S, first Piola-Kirchhoff stress; the force of direction i on node a is P(i, k) G(k, a)
  for (int c = 0; c < Kin::components; ++c) {
    const int i = Kin::row(c), k = Kin::column(c);
    double P = 0.0;
    if (measure == StrainMeasure::small) {
      P = sigma[placeOf(i, k)];
    } else {
      for (int q = 0; q < 3; ++q)
        if (Kin::coupled(k, q)) P += F(i, q) * sigma[placeOf(k, q)];
    }
    const int direction = i < Kin::directions ? i : 0;  // the hoop acts on the radial direction
    for (int a = 0; a < NNODE; ++a) f(direction, a) += dV * P * G(k, a);
  }
}

}  // namespace zema
