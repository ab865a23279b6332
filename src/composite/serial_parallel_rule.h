// The serial-parallel rule of mixtures of two components: what they share, and how their tangents compose.
#pragma once

#include <span>

#include "tensor/voigt.h"

namespace zema {

/// Two components, the matrix with share km and the fibre with share kf. Along the parallel strain components both have
/// the strain of the layer and their stresses add by volume; along the serial ones both have the same stress and their
/// strains add by volume. Literature: Rastellini et al. (2008), serial/parallel mixing theory. Layer axes throughout;
/// tangents need not be symmetric.
template <int N>
class SerialParallelRule {
 public:
  /// All components parallel.
  SerialParallelRule() = default;
  /// SPDFLAG: N flags, 1 for a parallel strain component, otherwise serial.
  SerialParallelRule(std::span<const int> SPDFLAG, double km, double kf);
  /// All components serial.
  [[nodiscard]] static SerialParallelRule serial(double km, double kf);

  [[nodiscard]] double km() const { return km_; }
  [[nodiscard]] double kf() const { return kf_; }
  [[nodiscard]] bool hasSerial() const { return ns_ > 0; }

  /// A strain with the parallel components of one and the serial components of another.
  [[nodiscard]] Strain<N> joined(Strain<N> parallel, const Strain<N>& serial) const {
    for (int r = 0; r < ns_; ++r) parallel[place(r)] = serial[place(r)];
    return parallel;
  }
  /// Strain of the layer when matrix and fibre have these strains; the parallel ones are taken from the matrix.
  [[nodiscard]] Strain<N> layerStrain(const Strain<N>& MSTRAN, const Strain<N>& FSTRAN) const;
  /// Strain of the fibre when the layer and the matrix have these strains.
  [[nodiscard]] Strain<N> fibreStrain(const Strain<N>& layer, const Strain<N>& MSTRAN) const;
  /// Stress of the layer.
  [[nodiscard]] Stress<N> stress(const Stress<N>& MSTRSG, const Stress<N>& FSTRSG) const;
  /// What the serial stresses of matrix and fibre differ by; 0 in parallel places.
  [[nodiscard]] Stress<N> difference(const Stress<N>& MSTRSG, const Stress<N>& FSTRSG) const;

  /// Increment of the matrix strain that goes with an increment of the layer strain. When the tangents leave it open
  /// (a direction in which neither component has stiffness) it returns false and leaves `matrix` as it stands.
  [[nodiscard]] bool matrixIncrement(const Matrix<N>& CMAT, const Matrix<N>& CFIB, const Strain<N>& layer,
                                     Strain<N>& matrix) const;
  /// The change of matrix strain, at a fixed strain of the layer, that takes away a difference of serial stresses; same
  /// return.
  [[nodiscard]] bool matrixCorrection(const Matrix<N>& CMAT, const Matrix<N>& CFIB, const Stress<N>& difference,
                                      Strain<N>& matrix) const;
  /// The matrix that gives the increment of the matrix strain from that of the layer; same return.
  [[nodiscard]] bool matrixShare(const Matrix<N>& CMAT, const Matrix<N>& CFIB, Matrix<N>& share) const;
  /// `CCOMP`: tangent of the layer for a given matrix share.
  [[nodiscard]] Matrix<N> CCOMP(const Matrix<N>& CMAT, const Matrix<N>& CFIB, const Matrix<N>& share) const;

 private:
  template <int C>
  [[nodiscard]] bool solve(const Matrix<N>& CMAT, const Matrix<N>& CFIB, Matrix<N, C>& right) const;

  [[nodiscard]] int place(int r) const { return serial_[static_cast<std::size_t>(r)]; }
  /// Entry j of row r (counted among the serial components) of what A share_s is.
  [[nodiscard]] double shareNumerator(const Matrix<N>& CMAT, const Matrix<N>& CFIB, int r, int j) const {
    const double fibre = CFIB(place(r), j);
    return isSerial_[static_cast<std::size_t>(j)] ? fibre : kf_ * (fibre - CMAT(place(r), j));
  }

  double km_ = 0.5;
  double kf_ = 0.5;
  int ns_ = 0;                                                // serial components
  std::array<int, static_cast<std::size_t>(N)> serial_{};     // their places, from 0, ascending
  std::array<bool, static_cast<std::size_t>(N)> isSerial_{};  // by place
};

}  // namespace zema
