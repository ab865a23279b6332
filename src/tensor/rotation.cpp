// Rotation matrices of Euler angles and of tensors in vector form.
#include "tensor/rotation.h"

#include <cmath>
#include <numbers>

#include "foundation/single_precision.h"

namespace zema {

Matrix<3> CALRME(const std::array<double, 3>& degrees) {
  constexpr double radian = std::numbers::pi / 180.0;
  const double ca = std::cos(degrees[0] * radian), sa = std::sin(degrees[0] * radian);
  const double cb = std::cos(degrees[1] * radian), sb = std::sin(degrees[1] * radian);
  const double cg = std::cos(degrees[2] * radian), sg = std::sin(degrees[2] * radian);
  return {{ca * cg - sa * cb * sg, -ca * sg - sa * cb * cg, sa * sb,  //
           sa * cg + ca * cb * sg, ca * cb * cg - sa * sg, -ca * sb,  //
           sb * sg, cg * sb, cb}};
}

template <int N>
Matrix<N> N_ROTM(const Matrix<3>& R) {
  Matrix<N> T;
  for (int i = 0; i < N; ++i) {
    const int k = KF[static_cast<std::size_t>(i)], l = LF[static_cast<std::size_t>(i)];
    for (int j = 0; j < N; ++j) {
      const int m = KF[static_cast<std::size_t>(j)], n = LF[static_cast<std::size_t>(j)];
      T(i, j) = R(k, m) * R(l, n);
      if (isShear(j)) T(i, j) += R(k, n) * R(l, m);
    }
  }
  return T;
}

template <int N>
Rotation<N>::Rotation(const std::array<double, 3>& degrees) {
  double squares = 0.0;
  for (const double angle : degrees) squares += angle * angle;
  if (squares <= noRotation) return;
  none_ = false;
  R_ = CALRME(degrees);
  stressToGlobal_ = N_ROTM<N>(R_);
  stressToLocal_ = N_ROTM<N>(transpose(R_));
}

template <int N>
void ROTV(Stress<N>& stress, const Rotation<N>& rotation, Direction direction) {
  if (rotation.none()) return;
  const bool toLocal = direction == Direction::toLocal;
  stress.values = CALTEN(toLocal ? rotation.stressToLocal() : rotation.stressToGlobal(), stress.values);
}

template <int N>
void ROTV(Strain<N>& strain, const Rotation<N>& rotation, Direction direction) {
  if (rotation.none()) return;
  // The work of stress and strain stays the same, so a strain turns with the transpose of the way back of a stress.
  const bool toLocal = direction == Direction::toLocal;
  const Matrix<N>& T = toLocal ? rotation.stressToGlobal() : rotation.stressToLocal();
  strain.values = CALTEN(transpose(T), strain.values);
}

template <int N>
void ROTM(Matrix<N>& C, const Rotation<N>& rotation, Direction direction) {
  if (rotation.none()) return;
  const Matrix<N>& T = direction == Direction::toLocal ? rotation.stressToLocal() : rotation.stressToGlobal();
  C = PROMAT(PROMA1(T, C), T);
}

template <int N>
Matrix<3> gradientToLocal(const Matrix<3>& F, const Rotation<N>& rotation) {
  if (rotation.none()) return F;
  return transposeTimes(rotation.R(), PROMA1(F, rotation.R()));
}

template Matrix<4> N_ROTM<4>(const Matrix<3>&);
template Matrix<6> N_ROTM<6>(const Matrix<3>&);
template class Rotation<4>;
template class Rotation<6>;
template void ROTV(Stress<4>&, const Rotation<4>&, Direction);
template void ROTV(Stress<6>&, const Rotation<6>&, Direction);
template void ROTV(Strain<4>&, const Rotation<4>&, Direction);
template void ROTV(Strain<6>&, const Rotation<6>&, Direction);
template void ROTM(Matrix<4>&, const Rotation<4>&, Direction);
template void ROTM(Matrix<6>&, const Rotation<6>&, Direction);
template Matrix<3> gradientToLocal(const Matrix<3>&, const Rotation<4>&);
template Matrix<3> gradientToLocal(const Matrix<3>&, const Rotation<6>&);

}  // namespace zema
