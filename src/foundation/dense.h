// Small dense matrices of fixed size: products, determinants, inverses, principal values.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "foundation/errors.h"
#include "foundation/single_precision.h"

namespace zema {

/// R x C matrix by rows, indexed from 0; `Matrix<2, 2> A{}` is zero, `Matrix<2, 2> A{{a, b, c, d}}` lists its rows.
template <int R, int C = R>
struct Matrix {
  std::array<double, static_cast<std::size_t>(R* C)> values{};

  [[nodiscard]] constexpr double& operator()(int i, int j) { return values[static_cast<std::size_t>(i * C + j)]; }
  [[nodiscard]] constexpr double operator()(int i, int j) const { return values[static_cast<std::size_t>(i * C + j)]; }
  [[nodiscard]] constexpr double* data() { return values.data(); }
  [[nodiscard]] constexpr const double* data() const { return values.data(); }
  [[nodiscard]] constexpr bool operator==(const Matrix&) const = default;

  [[nodiscard]] static constexpr Matrix identity() requires(R == C) {
    Matrix I;
    for (int i = 0; i < R; ++i) I(i, i) = 1.0;
    return I;
  }
};

template <int N>
using Vector = std::array<double, static_cast<std::size_t>(N)>;

/// A B.
template <int R, int K, int C>
[[nodiscard]] constexpr Matrix<R, C> PROMA1(const Matrix<R, K>& A, const Matrix<K, C>& B) {
  Matrix<R, C> product;
  for (int i = 0; i < R; ++i)
    for (int k = 0; k < K; ++k)
      for (int j = 0; j < C; ++j) product(i, j) += A(i, k) * B(k, j);
  return product;
}

/// A B^T.
template <int R, int K, int C>
[[nodiscard]] constexpr Matrix<R, C> PROMAT(const Matrix<R, K>& A, const Matrix<C, K>& B) {
  Matrix<R, C> product;
  for (int i = 0; i < R; ++i)
    for (int j = 0; j < C; ++j)
      for (int k = 0; k < K; ++k) product(i, j) += A(i, k) * B(j, k);
  return product;
}

/// A^T B.
template <int R, int K, int C>
[[nodiscard]] constexpr Matrix<R, C> transposeTimes(const Matrix<K, R>& A, const Matrix<K, C>& B) {
  Matrix<R, C> product;
  for (int k = 0; k < K; ++k)
    for (int i = 0; i < R; ++i)
      for (int j = 0; j < C; ++j) product(i, j) += A(k, i) * B(k, j);
  return product;
}

template <int R, int C>
[[nodiscard]] constexpr Matrix<C, R> transpose(const Matrix<R, C>& A) {
  Matrix<C, R> turned;
  for (int i = 0; i < R; ++i)
    for (int j = 0; j < C; ++j) turned(j, i) = A(i, j);
  return turned;
}

/// D v: the product of a matrix by a vector.
template <int R, int C>
[[nodiscard]] constexpr Vector<R> CALTEN(const Matrix<R, C>& D, const Vector<C>& v) {
  Vector<R> product{};
  for (int i = 0; i < R; ++i)
    for (int j = 0; j < C; ++j) product[static_cast<std::size_t>(i)] += D(i, j) * v[static_cast<std::size_t>(j)];
  return product;
}

/// Determinant of a 2 x 2 or 3 x 3 matrix.
[[nodiscard]] constexpr double DETERM3D(const Matrix<2, 2>& A) {
  return A(0, 0) * A(1, 1) - A(0, 1) * A(1, 0);
}
[[nodiscard]] constexpr double DETERM3D(const Matrix<3, 3>& A) {
  return A(0, 0) * (A(1, 1) * A(2, 2) - A(2, 1) * A(1, 2)) + A(0, 1) * (A(2, 0) * A(1, 2) - A(1, 0) * A(2, 2)) +
         A(0, 2) * (A(1, 0) * A(2, 1) - A(2, 0) * A(1, 1));
}

/// B = A^-1 as adjugate over determinant. When the determinant is exactly 0 it returns false and leaves B as it stands.
[[nodiscard]] constexpr bool INVERT3D(const Matrix<2, 2>& A, Matrix<2, 2>& B) {
  const double det = DETERM3D(A);
  if (det == 0.0) return false;
  B = {{A(1, 1) / det, -A(0, 1) / det, -A(1, 0) / det, A(0, 0) / det}};
  return true;
}
[[nodiscard]] constexpr bool INVERT3D(const Matrix<3, 3>& A, Matrix<3, 3>& B) {
  const double det = DETERM3D(A);
  if (det == 0.0) return false;
  const auto cofactor = [&A, det](int i, int j) {  // of entry (j, i), with the sign that cyclic neighbours bring
    const int k = (j + 1) % 3, l = (j + 2) % 3, m = (i + 1) % 3, n = (i + 2) % 3;
    return (A(k, m) * A(l, n) - A(k, n) * A(l, m)) / det;
  };
  B = {{cofactor(0, 0), cofactor(0, 1), cofactor(0, 2), cofactor(1, 0), cofactor(1, 1), cofactor(1, 2), cofactor(2, 0),
        cofactor(2, 1), cofactor(2, 2)}};
  return true;
}

/// B = A^-1 by Gauss-Jordan elimination without row exchange; A is destroyed. A diagonal entry that is nearly 0 at the
/// start is replaced by 1.0e-15. Throws RunEnd with the pivot when one vanishes.
template <int N>
void INGAUS(Matrix<N, N>& A, Matrix<N, N>& B) {
  constexpr double vanishing = single(1.0e-30F);
  for (int i = 0; i < N; ++i)
    if (std::abs(A(i, i)) < vanishing) A(i, i) = single(1.0e-15F);
  B = Matrix<N, N>::identity();
  for (int i = 0; i < N; ++i) {
    const double pivot = A(i, i);
    if (std::abs(pivot) < vanishing)
      throw RunEnd("  >>>> ERROR EN LA RUTINA DE INVERSION DE MATRICES", pivot, vanishing);
    const double scale = 1.0 / pivot;
    for (int j = 0; j < N; ++j) {
      A(i, j) *= scale;
      B(i, j) *= scale;
    }
    for (int k = 0; k < N; ++k) {
      if (k == i) continue;
      const double factor = A(k, i);
      for (int j = 0; j < N; ++j) {
        A(k, j) -= factor * A(i, j);
        B(k, j) -= factor * B(i, j);
      }
    }
  }
}

/// B = A^-1 for any other size, by INGAUS, with its exception; A stays. Always true.
template <int N>
bool INVERT3D(const Matrix<N, N>& A, Matrix<N, N>& B) {
  Matrix<N, N> work = A;
  INGAUS(work, B);
  return true;
}

/// X = A^-1 X by Gauss-Jordan elimination with row exchange; A is destroyed. Returns false, with X undefined, when A is
/// singular, that is when no pivot other than 0 is left or a value is not finite.
template <int N, int M>
[[nodiscard]] bool solveColumns(Matrix<N, N>& A, Matrix<N, M>& X) {
  for (int i = 0; i < N; ++i) {
    int best = i;
    for (int k = i + 1; k < N; ++k)
      if (std::abs(A(k, i)) > std::abs(A(best, i))) best = k;
    const double pivot = A(best, i);
    if (pivot == 0.0 || !std::isfinite(pivot)) return false;
    if (best != i) {
      for (int j = i; j < N; ++j) std::swap(A(i, j), A(best, j));
      for (int j = 0; j < M; ++j) std::swap(X(i, j), X(best, j));
    }
    for (int j = i + 1; j < N; ++j) A(i, j) /= pivot;
    for (int j = 0; j < M; ++j) X(i, j) /= pivot;
    for (int k = 0; k < N; ++k) {
      if (k == i) continue;
      const double factor = A(k, i);
      for (int j = i + 1; j < N; ++j) A(k, j) -= factor * A(i, j);
      for (int j = 0; j < M; ++j) X(k, j) -= factor * X(i, j);
    }
  }
  return true;
}

/// B = A^-1 by solveColumns. Returns false and leaves B as it stands when A is singular.
template <int N>
[[nodiscard]] bool INVMTX(const Matrix<N, N>& A, Matrix<N, N>& B) {
  Matrix<N, N> work = A;
  Matrix<N, N> inverse = Matrix<N, N>::identity();
  if (!solveColumns(work, inverse)) return false;
  B = inverse;
  return true;
}

/// Principal values of a symmetric matrix, in descending order, and their unit directions in the columns of
/// `directions`.
struct PrincipalAxes {
  Vector<3> values{};
  Matrix<3, 3> directions{};
};

/// Principal values and directions of a symmetric 3 x 3 matrix by cyclic Jacobi rotations (Golub & Van Loan, 2013,
/// sec. 8.5). Only the upper triangle of A is read.
[[nodiscard]] PrincipalAxes principalAxes(const Matrix<3, 3>& A);

/// The principal values alone, in descending order.
[[nodiscard]] Vector<3> principalValues(const Matrix<3, 3>& A);

}  // namespace zema
