// Moves of tensors between the reference and the current configuration.
#include "tensor/configuration.h"

namespace zema {
namespace {

/// Components of the symmetric part of a 3 x 3 matrix that is symmetric but for rounding.
template <int N>
Vector<N> componentsOf(const Matrix<3>& tensor) {
  Vector<N> components{};
  for (std::size_t i = 0; i < components.size(); ++i) components[i] = tensor(KF[i], LF[i]);
  return components;
}

template <int N>
Matrix<N> tensorMatrix(const Matrix<3>& A, const Matrix<3>& B) {
  Matrix<N> T;
  for (int i = 0; i < N; ++i) {
    const int k = KF[static_cast<std::size_t>(i)], l = LF[static_cast<std::size_t>(i)];
    for (int j = 0; j < N; ++j) {
      const int m = KF[static_cast<std::size_t>(j)], n = LF[static_cast<std::size_t>(j)];
      T(i, j) = A(k, m) * B(l, n);
      if (isShear(j)) T(i, j) += A(k, n) * B(l, m);
    }
  }
  return T;
}

Matrix<3> inverseOf(const Matrix<3>& F) {
  Matrix<3> inverse;
  if (!INVERT3D(F, inverse)) return {};
  return inverse;
}

}  // namespace

template <int N>
Vector<N> P_FB_2(const Vector<N>& V, const Matrix<3>& A, const Matrix<3>& B) {
  return componentsOf<N>(PROMA1(A, PROMA1(tensorOf(Stress<N>{V}), B)));
}

template <int N>
Matrix<N> P_FB_4(const Matrix<N>& C, const Matrix<3>& A1, const Matrix<3>& A2, const Matrix<3>& A3,
                 const Matrix<3>& A4) {
  return PROMAT(PROMA1(tensorMatrix<N>(A1, A2), C), tensorMatrix<N>(A3, A4));
}

template <int N>
void PFB_STR(Stress<N>& stress, const Matrix<3>& F, TensorMove code) {
  const Matrix<3> A = code == TensorMove::stressForward ? F : inverseOf(F);
  stress.values = P_FB_2<N>(stress.values, A, transpose(A));
}

template <int N>
void PFB_STR(Strain<N>& strain, const Matrix<3>& F, TensorMove code) {
  const Matrix<3> B = code == TensorMove::strainBack ? F : inverseOf(F);
  for (int i = 0; i < N; ++i)
    if (isShear(i)) strain[i] *= 0.5;
  strain.values = P_FB_2<N>(strain.values, transpose(B), B);
  for (int i = 0; i < N; ++i)
    if (isShear(i)) strain[i] *= 2.0;
}

template <int N>
void PFB_C(Matrix<N>& C, const Matrix<3>& F, MatrixMove code) {
  const auto moved = [&C](const Matrix<3>& rows, const Matrix<3>& columns) {
    return P_FB_4<N>(C, rows, rows, columns, columns);
  };
  switch (code) {
    case MatrixMove::forward:
      C = moved(F, F);
      return;
    case MatrixMove::back: {
      const Matrix<3> inverse = inverseOf(F);
      C = moved(inverse, inverse);
      return;
    }
    case MatrixMove::strainForward:
      C = moved(transpose(inverseOf(F)), F);
      return;
    case MatrixMove::strainBack:
      C = moved(transpose(F), inverseOf(F));
      return;
    case MatrixMove::stressForward:
      C = moved(F, transpose(inverseOf(F)));
      return;
    case MatrixMove::stressBack:
      C = moved(inverseOf(F), transpose(F));
      return;
  }
}

template Vector<4> P_FB_2<4>(const Vector<4>&, const Matrix<3>&, const Matrix<3>&);
template Vector<6> P_FB_2<6>(const Vector<6>&, const Matrix<3>&, const Matrix<3>&);
template Matrix<4> P_FB_4<4>(const Matrix<4>&, const Matrix<3>&, const Matrix<3>&, const Matrix<3>&, const Matrix<3>&);
template Matrix<6> P_FB_4<6>(const Matrix<6>&, const Matrix<3>&, const Matrix<3>&, const Matrix<3>&, const Matrix<3>&);
template void PFB_STR(Stress<4>&, const Matrix<3>&, TensorMove);
template void PFB_STR(Stress<6>&, const Matrix<3>&, TensorMove);
template void PFB_STR(Strain<4>&, const Matrix<3>&, TensorMove);
template void PFB_STR(Strain<6>&, const Matrix<3>&, TensorMove);
template void PFB_C(Matrix<4>&, const Matrix<3>&, MatrixMove);
template void PFB_C(Matrix<6>&, const Matrix<3>&, MatrixMove);

}  // namespace zema
