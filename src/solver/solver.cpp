// The public door of the solvers: sizes, the system without free equations, the spreading of the result.
#include "solver/solver.h"

#include <algorithm>
#include <cassert>

#include "foundation/errors.h"
#include "solver/phase_timer.h"

namespace zema {
namespace {

void checkSizes(const EquationSystem& system) {
  [[maybe_unused]] const auto positions = static_cast<std::size_t>(system.NTOTV);
  assert(system.IPERM.size() == positions && system.FIXED.size() == positions && system.FIXWO.size() == positions);
  assert(system.ASDIS.size() == positions && system.DISPM.size() == positions && system.ELOADG.size() == positions);
  assert(system.NEQNS >= 0 && system.NEQNS <= system.NTOTV);
}

}  // namespace

SolveReport Solver::solve(ElementSource& source, EquationSystem& system, RightHandSide side, bool newMatrix,
                          WorkerPool& pool, SolverTimes& times) {
  checkSizes(system);
  SolveReport report;
  std::ranges::fill(system.result(side), 0.0);
  if (system.NEQNS == 0) {
    spread(system, side);
    return report;
  }
  const bool keeps = check_ != ResidualCheck::byBody && newMatrix;
  if (keeps) kept_.fit(source);
  KeepingSource keeping(source, keeps ? &kept_ : nullptr);
  solveFree({keeping, system, side, newMatrix, pool, times, report});
  if (check_ != ResidualCheck::byBody) {
    const PhaseTimer timer(times.check);
    const bool pullsByKept = newMatrix || check_ == ResidualCheck::byDoorWithoutForming;
    report.residual.reset();
    if (!kept_.values().empty()) report.residual = relativeResidual(source, kept_, system, side, pullsByKept, pool);
  }
  return report;
}

void Solver::restoreFactors(const EquationSystem& /*system*/, std::span<const double> values) {
  if (!values.empty()) throw InputFault("the restart data hold factors, but the chosen solver keeps none");
}

void Solver::restoreMatrices(const ElementSource& source, std::span<const double> values) {
  kept_ = {};
  if (!values.empty()) kept_.restore(source, values);
}

void Solver::spread(EquationSystem& system, RightHandSide side) {
  const std::vector<double>& prescribed = system.prescribed(side);
  std::vector<double>& result = system.result(side);
  for (std::size_t p = 0; p < result.size(); ++p) {
    const int equation = system.IPERM[p];
    result[p] = equation == 0 ? prescribed[p] : prescribed[p] + system.ELOADG[static_cast<std::size_t>(equation - 1)];
  }
}

}  // namespace zema
