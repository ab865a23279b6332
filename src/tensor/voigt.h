// Symmetric tensors as vectors: stress and strain are two types, because a shear means a different thing in each.
#pragma once

#include <algorithm>
#include <array>
#include <span>

#include "foundation/dense.h"

namespace zema {

/// Index pair (from 0) of a place: xx, yy, xy, zz, xz, yz. A tensor of 4 places has the first four.
inline constexpr std::array<int, 6> KF{0, 1, 0, 2, 0, 1};  ///< KF: first index of a place
inline constexpr std::array<int, 6> LF{0, 1, 1, 2, 2, 2};  ///< LF: second index of a place

/// Whether a place (from 0) is a shear.
[[nodiscard]] constexpr bool isShear(int place) {
  return KF[static_cast<std::size_t>(place)] != LF[static_cast<std::size_t>(place)];
}

/// A symmetric tensor of N places: 6 (xx, yy, xy, zz, xz, yz) in space, 4 (xx, yy, xy, zz) in the plane.
template <int N, class Kind>
struct VoigtVector {
  static_assert(N == 4 || N == 6);
  Vector<N> values{};

  [[nodiscard]] constexpr double& operator[](int place) { return values[static_cast<std::size_t>(place)]; }
  [[nodiscard]] constexpr double operator[](int place) const { return values[static_cast<std::size_t>(place)]; }
  [[nodiscard]] constexpr bool operator==(const VoigtVector&) const = default;

  constexpr VoigtVector& operator+=(const VoigtVector& other) {
    for (int i = 0; i < N; ++i) (*this)[i] += other[i];
    return *this;
  }
  constexpr VoigtVector& operator-=(const VoigtVector& other) {
    for (int i = 0; i < N; ++i) (*this)[i] -= other[i];
    return *this;
  }
  constexpr VoigtVector& operator*=(double factor) {
    for (int i = 0; i < N; ++i) (*this)[i] *= factor;
    return *this;
  }
  /// Adds factor times another tensor.
  constexpr void add(double factor, const VoigtVector& other) {
    for (int i = 0; i < N; ++i) (*this)[i] += factor * other[i];
  }
  /// Whether all places are exactly 0.
  [[nodiscard]] constexpr bool isZero() const {
    for (int i = 0; i < N; ++i)
      if ((*this)[i] != 0.0) return false;
    return true;
  }
  /// The N values that start at a place (from 0) of a record.
  [[nodiscard]] static VoigtVector from(std::span<const double> record, int place) {
    VoigtVector v;
    std::copy_n(record.data() + place, N, v.values.data());
    return v;
  }
  void copyTo(std::span<double> record, int place) const { std::copy_n(values.data(), N, record.data() + place); }
};

template <int N, class Kind>
[[nodiscard]] constexpr VoigtVector<N, Kind> operator+(VoigtVector<N, Kind> a, const VoigtVector<N, Kind>& b) {
  return a += b;
}
template <int N, class Kind>
[[nodiscard]] constexpr VoigtVector<N, Kind> operator-(VoigtVector<N, Kind> a, const VoigtVector<N, Kind>& b) {
  return a -= b;
}
template <int N, class Kind>
[[nodiscard]] constexpr VoigtVector<N, Kind> operator*(double factor, VoigtVector<N, Kind> a) {
  return a *= factor;
}

struct StressKind {};
struct StrainKind {};

/// Stress: tensor components, force / length^2.
template <int N>
using Stress = VoigtVector<N, StressKind>;
/// Strain: shears are engineering shears, twice the tensor component.
template <int N>
using Strain = VoigtVector<N, StrainKind>;

/// D strain.
template <int N>
[[nodiscard]] constexpr Stress<N> CALTEN(const Matrix<N>& D, const Strain<N>& strain) {
  return {CALTEN(D, strain.values)};
}

/// Work of a stress on a strain, energy / length^3.
template <int N>
[[nodiscard]] constexpr double dot(const Stress<N>& stress, const Strain<N>& strain) {
  double sum = 0.0;
  for (int i = 0; i < N; ++i) sum += stress[i] * strain[i];
  return sum;
}

/// The tensor components as a 3 x 3 matrix.
template <int N>
[[nodiscard]] constexpr Matrix<3> tensorOf(const Stress<N>& stress) {
  Matrix<3> tensor;
  for (int i = 0; i < N; ++i) {
    const auto place = static_cast<std::size_t>(i);
    tensor(KF[place], LF[place]) = tensor(LF[place], KF[place]) = stress[i];
  }
  return tensor;
}
template <int N>
[[nodiscard]] constexpr Matrix<3> tensorOf(const Strain<N>& strain) {
  Stress<N> components{strain.values};
  for (int i = 0; i < N; ++i)
    if (isShear(i)) components[i] *= 0.5;
  return tensorOf(components);
}

}  // namespace zema
