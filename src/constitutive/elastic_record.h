// The elastic tables of a material or composite: moduli, maps between real and isotropic space, their inverses.
#pragma once

#include <algorithm>
#include <span>

#include "foundation/dense.h"
#include "tensor/rotation.h"

namespace zema {

/// Values of a packed upper triangle.
template <int N>
inline constexpr int packedSize = N*(N + 1) / 2;

/// One row of store 4, 213 values for six components. Full matrices by rows; component order xx, yy, xy, zz, xz, yz.
/// A composite's row holds VDMANX, VDMANXI and VCVISC only.
template <int N>
struct ElasticRecord {
  Vector<packedSize<N>> VDMATX{};  ///< isotropic elastic matrix of the mapped space, packed upper triangle by rows
  Matrix<N> AEMX;                  ///< strain map, real to mapped
  Matrix<N> VDMANX;                ///< real elastic matrix, force / length^2
  Vector<N> ASMT{};                ///< stress map, diagonal, real to mapped
  Matrix<N> VDMANXI;               ///< inverse of the real elastic matrix
  Vector<N> ASMTI{};               ///< inverse stress map
  Matrix<N> AEMXI;                 ///< inverse strain map
  Matrix<N> VCVISC;                ///< viscous matrix, force time / length^2

  static constexpr int size = packedSize<N> + 5 * N * N + 2 * N;  ///< LVAR4
};
static_assert(sizeof(ElasticRecord<6>) == 213 * sizeof(double));

/// The values of a row in the order of their places.
template <int N>
[[nodiscard]] std::span<const double> valuesOf(const ElasticRecord<N>& record) {
  return {record.VDMATX.data(), static_cast<std::size_t>(ElasticRecord<N>::size)};
}

/// `COMPON`: packs the upper triangle of a matrix by rows, and unpacks it, mirroring the lower triangle.
template <int N>
[[nodiscard]] Vector<packedSize<N>> packUpper(const Matrix<N>& A) {
  Vector<packedSize<N>> packed{};
  std::size_t at = 0;
  for (int i = 0; i < N; ++i)
    for (int j = i; j < N; ++j) packed[at++] = A(i, j);
  return packed;
}
template <int N>
[[nodiscard]] Matrix<N> unpackUpper(const Vector<packedSize<N>>& packed) {
  Matrix<N> A;
  std::size_t at = 0;
  for (int i = 0; i < N; ++i)
    for (int j = i; j < N; ++j) A(i, j) = A(j, i) = packed[at++];
  return A;
}

/// A material's elastic tables in the form that the point update works on.
template <int N>
struct ElasticMaterial {
  ElasticRecord<N> record;
  Matrix<N> D;            ///< VDMATX unpacked
  bool plainMap = true;   ///< both maps are the identity: the mapped space is the real one
  Rotation<N> axes;       ///< material axes
  Matrix<N> inLayerAxes;  ///< VDMANX turned by `axes`
};

}  // namespace zema
