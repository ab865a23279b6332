// Factors L D L^T of a sparse symmetric matrix by fronts, without exchanges.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "foundation/large_array.h"
#include "foundation/parallel.h"
#include "solver/dense_ldl.h"
#include "solver/front_schedule.h"
#include "solver/front_tree.h"
#include "solver/sparse_matrix.h"

namespace zema {

/// The multifrontal method of Duff and Reid (1983) for matrices whose pivots need no exchange: definite ones, and
/// indefinite ones as long as no pivot is small beside its column. Whether that held is to be asked after each
/// factorisation. The same bits with any number of threads. Throws std::bad_alloc when the memory does not suffice.
class MultifrontalFactors {
 public:
  /// Analyses a pattern. order: place of each equation in the order of elimination, from 1.
  MultifrontalFactors(const SparsePattern& pattern, std::span<const int> order);

  /// Factorises a symmetric matrix of that pattern; of its entries, those of the rows at an earlier place count.
  void factorise(const SparseMatrix& matrix, WorkerPool& pool);

  /// Whether all pivots are finite and not lost in the rounding of their diagonal entries (1e-13 of them), and, where
  /// they differ in sign, no entry of L exceeds 1e6: a bound on what rounding has grown by (Higham 2002, chapter 11).
  [[nodiscard]] bool trustworthy() const { return trustworthy_; }

  /// Entries of L and D.
  [[nodiscard]] long long entries() const;

  /// Replaces a right-hand side by the solution.
  void solve(std::span<double> x);

 private:
  class Elimination;

  [[nodiscard]] BandedColumns layout(int front) const;
  [[nodiscard]] FactorColumns columns(int front);
  [[nodiscard]] bool hasGoodPivots() const;
  [[nodiscard]] double largestEntry() const;

  FrontTree tree_;
  FrontSchedule schedule_;
  std::vector<std::size_t> firstOf_;  // place of each front's columns in L_
  LargeArray L_;
  std::vector<double> D_;
  std::vector<double> diagonal_;  // of the matrix, by place
  LargeArray sharedRests_;
  std::vector<LargeArray> workerRests_;
  bool trustworthy_ = false;
};

}  // namespace zema
