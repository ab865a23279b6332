// One line for each solver code; solves and what is said about them.
#include "analysis/solving.h"

#include <string>

#include "analysis/analysis.h"
#include "foundation/errors.h"
#include "job/job.h"
#include "solver/frontal_solver.h"
#include "solver/gmres.h"
#include "solver/sparse_factors.h"
#include "solver/sparse_solver.h"

namespace zema {
namespace {

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
  if (*report.residual <= report.largestGood) return;
  const std::string warning = "the linear equations are not solved well: relative residual " +
                              FreeLine(*report.residual).text() +
                              "; the matrix is nearly singular, or not of the kind that the solver is made for";
  job.console.warn(warning);
  job.log().line(" ---> " + warning);
}

/// The name of the deck without its extension.
std::string stemOf(const Job& job) {
  const std::string& deck = job.CFILE[1];
  return deck.substr(0, deck.rfind('.'));
}

}  // namespace

std::unique_ptr<Solver> makeSolver(Job& job) {
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
      return makeFrontalSolver(control.ISIME == 0 ? FrontForm::symmetric : FrontForm::unsymmetric, stemOf(job));
    case SolverCode::gmres:
      return makeGmresSolver({control.NKRYLO, control.NITER, control.NGPRI}, job.listing(), job.log());
  }
  return nullptr;
}

void SOLVER(Analysis& analysis, RightHandSide side, bool newMatrix) {
  if (!analysis.solver) return;
  SolverTimes times;
  analysis.equations.TOLER = analysis.model.increment.TOLER;
  const SolveReport solved =
      analysis.solver->solve(analysis.elements, analysis.equations, side, newMatrix, analysis.job.workers, times);
  addTimes(analysis.job.times, times);
  report(analysis.job, solved);
}

}  // namespace zema
