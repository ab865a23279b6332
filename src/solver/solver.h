// The single door to the equation solvers.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>

#include "solver/element_matrices.h"
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
  double check = 0.0;          ///< finding the residual of the linear equations
};

/// What a solve has to say about itself.
struct SolveReport {
  /// ||b - K x|| / ||b|| over the free equations, K the matrix that the factors belong to; empty when K is not known.
  std::optional<double> residual = 0.0;
  double largestGood = 1e-8;  ///< residual up to which the equations count as solved
  std::string note;           ///< what else belongs on the log, such as the kind of the factors; empty if nothing does
};

/// Where the residual of a solve comes from.
enum class ResidualCheck {
  byDoor,  ///< the door keeps the element matrices that the body forms, and multiplies them with the result
  byDoorWithoutForming,  ///< the same for a body that forms no element when factors are reused: prescribed values act
                         ///< through the kept matrices too
  byBody                 ///< the body has a cheaper way, and writes the residual into the report
};

/// Solves the global system of a load step. Keeps its factors between calls; one object per load step or per run.
class Solver {
 public:
  virtual ~Solver() = default;

  /// Pulls the elements, solves, and leaves prescribed value + solution of each position in ASDIS (outOfBalance) or
  /// DISPM (referenceLoad). newMatrix: KRESL below 2, factorise anew; otherwise the factors of the last such call
  /// serve for the new right-hand side. Before the first call PERMUT has run, with every solver: IPERM is 0 where a
  /// position is fixed. With NEQNS = 0 nothing is solved and the prescribed values alone enter.
  /// Result and factors do not depend on the number of threads in the pool, but for the last bits of sparse factors
  /// with exchanges. The residual of the linear equations is found after every solve. Throws what form() and the body
  /// throw.
  SolveReport solve(ElementSource& source, EquationSystem& system, RightHandSide side, bool newMatrix, WorkerPool& pool,
                    SolverTimes& times);

  /// The numbers that a restart needs to go on with the present factors; empty if there are none to keep.
  [[nodiscard]] virtual std::span<const double> factors() const { return {}; }

  /// Takes back what factors() gave, for elements and a system with the same equation and band numbers.
  /// Throws InputFault if the number of values does not fit the system, here or in the next solve.
  virtual void restoreFactors(const EquationSystem& system, std::span<const double> values);

  /// The element matrices that the present factors belong to, which a restart needs to check solves that reuse them;
  /// empty if the body checks its solves.
  [[nodiscard]] std::span<const double> matrices() const { return kept_.values(); }

  /// Takes back what matrices() gave. Throws InputFault if the number of values does not fit the source.
  void restoreMatrices(const ElementSource& source, std::span<const double> values);

  /// Says that no solve with the present factors is to come before a new matrix: a solver may give their memory back.
  /// Should one come all the same, it is solved as well.
  virtual void release() {}

 protected:
  explicit Solver(ResidualCheck check = ResidualCheck::byDoor) : check_(check) {}

  /// Everything that a body needs for one solve.
  struct Task {
    ElementSource& source;
    EquationSystem& system;
    RightHandSide side;
    bool newMatrix;
    WorkerPool& pool;
    SolverTimes& times;
    SolveReport& report;
  };

  /// The method itself; called with NEQNS above 0 and the result vector cleared, must leave the solution in ELOADG and
  /// fill the result vector.
  virtual void solveFree(const Task& task) = 0;

  /// Result of each position = its prescribed value + its entry of ELOADG if it is free.
  static void spread(EquationSystem& system, RightHandSide side);

 private:
  ResidualCheck check_;
  ElementMatrices kept_;
};

/// The band solver of a code: bandLU, bandCholesky or bandLDL.
/// bandCholesky stops the run with RunEnd at the first pivot that is not above 0.
[[nodiscard]] std::unique_ptr<Solver> makeBandSolver(SolverCode code);

}  // namespace zema
