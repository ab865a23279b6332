// Balance of power and energy, and the two global measures of damage.
#pragma once

#include "job/job.h"
#include "model/kernel.h"

namespace zema {

/// `MENERG`: powers and energies of the whole model at the end of a converged increment, to the listing. DTIME is the
/// time step of the trapezoidal sums.
void MENERG(Job& job, Model& model, const Kernel& kernel);

/// `DAMAGE`: the global damage by force, DANFU = 1 - |internal forces| / |their elastic prediction| (0 while there is
/// no prediction), to the listing with the damage by energy and the dissipation.
void DAMAGE(Job& job, Model& model, const Kernel& kernel);

}  // namespace zema
