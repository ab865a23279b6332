// One line for each solver code; solves and what is said about them.
#include "analysis/solving.h"

#include <string>

#include "analysis/analysis.h"
#include "foundation/errors.h"
#include "job/job.h"
#include "solver/sparse_factors.h"
#include "solver/sparse_solver.h"

namespace zema {
namespace {

constexpr double largestResidual = 1e-8;  // of linear equations that count as solved

void addTimes(PhaseTimes& total, const SolverTimes& solve) {
  total.stiffness += solve.stiffness;
  total.assembly += solve.assembly;
  total.decomposition += solve.decomposition;
  total.lower += solve.lower;
  total.upper += solve.upper + solve.check;
}

void report(Job& job, const SolveReport& report) {
  static constexpr Layout line(R"(" LINEAR RESIDUAL: " E10.3 2X A)");
  if (!report.residual) {
    job.log().line(" LINEAR RESIDUAL: not known, the matrix of the factors was not kept  " + report.note);
    return;
  }
  job.log().write(line, *report.residual, report.note);
  if (*report.residual <= largestResidual) return;
  const std::string warning = "the linear equations are not solved well: relative residual " +
                              FreeLine(*report.residual).text() +
                              "; the matrix is nearly singular, or not of the kind" + " that the solver is made for";
  job.console.warn(warning);
  job.log().line(" ---> " + warning);
}

}  // namespace

std::unique_ptr<Solver> makeSolver(const Job& job) {
  const ControlRecord& control = job.KCONT;
  switch (const auto code = static_cast<SolverCode>(control.NSOLV)) {
    case SolverCode::bandLU:
    case SolverCode::bandCholesky:
    case SolverCode::bandLDL:
      return makeBandSolver(code);
    case SolverCode::sparse:
      if (!hasSparseLibrary())
        throw InputFault(job.CFILE[1] +
                         ": the equation solver NSOLV = 6 needs a program that was built with the "
                         "libraries MUMPS and METIS (Debian packages libmumps-seq-dev and libmetis-dev)");
      return makeSparseSolver();
    case SolverCode::frontal:
    case SolverCode::gmres:
      throw InputFault(job.CFILE[1] + ": the equation solver NSOLV = " + std::to_string(control.NSOLV) +
                       " is not in this build yet");
  }
  return nullptr;
}

void SOLVER(Analysis& analysis, RightHandSide side, bool newMatrix) {
  if (!analysis.solver) return;
  SolverTimes times;
  const SolveReport solved =
      analysis.solver->solve(analysis.elements, analysis.equations, side, newMatrix, analysis.job.workers, times);
  addTimes(analysis.job.times, times);
  report(analysis.job, solved);
}

}  // namespace zema
