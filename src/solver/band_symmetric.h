// Cholesky and LDL-transposed factorisation in the lower half of the band, and their solves.
#pragma once

#include <span>

#include "foundation/parallel.h"
#include "solver/band_matrix.h"

namespace zema {

/// A = L L^T, L in place of the lower half of A (Golub & Van Loan, 2013, sec. 4.3.5, by tiles). Throws RunEnd with the
/// equation, from 1, and NBAND at the first pivot that is not above 0; A is spoilt then.
void COMP_CHO(BandMatrix& A, WorkerPool& pool);

/// Forward solve L y = y.
void S_LO_CHO(const BandMatrix& A, std::span<double> y);

/// Backward solve L^T x = x.
void S_UP_CHO(const BandMatrix& A, std::span<double> x);

/// A = L D L^T with unit diagonal in L: D on the diagonal, L below it. Pivots are not tested: negative ones are
/// legitimate, and a zero one leaves infinite or undefined values.
void COMP_LDL(BandMatrix& A, WorkerPool& pool);

/// Forward solve L y = y.
void S_LO_LDL(const BandMatrix& A, std::span<double> y);

/// y = D^-1 y.
void DIAGONAL(const BandMatrix& A, std::span<double> y);

/// Backward solve L^T x = x.
void S_UP_LDL(const BandMatrix& A, std::span<double> x);

}  // namespace zema
