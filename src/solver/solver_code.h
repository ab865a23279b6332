// The ways of solving the global system, by their numbers in the deck.
#pragma once

namespace zema {

/// NSOLV: the deck's choice of the equation solver.
enum class SolverCode : int {
  frontal = 1,       ///< Gaussian elimination over the element list, symmetric or not
  bandLU = 2,        ///< whole band, unsymmetric, no row exchange
  gmres = 3,         ///< restarted GMRES, element by element
  bandCholesky = 4,  ///< lower half of the band, symmetric positive definite
  bandLDL = 5,       ///< lower half of the band, symmetric, may be indefinite
  sparse = 6         ///< sparse direct
};

}  // namespace zema
