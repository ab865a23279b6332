// Adding element rows at stored places, the test of symmetry, the residual.
#include "solver/sparse_matrix.h"

#include <algorithm>
#include <cmath>

#include "foundation/parallel.h"

namespace zema {
namespace {

constexpr int rowsAtATime = 2048;

std::size_t index(int i) {
  return static_cast<std::size_t>(i);
}

std::vector<double> diagonal(const SparseMatrix& A) {
  const SparsePattern& pattern = A.pattern();
  std::vector<double> d;
  d.reserve(index(pattern.N_PARD()));
  for (int row = 0; row < pattern.N_PARD(); ++row) {
    const std::span<const int> columns = pattern.JA_PARD(row);
    const auto place = std::ranges::lower_bound(columns, row) - columns.begin();
    d.push_back(A.A_PARD()[static_cast<std::size_t>(pattern.IA_PARD(row) + place)]);
  }
  return d;
}

}  // namespace

void SparseMatrix::reset(const SparsePattern& pattern) {
  pattern_ = &pattern;
  A_PARD_.assign(static_cast<std::size_t>(pattern.NNZ_PARD()), 0.0);
}

void SparseMatrix::ENSAMB(const ElementRow& row) {
  const std::span<const int> places = pattern_->places(row.element, row.row);
  double* A = A_PARD_.data() + pattern_->IA_PARD(row.equation - 1);
  for (std::size_t c = 0; c < places.size(); ++c)
    if (places[c] >= 0) A[places[c]] += row.values[c];
}

bool SparseMatrix::isSymmetric() const {
  constexpr double rounding = 1e-12;
  const std::vector<double> d = diagonal(*this);
  // Rows are visited in order, so the entries left of the diagonal are met in order in every row.
  std::vector<std::int64_t> mirrored(static_cast<std::size_t>(pattern_->N_PARD()));
  for (int row = 0; row < pattern_->N_PARD(); ++row) mirrored[static_cast<std::size_t>(row)] = pattern_->IA_PARD(row);
  for (int row = 0; row < pattern_->N_PARD(); ++row) {
    auto entry = static_cast<std::size_t>(pattern_->IA_PARD(row));
    for (const int column : pattern_->JA_PARD(row)) {
      const double value = A_PARD_[entry++];
      if (column <= row) continue;
      const double other = A_PARD_[static_cast<std::size_t>(mirrored[index(column)]++)];
      const double scale = std::abs(d[index(row)]) + std::abs(d[index(column)]);
      if (!(std::abs(value - other) <= rounding * scale)) return false;
    }
  }
  return true;
}

void SparseMatrix::residual(std::span<const double> b, std::span<const double> x, std::span<double> rest,
                            WorkerPool& pool) const {
  pool.forEachBlock(pattern_->N_PARD(), rowsAtATime, [&](int first, int last, int /*worker*/) {
    for (int row = first; row < last; ++row) {
      const double* A = A_PARD_.data() + pattern_->IA_PARD(row);
      double sum = b[index(row)];
      for (const int column : pattern_->JA_PARD(row)) sum -= *A++ * x[index(column)];
      rest[index(row)] = sum;
    }
  });
}

}  // namespace zema
