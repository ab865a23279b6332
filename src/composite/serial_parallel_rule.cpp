// Algebra of the serial-parallel rule of mixtures.
#include "composite/serial_parallel_rule.h"

#include <array>
#include <cmath>
#include <utility>

namespace zema {
namespace {

/// Solves the leading n x n part of A for the first n rows of `right`, with row exchange. A is destroyed. Returns false
/// when no pivot other than 0 is left or one is not finite.
template <int N, int C>
bool solveLeading(Matrix<N>& A, int n, Matrix<N, C>& right) {
  for (int i = 0; i < n; ++i) {
    int best = i;
    for (int k = i + 1; k < n; ++k)
      if (std::abs(A(k, i)) > std::abs(A(best, i))) best = k;
    const double pivot = A(best, i);
    if (pivot == 0.0 || !std::isfinite(pivot)) return false;
    if (best != i) {
      for (int j = i; j < n; ++j) std::swap(A(i, j), A(best, j));
      for (int j = 0; j < C; ++j) std::swap(right(i, j), right(best, j));
    }
    for (int k = i + 1; k < n; ++k) {
      const double factor = A(k, i) / pivot;
      for (int j = i + 1; j < n; ++j) A(k, j) -= factor * A(i, j);
      for (int j = 0; j < C; ++j) right(k, j) -= factor * right(i, j);
    }
  }
  for (int i = n - 1; i >= 0; --i) {
    for (int k = i + 1; k < n; ++k)
      for (int j = 0; j < C; ++j) right(i, j) -= A(i, k) * right(k, j);
    for (int j = 0; j < C; ++j) right(i, j) /= A(i, i);
  }
  return true;
}

}  // namespace

template <int N>
SerialParallelRule<N>::SerialParallelRule(std::span<const int> SPDFLAG, double km, double kf) : km_(km), kf_(kf) {
  for (std::size_t i = 0; i < serial_.size(); ++i) {
    isSerial_[i] = SPDFLAG[i] != 1;
    if (isSerial_[i]) serial_[static_cast<std::size_t>(ns_++)] = static_cast<int>(i);
  }
}

template <int N>
SerialParallelRule<N> SerialParallelRule<N>::serial(double km, double kf) {
  constexpr std::array<int, static_cast<std::size_t>(N)> allSerial{};
  return {allSerial, km, kf};
}

template <int N>
Strain<N> SerialParallelRule<N>::layerStrain(const Strain<N>& MSTRAN, const Strain<N>& FSTRAN) const {
  Strain<N> layer = MSTRAN;
  for (int r = 0; r < ns_; ++r) layer[place(r)] = km_ * MSTRAN[place(r)] + kf_ * FSTRAN[place(r)];
  return layer;
}

template <int N>
Strain<N> SerialParallelRule<N>::fibreStrain(const Strain<N>& layer, const Strain<N>& MSTRAN) const {
  Strain<N> FSTRAN = layer;
  for (int r = 0; r < ns_; ++r) {
    const int s = place(r);
    FSTRAN[s] = (layer[s] - km_ * MSTRAN[s]) / kf_;
  }
  return FSTRAN;
}

template <int N>
Stress<N> SerialParallelRule<N>::stress(const Stress<N>& MSTRSG, const Stress<N>& FSTRSG) const {
  Stress<N> layer = km_ * MSTRSG + kf_ * FSTRSG;
  for (int r = 0; r < ns_; ++r) layer[place(r)] = MSTRSG[place(r)];
  return layer;
}

template <int N>
Stress<N> SerialParallelRule<N>::difference(const Stress<N>& MSTRSG, const Stress<N>& FSTRSG) const {
  Stress<N> r = MSTRSG - FSTRSG;
  for (int i = 0; i < N; ++i)
    if (!isSerial_[static_cast<std::size_t>(i)]) r[i] = 0.0;
  return r;
}

/// right := (km CFIBss + kf CMATss)^-1 right, on the rows of the serial components in their order.
template <int N>
template <int C>
bool SerialParallelRule<N>::solve(const Matrix<N>& CMAT, const Matrix<N>& CFIB, Matrix<N, C>& right) const {
  Matrix<N> A;
  for (int r = 0; r < ns_; ++r)
    for (int t = 0; t < ns_; ++t) A(r, t) = km_ * CFIB(place(r), place(t)) + kf_ * CMAT(place(r), place(t));
  return solveLeading(A, ns_, right);
}

template <int N>
bool SerialParallelRule<N>::matrixIncrement(const Matrix<N>& CMAT, const Matrix<N>& CFIB, const Strain<N>& layer,
                                            Strain<N>& matrix) const {
  // A dm_s = CFIBss de_s + kf (CFIBsp - CMATsp) de_p
  Matrix<N, 1> right;
  for (int r = 0; r < ns_; ++r)
    for (int j = 0; j < N; ++j) right(r, 0) += shareNumerator(CMAT, CFIB, r, j) * layer[j];
  if (!solve(CMAT, CFIB, right)) return false;
  matrix = layer;
  for (int r = 0; r < ns_; ++r) matrix[place(r)] = right(r, 0);
  return true;
}

template <int N>
bool SerialParallelRule<N>::matrixCorrection(const Matrix<N>& CMAT, const Matrix<N>& CFIB, const Stress<N>& difference,
                                             Strain<N>& matrix) const {
  // dm_s = -J^-1 r with J = CMATss + (km / kf) CFIBss, which is A / kf
  Matrix<N, 1> right;
  for (int r = 0; r < ns_; ++r) right(r, 0) = -kf_ * difference[place(r)];
  if (!solve(CMAT, CFIB, right)) return false;
  matrix = {};
  for (int r = 0; r < ns_; ++r) matrix[place(r)] = right(r, 0);
  return true;
}

template <int N>
bool SerialParallelRule<N>::matrixShare(const Matrix<N>& CMAT, const Matrix<N>& CFIB, Matrix<N>& share) const {
  Matrix<N> right;
  for (int r = 0; r < ns_; ++r)
    for (int j = 0; j < N; ++j) right(r, j) = shareNumerator(CMAT, CFIB, r, j);
  if (!solve(CMAT, CFIB, right)) return false;
  share = Matrix<N>::identity();
  for (int r = 0; r < ns_; ++r)
    for (int j = 0; j < N; ++j) share(place(r), j) = right(r, j);
  return true;
}

template <int N>
Matrix<N> SerialParallelRule<N>::CCOMP(const Matrix<N>& CMAT, const Matrix<N>& CFIB, const Matrix<N>& share) const {
  Matrix<N> ofFibre = Matrix<N>::identity();  // the increment of the fibre strain from that of the layer
  for (int r = 0; r < ns_; ++r)
    for (int j = 0; j < N; ++j) ofFibre(place(r), j) = ((place(r) == j ? 1.0 : 0.0) - km_ * share(place(r), j)) / kf_;
  const Matrix<N> matrixPart = PROMA1(CMAT, share);
  const Matrix<N> fibrePart = PROMA1(CFIB, ofFibre);
  Matrix<N> C;
  for (int i = 0; i < N; ++i)
    for (int j = 0; j < N; ++j)
      C(i, j) =
          isSerial_[static_cast<std::size_t>(i)] ? matrixPart(i, j) : km_ * matrixPart(i, j) + kf_ * fibrePart(i, j);
  return C;
}

template class SerialParallelRule<4>;
template class SerialParallelRule<6>;

}  // namespace zema
