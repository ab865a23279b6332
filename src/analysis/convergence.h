// Reactions, the measure of the imbalance, and the decision whether an increment has converged.
#pragma once

namespace zema {

struct Analysis;

/// `CONVER`: forms the reactions, the residual ratio and the convergence code of the iteration, reports them, and
/// leaves the next right-hand side in ELOAD(:, 1). Throws RunEnd when the last iteration allowed has not converged,
/// or when the solution is not finite.
void CONVER(Analysis& analysis);

/// `REACT`: leaves the force that each support must add in FIXED, and adds it to the accumulated reactions and to the
/// total load.
void REACT(Analysis& analysis);

}  // namespace zema
