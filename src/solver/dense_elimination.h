// Elimination in full matrices, for small systems.
#pragma once

#include <span>
#include <vector>

namespace zema {

class Console;

/// A full system of N positions, fixed ones included: matrix times displacements = load + reactions.
struct DenseSystem {
  std::vector<double> MATRIK;  ///< matrix, N x N by rows; `GREDUC` reduces it
  std::vector<double> ASLOD;   ///< load by position, N; reduced with the matrix
  std::vector<int> IFFIX;      ///< 1 where a displacement is prescribed, N
  std::vector<double> FIXED;   ///< the prescribed displacements, N
  std::vector<double> ASDIS;   ///< result of `BAKSUB`: displacements, N
  std::vector<double> REACTM;  ///< result of `BAKSUB`: reactions at the prescribed positions, 0 elsewhere, N
};

/// Reduces the equations of the free positions by Gaussian elimination without row exchange; prescribed displacements
/// go over to the load. Throws PlainStop when the pivot of a free position is smaller than 1e-10 (single precision).
void GREDUC(DenseSystem& system);

/// Back-substitution after GREDUC: displacements and reactions.
void BAKSUB(DenseSystem& system);

/// Solves A x = b by LU without row exchange, reciprocals on the diagonal. A: N x N by columns, destroyed; b: N
/// entries, becomes x. A diagonal entry of exactly 0 is said on the console; what stands in b is then of no use.
void SOLSYS(std::span<double> A, std::span<double> b, const Console& console);

}  // namespace zema
