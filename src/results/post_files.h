// The two files of the post-processor: the mesh with the head of the result file, and the result blocks.
#pragma once

#include "job/job.h"
#include "model/kernel.h"

namespace zema {

/// `GEOPOST`: writes the post mesh and the head of the result file, once, in a new job. A model with elements of
/// several node or point counts gets one mesh and one point rule for each of them, the kind of the last element first.
void GEOPOST(Job& job, const Model& model, const Kernel& kernel);

/// `POSPRO`: appends the result blocks that IPOST3D, IIFLAG and NOUTP(3) select, with the committed state, after a
/// converged increment. Writes nothing when a dynamic or time-dependent run skips this increment.
void POSPRO(Job& job, const Model& model, const Kernel& kernel);

}  // namespace zema
