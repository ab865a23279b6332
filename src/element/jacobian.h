// Jacobians of solids, plane patterns, surfaces in space and lines, and the stops where one is not positive.
#pragma once

#include <cmath>
#include <string_view>

#include "element/shape_functions.h"
#include "foundation/dense.h"

namespace zema {

/// First lines of the stops at a Jacobian that is not positive, by the routine that met it.
namespace jacobian_stop {
inline constexpr std::string_view solid = " PROGRAMA DETENIDO EN LA SUBROUTINA JACOB3D";
inline constexpr std::string_view surface = " PROGRAMA DETENIDO EN LA SUBROUTINA JACOB2D";
inline constexpr std::string_view line = " PROGRAMA DETENIDO EN LA SUBROUTINA JACOB1D";
}  // namespace jacobian_stop

/// Throws PlainStop with the listing's lines on an element whose Jacobian is not positive; element counts from 1.
[[noreturn]] void stopAtJacobian(std::string_view firstLine, int element);

/// Coordinates of a point: sum over nodes of ELCOD (node x coordinate) SHAPEN.
template <int dimensions, int NNODE>
[[nodiscard]] constexpr Vector<dimensions> GPCOD(const Matrix<NNODE, dimensions>& ELCOD, const Vector<NNODE>& SHAPEN) {
  return PROMA1(Matrix<1, NNODE>{SHAPEN}, ELCOD).values;
}

/// `JACOB3D`, `JACOB2D`: fills CARTD (derivatives in global coordinates, coordinate x node) from DERIV (natural
/// coordinate x node) and the node coordinates ELCOD (node x coordinate), and returns the determinant of the Jacobian.
/// Throws PlainStop when it is not positive.
template <int dimensions, int NNODE>
[[nodiscard]] inline double JACOB(const Matrix<dimensions, NNODE>& DERIV, const Matrix<NNODE, dimensions>& ELCOD,
                                  int element, Matrix<dimensions, NNODE>& CARTD) {
  const Matrix<dimensions> XJACM = PROMA1(DERIV, ELCOD);  // d x_i / d xi_k in row k
  const double DJACB = DETERM3D(XJACM);
  if (!(DJACB > 0.0)) stopAtJacobian(dimensions == 3 ? jacobian_stop::solid : jacobian_stop::surface, element);
  Matrix<dimensions> XJACI;
  static_cast<void>(INVERT3D(XJACM, XJACI));
  for (int i = 0; i < dimensions; ++i)
    for (int a = 0; a < NNODE; ++a) {
      CARTD(i, a) = XJACI(i, 0) * DERIV(0, a);
      for (int k = 1; k < dimensions; ++k) CARTD(i, a) += XJACI(i, k) * DERIV(k, a);
    }
  return DJACB;
}

/// `JACOB2D` of a surface in space: the scale of the surface element, |dx/ds x dx/dt|, from DERIV (2 x nodes) and the
/// node coordinates ELCOD (nodes x 3). Throws PlainStop when it is not positive.
template <int NNODE>
[[nodiscard]] double JACOB2D(const Matrix<2, NNODE>& DERIV, const Matrix<NNODE, 3>& ELCOD, int element) {
  const Matrix<2, 3> tangents = PROMA1(DERIV, ELCOD);
  const double x = tangents(0, 1) * tangents(1, 2) - tangents(0, 2) * tangents(1, 1);
  const double y = tangents(0, 2) * tangents(1, 0) - tangents(0, 0) * tangents(1, 2);
  const double z = tangents(0, 0) * tangents(1, 1) - tangents(0, 1) * tangents(1, 0);
  const double DJACB = std::sqrt(x * x + y * y + z * z);
  if (!(DJACB > 0.0)) stopAtJacobian(jacobian_stop::surface, element);
  return DJACB;
}

/// What a line gives at a point.
template <int dimensions, int NNODE>
struct LineJacobian {
  double DJACB = 0.0;          ///< length per unit of the natural coordinate
  Vector<dimensions> TRANF{};  ///< unit tangent
  Matrix<1, NNODE> CARTD{};    ///< derivatives along the line
};

/// `JACOB1D`: a line in the plane or in space, ELCOD node x coordinate. Throws PlainStop when its length is not
/// positive.
template <int dimensions, int NNODE>
[[nodiscard]] LineJacobian<dimensions, NNODE> JACOB1D(const Matrix<1, NNODE>& DERIV,
                                                      const Matrix<NNODE, dimensions>& ELCOD, int element) {
  LineJacobian<dimensions, NNODE> line;
  line.TRANF = PROMA1(DERIV, ELCOD).values;
  double squares = 0.0;
  for (const double tangent : line.TRANF) squares += tangent * tangent;
  line.DJACB = std::sqrt(squares);
  if (!(line.DJACB > 0.0)) stopAtJacobian(jacobian_stop::line, element);
  for (double& tangent : line.TRANF) tangent /= line.DJACB;
  for (int a = 0; a < NNODE; ++a) line.CARTD(0, a) = DERIV(0, a) / line.DJACB;
  return line;
}

}  // namespace zema
