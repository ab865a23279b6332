// LU factorisation in the whole band without row exchange, and its solves.
#pragma once

#include <span>

#include "foundation/parallel.h"
#include "solver/band_matrix.h"

namespace zema {

/// A = L U (Doolittle; Golub & Van Loan, 2013, sec. 4.3.1, by tiles): U on and above the diagonal, L with unit diagonal
/// below it. Pivots are not tested: a zero one leaves infinite or undefined values.
void COMP_LU(BandMatrix& A, WorkerPool& pool);

/// Forward solve L y = y.
void S_LOWER(const BandMatrix& A, std::span<double> y);

/// Backward solve U x = x.
void S_UPPER(const BandMatrix& A, std::span<double> x);

}  // namespace zema
