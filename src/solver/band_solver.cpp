// The three band solvers: one course of a solve, one row of routines for each.
#include <algorithm>
#include <array>
#include <cassert>

#include "foundation/errors.h"
#include "solver/band_matrix.h"
#include "solver/band_symmetric.h"
#include "solver/band_unsymmetric.h"
#include "solver/blas_threads.h"
#include "solver/phase_timer.h"
#include "solver/solver.h"

namespace zema {
namespace {

// What the band solvers do differently.
struct BandMethod {
  SolverCode code;
  BandPart part;
  void (*factorise)(BandMatrix& A, WorkerPool& pool);
  void (*forward)(const BandMatrix& A, std::span<double> y);
  void (*backward)(const BandMatrix& A, std::span<double> x);
};

void forwardLDL(const BandMatrix& A, std::span<double> y) {
  S_LO_LDL(A, y);
  DIAGONAL(A, y);
}

constexpr std::array methods{
    BandMethod{SolverCode::bandLU, BandPart::whole, COMP_LU, S_LOWER, S_UPPER},
    BandMethod{SolverCode::bandCholesky, BandPart::lowerHalf, COMP_CHO, S_LO_CHO, S_UP_CHO},
    BandMethod{SolverCode::bandLDL, BandPart::lowerHalf, COMP_LDL, forwardLDL, S_UP_LDL},
};

// Equations of an element that stands alone have no band: the diagonal is stored all the same.
int halfWidth(const EquationSystem& system) {
  return std::max(1, system.NBAND);
}

class BandSolver final : public Solver {
 public:
  explicit BandSolver(const BandMethod& method) : method_(method) {}

  [[nodiscard]] std::span<const double> factors() const override { return matrix_.STIFFG(); }

  void restoreFactors(const EquationSystem& system, std::span<const double> values) override {
    matrix_ = {};
    if (values.empty()) return;
    WorkerPool caller(1);
    matrix_.reset(std::max(1, system.NEQNS), halfWidth(system), method_.part, caller);
    if (values.size() != matrix_.STIFFG().size())
      throw InputFault("the factors of the restart data do not fit the equations of the deck");
    std::ranges::copy(values, matrix_.STIFFG().begin());
  }

 protected:
  void solveFree(const Task& task) override {
    EquationSystem& system = task.system;
    if (task.newMatrix) matrix_.reset(system.NEQNS, halfWidth(system), method_.part, task.pool);
    assert(matrix_.NEQNS() == system.NEQNS && matrix_.NBAND() == halfWidth(system) && "factors of this very system");
    KGLOB(task.source, system, task.side, task.newMatrix ? &matrix_ : nullptr, task.pool, task.times);
    if (task.newMatrix) {
      const PhaseTimer timer(task.times.decomposition);
      method_.factorise(matrix_, task.pool);
    }
    const std::span<double> right(system.ELOADG.data(), static_cast<std::size_t>(system.NEQNS));
    {
      const PhaseTimer timer(task.times.lower);
      method_.forward(matrix_, right);
    }
    const PhaseTimer timer(task.times.upper);
    method_.backward(matrix_, right);
    spread(system, task.side);
  }

 private:
  const BandMethod& method_;
  BandMatrix matrix_;
};

}  // namespace

std::unique_ptr<Solver> makeBandSolver(SolverCode code) {
  const auto* method = std::ranges::find(methods, code, &BandMethod::code);
  assert(method != methods.end() && "not a band solver");
  requireBlasMemory();
  return std::make_unique<BandSolver>(*method);
}

}  // namespace zema
