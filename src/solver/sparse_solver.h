// The sparse direct solver.
#pragma once

#include <memory>

#include "solver/solver.h"

namespace zema {

/// `MAINSOLVERPARDISO`: general matrices in compressed rows; symmetric factors when the values are symmetric to
/// rounding, LU otherwise. The pattern is analysed once for each set of equation numbers. Its solutions are refined
/// while that helps. Faults of the library stop the run with PlainStop. Needs hasSparseLibrary().
[[nodiscard]] std::unique_ptr<Solver> makeSparseSolver();

}  // namespace zema
