// Rotation of stresses, strains and constitutive matrices between global and local axes.
#pragma once

#include <array>

#include "foundation/dense.h"
#include "tensor/voigt.h"

namespace zema {

/// `CALRME`: rotation matrix of three Euler angles in degrees, about z, then the new x, then the new z. Its columns are
/// the local axes in global components: v_global = R v_local.
[[nodiscard]] Matrix<3> CALRME(const std::array<double, 3>& degrees);

/// `N_ROTM`: the N x N matrix that turns a stress as R turns a vector: (R S R^T) as a vector = N_ROTM(R) S.
template <int N>
[[nodiscard]] Matrix<N> N_ROTM(const Matrix<3>& R);

enum class Direction { toLocal = 1, toGlobal = 2 };

/// Local axes, prepared once so that turning a tensor is one product. In the plane only turns about z make sense.
template <int N>
class Rotation {
 public:
  /// No rotation: local and global axes are the same.
  Rotation() = default;
  /// Euler angles in degrees; a sum of squares of at most `noRotation` is no rotation at all.
  explicit Rotation(const std::array<double, 3>& degrees);

  [[nodiscard]] bool none() const { return none_; }
  /// Columns are the local axes.
  [[nodiscard]] const Matrix<3>& R() const { return R_; }
  [[nodiscard]] const Matrix<N>& stressToGlobal() const { return stressToGlobal_; }
  [[nodiscard]] const Matrix<N>& stressToLocal() const { return stressToLocal_; }

 private:
  bool none_ = true;
  Matrix<3> R_ = Matrix<3>::identity();
  Matrix<N> stressToGlobal_ = Matrix<N>::identity();
  Matrix<N> stressToLocal_ = Matrix<N>::identity();
};

/// `ROTV`: turns a stress or a strain in place.
template <int N>
void ROTV(Stress<N>& stress, const Rotation<N>& rotation, Direction direction);
template <int N>
void ROTV(Strain<N>& strain, const Rotation<N>& rotation, Direction direction);

/// `ROTM`: turns a matrix that gives a stress from a strain, in place: C_global = T C_local T^T with T = N_ROTM(R).
template <int N>
void ROTM(Matrix<N>& C, const Rotation<N>& rotation, Direction direction);

/// Turns a deformation gradient into local axes: R^T F R.
template <int N>
[[nodiscard]] Matrix<3> gradientToLocal(const Matrix<3>& F, const Rotation<N>& rotation);

}  // namespace zema
