// Tangent stiffness of an element: contributions of the points collected, then summed in one product.
#pragma once

#include <span>

#include "element/kinematics.h"
#include "foundation/dense.h"

namespace zema {

/// K = sum over points of dV (B^T D B, and at finite strain the geometric term) for a general D.
///
/// What a point adds is N_a,k A(ik, jl) N_b,l, where A is D at small strains and the tangent of the first
/// Piola-Kirchhoff stress, F F D + S, at finite strains (Bonet & Wood, 2008, sec. 6.3, 9.4; Belytschko et al., 2014,
/// sec. 6.4). So only the three nonzeros of a column of B are touched, and the geometric term costs no further product.
template <class Kin, int NNODE>
class StiffnessSum {
 public:
  using Functions = Matrix<Kin::functions, NNODE>;
  static constexpr int NEVAB = Kin::directions * NNODE;  ///< degrees of freedom of the element
  static constexpr int mostPoints = Kin::directions == 3 ? 8 : 9;

  /// Adds a point at small strains: dV B^T D B. G: gradient functions (function x node).
  void add(const Functions& G, const Matrix<Kin::NSTR1>& D, double dV);
  /// Adds a point at finite strains: dV (B^T D B + geometric term of the second Piola-Kirchhoff stress S). All points
  /// of a sum must be of one kind.
  void add(const Functions& G, const Matrix<Kin::NSTR1>& D, const Matrix<3>& F, const Stress<Kin::NSTR1>& S, double dV);
  /// Writes the sum: NEVAB x NEVAB by rows, places by node, then by direction.
  void writeTo(std::span<double> ESTIF) const;

 private:
  /// A row of A N_b,l: by direction, then by node.
  using Row = Vector<NEVAB>;

  struct Point {  // NOLINT(cppcoreguidelines-pro-type-member-init): add() fills it
    Functions G;
    alignas(64) std::array<Row, static_cast<std::size_t>(Kin::components)> rows;
  };

  int points_ = 0;
  bool finite_ = false;  // rows stand by component of the gradient; otherwise by place of the stress
  std::array<Point, static_cast<std::size_t>(mostPoints)> point_;

  [[nodiscard]] Point& next();
  template <class Coefficient>
  static void fillRow(Row& row, const Functions& G, const Coefficient& A);
};

}  // namespace zema
