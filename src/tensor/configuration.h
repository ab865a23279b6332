// Moves of tensors between the reference and the current configuration by the deformation gradient.
#pragma once

#include "foundation/dense.h"
#include "tensor/voigt.h"

namespace zema {

/// Codes of `PFB_STR`; V' = A V B.
enum class TensorMove {
  stressForward = 1,  ///< F S F^T: second Piola-Kirchhoff to Kirchhoff stress
  stressBack = 2,     ///< F^-1 S F^-T
  strainForward = 3,  ///< F^-T E F^-1: Green-Lagrange to Almansi strain
  strainBack = 4      ///< F^T e F
};

/// Codes of `PFB_C`: the factors of the rows | of the columns. The first two serve matrices that give a stress.
enum class MatrixMove {
  forward = 1,        ///< F | F
  back = 2,           ///< F^-1 | F^-1
  strainForward = 3,  ///< F^-T | F
  strainBack = 4,     ///< F^T | F^-1
  stressForward = 5,  ///< F | F^-T
  stressBack = 6      ///< F^-1 | F^T
};

/// `PFB_STR`: moves a stress (codes 1, 2) or a strain (codes 3, 4) in place. F: deformation gradient; in the plane
/// only F(0:1, 0:1) and F(2, 2) may differ from 0. A singular F, which has no inverse, gives 0 for the codes that need
/// one.
template <int N>
void PFB_STR(Stress<N>& stress, const Matrix<3>& F, TensorMove code);
template <int N>
void PFB_STR(Strain<N>& strain, const Matrix<3>& F, TensorMove code);

/// `PFB_C`: moves a constitutive matrix in place, C' = T1 C T2^T with the matrices of `P_FB_4`.
template <int N>
void PFB_C(Matrix<N>& C, const Matrix<3>& F, MatrixMove code);

/// `P_FB_2`: A V B for a tensor V given by its components (no engineering shears).
template <int N>
[[nodiscard]] Vector<N> P_FB_2(const Vector<N>& V, const Matrix<3>& A, const Matrix<3>& B);

/// `P_FB_4`: T1(A1, A2) C T2(A3, A4)^T with T(I, J) = A(k, m) A'(l, n), plus A(k, n) A'(l, m) in a shear column, where
/// (k, l) and (m, n) are the index pairs of I and J.
template <int N>
[[nodiscard]] Matrix<N> P_FB_4(const Matrix<N>& C, const Matrix<3>& A1, const Matrix<3>& A2, const Matrix<3>& A3,
                               const Matrix<3>& A4);

}  // namespace zema
