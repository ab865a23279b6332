// Restarted GMRES, and the solver that is made of it.
#pragma once

#include <cstddef>
#include <deque>
#include <memory>
#include <span>
#include <vector>

#include "solver/element_products.h"
#include "solver/parallel_vectors.h"
#include "solver/solver.h"

namespace zema {

class Channel;

/// Memory that the element matrices of GMRES may take: a quarter of that of the machine, in bytes.
[[nodiscard]] std::size_t memoryForElementMatrices();

/// What the deck says about GMRES.
struct GmresSettings {
  int NKRYLO = 1;                                      ///< dimension of the Krylov subspace, above 0
  int NITER = 1;                                       ///< greatest number of iterations
  int NGPRI = 0;                                       ///< above 0: reports on the log
  std::size_t mostBytes = memoryForElementMatrices();  ///< for element matrices; if they need more, none is kept
};

/// GMRES with a diagonal preconditioner (Saad and Schultz, 1986), element by element, any matrix. The relative residual
/// of the preconditioned equations comes down to TOLER of the system; when NITER iterations do not bring it there the
/// run stops with RunEnd. Element matrices are formed once for a solve if they fit in the memory granted, otherwise
/// once for every product. With newMatrix false they are formed all the same, and only the preconditioner is the old
/// one. The residual of the equations themselves is reported, with the iterations.
[[nodiscard]] std::unique_ptr<Solver> makeGmresSolver(const GmresSettings& settings, Channel& listing, Channel& log);

/// The iteration.
class GmresIteration {
 public:
  GmresIteration(ElementProducts& products, int NEQNS, const GmresSettings& settings, double TOLER, WorkerPool& pool,
                 Channel& log);

  /// Solves D^-1 K x = B from x = 0; B holds D^-1 times the load. A B of 0 has the solution 0.
  void GMR_PRE(std::span<const double> B, std::span<double> XGMRES);

  [[nodiscard]] int iterations() const { return count_; }
  /// Norm of the last residual over that of the first.
  [[nodiscard]] double relativeResidual() const { return relative_; }
  [[nodiscard]] bool failed() const { return relative_ > TOLER_ && count_ >= settings_.NITER; }

 private:
  using Values = std::vector<double>;

  int cycle();
  void orthogonalise(int j);
  void rotate(int j);
  void SOLVE(int K);
  [[nodiscard]] Values& basis(int j);
  [[nodiscard]] double& R(int i, int j);
  [[nodiscard]] bool reports() const { return settings_.NGPRI > 0; }

  ElementProducts& products_;
  int NEQNS_;
  const GmresSettings& settings_;
  double TOLER_;
  Channel& log_;
  ParallelVectors vectors_;
  std::deque<Values> basis_;  // v1, v2, ...: made as the iteration comes to them
  Values R_;                  // triangular factor, packed by columns
  Values C_, S_;              // cosines and sines of the rotations
  Values G_;                  // rotated right-hand side
  Values Y_;                  // coefficients of the basis
  int count_ = 0;             // inner iterations so far
  double first_ = 0.0;        // norm of the residual at the start
  double relative_ = 0.0;
};

}  // namespace zema
