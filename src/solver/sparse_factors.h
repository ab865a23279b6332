// The layer of our own around the library that factorises sparse matrices with exchanges.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <vector>

#include "solver/sparse_matrix.h"

namespace zema {

/// Whether the library was there when the program was built.
[[nodiscard]] bool hasSparseLibrary();

/// Factors of a sparse matrix: LU with row exchanges, or LDL^T where the matrix is symmetric, by a multifrontal method
/// (Amestoy, Duff, L'Excellent, Koster 2001). Its four phases: analyse, factorise, solve, release (by its end).
/// A fault of the library throws PlainStop with its code, lack of memory std::bad_alloc.
class SparseFactors {
 public:
  /// Analyses a pattern; symmetric: factors one triangle. order: place of each equation in the order of elimination,
  /// from 1.
  SparseFactors(const SparsePattern& pattern, bool symmetric, std::span<const int> order);
  ~SparseFactors();
  SparseFactors(const SparseFactors&) = delete;
  SparseFactors& operator=(const SparseFactors&) = delete;

  [[nodiscard]] bool symmetric() const;

  /// Factorises a matrix of that pattern, on `threads` threads.
  void factorise(const SparseMatrix& matrix, int threads);

  /// Entries of the factors.
  [[nodiscard]] long long entries() const;

  /// Replaces a right-hand side by the solution, on `threads` threads.
  void solve(std::span<double> x, int threads);

 private:
  struct Library;
  std::unique_ptr<Library> library_;
};

}  // namespace zema
