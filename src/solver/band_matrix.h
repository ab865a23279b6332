// The band store of the global matrix.
#pragma once

#include <cstddef>
#include <vector>

#include "foundation/parallel.h"
#include "solver/assembly.h"

namespace zema {

enum class BandPart {
  lowerHalf,  ///< diagonal and what stands below it: NBAND columns
  whole       ///< the whole band: 2 NBAND - 1 columns
};

/// A square matrix with a constant band. The equation pair (i, j), from 1, stands at STIFFG(i, NBAND + j - i), rows
/// one after the other: column NBAND is the main diagonal. Since a step to the right and one row down cancel, any
/// block inside the band is an ordinary matrix by rows with the leading dimension columns - 1.
class BandMatrix final : public GlobalMatrix {
 public:
  BandMatrix() = default;

  /// Takes the size of a system, every entry 0. Fills in parallel.
  void reset(int equations, int halfWidth, BandPart part, WorkerPool& pool);

  void ENSAMB(const ElementRow& row) override;

  [[nodiscard]] BandPart part() const { return part_; }
  /// Number of equations.
  [[nodiscard]] int NEQNS() const { return NEQNS_; }
  /// Width of the lower half of the band, diagonal included.
  [[nodiscard]] int NBAND() const { return NBAND_; }
  [[nodiscard]] int columns() const { return columns_; }
  /// Leading dimension of a block inside the band.
  [[nodiscard]] int stride() const { return columns_ - 1; }

  /// Entry (i, j), both from 0, inside the stored part of the band.
  [[nodiscard]] double* at(int i, int j) { return &STIFFG_[place(i, j)]; }
  [[nodiscard]] const double* at(int i, int j) const { return &STIFFG_[place(i, j)]; }

  /// First stored column of row i and the one behind the last, both from 0.
  [[nodiscard]] int firstColumn(int i) const { return i < NBAND_ ? 0 : i - NBAND_ + 1; }
  [[nodiscard]] int endColumn(int i) const {
    const int end = part_ == BandPart::lowerHalf ? i + 1 : i + NBAND_;
    return end < NEQNS_ ? end : NEQNS_;
  }

  /// All stored entries, NEQNS rows of columns() values.
  [[nodiscard]] const std::vector<double>& STIFFG() const { return STIFFG_; }
  [[nodiscard]] std::vector<double>& STIFFG() { return STIFFG_; }

 private:
  [[nodiscard]] std::size_t place(int i, int j) const {
    return static_cast<std::size_t>(i) * static_cast<std::size_t>(columns_) +
           static_cast<std::size_t>(NBAND_ - 1 + j - i);
  }

  BandPart part_ = BandPart::lowerHalf;
  int NEQNS_ = 0;
  int NBAND_ = 0;
  int columns_ = 0;
  std::vector<double> STIFFG_;
};

}  // namespace zema
