// The frontal solver.
#pragma once

#include <memory>
#include <string>

#include "solver/front_matrix.h"
#include "solver/solver.h"

namespace zema {

/// Gaussian elimination over the element list (Irons, 1970): an element at a time is added to a small dense matrix, and
/// a variable is eliminated with its last element. Prescribed variables stay in the front and are eliminated like the
/// others; the reaction of each takes the place of its prescribed value. Memory is that of the front and of a block of
/// equations; the rest is on work files, whose names begin with `files`. With reused equations no element is formed.
/// A pivot of exactly 0 stops the run with PlainStop.
[[nodiscard]] std::unique_ptr<Solver> makeFrontalSolver(FrontForm form, std::string files);

}  // namespace zema
