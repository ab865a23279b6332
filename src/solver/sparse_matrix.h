// A global matrix in compressed rows.
#pragma once

#include <span>
#include <vector>

#include "solver/assembly.h"
#include "solver/sparse_pattern.h"

namespace zema {

/// Values of a matrix with a given pattern.
class SparseMatrix final : public GlobalMatrix {
 public:
  /// Clears the values; the pattern must outlive the matrix.
  void reset(const SparsePattern& pattern);

  /// `ASSEMBLEPARDISO`, one row.
  void ENSAMB(const ElementRow& row) override;

  [[nodiscard]] const SparsePattern& pattern() const { return *pattern_; }
  [[nodiscard]] std::span<const double> A_PARD() const { return A_PARD_; }
  [[nodiscard]] std::span<double> A_PARD() { return A_PARD_; }

  /// Whether |A(i,j) - A(j,i)| is below 1e-12 (|A(i,i)| + |A(j,j)|) everywhere: a difference of rounding only.
  [[nodiscard]] bool isSymmetric() const;

  /// rest = b - A x, on all threads of the pool; the same with any number of them.
  void residual(std::span<const double> b, std::span<const double> x, std::span<double> rest, WorkerPool& pool) const;

 private:
  const SparsePattern* pattern_ = nullptr;
  std::vector<double> A_PARD_;
};

}  // namespace zema
