// The single door to the equation solvers.
#pragma once

#include <memory>
#include <span>

#include "solver/element_source.h"
#include "solver/equation_system.h"
#include "solver/solver_code.h"

namespace zema {

class WorkerPool;

/// Seconds spent in the phases of the solves so far, wall clock.
struct SolverTimes {
  double stiffness = 0.0;      ///< forming element matrices
  double assembly = 0.0;       ///< adding them and the loads into the global system
  double decomposition = 0.0;  ///< factorising
  double lower = 0.0;          ///< forward solves, with the diagonal
  double upper = 0.0;          ///< backward solves and the spreading of the result over the positions
};

/// Solves the global system of a load step. Keeps its factors between calls; one object per load step or per run.
class Solver {
 public:
  virtual ~Solver() = default;

  /// Pulls the elements, solves, and leaves prescribed value + solution of each position in ASDIS (outOfBalance) or
  /// DISPM (referenceLoad). newMatrix: KRESL below 2, factorise anew; otherwise the factors of the last such call
  /// serve for the new right-hand side. Before the first call PERMUT has run, with every solver: IPERM is 0 where a
  /// position is fixed. With NEQNS = 0 nothing is solved and the prescribed values alone enter.
  /// Result and factors do not depend on the number of threads in the pool. Throws what form() and the body throw.
  void solve(ElementSource& source, EquationSystem& system, RightHandSide side, bool newMatrix, WorkerPool& pool,
             SolverTimes& times);

  /// The numbers that a restart needs to go on with the present factors; empty if there are none to keep.
  [[nodiscard]] virtual std::span<const double> factors() const { return {}; }

  /// Takes back what factors() gave, for a system with the same equation and band numbers.
  /// Throws InputFault if the number of values does not fit the system.
  virtual void restoreFactors(const EquationSystem& system, std::span<const double> values);

 protected:
  /// Everything that a body needs for one solve.
  struct Task {
    ElementSource& source;
    EquationSystem& system;
    RightHandSide side;
    bool newMatrix;
    WorkerPool& pool;
    SolverTimes& times;
  };

  /// The method itself; called with NEQNS above 0 and the result vector cleared, must fill the result vector.
  virtual void solveFree(const Task& task) = 0;

  /// Result of each position = its prescribed value + its entry of ELOADG if it is free.
  static void spread(EquationSystem& system, RightHandSide side);
};

/// The band solver of a code: bandLU, bandCholesky or bandLDL.
/// bandCholesky stops the run with RunEnd at the first pivot that is not above 0.
[[nodiscard]] std::unique_ptr<Solver> makeBandSolver(SolverCode code);

}  // namespace zema
