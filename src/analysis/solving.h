// The solver that the deck asks for, and one solve with its times and its line on the log.
#pragma once

#include <memory>

#include "solver/solver.h"

namespace zema {

struct Analysis;
struct Job;

/// The solver that NSOLV asks for, with what else the control data say about it; empty for a code that names none.
/// Throws InputFault for a solver that is not in this build.
[[nodiscard]] std::unique_ptr<Solver> makeSolver(Job& job);

/// `SOLVER`: one solve of the analysis' equations, see Solver::solve. Nothing happens without a solver. Adds the
/// seconds to the job's times and writes the residual of the linear equations on the log; above 1e-8 it warns.
void SOLVER(Analysis& analysis, RightHandSide side, bool newMatrix);

}  // namespace zema
