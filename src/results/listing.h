// Nodal and point results in the listing.
#pragma once

#include "job/job.h"
#include "model/kernel.h"

namespace zema {

/// When the listing is written: at convergence the committed state counts, within an iteration the trial state.
enum class OutputMoment { converged = 1, iteration = 2 };

/// `OUTPUT`: writes displacements (level 1), reactions (2) and point values (3) on the listing, then a point of every
/// curve. The level is NOUTP(2) at a later iteration or at convergence, NOUTP(1) at a first iteration.
void OUTPUT(Job& job, const Model& model, const Kernel& kernel, OutputMoment moment);

}  // namespace zema
